// CLineal: the oriented line of the library, a point and a unit direction.
//
// One object serves three readings:
//   - a line: the points origin + t·dir;
//   - a plane: the plane through origin with unit normal dir (PassPlane, PlaneFromEquation,
//     GetPlaneEquation, PlaneIncident, ProjectToPlane, IntersectPlane(s), and CPlane);
//   - the axis of a derived shape: CPlane, CSegment and CCircle derive from it and inherit its data.
//
// Every tolerance here is a literal of the code, not a setting: 1e-10 unless it is an argument.
// Callers compare the location codes with 4 (below 4: on the line) and rely on each threshold,
// including where a squared distance meets 1e-10 and where the plain distance does.
//
// The point, line and plane queries are the inner loops of the suite's intersection code: they take
// their arguments by reference, allocate nothing, and the small ones are inline.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/SMat.h>

#include <cmath>

class CMFrame;
class Lineal2D;
class PCExBase;
class PlaneEqn;
struct ISection;

// The library's tri-state answer: yes, no, or undefined (the question has no single answer, as
// for the intersection of parallel lines).
enum ENik { eNikUndefined = -1, eNikNo = 0, eNikYes = 1 };

class ZNMT64_API CLineal {
 public:
  // Relative position of two lines.
  enum ELinePosn {
    eLinePosnUnknown = 0,  // not computed yet (what GetSegmentAtAngle is given to fill)
    eSkew = 1,             // not parallel, apart by more than the threshold
    eIntersecting = 2,     // not parallel, within the threshold
    eParallel = 3,         // parallel and distinct
    eCoincident = 4        // parallel, the other's origin on this line
  };
  // A point against the line. Values below 4 mean "on the line": callers compare with 4.
  enum ELocation { eOnLine = 3, eOffLine = 4, ePositiveSide = 5, eNegativeSide = 6 };

  // ---- construction and assignment ---------------------------------------------------------
  CLineal() : dir(1.0, 0.0, 0.0) {}
  CLineal(double x, double y, double z) : dir(x, y, z) { dir.Normalize(1e-10); }
  // A modifiable direction is normalised, a const one is taken as it stands, length and all;
  // callers choose the overload on purpose.
  explicit CLineal(SMat& d) : dir(d) { dir.Normalize(1e-10); }
  explicit CLineal(const SMat& d) : dir(d) {}
  // Through p1 towards p2.
  CLineal(const SMat& p1, const SMat& p2) : origin(p1), dir(p2 - p1) { dir.Normalize(1e-10); }
  // The tag is not copied by construction: a copy is a new line (tag -1). Assignment and Copy do
  // transfer it.
  CLineal(const CLineal& l) : origin(l.origin), dir(l.dir) {}
  CLineal& operator=(const CLineal& l) {
    Copy(l);
    return *this;
  }
  void Copy(const CLineal& l) {
    origin = l.origin;
    dir = l.dir;
    tag = l.tag;
  }

  // Origin and direction equal within 1e-10; the tag is ignored.
  bool operator==(const CLineal& l) const { return origin == l.origin && dir == l.dir; }
  // Scales origin and direction; the direction is not renormalised.
  CLineal& operator*=(double k) {
    origin *= k;
    dir *= k;
    return *this;
  }
  CLineal& operator+=(const CLineal& l) {
    origin += l.origin;
    dir += l.dir;
    Normalize();
    return *this;
  }
  CLineal& operator-=(const CLineal& l) {
    origin -= l.origin;
    dir -= l.dir;
    Normalize();
    return *this;
  }
  CLineal operator+(const CLineal& l) const {
    CLineal r(*this);
    return r += l;
  }
  // The origins are subtracted but the directions added: the mean direction of the two lines.
  // Callers rely on that asymmetry.
  CLineal operator-(const CLineal& l) const {
    CLineal r(*this);
    r.origin -= l.origin;
    r.dir += l.dir;
    r.Normalize();
    return r;
  }

  // ---- accessors and simple edits ----------------------------------------------------------
  void SetOrigin(double x, double y, double z) { origin.Set(x, y, z); }
  bool SetDirection(double x, double y, double z) { return dir.SetDirection(x, y, z); }
  void GetDirection(SMat& d) const { d = dir; }
  void Translate(double dx, double dy, double dz) { origin += SMat(dx, dy, dz); }
  // Moves the origin along the line by t.
  void Slide(double t) { origin += t * dir; }
  void Invalidate() { dir.SetAll(0.0); }
  bool IsValid() const { return dir.IsUnitary(1e-10); }
  bool Normalize() { return dir.Normalize(1e-10); }
  void AssertValid() const {}
  void GetPoint(double t, SMat& out) const { out = origin + t * dir; }
  // The point whose coordinate i (0-based) is value; false, out untouched, when the line runs
  // parallel to that coordinate plane (|dir[i]| < 1e-10) or i is not 0..2.
  bool GetPoint(double value, int i, SMat& out) const;

