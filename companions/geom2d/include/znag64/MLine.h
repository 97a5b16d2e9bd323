// Planar polylines and corners, with the location of a point against them.
#pragma once
#include <znmt64/Config.h>
#include <znag64/Point2D.h>

#include <vector>

// Open polyline through its vertices in order.
class ZNAG64_API CMLine {
 public:
  // Point against polyline. The values are shared with the 3D segment's location codes through
  // fixed conversions (at start 2, at end 3, before start 5, beyond end 6, ...): never renumber.
  enum ELocn {
    eMLUndefined = 0,
    eMLInside = 1,       // on a segment, between two vertices
    eMLAtStart = 2,      // at the first vertex
    eMLAtEnd = 3,        // at the last vertex
    eMLAtVertex = 4,     // at an inner vertex
    eMLBeforeStart = 5,  // on the first segment's line, before the first vertex
    eMLBeyondEnd = 6,    // on the last segment's line, beyond the last vertex
    eMLDegenerate = 7,   // fewer than two vertices: nothing to locate against
    eMLOffLine = 8,
  };

  std::vector<C2DPoint> m_pts;

  int GetSize() const { return static_cast<int>(m_pts.size()); }
  // Sets vertex i, growing the polyline with zero vertices up to it; a negative i does nothing.
  void SetVertex(int i, const C2DPoint& p);

  // Where p lies within tol. *pInd receives the vertex (at a vertex), the segment (inside, before
  // start, beyond end: 0, k, or the last segment) or -1. Vertices are tested before segments, so
  // a point at a vertex is never reported inside a segment that ends there.
  ELocn GetLocation(const C2DPoint& p, double tol, int* pInd = nullptr) const;
};

// Corner at a vertex, bounded by two rays: the region swept counter-clockwise from dir1 to dir2.
// The angle may exceed π; equal rays bound an empty region.
class ZNAG64_API Corner2D {
 public:
  // Point against corner. The 3D library maps these values to plane and segment locations
  // (1 above, 2..5 in the plane, 6 below): never renumber.
  enum ECornerLocn {
    eCornerUndefined = 0,  // a ray has no direction
    eCornerInside = 1,     // strictly inside the region
    eCornerAtVertex = 2,
    eCornerOnSide1 = 3,      // on the ray along dir1
    eCornerOnSide2 = 4,      // on the ray along dir2
    eCornerOnExtension = 5,  // on a ray's line behind the vertex, whether inside a reflex corner or outside
    eCornerOutside = 6,
  };

  C2DPoint vertex;
  C2DPoint dir1;
  C2DPoint dir2;

  // The first quadrant.
  Corner2D() : vertex(), dir1(1.0, 0.0), dir2(0.0, 1.0) {}

  // Directions are made unit; false, corner unchanged, when either is shorter than 1e-10.
  bool Set(const C2DPoint& v, const C2DPoint& d1, const C2DPoint& d2);
  ECornerLocn GetLocation(const C2DPoint& p, double tol) const;
};
