// Planes: PlaneEqn (a·x + b·y + c·z + d = 0), CPlane (a CLineal read as the plane through origin
// with unit normal dir), Planeal and PlanealLoc (the plane and the half-plane spanned by two
// in-plane unit vectors), and PlaneArray.
//
// The positive side of a plane is the side its normal points into. Tolerances are literals of the
// code; callers rely on each of them, on the 1.5·tol band of GetPointLocation among them.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/CLineal.h>
#include <znmt64/SMat.h>
#include <znmt64/platform/CArray.h>

#include <znag64/MLine.h>

#include <cmath>

class CMFrame;
class CSegment;
class DistContext;
class RangeR1;
class RangeR12D;
class Triangle3D;

// Location of a point against an object, shared with the triangle queries: below (on the negative
// side), on, above; the values between are the triangle queries' own.
enum EObjectLocn { eObjUndefined = 0, eObjBelow = 1, eObjOn = 3, eObjAbove = 5 };

class ZNMT64_API PlaneEqn {
 public:
  // The plane x = 0.
  PlaneEqn() = default;
  PlaneEqn(double pa, double pb, double pc, double pd) : a(pa), b(pb), c(pc), d(pd) {}
  PlaneEqn(const PlaneEqn&) = default;
  void Copy(const PlaneEqn& e) { *this = e; }
  // Returns nothing, as callers expect.
  void operator=(const PlaneEqn& e) {
    a = e.a;
    b = e.b;
    c = e.c;
    d = e.d;
  }
  void operator*=(double k) {
    a *= k;
    b *= k;
    c *= k;
    d *= k;
  }
  // Not divided by the normal's length: a signed distance only for a unit (a, b, c).
  double Evaluate(const SMat& p) const { return a * p.x + b * p.y + c * p.z + d; }
  bool Satisfies(const SMat& p) const { return std::fabs(Evaluate(p)) < 1e-10; }
  // The equation in f's local (global) coordinates; the result has a unit normal (a, b, c).
  void ToLocal(const CMFrame* f);
  void ToGlobal(const CMFrame* f);

  double a = 1.0;
  double b = 0.0;
  double c = 0.0;
  double d = 0.0;
};

class ZNMT64_API CPlane : public CLineal {
 public:
  // A point against the plane.
  enum ELocn { eLocnUndefined = 0, eNegative = 1, eOnPlane = 2, ePositive = 3 };
  // A segment against the plane.
  enum ESegmLocn {
    eSegmUndefined = 0,     // an end's location was undefined
    eSegmBelow = 1,         // both ends on the negative side
    eSegmNegativeSide = 2,  // ToSegmLocn of eNegative; the mirror of 4
    eSegmInPlane = 3,       // both ends in the plane
    eSegmPositiveSide = 4,  // the mirror of 2
    eSegmAbove = 5,         // both ends on the positive side
    eSegmTouching = 6,      // one end in the plane, the other off it
    eSegmCrossing = 7       // the ends on opposite sides
  };
  // A line against the plane: below, in or above it when parallel to it, else crossing.
  enum ELineLocn { eLineUndefined = 0, eLineBelow = 1, eLineInPlane = 2, eLineAbove = 3, eLineCrossing = 4 };

  // The plane x = 0 through the global origin.
  CPlane() = default;
  // The tag comes along.
  CPlane(const CLineal& l) { CLineal::Copy(l); }  // NOLINT: a line is read as a plane implicitly
  CPlane(const CPlane&) = default;
  CPlane& operator=(const CPlane&) = default;

  // ---- distance and location -------------------------------------------------------------------
  // Unsigned distance of p from the plane; *foot its foot in the plane.
  double Dist(const SMat& p, SMat* foot = nullptr) const override {
    SMat q = p;
    const double d = ProjectToPlane(q);
    if (foot != nullptr) *foot = q;
    return d;
  }
  bool Contains(const SMat& p, double tol = 1e-10) const override { return std::fabs(dir.Prod(p - origin)) <= tol; }
  // Distance between the plane and a segment, by its end points only: a crossing segment gets the
  // smaller end distance, not 0, and callers rely on that. The nearer end goes to ctx.Pt(false),
  // its foot to ctx.Pt(true), whether or not the distance improves ctx.dDist.
  double Dist(const CSegment& s, DistContext& ctx) const;

