// Triangle3D, a triangle in space given by its three corners, and the location of a point against
// it (SimplPointBase, SimplPoint), on which every triangle intersection and distance query of the
// suite is built.
//
// Numbering, relied on by every triangle algorithm:
//   - corners 0, 1, 2; a shifted index is taken modulo 3 into 0..2 (the next corner of 2 is 0);
//   - side i runs from corner i to corner (i + 1) mod 3: side 0 = P0->P1, side 1 = P1->P2,
//     side 2 = P2->P0; the side opposite corner i is side (i + 1) mod 3;
//   - the normal is (P1 - P0) x (P2 - P0): the corners run counter-clockwise seen from the side it
//     points to.
//
// A point is located by laying the triangle flat into its own frame and handing the projected
// point to the 2D module's Triangle2D. The location members allocate nothing.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/Bar.h>
#include <znmt64/CPlane.h>
#include <znmt64/CSegment.h>
#include <znmt64/SMat.h>
#include <znmt64/platform/CString.h>

#include <znag64/MLine.h>
#include <znag64/Triangle2D.h>
#include <znbl64/ZMath.h>

class CLineal;
class CMFrame;
class RangeR1;
class Triangle3D;

// A located point: the point, where it lies and the side or corner it belongs to.
class ZNMT64_API SimplPointBase {
 public:
  // 0 to 5 are the 2D location step's codes (Tri2DPoint::ELocn), passed through unchanged:
  // never renumber.
  enum ELocn {
    eInside = 0,       // inside the open triangle
    eOnSide = 1,       // on side m_nInd
    eAtCorner = 2,     // at corner m_nInd
    eNearSide = 3,     // near side m_nInd without being on it; an edge for Triangle3D::IsOnEdge
    eOutside = 4,      // in the plane, outside the triangle
    eFlat = 5,         // the flat triangle is too thin to have an inside
    eOffPlane = 6,     // not in the triangle's plane
    eUndetermined = 7  // a degenerate triangle, or a 2D code outside 0..5
  };

  SimplPointBase() = default;
  explicit SimplPointBase(const SMat& p) : m_pt(p) {}
  SimplPointBase(const SimplPointBase& o) { Copy(o); }
  SimplPointBase& operator=(const SimplPointBase& o) {
    Copy(o);
    return *this;
  }
  virtual ~SimplPointBase();

  // The location only; the point stays.
  void Reset() {
    m_eLocn = eInside;
    m_nInd = -1;
  }
  void Copy(const SimplPointBase& o) {
    m_eLocn = o.m_eLocn;
    m_nInd = o.m_nInd;
    m_pt = o.m_pt;
  }
  bool IsCornerHit() const { return m_eLocn == eAtCorner; }
  // On a side, or at a corner unless bNoCorner. eNearSide does not count here (it does for
  // Triangle3D::IsOnEdge).
  bool IsOnEdge(bool bNoCorner) const { return m_eLocn == eOnSide || (m_eLocn == eAtCorner && !bNoCorner); }
  // Same location, the same side or corner for those, and the same point within 1e-10.
  bool IsSame(const SimplPointBase& o) const {
    if (m_eLocn != o.m_eLocn) return false;
    if ((m_eLocn == eOnSide || m_eLocn == eAtCorner) && m_nInd != o.m_nInd) return false;
    return m_pt == o.m_pt;
  }
  // As IsSame without comparing the indices.
  bool IsSame2(const SimplPointBase& o) const { return m_eLocn == o.m_eLocn && m_pt == o.m_pt; }

  // 0..6 as they are, anything else eUndetermined.
  static ELocn IntToLocn(int n) { return n >= 0 && n <= 6 ? static_cast<ELocn>(n) : eUndetermined; }
  // 0..5 as they are, anything else eUndetermined.
  static ELocn Location2DTo3D(Tri2DPoint::ELocn l) {
    const int n = l;
    return n >= 0 && n <= 5 ? static_cast<ELocn>(n) : eUndetermined;
  }

  SMat m_pt;
  ELocn m_eLocn = eInside;
  int m_nInd = -1;  // side or corner; -1 when none
};

