// CCircle: a circle in space, or the disc it bounds. The inherited origin is the centre c and dir
// the unit axis, so CLineal's line and plane operations apply to the axis and to the circle's
// plane; those that a member here hides are reached through GetAxis().
//
// Point location codes (plain int): -1 inside the disc (in the plane), 0 on the circle, 1 outside
// or off the plane. The band around the circle is 1e-10 on the squared distance from the centre.
//
// The location, arc and nearest-point queries are inline and allocate nothing. Angles are radians;
// pi is 3.14159265358979 throughout, the value the suite's results were made with.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/CLineal.h>
#include <znmt64/CPlane.h>
#include <znmt64/DistContext.h>
#include <znmt64/SMat.h>
#include <znmt64/platform/CArray.h>

#include <cmath>

class CMFrame;
class CSegment;
struct ISection;

class ZNMT64_API CCircle : public CLineal {
 public:
  // Centre at the global origin, axis z, radius 1, a circle (not a disc).
  CCircle() { Construct(); }
  explicit CCircle(double r) : CCircle() { radius = r; }
  explicit CCircle(bool disk) : CCircle() { bDisk = disk; }
  // Through Copy, so unlike CLineal's copy constructor the tag comes along.
  CCircle(const CCircle& o) : CLineal() { Copy(o); }
  CCircle& operator=(const CCircle& o) {
    Copy(o);
    return *this;
  }

  // Radius 1, axis z, not a disc; the centre stays.
  void Construct() {
    radius = 1.0;
    dir.Set(0.0, 0.0, 1.0);
    bDisk = false;
  }
  void Copy(const CCircle& o) {
    CLineal::Copy(o);
    radius = o.radius;
    bDisk = o.bDisk;
  }
  void CopyMin(const CCircle& o) { Copy(o); }
  CLineal& GetAxis() { return *this; }
  const CLineal& GetAxis() const { return *this; }
  // The axis's distances (Dist(p) is the distance from the axis line), beside the arc length below.
  using CLineal::Dist;

  // ---- points on the circle ------------------------------------------------------------------
  // c + radius·d; d is not normalised.
  void GetPointInDirection(const SMat& d, SMat& out) const { out = origin + radius * d; }
  void GetAnyPoint(SMat& out) const {
    SMat d;
    dir.GetAnyOrthoVect(d);
    GetPointInDirection(d, out);
  }
  // p mirrored in the centre.
  void GetOppositePoint(const SMat& p, SMat& out) const { out = origin - (p - origin); }
  // The unit tangent at p, counter-clockwise about the axis; false for p on the axis.
  bool GetTangent(const SMat& p, SMat& out) const {
    out.CrossProd(dir, p - origin);
    return out.Normalize(0.0);
  }
  // Moves p along the circle by the arc length s, counter-clockwise about the axis for s > 0.
  void Translate(double s, SMat& p) const { RotatePoint(p, s / radius); }

  // ---- location ------------------------------------------------------------------------------
  // The plane is not looked at: p is read as if it lay in it.
  int GetPointLocationPlanar(const SMat& p) const {
    const double q = (p - origin).SquareNorm();
    const double r2 = radius * radius;
    if (q < r2 - 1e-10) return -1;
    if (q > r2 + 1e-10) return 1;
    return 0;
  }
  // 1 off the plane (farther than 1e-10), else as GetPointLocationPlanar.
  int GetPointLocation(const SMat& p) const { return PlaneIncident(p) ? GetPointLocationPlanar(p) : 1; }
  // Crossing when the circle reaches through pl, in the plane when it lies in it, else below or
  // above by its centre. A circle that only touches pl is below or above.
  CPlane::ELineLocn GetLocationWRT(const CPlane& pl) const;
  // By where this circle meets o's plane: 3 when it does not, or at no point of o's disc; 2 when
  // at one point of the disc (or the circle), 1 when at two. For a circle lying in o's plane
  // nothing is stored by IntersectPlane and the two points counted are the zero vectors it leaves:
  // the answer then says whether o's disc holds the global origin (1) or not (3). Kept so.
  int GetCircleLocation(const CCircle& o) const;