  // ---- point queries -------------------------------------------------------------------------
  // Parameter of the foot of p; the foot itself into *foot when given.
  double FindPtToLineProjection(const SMat& p, SMat* foot = nullptr) const {
    const double t = (p - origin).Prod(dir);
    if (foot != nullptr) GetPoint(t, *foot);
    return t;
  }
  double SquareDist(const SMat& p, SMat* foot = nullptr) const {
    SMat f;
    FindPtToLineProjection(p, &f);
    if (foot != nullptr) *foot = f;
    return p.DistSquare(f);
  }
  // Derived shapes measure to themselves: the plane overrides this, and DistConical and the plane
  // queries go through it.
  virtual double Dist(const SMat& p, SMat* foot = nullptr) const { return std::sqrt(SquareDist(p, foot)); }
  virtual bool Contains(const SMat& p, double tol = 1e-10) const { return dir.IsCollinear(p - origin, tol); }
  // A diagnostic print hook for derived shapes; a line prints nothing.
  virtual void Pr(bool) const {}
  // Last of the virtual slots (Dist, Contains, Pr, destructor): derived shapes share that layout.
  virtual ~CLineal() = default;

  ELocation GetPointLocation(const SMat& p) const {
    return (p - origin).IsCollinear(dir, 1e-10) ? eOnLine : eOffLine;
  }
  // Which side of the plane (line, ref) p lies on, by the orientation of (dir, p - origin, ref);
  // on the line or undecided, GetPointLocation's answer.
  ELocation GetPointLocn(const SMat& p, const SMat& ref) const {
    const double o = dir.GetOrientation(p - origin, ref);
    if (std::fabs(o) < 1e-10) return GetPointLocation(p);
    return o < 0.0 ? eNegativeSide : ePositiveSide;
  }
  // Angle between dir and p - origin; 1e307 when p is the origin or the line has no direction.
  double GetAngle(const SMat& p) const;
  // p1 on the line and p2 - p1 not pointing forward along it: the product is signed, so a vector
  // pointing backwards counts as normal, and tol is not used. Callers rely on both. True when
  // either point is missing.
  bool IsNormal(const SMat* p1, const SMat* p2, double tol = 1e-10) const;
  // Scales p about the line by k.
  void Homothety(double k, SMat& p) const {
    SMat foot;
    FindPtToLineProjection(p, &foot);
    p = foot + k * (p - foot);
  }
  // Turns p about the line by a (radians).
  void RotatePoint(SMat& p, double a) const {
    SMat v = p - origin;
    v.Rotate(dir, a);
    p = origin + v;
  }
  // dir := unit vector towards p. False when p is nearer than 1e-10, dir then holding the raw
  // difference; at exactly 1e-10 the difference is kept unscaled and the result is true.
  bool DirectTowards(const SMat& p);
  void DirectTowards(double x, double y, double z) { DirectTowards(SMat(x, y, z)); }

  // ---- line-line queries -----------------------------------------------------------------------
  // Parallel in either sense.
  bool IsCollinear(const CLineal& o) const { return dir.IsCollinear(o.dir, 1e-10); }
  bool IsCoinside(const CLineal& o) const { return IsCollinear(o) && GetPointLocation(o.origin) < 4; }
  bool IsComplanar(const CLineal& o) const { return (o.origin - origin).IsComplanar(dir, o.dir); }
  // Squared distance between the lines; p1 on this line, p2 on o, t[0] and t[1] their parameters
  // (not written for parallel lines), posn the position. The 1e-10 threshold of posn applies to
  // the squared distance.
  double SquareDist(const CLineal& o, SMat* p1 = nullptr, SMat* p2 = nullptr, double* t = nullptr,
                    ELinePosn* posn = nullptr) const;
  double Dist(const CLineal& o, SMat* p1 = nullptr, SMat* p2 = nullptr, double* t = nullptr,
              ELinePosn* posn = nullptr) const {
    return std::sqrt(SquareDist(o, p1, p2, t, posn));
  }
  // Threshold 1e-10 on the squared distance.
  ELinePosn GetLineOrientation(const CLineal& o) const;
  // Threshold 1e-10 on the plain distance, unlike GetLineOrientation: lines 5e-6 apart intersect
  // there and are skew here. For parallel lines nothing is written; otherwise p is the nearest
  // point on this line, t the two parameters and *dist the distance.
  ELinePosn Intesect(const CLineal& o, SMat& p, double* t = nullptr, double* dist = nullptr) const;

