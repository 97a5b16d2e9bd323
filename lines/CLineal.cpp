// The parts of CLineal that are not inline: line-line and cone queries, the plane reading's
// constructions, 2D projections, XML and the debug drawing.
#include <znmt64/CLineal.h>
#include <znmt64/CMFrame.h>
#include <znmt64/CPlane.h>
#include <znmt64/Mat.h>

#include <znag64/AnGeoState.h>
#include <znag64/Point2D.h>
#include <znbl64/PCExBase.h>

#include "algebra/DebugSection.h"

#include <cstdint>
#include <cstdio>
#include <numbers>

namespace {
constexpr double kPi = std::numbers::pi;
constexpr double kHalfPi = std::numbers::pi / 2.0;
}  // namespace

// ---- point queries -----------------------------------------------------------------------------

bool CLineal::GetPoint(double value, int i, SMat& out) const {
  if (i < 0 || i > 2 || std::fabs(dir[i]) < 1e-10) return false;
  const int j = (i + 1) % 3;
  const int k = (i + 2) % 3;
  const double s = value - origin[i];
  SMat r;  // out may be this line's origin
  r[i] = value;
  r[j] = origin[j] + s * dir[j] / dir[i];
  r[k] = origin[k] + s * dir[k] / dir[i];
  out = r;
  return true;
}

double CLineal::GetAngle(const SMat& p) const {
  const SMat v = p - origin;
  // A line without a direction makes no angle either: undefined, rather than SMat::Angle's throw.
  if (v.IsZero(1e-10) || dir.Norm() < 1e-10) return 1e307;
  return dir.Angle(v, 1e-10);
}

bool CLineal::IsNormal(const SMat* p1, const SMat* p2, double) const {
  if (p1 == nullptr || p2 == nullptr) return true;
  if (GetPointLocation(*p1) != eOnLine) return false;
  return (*p2 - *p1).Prod(dir) < 1e-10;
}

bool CLineal::DirectTowards(const SMat& p) {
  dir = p - origin;
  const double n = dir.Norm();
  if (n < 1e-10) return false;
  if (n > 1e-10) dir /= n;
  return true;
}

// ---- line-line queries -------------------------------------------------------------------------

double CLineal::SquareDist(const CLineal& o, SMat* p1, SMat* p2, double* t, ELinePosn* posn) const {
  // Results go through locals: a caller may point p1 or p2 at one of the lines' own points.
  SMat a = p1 != nullptr ? *p1 : SMat();
  SMat b;
  double d2;
  SMat c;
  c.CrossProd(dir, o.dir);
  if (c == 0.0) {
    a = origin;
    o.FindPtToLineProjection(origin, &b);
    d2 = b.DistSquare(origin);
    if (posn != nullptr) *posn = d2 > 1e-10 ? eParallel : eCoincident;
  } else {
    // The plane through o parallel to the common normal c cuts this line at its nearest point.
    SMat n;
    n.CrossProd(o.dir, c);
    n.Normalize(0.0);
    double s = 0.0;
    if (IntersectPlane(o.origin, n, a, &s, 1e-10) && t != nullptr) t[0] = s;
    const double s1 = o.FindPtToLineProjection(a, &b);
    if (t != nullptr) t[1] = s1;
    d2 = a.DistSquare(b);
    if (posn != nullptr) *posn = d2 > 1e-10 ? eSkew : eIntersecting;
  }
  if (p1 != nullptr) *p1 = a;
  if (p2 != nullptr) *p2 = b;
  return d2;
}

CLineal::ELinePosn CLineal::GetLineOrientation(const CLineal& o) const {
  if (IsCollinear(o)) return GetPointLocation(o.origin) < 4 ? eCoincident : eParallel;
  return SquareDist(o) > 1e-10 ? eSkew : eIntersecting;
}

CLineal::ELinePosn CLineal::Intesect(const CLineal& o, SMat& p, double* t, double* dist) const {
  if (IsCollinear(o)) return GetPointLocation(o.origin) < 4 ? eCoincident : eParallel;
  const double d = std::sqrt(SquareDist(o, &p, nullptr, t, nullptr));
  if (dist != nullptr) *dist = d;
  return d > 1e-10 ? eSkew : eIntersecting;
}

// ---- cones -------------------------------------------------------------------------------------

double CLineal::DistConical(const SMat& p, double a, SMat* out) const {
  if (a > kPi - 1e-10 || a < 1e-10) {
    if (out != nullptr) *out = p;
    return 0.0;
  }
  const double d = Dist(p, out);
  if (std::fabs(kHalfPi - a) < 1e-10) return d;
  // From the foot back along the line to the apex, d / tan(a) away.
  if (out != nullptr) *out = *out - (d * std::tan(kHalfPi - a)) * dir;
  return d / std::sin(a);
}

double CLineal::DistConical(const CLineal& o, double a, SMat* p1, SMat* p2, double* t) const {
  SMat q1;
  SMat q2;
  double s[2] = {0.0, 0.0};  // parallel lines leave the parameters unwritten
  const double d = Dist(o, &q1, &q2, s, nullptr);
  // A line without a direction (Invalidate, a failed PassPlane) makes no angle: the value is
  // undefined, rather than SMat::Angle's throw, which no caller of a line query catches.
  if (dir.Norm() < 1e-10 || o.dir.Norm() < 1e-10) return 1e307;
  const double phi = dir.Angle(o.dir, 1e-10);
  if (std::fabs(phi - kHalfPi) < 1e-10) return 1e307;
  const double acute = phi > kHalfPi - 1e-10 ? kPi - phi : phi;
  // The test is on phi itself: anti-parallel lines pass it and end in the next one.
  if (phi <= 1e-10) return 1e307;
  if (kHalfPi - acute + 1e-10 > a) return -1.0;
  const double sinPhi = std::sin(phi);
  const double cosA = std::cos(a);
  const double h = d * std::fabs(cosA / (sinPhi * std::sqrt(sinPhi * sinPhi - cosA * cosA)));
  const double h2 = h * std::cos(phi);
  const SMat r1 = q1 + h * dir;
  const SMat r2 = q2 + h2 * o.dir;
  if (p1 != nullptr) *p1 = r1;
  if (p2 != nullptr) *p2 = r2;
  if (t != nullptr) {
    t[0] = s[0] + h;
    t[1] = s[1] + h2;
  }
  return r2.Dist(r1);
}

