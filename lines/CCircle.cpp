#include <znmt64/CCircle.h>
#include <znmt64/CMFrame.h>
#include <znmt64/Triangle3D.h>

#include <znag64/Circle2D.h>

#include <cmath>

#include "algebra/DebugSection.h"

namespace {

constexpr double kPi = 3.14159265358979;
constexpr double kHalfPi = 1.570796326794895;

// n points equally spaced counter-clockwise from the X axis of c.GetFrame(f, ref), handed to
// sink(k, f, cos a, sin a). The angle grows by repeated addition of the step, as the suite's
// samplings always have. ref, when given, receives the X axis.
template <class Sink>
bool Sample(const CCircle& c, int n, SMat* ref, Sink&& sink) {
  if (n < 1) return true;
  CMFrame f(static_cast<unsigned char>(0));
  if (!c.GetFrame(f, ref)) return false;
  if (ref != nullptr) *ref = f.axes[0];
  const double step = 2.0 * kPi / n;
  double a = 0.0;
  for (int k = 0; k < n; ++k, a += step) sink(k, f, std::cos(a), std::sin(a));
  return true;
}

SMat RimPoint(const CCircle& c, const CMFrame& f, double cosA, double sinA) {
  SMat p(c.radius * cosA, c.radius * sinA, 0.0);
  f.ToGlobal(p);
  return p;
}

}  // namespace

// ---- location --------------------------------------------------------------------------------------

CPlane::ELineLocn CCircle::GetLocationWRT(const CPlane& pl) const {
  // A plane without a normal (a failed PassPlane) or a circle without an axis has no angle to the
  // other: undefined, rather than SMat::Angle's throw, which no caller of a location query catches.
  if (pl.dir.Norm() < 1e-10 || dir.Norm() < 1e-10) return CPlane::eLineUndefined;
  double phi = pl.dir.Angle(dir, 1e-10);
  if (phi > kHalfPi) phi = kPi - phi;
  const double s = pl.FindPtToLineProjection(origin);
  // radius·sin(phi): how far the tilted circle reaches out of its centre's level.
  if (std::fabs(phi) > 1e-10 && std::fabs(s) < radius * std::cos(kHalfPi - phi) - 1e-10) return CPlane::eLineCrossing;
  const CPlane::ELocn loc = pl.GetPointLocation(origin, 1e-10);
  if (std::fabs(phi) < 1e-10 && loc == CPlane::eOnPlane) return CPlane::eLineInPlane;
  return loc == CPlane::eNegative ? CPlane::eLineBelow : CPlane::eLineAbove;
}

int CCircle::GetCircleLocation(const CCircle& o) const {
  SMat pts[2];
  const int n = IntersectPlane(o, pts);
  if (n == 0) return 3;
  int inside = 0;
  for (int k = 0; k < n && k < 2; ++k)
    if (o.GetPointLocation(pts[k]) < 1) ++inside;
  return inside == 2 ? 1 : inside == 1 ? 2 : 3;
}

// ---- arcs ----------------------------------------------------------------------------------------------

double CCircle::GetTranslation(const SMat& p1, const SMat& p2) const {
  const double d = Dist(p1, p2);
  if (d < 1e-10) return 0.0;
  if (IsOpposite(p1, p2)) return kPi * radius;
  if (!IsAfter(p1, p2)) return 6.28318530717958 * radius - d;
  return d;
}

// ---- normals, frames, sampling -------------------------------------------------------------------

bool CCircle::IsNormal(const SMat* p, const SMat* q, double tol) const {
  if (p == nullptr || q == nullptr || radius < 1e-10) return true;
  const int loc = GetPointLocation(*p);
  if (loc == 1) return false;
  const SMat v = *q - *p;
  if (loc == -1) return dir.IsCollinear(v, tol);
  const double vv = v.SquareNorm();
  if (vv < 1e-10 && std::sqrt(vv) < 1e-10) return true;
  SMat t;
  GetTangent(*p, t);
  return v.IsOrtho(t, tol);
}

bool CCircle::GetFrame(CMFrame& f, const SMat* ref) const {
  SMat x;
  bool haveX = false;
  if (ref != nullptr) {
    x = *ref;
    if (!x.MakeOrtho(dir)) return false;
    haveX = x.Normalize(1e-10);
  }
  if (!haveX) dir.GetAnyOrthoVect(x);
  SMat z = dir;
  z.Normalize(1e-10);
  f.origin = origin;
  f.axes[0] = x;
  f.axes[2] = z;
  f.Init(2, 0, true);
  return true;
}

bool CCircle::GetSampling(CArray<SMat, SMat>& pts, SMat* ref) const {
  return Sample(*this, static_cast<int>(pts.GetSize()), ref, [&](int k, const CMFrame& f, double c, double s) {
    pts[k] = RimPoint(*this, f, c, s);
  });
}

