#include <znmt64/CLineal.h>
#include <znmt64/CMFrame.h>
#include <znmt64/Triangle3D.h>

#include <znbl64/Range.h>

#include <algorithm>
#include <cmath>

#include "algebra/DebugSection.h"

Triangle3D::~Triangle3D() = default;

// ---- measures -------------------------------------------------------------------------------------

double Triangle3D::GetShortestSide() const {
  return std::min({m_p[0].Dist(m_p[1]), m_p[0].Dist(m_p[2]), m_p[2].Dist(m_p[1])});
}

double Triangle3D::GetSize() const {
  return std::max({m_p[0].Dist(m_p[1]), m_p[0].Dist(m_p[2]), m_p[2].Dist(m_p[1])});
}

double Triangle3D::GetDistVertex(const SMat& p, int* pInd) const {
  double best = 1e307;
  int at = -1;
  for (int k = 0; k < 3; ++k) {
    const double d = p.Dist(m_p[k]);
    if (d < best) {
      best = d;
      at = k;
    }
  }
  if (pInd != nullptr) *pInd = at;
  return best;
}

double Triangle3D::GetCornerAngle(int i) const {
  if (i < 0 || i >= 3) return -9.42477796076938;  // -3pi: no angle has it
  SMat a, b;
  GetSides(i, a, b);
  // A side shorter than 1e-10 makes no angle at the corner: the same marker, rather than
  // SMat::Angle's throw, which callers of a triangle never expect.
  if (a.Norm() < 1e-10 || b.Norm() < 1e-10) return -9.42477796076938;
  return a.Angle(b, 1e-10);
}

void Triangle3D::GetAxisProjection(unsigned char axis, RangeR1& r) const {
  if (axis >= 3) return;
  const auto [lo, hi] = std::minmax({m_p[0][axis], m_p[1][axis], m_p[2][axis]});
  r.Set(lo, hi);
}

// ---- normal, frame, plane ----------------------------------------------------------------------

bool Triangle3D::GetNormal(SMat& n, double tol) const {
  if (GetNormalMin(n, tol)) return true;
  // The raw product of a small triangle scales with the square of its size; the product of its
  // unit sides does not.
  SMat a, b;
  GetSides(a, b);
  if (!a.Normalize(tol) || !b.Normalize(tol)) return false;
  n.CrossProd(a, b);
  return n.Normalize(0.0);
}

bool Triangle3D::GetNormal(CLineal& l) const {
  SMat a, b;
  GetSides(a, b);
  l.origin = m_p[0];
  l.dir.CrossProd(a, b);
  return l.dir.Normalize(0.0);
}

bool Triangle3D::GetFrame(CMFrame& f, bool bIgnoreNormal) const {
  SMat x = m_p[1] - m_p[0];
  if (!x.Normalize(1e-10)) return false;
  SMat y, z;
  if (!bIgnoreNormal && vNormal != 0.0) {
    z = vNormal;
    z.Normalize(1e-10);
    y.CrossProd(z, x);
    y.Normalize(1e-10);
  } else {
    y = m_p[2] - m_p[0];
    if (!y.MakeOrtho(x) || !y.Normalize(1e-10)) return false;
    z.CrossProd(x, y);
  }
  f.origin = m_p[0];
  f.axes[0] = x;
  f.axes[1] = y;
  f.axes[2] = z;
  return true;
}

bool Triangle3D::GetPlane(CPlane& pl, const double* pNormal) const {
  pl.origin = m_p[0];
  if (pNormal != nullptr) {
    const SMat n(pNormal);
    if (!n.IsZero(1e-10)) {
      pl.dir = n;
      return true;
    }
  }
  return GetNormal(pl.dir, 1e-10);
}

// ---- transformations ---------------------------------------------------------------------------

void Triangle3D::ToLocal(const CMFrame& f) {
  for (SMat& p : m_p) f.ToLocal(p);
}

void Triangle3D::ToGlobal(const CMFrame& f) {
  for (SMat& p : m_p) f.ToGlobal(p);
}

void Triangle3D::To2D(const CMFrame& f, Triangle2D& t) const {
  for (int k = 0; k < 3; ++k) {
    C2DPoint q;
    f.Project(m_p[k], q, nullptr);
    t.SetVertex(k, q);
  }
}