// A located point with what the location found out on the way: barycentric coordinates, cached
// side and corner distances, and the options and tolerances of the 2D location step.
class ZNMT64_API SimplPoint : public SimplPointBase {
 public:
  SimplPoint() { Reset(); }
  explicit SimplPoint(const SMat& p) : SimplPointBase(p) { Reset(); }
  // Through Copy: the options, dTol and the cached distances of a copy are reset values.
  SimplPoint(const SimplPoint& o) : SimplPointBase() {
    Reset();
    Copy(o);
  }
  // Copy: the options, dTol and the cached distances stay the target's own.
  SimplPoint& operator=(const SimplPoint& o) {
    Copy(o);
    return *this;
  }
  ~SimplPoint() override;

  // The fields of this class to their reset values; the location and index stay
  // (SimplPointBase::Reset clears those).
  void Reset() {
    bSidePosn = false;
    bInParam2 = false;
    bInPlane = false;
    dSidePosn = 0.0;
    m_bar.Reset();
    bBarValid = false;
    dTol = 1e-10;
    dTol2 = 2e-4;
    ResetMin();
  }
  // dMin and the six cached distances to -1 (not computed).
  void ResetMin() {
    dMin = -1.0;
    for (int i = 0; i < 3; ++i) adSideDist[i] = adCornerDist[i] = -1.0;
  }
  // The result of a location: location, index, side position, point, barycentric coordinates and
  // dTol2. The options, dTol and the cached distances are not copied.
  void Copy(const SimplPoint& o) {
    SimplPointBase::Copy(o);
    dSidePosn = o.dSidePosn;
    m_bar = o.m_bar;
    bBarValid = o.bBarValid;
    dTol2 = o.dTol2;
  }
  // The inputs of a location: the three options and both tolerances.
  void CopyInMembers(const SimplPoint& o) {
    bSidePosn = o.bSidePosn;
    bInParam2 = o.bInParam2;
    bInPlane = o.bInPlane;
    dTol2 = o.dTol2;
    dTol = o.dTol;
  }
  void SetSideDist(const double* d) {
    for (int i = 0; i < 3; ++i) adSideDist[i] = d[i];
  }
  // The options and tolerances into the 2D point's inputs.
  void CopyTo2DInParams(Tri2DPoint& t) const {
    t.bSidePosn = bSidePosn;
    t.bInParam2 = bInParam2;
    t.dTol = dTol;
    t.dTol2 = dTol2;
  }
  // The 2D result back: location, index, side position and the six distances.
  void Copy2DMin(const Tri2DPoint& t) {
    m_eLocn = Location2DTo3D(t.eLocn);
    m_nInd = t.nInd;
    dSidePosn = t.dSidePosn;
    for (int i = 0; i < 3; ++i) {
      adSideDist[i] = t.adSideDist[i];
      adCornerDist[i] = t.adCornerDist[i];
    }
  }
  bool IsValidSidePosn() const { return bSidePosn && dSidePosn >= 1e-10 && m_nInd >= 0; }
  // Not on a side or corner, but some known side or corner distance is below 1e-5. A distance of
  // exactly 0 does not count.
  bool IsNearEdge() const;
  // By the barycentric coordinates when they are valid, else by the location.
  bool IsInsideOpen(double tol) const { return bBarValid ? m_bar.IsInsideOpen(tol) : m_eLocn == eInside; }
  // By the barycentric coordinates, valid or not.
  bool IsOutsideClosed(double tol) const { return m_bar.IsOutsideClosed(tol); }
  int GetCorner(double tol) const { return m_bar.GetCorner(tol); }

  // Distance to side i as a segment, computed once and cached in adSideDist[i]; -1 for i >= 3.
  double CalcDistToSide(unsigned char i, const Triangle3D& tri);
  // The side nearest the point, the first of equal ones.
  int CalcNearestSide(const Triangle3D& tri);
  // Side i or its neighbour j ((i + 1) mod 3 forward, (i - 1) mod 3 backward): j only when both
  // are worth comparing (both side distances known, or corner j's distance known and below half
  // of corner i's or of the third corner's) and side i is strictly farther. i >= 3 comes back.
  unsigned char GetNearestSide(unsigned char i, const Triangle3D& tri, bool bForward);