bool CCircle::GetSampling(int n, SMat* ref, CLineal* out) const {
  return Sample(*this, n, ref, [&](int k, const CMFrame& f, double c, double s) {
    out[k].origin = RimPoint(*this, f, c, s);
    SMat d(c, s, 0.0);
    d.Normalize(1e-10);
    f.ToGlobalVector(d);
    out[k].dir = d;
  });
}

bool CCircle::DefineFromThreePoints(const SMat pts[3]) {
  const Triangle3D tri(pts);
  CMFrame f(static_cast<unsigned char>(0));
  if (!tri.GetFrame(f, false)) return false;
  C2DPoint flat[3];
  for (int k = 0; k < 3; ++k) f.Project(pts[k], flat[k], nullptr);
  Circle2D c2;
  if (!c2.DefineFromThreePoints(flat)) return false;
  dir = f.axes[2];
  f.To3D(c2.center, origin);
  return true;
}

// ---- intersections ---------------------------------------------------------------------------------

unsigned char CCircle::IntersectPlane(const CLineal& plane, SMat pts[2]) const {
  CLineal common;
  if (!common.IntersectPlanes(*this, plane))
    return CPlane(plane).GetPointLocation(origin, 1e-10) == CPlane::eOnPlane ? 3 : 0;
  SMat foot;
  common.FindPtToLineProjection(origin, &foot);
  pts[0] = foot - origin;
  const double q = pts[0].SquareNorm();
  const double r2 = radius * radius;
  if (q > r2) return 0;
  pts[0] = foot;
  const double h = std::sqrt(r2 - q);
  if (h < 1e-10) return 1;
  pts[0] = foot + h * common.dir;
  pts[1] = foot - h * common.dir;
  return 2;
}

bool CCircle::IntersectPlane(const CLineal& plane, SMat& p1, SMat& p2) const {
  SMat pts[2];
  if (IntersectPlane(plane, pts) == 0) return false;
  p1 = pts[0];
  p2 = pts[1];
  return true;
}

int CCircle::Intersect(const CCircle& o, SMat& p1, SMat& p2) const {
  SMat pts[2];
  if (IntersectPlane(o, pts) > 2) return 1;
  const bool onFirst = o.GetPointLocation(p1) == 0;
  const bool onSecond = o.GetPointLocation(p2) == 0;
  if (onFirst && onSecond) return 2;
  if (!onFirst && !onSecond) return 0;
  if (onSecond) p1 = p2;
  return 1;
}

unsigned char CCircle::IntersectCocentric(const CCircle& o, SMat pts[2], double tol) const {
  if (std::fabs(radius - o.radius) >= tol) return 0;
  if (std::fabs(radius) < tol) return 1;
  if (dir.IsSame(o.dir, 1000.0 * tol, true)) return 3;
  SMat v;
  v.CrossProd(dir, o.dir);
  if (!v.SetLength(radius)) return 3;
  pts[0] = origin + v;
  pts[1] = origin - v;
  return 2;
}

// ---- distances -------------------------------------------------------------------------------------

double CCircle::DistPlane(const CLineal& plane, SMat* p1, SMat* p2) const {
  const CPlane pl(plane);
  const double s = pl.FindPtToLineProjection(origin);  // signed: the plane's normal is unit
  // The plane's normal within the circle's plane: the way the circle comes nearest to the plane,
  // radius·sin(angle between the normals) nearer than its centre.
  SMat w = pl.dir;
  w.ProjectToPlane(dir);
  const double reach = std::fabs(radius) * w.Norm();
  SMat near;
  double d = std::fabs(s);
  if (!w.Normalize(1e-10)) {
    if (bDisk)
      near = origin;
    else
      GetAnyPoint(near);
  } else {
    near = origin + (s > 0.0 ? -radius : radius) * w;
    d -= reach;
    if (d <= 0.0) {
      d = 0.0;
      SMat pts[2];
      const unsigned char n = IntersectPlane(plane, pts);
      if (n == 1 || n == 2) near = pts[0];
    }
  }
  SMat foot;
  pl.Dist(near, &foot);
  if (p1 != nullptr) *p1 = near;
  if (p2 != nullptr) *p2 = foot;
  return d;
}

// ---- debug display ---------------------------------------------------------------------------------

ISection* CCircle::CreateDump() const {
  constexpr int kN = 48;
  SMat rim[kN];
  Sample(*this, kN, nullptr, [&](int k, const CMFrame& f, double c, double s) { rim[k] = RimPoint(*this, f, c, s); });
  LONG outline[kN + 1];
  for (int k = 0; k < kN; ++k) outline[k] = k;
  outline[kN] = 0;
  char caption[64];
  FormatDebugCaption(caption, "CCircle %08x", this);
  return MakeDebugSection(rim, kN, outline, kN + 1, caption);
}

void CCircle::Dp() const { ShowDebugSection(CreateDump()); }
