#include <znag64/Triangle2D.h>

#include <algorithm>
#include <cmath>

namespace {
// Index of the smallest of three values, the first on ties.
int MinIndex(const double* d) { return static_cast<int>(std::min_element(d, d + 3) - d); }
}  // namespace

Tri2DPoint::ELocn Triangle2D::GetPointLocation(Tri2DPoint& t) const {
  Segment2D side[3];
  double foot[3];  // parameter of pt's nearest point on each side
  for (int i = 0; i < 3; ++i) {
    side[i].origin = m_p[i];
    side[i].SetQ(m_p[(i + 1) % 3]);
    t.adSideDist[i] = side[i].Dist(t.pt, &foot[i]);
    t.adCornerDist[i] = m_p[i].Dist(t.pt);
  }
  const auto result = [&t](Tri2DPoint::ELocn e, int ind, double posn) {
    t.eLocn = e;
    t.nInd = ind;
    t.dSidePosn = t.bSidePosn ? posn : 0.0;
    return e;
  };
  const auto onSide = [&](Tri2DPoint::ELocn e, int i) { return result(e, i, foot[i]); };

  // Twice the area over the longest side is the smallest height.
  const double area2 = (m_p[1] - m_p[0]).Cross(m_p[2] - m_p[0]);
  const double longest = std::max({side[0].length, side[1].length, side[2].length});
  if (!(std::fabs(area2) > t.dTol * longest)) return result(Tri2DPoint::eDegenerate, -1, 0.0);

  const int c = MinIndex(t.adCornerDist);
  const int s = MinIndex(t.adSideDist);
  if (t.adCornerDist[c] <= t.dTol) return result(Tri2DPoint::eAtCorner, c, 0.0);
  if (t.adSideDist[s] <= t.dTol) return onSide(Tri2DPoint::eOnSide, s);
  if (t.bInParam2) {
    if (t.adCornerDist[c] <= t.dTol2) return result(Tri2DPoint::eAtCorner, c, 0.0);
    if (t.adSideDist[s] <= t.dTol2) return onSide(Tri2DPoint::eOnSide, s);
  } else if (t.adSideDist[s] <= t.dTol2) {
    return onSide(Tri2DPoint::eNearSide, s);
  }
  // Only the sign of the side-line distances matters here, so a side too short for a unit
  // direction still serves with its raw one.
  const double orient = (m_bTwoSided && area2 < 0.0) ? -1.0 : 1.0;
  const bool inside =
      std::all_of(side, side + 3, [&](const Segment2D& e) { return orient * e.SignedDist(t.pt) > 0.0; });
  return result(inside ? Tri2DPoint::eInside : Tri2DPoint::eOutside, -1, 0.0);
}

bool Triangle2D::Normalize(double& a, double& b, double& c) {
  const double sum = a + b + c;
  if (!(std::fabs(sum) > 1e-10)) return false;
  a /= sum;
  b /= sum;
  c /= sum;
  return true;
}