  // ---- snapping ----------------------------------------------------------------------------------
  // Marks the point as on side i without moving it; false when it is already on a side.
  bool StickToSide(unsigned char i, const Triangle3D& tri);
  // Moves the point to its foot on side i's line (dSidePosn its parameter). Within dTol2 of an end
  // of the side it becomes that corner, moved there, unless it already was at a corner (false,
  // the point left at the foot); else it is on side i. False for i >= 3, nothing changed.
  bool StickToSideModify(unsigned char i, const Triangle3D& tri);
  // The point becomes corner c exactly, with the distances it knows of that: 0 to corner c, the
  // rest not computed. Nothing for c >= 3.
  void StickToCornerModify(const Triangle3D& tri, unsigned char c);
  // Snaps by the cached distances, without moving the point: to the first corner i nearer than
  // cornerTol[i], else to the first side nearer than dTol2, or to the neighbouring side that
  // shares a near corner with it when that one is nearer still. Never overrides a corner location
  // (false). A null cornerTol snaps to sides only.
  bool StickGeometry(const Triangle3D& tri, const double* cornerTol);

  bool bSidePosn;   // 2D step: fill dSidePosn; IsValidSidePosn requires it
  bool bInParam2;   // 2D step: snap to a side or corner within dTol2
  bool bInPlane;    // the point is known to lie in the plane: GetPointLocation2 skips that test
  double dSidePosn;  // along the side, from its start corner
  double dMin;       // carried only; ResetMin sets it to -1
  Bar m_bar;         // barycentric coordinates, meaningful when bBarValid
  bool bBarValid;
  double dTol;            // point tolerance of the 2D step
  double dTol2;           // side and corner snapping tolerance
  double adSideDist[3];   // to side i; negative: not computed
  double adCornerDist[3];  // to corner i; negative: not computed
};

class ZNMT64_API Triangle3D {
 public:
  // ---- construction ------------------------------------------------------------------------------
  Triangle3D() = default;
  explicit Triangle3D(const SMat* p) : m_p{p[0], p[1], p[2]} {}
  Triangle3D(const double* p0, const double* p1, const double* p2) : m_p{SMat(p0), SMat(p1), SMat(p2)} {}
  // The corners only: a copy computes its own normal.
  Triangle3D(const Triangle3D& t) { Copy(t); }
  Triangle3D& operator=(const Triangle3D& t) {
    Copy(t);
    return *this;
  }
  virtual ~Triangle3D();

  // The corners only. The target keeps its own cached normal, which need not fit the new corners:
  // clear vNormal after moving corners (SetVertex and Divide do not either).
  void Copy(const Triangle3D& t) {
    for (int i = 0; i < 3; ++i) m_p[i] = t.m_p[i];
  }
  // i outside 0..2 does nothing.
  void SetVertex(int i, double x, double y, double z) {
    if (i >= 0 && i < 3) m_p[i].Set(x, y, z);
  }

  // ---- corners, sides, edges (an index of 3 or more does nothing where one is checked) --------
  SMat& GetNextPoint(int i) { return m_p[Next(i)]; }
  const SMat& GetNextPoint(int i) const { return m_p[Next(i)]; }
  SMat& GetPrevPoint(int i) { return m_p[Prev(i)]; }
  const SMat& GetPrevPoint(int i) const { return m_p[Prev(i)]; }
  // Side i as a vector, from corner i to the next.
  void GetSide(unsigned char i, SMat& v) const {
    if (i < 3) v = m_p[Next(i)] - m_p[i];
  }
  // Sides 0 and the reversed side 2: both leave corner 0.
  void GetSides(SMat& a, SMat& b) const {
    a = m_p[1] - m_p[0];
    b = m_p[2] - m_p[0];
  }
  // The two sides leaving corner i: towards the next corner, then towards the previous one.
  void GetSides(int i, SMat& a, SMat& b) const {
    if (i < 0 || i >= 3) return;
    a = m_p[Next(i)] - m_p[i];
    b = m_p[Prev(i)] - m_p[i];
  }
  // 0 for i >= 3.
  double GetSideLength(unsigned char i) const { return i < 3 ? m_p[i].Dist(m_p[Next(i)]) : 0.0; }
  // Side i as a segment from corner i; a side shorter than 1e-10 keeps the raw difference as its
  // direction (CSegment::SetQ).
  void GetEdge(unsigned char i, CSegment& s) const {
    if (i >= 3) return;
    s.origin.Copy(m_p[i]);
    s.SetQ(m_p[Next(i)], false);
  }
  // The same segment: SMat's Copy and CopyData are one copy here.
  void GetEdgeSegment(unsigned char i, CSegment& s) const { GetEdge(i, s); }
  // Side i as a segment, from its end when bReverse; false for a side shorter than 1e-10 or
  // i >= 3 (s untouched then).
  bool GetSide(unsigned char i, CSegment& s, bool bReverse = false) const {
    if (i >= 3) return false;
    s.origin = m_p[bReverse ? Next(i) : i];
    return s.SetQ(m_p[bReverse ? i : Next(i)], true);
  }
  // The side joining corners i and j; false when they are the same corner.
  bool GetSide(unsigned char i, unsigned char j, CSegment& s, bool bReverse = false) const {
    const int k = CZGroup::GetMin(3, i, j);
    return k >= 0 && GetSide(static_cast<unsigned char>(k), s, bReverse);
  }