  // Negative, on (within 1.5·tol) or positive. Within 15·tol of the plane the signed distance is
  // taken again from the virtual Dist, with the sign of the dot product: a derived shape measures
  // there with its own distance.
  ELocn GetPointLocation(const SMat& p, double tol) const {
    const double e = 1.5 * tol;
    double s = (p - origin).Prod(dir);
    if (std::fabs(s) < 10.0 * e) {
      const double d = Dist(p, nullptr);
      s = s < 0.0 ? -d : d;
    }
    if (s < -e) return eNegative;
    if (s > e) return ePositive;
    return eOnPlane;
  }
  ESegmLocn GetSegmentLocation(const CSegment& s) const;
  ELineLocn GetLocation(const CLineal& line) const {
    if (std::fabs(dir.Prod(line.dir)) <= 1e-10) return ToLineLocation(GetPointLocation(line.origin, 1e-10));
    return eLineCrossing;
  }

  // ---- intersections ---------------------------------------------------------------------------
  bool GetInfLineIntersection(const CLineal& line, SMat& out, double* t = nullptr, double tol = 1e-10) const {
    return line.IntersectPlane(origin, dir, out, t, tol);
  }
  // The carrier line meets the plane within the segment's parameter range.
  bool GetSegmentIntersection(const CSegment& s, SMat& out, double* t = nullptr, double tol = 1e-10) const;
  bool GetPlaneIntersection(const CPlane& other, CLineal& out) const { return out.IntersectPlanes(*this, other); }

  // ---- constructions ---------------------------------------------------------------------------
  // The normal becomes line.dir × (p - line.origin), but the origin stays where it was: the plane
  // is parallel to the line and to p, not through them, unlike CLineal::PassPlane(line, p). Callers
  // rely on this. False, with the zero normal written, for an exactly zero product.
  bool PassPlane(const CLineal& line, const SMat& p);
  // The plane through three points, as CLineal's.
  bool PassPlane(const SMat& p1, const SMat& p2, const SMat& p3) { return CLineal::PassPlane(p1, p2, p3); }
  void Mirror(SMat& p) const {
    SMat q = p;
    ProjectToPlane(q);
    p = q + (q - p);
  }
  // A direction mirrored: the difference of the mirrored origin and origin + v.
  void MirrorVector(SMat& v) const {
    SMat a = origin;
    SMat b = origin + v;
    Mirror(a);
    Mirror(b);
    v = b - a;
  }
  // v projected into the plane; false, v unchanged, when v lies along the normal (a zero v too).
  bool ProjectVector(SMat& v) const;
  // The coordinate k (the index that is neither i nor j) of the plane's point with coordinates x
  // at i and y at j; 0 when the plane runs along axis k (|dir[k]| <= 1e-10) or the indices are not
  // two different ones of 0..2.
  double GetVal(unsigned char i, unsigned char j, double x, double y) const;
  // The range of coordinate k over box (box.i on coordinate i, box.j on j). The bounds are taken
  // at the corners the normal points to and away from and are not reordered: with dir[k] < 0 they
  // come out crossed.
  void GetValueRange(unsigned char i, unsigned char j, const RangeR12D& box, RangeR1& out) const;
  // A frame in the plane: Z the normal, X any perpendicular, Y = Z × X.
  void GetFrame(CMFrame& f) const;
  // Shows the disc of radius r on the plane in the 2D module's debugger, captioned "CPlane %08x".
  void Dp(double r = 1.0) const;

  // ---- conversions of the location codes ---------------------------------------------------------
  static constexpr EObjectLocn ToObjectLocn(ELocn l) {
    return l == eNegative ? eObjBelow : l == eOnPlane ? eObjOn : l == ePositive ? eObjAbove : eObjUndefined;
  }
  // A positive point maps to eSegmInPlane like a point in the plane; callers rely on it.
  static constexpr ESegmLocn ToSegmLocn(ELocn l) {
    return l == eNegative ? eSegmNegativeSide : l == eOnPlane || l == ePositive ? eSegmInPlane : eSegmUndefined;
  }
  static constexpr ELineLocn ToLineLocation(ELocn l) {
    return l == eNegative ? eLineBelow : l == eOnPlane ? eLineInPlane : l == ePositive ? eLineAbove : eLineUndefined;
  }
  // A point inside a corner lies above, one outside it below.
  static constexpr ESegmLocn ToPlaneLocation(Corner2D::ECornerLocn l) {
    switch (l) {
      case Corner2D::eCornerInside: return eSegmAbove;
      case Corner2D::eCornerAtVertex: return eSegmCrossing;
      case Corner2D::eCornerOnSide1:
      case Corner2D::eCornerOnSide2: return eSegmInPlane;
      case Corner2D::eCornerOnExtension: return eSegmBelow;
      default: return eSegmUndefined;
    }
  }
  static constexpr ESegmLocn GetOppositeLocation(ESegmLocn l) {
    switch (l) {
      case eSegmBelow: return eSegmAbove;
      case eSegmAbove: return eSegmBelow;
      case eSegmNegativeSide: return eSegmPositiveSide;
      case eSegmPositiveSide: return eSegmNegativeSide;
      default: return l;
    }
  }
  // The segment's location from its ends' locations.
  static constexpr ESegmLocn GetSegmLocn(ELocn a, ELocn b) {
    constexpr ESegmLocn kTable[3][3] = {{eSegmBelow, eSegmTouching, eSegmCrossing},
                                        {eSegmTouching, eSegmInPlane, eSegmTouching},
                                        {eSegmCrossing, eSegmTouching, eSegmAbove}};
    if (a < eNegative || a > ePositive || b < eNegative || b > ePositive) return eSegmUndefined;
    return kTable[a - 1][b - 1];
  }
};