bool Triangle3D::To2D(Triangle2D& t) const {
  t.SetVertex(0, 0.0, 0.0);
  CSegment side;
  GetEdge(0, side);
  if (side.length < 1e-10) return false;
  t.SetVertex(1, side.length, 0.0);
  SMat foot;
  const double u = side.FindPtToLineProjection(m_p[2], &foot);
  t.SetVertex(2, u, m_p[2].Dist(foot));
  return true;
}

// ---- barycentric points and subdivision --------------------------------------------------------

void Triangle3D::GetPointBaricentr(double a, double b, double c, SMat& p) const {
  Triangle2D::Normalize(a, b, c);
  p = a * m_p[0] + b * m_p[1] + c * m_p[2];
}

void Triangle3D::Divide(unsigned char i, const SMat& p, Triangle3D& other) {
  if (i >= 3) return;
  const SMat q = p;  // p may be one of the corners replaced below
  other.Copy(*this);
  other.m_p[i] = q;
  m_p[Next(i)] = q;
}

void Triangle3D::Divide(unsigned char i, double t, unsigned char, Triangle3D& other) {
  if (i >= 3) return;
  CSegment side;
  GetEdge(i, side);
  SMat p;
  side.GetPoint(t, p);
  Divide(i, p, other);
}

// ---- point location ----------------------------------------------------------------------------

CPlane::ELocn Triangle3D::GetPtLocation3D(const SMat& p, const double* pNormal, double tol) const {
  SMat n;
  if (pNormal != nullptr)
    n = SMat(pNormal);
  else
    GetNormal(n, 1e-10);
  SMat v = p - m_p[0];
  double d = n.Prod(v);
  if (std::fabs(d) < tol) {
    if (!v.Normalize(1e-10)) return CPlane::eOnPlane;
    d = n.Prod(v);
  }
  if (d > tol) return CPlane::ePositive;
  if (d < -tol) return CPlane::eNegative;
  return CPlane::eOnPlane;
}

SimplPointBase::ELocn Triangle3D::PlaneTest(const SMat& p, const double* pNormal) const {
  CPlane pl;
  if (!GetPlane(pl, pNormal != nullptr ? pNormal : vNormal.GetStore())) return SimplPointBase::eUndetermined;
  return pl.Dist(p) > 1e-10 ? SimplPointBase::eOffPlane : SimplPointBase::eInside;
}

bool Triangle3D::Flatten(const SMat& p, Triangle2D& t, C2DPoint& q) const {
  CMFrame f(static_cast<unsigned char>(0));
  // The own frame, never the cached normal: the flat triangle then always runs counter-clockwise.
  if (!GetFrame(f, true)) return false;
  To2D(f, t);
  f.Project(p, q, nullptr);
  return true;
}

SimplPointBase::ELocn Triangle3D::GetPointLocation3(const SMat& p, const double* pNormal, double tol1,
                                                    double tol2) const {
  const SimplPointBase::ELocn plane = PlaneTest(p, pNormal);
  if (plane != SimplPointBase::eInside) return plane;
  Triangle2D t(true);  // two-sided as m_tri2D; Flatten lays it counter-clockwise anyway
  C2DPoint q;
  if (!Flatten(p, t, q)) return SimplPointBase::eUndetermined;
  Tri2DPoint tp(q, tol1, tol2);
  return SimplPointBase::Location2DTo3D(t.GetPointLocation(tp));
}

SimplPointBase::ELocn Triangle3D::GetPointLocation2(SimplPoint& sp, const double* pNormal) const {
  if (!sp.bInPlane) {
    const SimplPointBase::ELocn plane = PlaneTest(sp.m_pt, pNormal);
    if (plane == SimplPointBase::eUndetermined) return plane;
    if (plane == SimplPointBase::eOffPlane) {
      sp.m_eLocn = plane;
      return plane;
    }
  }
  C2DPoint q;
  if (!Flatten(sp.m_pt, m_tri2D, q)) return SimplPointBase::eUndetermined;
  Tri2DPoint tp(q, sp.dTol);
  sp.CopyTo2DInParams(tp);
  m_tri2D.GetPointLocation(tp);
  sp.Copy2DMin(tp);
  return sp.m_eLocn;
}

// ---- text and debug display --------------------------------------------------------------------

CString Triangle3D::ToString() const {
  CString s;
  for (const SMat& p : m_p) s.AppendFormat("(%.6f, %.6f, %.6f) ", p.x, p.y, p.z);
  return s;
}

void Triangle3D::Dp() const {
  static constexpr LONG kOutline[] = {0, 1, 2, 0};
  ShowDebugSection(MakeDebugSection(m_p, 3, kOutline, 4, "Triangle3D"));
}