  // ---- measures ----------------------------------------------------------------------------------
  // The parallelogram's area, twice the triangle's. Every degeneracy test of the suite compares
  // with this value, so it stays the parallelogram's.
  double Area() const {
    SMat a, b;
    GetSides(a, b);
    return a.Area(b);
  }
  bool IsValid(double tol) const { return Area() > tol * tol; }
  double GetShortestSide() const;
  double GetSize() const;
  // Distance to the nearest corner; *pInd its index, the first of equal ones.
  double GetDistVertex(const SMat& p, int* pInd = nullptr) const;
  // Angle at corner i in [0, pi]; -3pi for i outside 0..2, and for a corner one of whose sides is
  // shorter than 1e-10.
  double GetCornerAngle(int i) const;
  // out[k] = coordinate axis (0..2) of corner k; nothing for axis >= 3.
  void GetAxisProjections(unsigned char axis, double* out) const {
    if (axis >= 3) return;
    for (int k = 0; k < 3; ++k) out[k] = m_p[k][axis];
  }
  // The range of coordinate axis over the corners; nothing for axis >= 3.
  void GetAxisProjection(unsigned char axis, RangeR1& r) const;

  // ---- normal, frame, plane ----------------------------------------------------------------------
  // (P1 - P0) x (P2 - P0) normalised with tol; false leaves the raw product in n.
  bool GetNormalMin(SMat& n, double tol) const {
    SMat a, b;
    GetSides(a, b);
    n.CrossProd(a, b);
    return n.Normalize(tol);
  }
  // As GetNormalMin, but a small triangle whose raw product falls below tol is rescued through
  // its unit sides when both are longer than tol.
  bool GetNormal(SMat& n, double tol) const;
  // The axis through P0 along the unit normal; false (a zero direction) for an exactly flat
  // triangle.
  bool GetNormal(CLineal& l) const;
  // Origin P0, X along side 0. Z is the cached normal vNormal when there is one and
  // bIgnoreNormal is false, with Y = Z x X; otherwise Y is P2 - P0 made orthogonal to X and
  // Z = X x Y. False, f untouched, when side 0 or P2's offset from it is shorter than 1e-10.
  bool GetFrame(CMFrame& f, bool bIgnoreNormal) const;
  // The plane through P0. A given pNormal (three doubles) not zero within 1e-10 is taken as the
  // plane's direction as it stands, not normalised (true); otherwise GetNormal(…, 1e-10) gives it
  // and its result is returned.
  bool GetPlane(CPlane& pl, const double* pNormal = nullptr) const;

  // ---- transformations ---------------------------------------------------------------------------
  void ToLocal(const CMFrame& f);
  void ToGlobal(const CMFrame& f);
  // Each corner projected into f's XY plane.
  void To2D(const CMFrame& f, Triangle2D& t) const;
  // Laid flat in its own plane: corner 0 at (0, 0), corner 1 at (|side 0|, 0), corner 2 with
  // y >= 0. False for a side 0 shorter than 1e-10, with only corner 0 set.
  bool To2D(Triangle2D& t) const;

  // ---- barycentric points and subdivision --------------------------------------------------------
  // a·P0 + b·P1 + c·P2 after scaling the weights to sum 1 (Triangle2D::Normalize); weights that
  // sum to 0 within 1e-10 are used as they are.
  void GetPointBaricentr(double a, double b, double c, SMat& p) const;
  void GetPointBaricentr(const Bar& w, SMat& p) const { GetPointBaricentr(w.w[0], w.w[1], w.w[2], p); }
  // Splits at p on side i: other becomes this triangle with corner i replaced by p, this one gets
  // corner i + 1 replaced by p. Both halves keep the orientation. Nothing for i >= 3.
  void Divide(unsigned char i, const SMat& p, Triangle3D& other);
  // The same at the point of parameter t (distance from corner i) on side i. The flag is carried
  // for callers and not read.
  void Divide(unsigned char i, double t, unsigned char bFlag, Triangle3D& other);