// The plane spanned by the in-plane unit vectors u and v.
class ZNMT64_API Planeal {
 public:
  // Of two such planes, by their second vectors v.
  enum EOrientation { eSameSense = 1, eTransversal = 2, eOppositeSense = 3 };
  // Of a vector against the normal u × v.
  enum EDirection { eDirUndefined = 0, eDirPositive = 1, eDirInPlane = 3, eDirNegative = 5 };

  Planeal() : u(1.0, 0.0, 0.0), v(0.0, 1.0, 0.0) {}
  Planeal(const Planeal&) = default;
  Planeal& operator=(const Planeal&) = default;
  virtual ~Planeal() = default;

  // u × v, not normalised.
  void GetNormal(SMat& n) const { n = SMat().CrossProd(u, v); }
  bool IsOrtho(const SMat& w) const { return w.IsOrtho(u, 1e-10) && w.IsOrtho(v, 1e-10); }
  bool IsComplanar(const Planeal& o) const {
    SMat n;
    o.GetNormal(n);
    return IsOrtho(n);
  }
  bool IsValid() const { return u.IsUnitary(1e-10) && v.IsUnitary(1e-10) && u.IsOrtho(v, 1e-10); }
  // u normalised (unless the caller says it is unit), v made orthogonal to it and normalised.
  bool Init(bool uIsUnit);
  // 1e-5 (EpsPow(5)) on v·o.v: the normals are not looked at.
  EOrientation GetOrientation(const Planeal& o) const {
    const double p = v.Prod(o.v);
    if (p > 1e-5) return eSameSense;
    if (p < -1e-5) return eOppositeSense;
    return eTransversal;
  }
  EDirection GetVectDirection(const SMat& w) const {
    SMat n;
    GetNormal(n);
    if (n == 0.0) return eDirUndefined;
    const double d = w.Prod(n);
    if (d < -1e-10) return eDirNegative;
    if (d > 1e-10) return eDirPositive;
    return eDirInPlane;
  }

  SMat u;
  SMat v;
};

// The half-plane whose edge is the line through loc along u and which extends towards +v.
class ZNMT64_API PlanealLoc : public Planeal {
 public:
  void GetEdge(CLineal& out) const {
    out.dir = u;
    out.origin = loc;
  }
  // The full plane, its normal u × v as it comes (not normalised).
  void GetPlane(CPlane& out) const {
    GetNormal(out.dir);
    out.origin = loc;
  }
  // Strictly on the +v side, beyond 1e-10; *onEdgePlane: within 1e-10 of the plane through the
  // edge normal to v.
  bool IsInPositiveSemispace(const SMat& p, bool* onEdgePlane = nullptr) const {
    const double d = (p - loc).Prod(v);
    if (onEdgePlane != nullptr) *onEdgePlane = std::fabs(d) < 1e-10;
    return d > 1e-10;
  }
  // An entry point kept for its callers: it computes nothing and answers true.
  bool GetSegmentIntersection(const CSegment&, SMat&, double* = nullptr, double = 1e-10) const { return true; }
  // The first side i of t that meets the plane at a point p lying on the requested side of the
  // edge plane (IsInPositiveSemispace(p) == positive); -1 when none does, 0 when a side cannot be
  // had from t.
  int GetIntersectionTriangleEdge(const Triangle3D& t, SMat& p, bool* onEdgePlane, bool positive) const;

  SMat loc;
};

// Each plane as the six doubles of CMatWriter's line record (point, then normal); the tags are not
// stored and loaded planes have tag -1.
template <>
ZNMT64_API void SerializeElements<CPlane>(CArchive& ar, CPlane* pElements, INT_PTR nCount);

class ZNMT64_API PlaneArray : public CArray<CPlane, CPlane> {
 public:
  PlaneArray() = default;
  PlaneArray(const PlaneArray& o) : CArray() { Copy(o); }
  // Returns nothing, as callers expect.
  void operator=(const PlaneArray& o) { Copy(o); }
  // Element by element with CLineal::Copy: the tags come along.
  void Copy(const PlaneArray& o);
};
