#include <znag64/Circle2D.h>

#include <algorithm>
#include <cmath>

bool Circle2D::DefineFromThreePoints(const C2DPoint& a, const C2DPoint& b, const C2DPoint& c) {
  // Centre relative to a, from the two perpendicular bisectors of ab and ac.
  const C2DPoint u = b - a, v = c - a;
  const double uu = u.Dot(u), vv = v.Dot(v), ww = (c - b).Dot(c - b);
  const double cross = u.Cross(v);
  if (!(std::fabs(cross) > 1e-10 * std::max({uu, vv, ww}))) return false;
  const double d = 2.0 * cross;
  const C2DPoint off((v.y * uu - u.y * vv) / d, (u.x * vv - v.x * uu) / d);
  center = a + off;
  radius = off.Length();
  return true;
}
