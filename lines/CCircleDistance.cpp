// The distance queries of CCircle that run the circle distance solver.
#include <znmt64/CCircle.h>
#include <znmt64/CSegment.h>
#include <znmt64/CircleSolver.h>

#include <cmath>

namespace {

void Put(SMat* p1, SMat* p2, const SMat& a, const SMat& b) {
  if (p1 != nullptr) *p1 = a;
  if (p2 != nullptr) *p2 = b;
}

// a's points against b (b's disc when disk); the point on a goes to pa, the one on b to pb.
double RimTo(const CCircle& a, const CCircle& b, bool disk, SMat* pa, SMat* pb) {
  CircleSolver s(a);
  s.SetCircle(b, disk);
  return s.Solve(pa, pb);
}

// Where l (unit direction) passes through c's disc, and its parameter there; false when it runs
// parallel to the plane or meets it outside the disc.
bool PierceDisc(const CCircle& c, const CLineal& l, SMat& x, double& t) {
  return l.IntersectPlane(c.origin, c.dir, x, &t) && c.origin.Dist(x) <= std::fabs(c.radius);
}

}  // namespace

double CCircle::DistCircle(const CCircle& o, SMat* p1, SMat* p2) const { return RimTo(*this, o, false, p1, p2); }

double CCircle::DistDisk(const CCircle& o, SMat* p1, SMat* p2) const {
  // Apart, two discs come nearest at a rim point of one of them: a pair inside both would have to
  // be normal to both planes, so the planes are parallel, and the overlap of the discs' shadows
  // is bounded by rim arcs. Discs that meet have a rim point of one in the other, so their 0
  // comes out of the same two searches.
  SMat a1;
  SMat a2;
  SMat b1;
  SMat b2;
  const double d1 = RimTo(*this, o, true, &a1, &a2);
  if (d1 >= 1e307) return 1e307;
  const double d2 = RimTo(o, *this, true, &b2, &b1);
  if (d2 < d1) {
    Put(p1, p2, b1, b2);
    return d2;
  }
  Put(p1, p2, a1, a2);
  return d1;
}

double CCircle::DistCircles(const CCircle& o, SMat* p1, SMat* p2) const {
  if (bDisk && o.bDisk) return DistDisk(o, p1, p2);
  if (o.bDisk) return RimTo(*this, o, true, p1, p2);
  if (bDisk) return RimTo(o, *this, true, p2, p1);
  return DistCircle(o, p1, p2);
}

double CCircle::FindNearestPoints(const CLineal& line, bool* found, SMat* p1, SMat* p2, bool disk) const {
  if (found != nullptr) *found = false;
  CircleSolver s(*this);
  s.SetLine(line);
  if (!s.IsValid()) return 1e307;
  if (disk) {
    CLineal l(line);
    l.Normalize();
    SMat x;
    double t = 0.0;
    if (PierceDisc(*this, l, x, t)) {
      Put(p1, p2, x, x);
      if (found != nullptr) *found = true;
      return 0.0;
    }
    // Otherwise the disc comes nearest at its rim: the line's distance has no minimum inside the
    // disc except where it pierces it, or along a whole chord when parallel to the plane, and
    // the chord ends on the rim. The rim search reports the chord's two ends as not unique.
  }
  int count = 0;
  const double d = s.Solve(p1, p2, &count);
  if (found != nullptr) *found = count == 1;
  return d;
}

double CCircle::DistConical(const CLineal& line, double angle, DistContext* ctx) const {
  SMat p;
  bool unique = false;
  if (FindNearestPoints(line, &unique, &p, nullptr, bDisk) >= 1e307) return 1e307;
  // The line's own point distance, not an override of a class derived from it.
  CLineal axis(line);
  axis.Normalize();
  SMat apex;
  const double r = axis.DistConical(p, angle, &apex);
  if (ctx != nullptr) {
    if (r < ctx->dDist) ctx->nCount = unique ? 1 : 2;
    ctx->Update(p, apex, r);
  }
  return r;
}

double CCircle::DistDisk(const CSegment& s, SMat* p1, SMat* p2) const {
  CircleSolver rim(*this);
  rim.SetSegment(s);
  if (!rim.IsValid()) return 1e307;
  SMat x;
  double t = 0.0;
  if (s.length >= 1e-10 && PierceDisc(*this, s, x, t) && 0.0 <= t && t <= s.length) {
    Put(p1, p2, x, x);
    return 0.0;
  }
  // Short of piercing, the nearest pair has its disc point on the rim or its segment point at an
  // end: a pair inside both would be normal to the plane and to the segment, so the segment runs
  // parallel to the plane, and the part of it over the disc ends at an end or over the rim.
  SMat a;
  SMat b;
  double d = rim.Solve(&a, &b);
  SMat ends[2] = {s.origin, SMat()};
  s.GetQ(ends[1]);
  for (const SMat& e : ends) {
    SMat f;
    const double de = FindNearestDiscPoint(e, f);
    if (de < d) {
      d = de;
      a = f;
      b = e;
    }
  }
  Put(p1, p2, a, b);
  return d;
}

bool CCircle::IsCloserThan(const CSegment& s, double d) const {
  double dc = 0.0;
  s.FindNearestPoint(origin, nullptr, &dc);
  if (dc > radius + d) return false;
  return d > DistDisk(s, nullptr, nullptr);
}
