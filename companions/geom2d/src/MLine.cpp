#include <znag64/MLine.h>

#include <cmath>

void CMLine::SetVertex(int i, const C2DPoint& p) {
  if (i < 0) return;
  if (i >= GetSize()) m_pts.resize(static_cast<size_t>(i) + 1);
  m_pts[static_cast<size_t>(i)] = p;
}

CMLine::ELocn CMLine::GetLocation(const C2DPoint& p, double tol, int* pInd) const {
  const auto result = [pInd](ELocn e, int ind) {
    if (pInd) *pInd = ind;
    return e;
  };
  const int n = GetSize();
  if (n < 2) return result(eMLDegenerate, -1);
  if (p.Dist(m_pts.front()) <= tol) return result(eMLAtStart, 0);
  if (p.Dist(m_pts.back()) <= tol) return result(eMLAtEnd, n - 1);
  for (int k = 1; k < n - 1; ++k)
    if (p.Dist(m_pts[k]) <= tol) return result(eMLAtVertex, k);
  for (int k = 0; k < n - 1; ++k)
    if (Segment2D(m_pts[k], m_pts[k + 1]).Dist(p) <= tol) return result(eMLInside, k);
  // The end segments' lines extend the polyline; a segment too short for a direction has none.
  Segment2D s;
  s.origin = m_pts[0];
  if (s.SetQ(m_pts[1]) && s.GetParam(p) < 0.0 && std::fabs(s.SignedDist(p)) <= tol)
    return result(eMLBeforeStart, 0);
  s.origin = m_pts[n - 2];
  if (s.SetQ(m_pts[n - 1]) && s.GetParam(p) > s.length && std::fabs(s.SignedDist(p)) <= tol)
    return result(eMLBeyondEnd, n - 2);
  return result(eMLOffLine, -1);
}

bool Corner2D::Set(const C2DPoint& v, const C2DPoint& d1, const C2DPoint& d2) {
  C2DPoint a = d1, b = d2;
  if (!a.Normalize() || !b.Normalize()) return false;
  vertex = v;
  dir1 = a;
  dir2 = b;
  return true;
}

Corner2D::ECornerLocn Corner2D::GetLocation(const C2DPoint& p, double tol) const {
  if (!(dir1.Length() > 1e-10) || !(dir2.Length() > 1e-10)) return eCornerUndefined;
  const C2DPoint v = p - vertex;
  if (v.Length() <= tol) return eCornerAtVertex;
  const double s1 = dir1.Cross(v), s2 = dir2.Cross(v);
  const bool on1 = std::fabs(s1) <= tol, on2 = std::fabs(s2) <= tol;
  if (on1 && dir1.Dot(v) > 0.0) return eCornerOnSide1;
  if (on2 && dir2.Dot(v) > 0.0) return eCornerOnSide2;
  if (on1 || on2) return eCornerOnExtension;
  // Up to a half turn the region is left of dir1 and right of dir2; beyond it, the complement of
  // the corner swept from dir2 back to dir1.
  const bool inside = dir1.Cross(dir2) >= 0.0 ? (s1 > 0.0 && s2 < 0.0) : (s1 > 0.0 || s2 < 0.0);
  return inside ? eCornerInside : eCornerOutside;
}