  // ---- arcs (p1 and p2 on the circle) ------------------------------------------------------------
  // The shorter arc length. A point at the centre throws SMat::Angle's CMatrExeption.
  double Dist(const SMat& p1, const SMat& p2) const { return radius * (p1 - origin).Angle(p2 - origin, 1e-10); }
  bool IsOpposite(const SMat& p1, const SMat& p2) const {
    if (p1 == p2) return false;
    return (p1 - origin).IsCollinear(p2 - origin, 1e-10);
  }
  // True for any two points not on one diameter, whichever way round they lie: the sense is not
  // tested. Callers rely on it.
  bool IsAfter(const SMat& p1, const SMat& p2) const { return dir.GetOrientation(p1 - origin, p2 - origin) != 0.0; }
  // The arc length from p1 to p2: 0 below 1e-10, half the circumference for opposite points, the
  // longer arc only where IsAfter fails; otherwise the shorter arc, whichever the sense.
  double GetTranslation(const SMat& p1, const SMat& p2) const;
  // p on the arc from a to b, by the three arc lengths, with the arguments in the order callers
  // have always passed them: |Dist(p, a) - Dist(p, b) - Dist(b, a)| < 1e-10.
  bool InsideArc(const SMat& p, const SMat& a, const SMat& b) const {
    return std::fabs(Dist(p, a) - Dist(p, b) - Dist(b, a)) < 1e-10;
  }

  // ---- nearest points ------------------------------------------------------------------------------
  // The point of the circle nearest p, and its distance. For p on the axis every point is as near:
  // the one in the direction of SMat::GetAnyOrthoVect. A radius below 1e-10 is the centre.
  double FindNearestPoint(const SMat& p, SMat& out) const {
    const SMat q = p;  // out may be p
    if (std::fabs(radius) < 1e-10) {
      out = origin;
      return origin.Dist(q);
    }
    SMat w = q - origin;
    w.ProjectToPlane(dir);
    if (!w.Normalize(1e-10)) dir.GetAnyOrthoVect(w);
    out = origin + radius * w;
    return out.Dist(q);
  }
  // The point of the disc nearest p, and its distance.
  double FindNearestDiscPoint(const SMat& p, SMat& out) const {
    const SMat q = p;  // out may be p
    out = q;
    ProjectToPlane(out);
    if (origin.Dist(out) <= radius) return q.Dist(out);
    return FindNearestPoint(q, out);
  }
  // Of the disc when bDisk, else of the circle.
  double DistPoint(const SMat& p, SMat* out = nullptr) const {
    SMat local;
    SMat& o = out != nullptr ? *out : local;
    return bDisk ? FindNearestDiscPoint(p, o) : FindNearestPoint(p, o);
  }
  // The same as a two-object query: the circle (or disc) is the first object, p the second.
  double DistPoint(const SMat& p, DistContext& ctx) const {
    SMat near;
    const double d = DistPoint(p, &near);
    ctx.Update(near, p, d);
    return d;
  }

  // ---- normals, frames, sampling -------------------------------------------------------------------
  // Whether q - p is normal at p: along the axis inside the disc, orthogonal to the tangent (or
  // shorter than 1e-10) on the circle, never outside. True when p or q is missing or the radius is
  // below 1e-10.
  bool IsNormal(const SMat* p, const SMat* q, double tol = 1e-10) const;
  // Origin c, Z the axis, X along ref made orthogonal to the axis (any perpendicular without ref),
  // Y = Z x X. False, f untouched, when ref lies along the axis.
  bool GetFrame(CMFrame& f, const SMat* ref = nullptr) const;
  // As many points as pts holds, equally spaced counter-clockwise from the X axis of
  // GetFrame(f, ref); ref, when given, receives that axis. No points: true, nothing done.
  bool GetSampling(CArray<SMat, SMat>& pts, SMat* ref = nullptr) const;
  // The same n points into out[k].origin, with the outward unit normals of the circle in
  // out[k].dir.
  bool GetSampling(int n, SMat* ref, CLineal* out) const;
  // Centre and axis of the circle through the three points; false for collinear ones, the circle
  // untouched. The radius is not set: callers set it themselves (as the distance from the centre
  // to one of the points).
  bool DefineFromThreePoints(const SMat pts[3]);

