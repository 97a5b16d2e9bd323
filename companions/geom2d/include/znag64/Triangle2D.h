// Flat triangle and the location of a point in it.
#pragma once
#include <znmt64/Config.h>
#include <znag64/Point2D.h>

// A point to locate in a Triangle2D: the options go in, the location and distances come out.
// Side i runs from corner i to corner (i + 1) mod 3, as in the 3D triangle.
class ZNAG64_API Tri2DPoint {
 public:
  // The 3D triangle passes 0..5 through unchanged and counts 1, 2 and 3 as "on an edge":
  // never renumber.
  enum ELocn {
    eInside = 0,    // inside, and farther than both tolerances from every side
    eOnSide = 1,    // within dTol of side nInd (or within dTol2 when snapping)
    eAtCorner = 2,  // within dTol of corner nInd (or within dTol2 when snapping)
    eNearSide = 3,  // not on the boundary, but within dTol2 of side nInd, inside or outside
    eOutside = 4,
    eDegenerate = 5,  // the triangle's smallest height is at most dTol: it has no inside
  };

  // In.
  C2DPoint pt;
  double dTol;     // point tolerance
  double dTol2;    // snapping tolerance; not above dTol means no near zone
  bool bSidePosn;  // fill dSidePosn for side results
  // Snap: within dTol2 the corner or side itself is reported (2 or 1) instead of eNearSide.
  // Named after the option of the 3D point record that feeds it.
  bool bInParam2;

  // Out. Until located, the distances are -1, which the 3D library reads as "not computed".
  ELocn eLocn;
  int nInd;                // side or corner of eOnSide, eAtCorner, eNearSide; -1 otherwise
  double dSidePosn;        // side results with bSidePosn: distance from the side's start corner to the
                           // foot of pt on the side; 0 otherwise
  double adSideDist[3];    // distance to side i as a segment
  double adCornerDist[3];  // distance to corner i

  // One tolerance: dTol2 = tol, so there is no near zone.
  explicit Tri2DPoint(const C2DPoint& p, double tol = 1e-10) : Tri2DPoint(p, tol, tol) {}
  Tri2DPoint(const C2DPoint& p, double tol, double tol2)
      : pt(p),
        dTol(tol),
        dTol2(tol2),
        bSidePosn(false),
        bInParam2(false),
        eLocn(eInside),
        nInd(-1),
        dSidePosn(0.0),
        adSideDist{-1.0, -1.0, -1.0},
        adCornerDist{-1.0, -1.0, -1.0} {}
};

class ZNAG64_API Triangle2D {
 public:
  C2DPoint m_p[3];
  // Two-sided: a clockwise triangle has the same inside as its counter-clockwise twin. One-sided
  // (the default): the corners must run counter-clockwise, and a clockwise triangle, seen from
  // its back, has no inside: points are on its boundary, near it or outside.
  bool m_bTwoSided;

  explicit Triangle2D(bool bTwoSided = false) : m_p(), m_bTwoSided(bTwoSided) {}

  // Corner i; an index outside 0..2 does nothing.
  void SetVertex(int i, double x, double y) { SetVertex(i, C2DPoint(x, y)); }
  void SetVertex(int i, const C2DPoint& p) {
    if (i >= 0 && i < 3) m_p[i] = p;
  }

  // Fills t's results and returns its location. The six distances are filled for every triangle,
  // degenerate ones included.
  Tri2DPoint::ELocn GetPointLocation(Tri2DPoint& t) const;

  // Scales barycentric weights to sum 1. A sum within 1e-10 of 0 has no scale: false, weights
  // unchanged.
  static bool Normalize(double& a, double& b, double& c);
};