  // ---- location codes ------------------------------------------------------------------------------
  // A corner location read against a plane: inside above, outside below, the rest in it.
  static CPlane::ELocn To3DLocn(Corner2D::ECornerLocn c) {
    switch (c) {
      case Corner2D::eCornerInside: return CPlane::ePositive;
      case Corner2D::eCornerAtVertex:
      case Corner2D::eCornerOnSide1:
      case Corner2D::eCornerOnSide2:
      case Corner2D::eCornerOnExtension: return CPlane::eOnPlane;
      case Corner2D::eCornerOutside: return CPlane::eNegative;
      default: return CPlane::eLocnUndefined;
    }
  }
  // Below and above map to the sides, every other defined code into the plane.
  static CPlane::ELocn ToLocn3D(CSegment::ESegmLocn s) {
    switch (s) {
      case CPlane::eSegmUndefined: return CPlane::eLocnUndefined;
      case CPlane::eSegmBelow: return CPlane::eNegative;
      case CPlane::eSegmAbove: return CPlane::ePositive;
      default: return CPlane::eOnPlane;
    }
  }
  // Sides, corners and near-side points (1, 2, 3).
  static bool IsOnEdge(SimplPointBase::ELocn l) {
    return l == SimplPointBase::eOnSide || l == SimplPointBase::eAtCorner || l == SimplPointBase::eNearSide;
  }

  // ---- point location ------------------------------------------------------------------------------
  // Side of the plane through P0 with normal pNormal (GetNormal's when null): 3 where the normal
  // points, 1 behind, 2 within tol. Within tol the test is taken again on the cosine between the
  // normal and the offset from P0, so near P0 a small offset counts as off the plane and far from
  // it as in it; p at P0 is 2 whatever tol is.
  CPlane::ELocn GetPtLocation3D(const SMat& p, const double* pNormal = nullptr, double tol = 1e-10) const;
  // eOffPlane when p is more than 1e-10 from the plane (through pNormal, else the cached vNormal,
  // else the triangle's own normal), eUndetermined when the triangle has no plane or frame;
  // otherwise the 2D location with the point tolerance tol1 and the snapping tolerance tol2.
  SimplPointBase::ELocn GetPointLocation3(const SMat& p, const double* pNormal, double tol1, double tol2) const;
  // GetPointLocation3 with the point tolerance 1e-8.
  SimplPointBase::ELocn GetPointLocation(const SMat& p, const double* pNormal = nullptr, double tol = 1e-10) const {
    return GetPointLocation3(p, pNormal, 1e-8, tol);
  }
  // Locates sp.m_pt with sp's options and tolerances and stores the 2D result in sp (location,
  // index, side position, side and corner distances). The plane test is skipped when
  // sp.bInPlane; a triangle without a plane or frame gives eUndetermined with sp untouched; off
  // the plane sp's location becomes eOffPlane.
  // Not reentrant: it lays the triangle into the class-wide m_tri2D, so two threads must not call
  // it at the same time.
  SimplPointBase::ELocn GetPointLocation2(SimplPoint& sp, const double* pNormal = nullptr) const;

  // ---- text and debug display --------------------------------------------------------------------
  // "(x, y, z) " per corner with six decimals; the text ends with a blank.
  CString ToString() const;
  // Shows the triangle in the 2D module's 3D debugger, captioned "Triangle3D".
  void Dp() const;

  // The scratch flat triangle of GetPointLocation2, two-sided. Defined with the library's other
  // process-wide objects.
  static Triangle2D m_tri2D;

  SMat m_p[3];
  SMat vNormal;  // cached unit normal; (0, 0, 0) until computed

 private:
  static int Next(int i) { return CZGroup::Factorize(3, i + 1); }
  static int Prev(int i) { return CZGroup::Factorize(3, i - 1); }
  // eInside when p lies within 1e-10 of the plane; eUndetermined without a plane; eOffPlane.
  SimplPointBase::ELocn PlaneTest(const SMat& p, const double* pNormal) const;
  // t := this triangle laid into its frame, q := p in that frame; false without a frame.
  bool Flatten(const SMat& p, Triangle2D& t, C2DPoint& q) const;
};