  // ---- intersections ---------------------------------------------------------------------------------
  // With the plane (plane.origin, unit normal plane.dir): 2 points, 1 tangent point, 0, or 3 when
  // the circle lies in the plane. The points go to pts[0] and pts[1]. With no intersection and the
  // planes not parallel, pts[0] receives the offset from the centre to the planes' common line;
  // for parallel planes nothing is written.
  unsigned char IntersectPlane(const CLineal& plane, SMat pts[2]) const;
  // p1 and p2 from the points above, both copied whatever the count (an entry not computed is
  // (0, 0, 0)); false, both untouched, when there are none.
  bool IntersectPlane(const CLineal& plane, SMat& p1, SMat& p2) const;
  // 1 for coplanar circles. Otherwise the caller's p1 and p2 are tested against o (not this
  // circle's intersection points, which are computed and dropped): 2 when both lie on o, 0 when
  // neither, 1 when one does, and then p1 holds it. Callers pass IntersectPlane's points in and
  // rely on that.
  int Intersect(const CCircle& o, SMat& p1, SMat& p2) const;
  // For circles taken to share the centre c: 0 unless the radii agree within tol, 1 for a radius
  // below tol (pts untouched), 3 for axes equal or opposite within 1000·tol, else the two common
  // points c ± radius·(dir x o.dir) normalised.
  unsigned char IntersectCocentric(const CCircle& o, SMat pts[2], double tol = 1e-10) const;

  // ---- distances -------------------------------------------------------------------------------------
  // Between the circle (or the disc: the distance is the same) and the plane: 0 when they meet,
  // with p1 = a common point. p1 on the circle, p2 its foot on the plane. A circle parallel to the
  // plane is as near everywhere: p1 is then the disc's centre, or the circle's GetAnyPoint.
  double DistPlane(const CLineal& plane, SMat* p1 = nullptr, SMat* p2 = nullptr) const;
  // The queries below run the circle distance solver (CircleSolver.h). Each writes p1 on this
  // circle and p2 on the other object when they are given, also when the nearest pair is not
  // unique (one of the pairs is written then). A circle without an axis, or a line without a
  // direction, gives 1e307 and writes nothing. Radii count by their absolute value.
  //
  // The conical distance of CLineal::DistConical(const SMat&, ...) from line, with angle its
  // half-angle, to the nearest point of this circle (of the disc when bDisk): that point also
  // minimises the conical distance, which is the plain distance over sin(angle). The pair offered
  // to ctx is that point (first object) and the cone's apex on line (second object); when ctx
  // takes it, ctx->nCount becomes 1 for a unique nearest point and 2 otherwise. ctx's limit is
  // not used: the search costs the same either way.
  double DistConical(const CLineal& line, double angle, DistContext* ctx) const;
  // The two objects as their bDisk flags say: circle to circle as DistCircle, disc to disc as
  // DistDisk, and a circle to a disc by the circle's points alone. o.DistCircles(*this) gives the
  // same distance, to rounding.
  double DistCircles(const CCircle& o, SMat* p1, SMat* p2) const;
  // To line, read as an unbounded line; of the disc when disk, else of the circle (bDisk is not
  // looked at). *found is true when the nearest pair is unique, false when there are more (a line
  // crossing the circle twice, one over the centre parallel to the plane, the axis itself, a line
  // lying over a chord of the disc) or on failure. A line through the disc gives 0 at the point
  // where it passes.
  double FindNearestPoints(const CLineal& line, bool* found, SMat* p1, SMat* p2, bool disk) const;
  // Circle to circle, both read as curves, whatever their bDisk flags. Circles that cross give
  // 0 (to rounding); for coaxial ones, all of whose points are as near, p1 is the point of this
  // circle towards the coordinate axis least along its axis.
  double DistCircle(const CCircle& o, SMat* p1, SMat* p2) const;
  // Disc to disc, whatever the flags: 0 (to rounding) when they meet, otherwise the nearer of
  // this rim to o's disc and o's rim to this disc.
  double DistDisk(const CCircle& o, SMat* p1, SMat* p2) const;
  // This disc to the segment: 0 where the segment passes through the disc, otherwise the nearest
  // of the rim to the segment and the segment's ends to the disc.
  double DistDisk(const CSegment& s, SMat* p1, SMat* p2) const;
  // False when the segment passes farther than radius + d from the centre; otherwise whether
  // DistDisk(s) is below d.
  bool IsCloserThan(const CSegment& s, double d) const;
  // False when the discs are farther apart than d by their bounding spheres; otherwise whether
  // DistDisk(o) is below d.
  bool IsCloserThan(const CCircle& o, double d) const {
    if (origin.Dist(o.origin) > radius + o.radius + d) return false;
    return d > DistDisk(o, nullptr, nullptr);
  }

  // ---- debug display ---------------------------------------------------------------------------------
  // The circle as a closed polyline, captioned "CCircle %08x"; null when the 2D module cannot make
  // one. The caller owns the returned reference.
  ISection* CreateDump() const;
  // Shows CreateDump() in a 3D stream of the 2D module's debugger.
  void Dp() const;

  double radius;
  bool bDisk;  // the filled disc: DistPoint measures to the disc
};