  // ---- cones ---------------------------------------------------------------------------------
  // Distance from the apex on this line of the cone of half-angle a about it whose surface passes
  // through p; *out receives that apex (at a right angle: the foot). A half-angle within 1e-10 of
  // 0 or pi gives 0 with *out = p.
  double DistConical(const SMat& p, double a, SMat* out = nullptr) const;
  // The pair of points p1 on this line and p2 on o seen from each other at the half-angle a, and
  // their distance; t receives their parameters. 1e307 for perpendicular or parallel lines, -1.0
  // when no pair exists for this angle.
  double DistConical(const CLineal& o, double a, SMat* p1 = nullptr, SMat* p2 = nullptr,
                     double* t = nullptr) const;
  // DistConical's point on this line, for skew lines only; posn is computed first when it comes
  // in as eLinePosnUnknown.
  bool GetSegmentAtAngle(const CLineal& o, double a, SMat* out, SMat* p2, ELinePosn& posn) const;

  // ---- the plane reading ---------------------------------------------------------------------
  // The plane through three points; false for collinear points (an exactly zero normal, which
  // is then what dir holds).
  bool PassPlane(const SMat& p1, const SMat& p2, const SMat& p3);
  // The plane through the line and p.
  bool PassPlane(const CLineal& line, const SMat& p);
  // The plane n·x = d; false, line untouched, when n has no component above 1e-10.
  bool PlaneFromEquation(const SMat& n, double d);
  bool PlaneFromEquation(const PlaneEqn& e);
  void GetPlaneEquation(PlaneEqn& e) const;
  bool PlaneIncident(const SMat& p) const { return dir.IsOrtho(p - origin, 1e-10); }
  // This as a line lies in plane: parallel to it and, with v = origin - plane.origin, v in the
  // plane or v normal to this line. Callers rely on the second alternative.
  bool IsIncident(const CLineal& plane) const {
    if (!dir.IsOrtho(plane.dir, 1e-10)) return false;
    const SMat v = origin - plane.origin;
    return v.IsOrtho(plane.dir, 1e-10) || v.IsOrtho(dir, 1e-10);
  }
  // Moves p into the plane; returns how far it was.
  double ProjectToPlane(SMat& p) const {
    SMat foot;
    FindPtToLineProjection(p, &foot);
    const SMat shift = origin - foot;
    p += shift;
    return shift.Norm();
  }
  // This line against the plane through q with normal n; false, nothing written, when they are
  // parallel within tol (on n·dir).
  bool IntersectPlane(const SMat& q, const SMat& n, SMat& out, double* t = nullptr, double tol = 1e-10) const {
    const double den = n.Prod(dir);
    if (std::fabs(den) < tol) return false;
    const double s = n.Prod(q - origin) / den;
    GetPoint(s, out);
    if (t != nullptr) *t = s;
    return true;
  }
  bool IntersectPlane(const CLineal& plane, SMat& out, double* t = nullptr, double tol = 1e-10) const {
    return IntersectPlane(plane.origin, plane.dir, out, t, tol);
  }
  // This line becomes the common line of planes a and b. False for parallel planes, and then the
  // line must not be read: anti-parallel normals leave it untouched, normals of equal sense leave a
  // non-finite origin and a zero dir.
  bool IntersectPlanes(const CLineal& a, const CLineal& b);

  // ---- transformations -----------------------------------------------------------------------
  // About coordinate axis 1, 2 or 3 through the global origin (SMat's senses).
  void Rotate(double angle, int axis) {
    origin.Rotate(angle, axis);
    dir.Rotate(angle, axis);
  }
  // The direction only.
  void Rotate(const SMat& axisDir, double angle) { dir.Rotate(axisDir, angle); }
  // About the line axis: the origin turns about it, the direction about its direction.
  void Rotate(const CLineal& axis, double angle) {
    const CLineal a(axis);  // axis may be this line
    a.RotatePoint(origin, angle);
    dir.Rotate(a.dir, angle);
  }

  // ---- two dimensions ------------------------------------------------------------------------
  // Coordinates i and j (0-based) of origin and dir; returns whether the 2D direction could be
  // normalised. False, out untouched, for an index beyond 2.
  bool Project(unsigned char i, unsigned char j, Lineal2D& out) const;
  // Into f's XY plane: the point by CMFrame::Project, the direction by f's axes.
  bool ProjectToPlane(const CMFrame& f, Lineal2D& out) const;

  // ---- persistence and diagnostics -----------------------------------------------------------
  // <Ll><Lc .../><Dr .../></Ll>, both directions through px. A missing element skips what is
  // nested after it (no "Lc": "Dr" is not tried). True when both parts were transferred.
  bool PersistXML(PCExBase& px);
  // An arrow len long from the origin, captioned "CLineal %08x"; null when the 2D module cannot
  // make one. The caller owns the returned reference.
  ISection* CreateDump(double len = 1.0) const;
  // Shows CreateDump(len) in a 3D stream of the 2D module's debugger.
  void Dp(double len = 1.0) const;

  SMat origin;
  SMat dir;
  int tag = -1;  // the caller's; only Copy and assignment transfer it
};