bool CLineal::GetSegmentAtAngle(const CLineal& o, double a, SMat* out, SMat* p2, ELinePosn& posn) const {
  if (posn == eLinePosnUnknown) posn = GetLineOrientation(o);
  if (posn != eSkew) return false;
  SMat p1;
  DistConical(o, a, &p1, p2, nullptr);
  if (out != nullptr) *out = p1;
  return true;
}

// ---- the plane reading -------------------------------------------------------------------------

bool CLineal::PassPlane(const SMat& p1, const SMat& p2, const SMat& p3) {
  SMat n;
  n.CrossProd(p2 - p1, p3 - p1);
  origin = p1;
  dir = n;
  return dir.Normalize(0.0);
}

bool CLineal::PassPlane(const CLineal& line, const SMat& p) {
  const SMat a = line.origin;
  SMat b;
  line.GetPoint(1.0, b);
  return PassPlane(a, b, p);
}

bool CLineal::PlaneFromEquation(const SMat& n, double d) {
  // The 1x3 system n·x = d over the vectors' own doubles: nothing is allocated.
  Mat row(1, 3, false);
  row.AttachStorage(const_cast<double*>(n.GetBuffer()));  // only read
  SMat x;
  Mat sol(3, 1, false);
  sol.AttachStorage(x.GetBuffer());
  if (!row.GetAnySolution(d, sol)) return false;
  origin = x;
  dir = n;
  return dir.Normalize(1e-10);
}

bool CLineal::PlaneFromEquation(const PlaneEqn& e) { return PlaneFromEquation(SMat(e.a, e.b, e.c), -e.d); }

void CLineal::GetPlaneEquation(PlaneEqn& e) const {
  e.a = dir.x;
  e.b = dir.y;
  e.c = dir.z;
  e.d = -dir.Prod(origin);
}

bool CLineal::IntersectPlanes(const CLineal& a, const CLineal& b) {
  // The common line's point is x1·a.dir + x2·b.dir, from the 2x2 system of the two plane
  // equations; [[1, m], [m, 1]] / (1 - m²) is its inverse.
  const double b1 = a.origin.Prod(a.dir);
  const double b2 = b.origin.Prod(b.dir);
  const double m = -a.dir.Prod(b.dir);
  if (1.0 - m < 1e-10) return false;
  // Normals of equal sense (m = -1) pass the test above and divide by zero here: the origin comes
  // out non-finite and the zero direction below makes the result false. Callers take false as "no
  // common line" and never read the line then.
  const double f = 1.0 / (1.0 - m * m);
  const double x1 = (b1 + m * b2) * f;
  const double x2 = (m * b1 + b2) * f;
  SMat d;
  d.CrossProd(a.dir, b.dir);
  origin = x1 * a.dir + x2 * b.dir;  // a or b may be this line: d is already taken
  dir = d;
  return dir.Normalize(0.0);
}

// ---- two dimensions ------------------------------------------------------------------------------

bool CLineal::Project(unsigned char i, unsigned char j, Lineal2D& out) const {
  if (i > 2 || j > 2) return false;
  out.origin = C2DPoint(origin[i], origin[j]);
  out.dir = C2DPoint(dir[i], dir[j]);
  return out.dir.Normalize();
}

bool CLineal::ProjectToPlane(const CMFrame& f, Lineal2D& out) const {
  f.Project(origin, out.origin);
  SMat v = dir;
  f.ToLocalVector(v);
  out.dir = C2DPoint(v.x, v.y);
  return out.dir.Normalize();
}

// ---- persistence and diagnostics -----------------------------------------------------------------

bool CLineal::PersistXML(PCExBase& px) {
  if (!px.PersistElement("Ll", true)) return false;
  bool done = false;
  if (px.PersistElement("Lc", true)) {
    done = origin.PersistXML(px, nullptr);
    px.PopElement(false);
    // Only tried when "Lc" was there: a reader of an incomplete element gets nothing more.
    if (px.PersistElement("Dr", true)) {
      done = dir.PersistXML(px, nullptr) && done;
      px.PopElement(false);
    } else {
      done = false;
    }
  }
  px.PopElement(false);
  return done;
}

ISection* CLineal::CreateDump(double len) const {
  // The shaft from the origin to the tip, then the head: both barbs at the absolute parameter 0.9
  // (not 0.9·len) and not spread across the line, so vertices 2 and 3 coincide. The drawing has
  // always been made so; readers of the section count on its four vertices.
  SMat pts[4];
  pts[0] = origin;
  GetPoint(len, pts[1]);
  GetPoint(0.9, pts[2]);
  pts[3] = pts[2];
  static constexpr LONG kIdx[] = {0, 1, 2, 1, 3};
  char caption[64];
  FormatDebugCaption(caption, "CLineal %08x", this);
  return MakeDebugSection(pts, 4, kIdx, 5, caption);
}

void CLineal::Dp(double len) const { ShowDebugSection(CreateDump(len)); }

