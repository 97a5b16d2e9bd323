#include <znmt64/CMFrame.h>
#include <znmt64/MatSq.h>
#include <znmt64/Rotation.h>

#include <algorithm>
#include <cmath>

bool Rotation::FindRotation(const SMat& from, const SMat& to) {
  const SMat a = from, b = to;  // either may be this rotation's own axis
  CrossProd(a, b);
  // Tolerance 0: only exactly parallel directions have no axis; the zero product stays as the axis.
  if (!Normalize(0.0)) {
    angle = 0.0;
    return false;
  }
  angle = a.Angle(b, 1e-10);
  return std::fabs(angle) > 1e-10;
}

// Axis and angle of the rotation R held in the top-left 3x3 block (a 3x3 matrix or a 4x4
// transform), robust at both ends of [0, pi] where the textbook formulas lose their digits.
//
// With c = (trace - 1) / 2 = cos(angle), R splits into
//   the antisymmetric part  v = (r32 - r23, r13 - r31, r21 - r12) = 2 sin(angle) · axis,
//   the symmetric part      S = (R + R^T) / 2 - c·I              = (1 - c) · axis axis^T.
// For c > 0 (angle below pi/2) the axis is v / |v|: v comes straight from the off-diagonal
// elements and keeps its relative precision down to the smallest angles, where 1 - c has none
// left. For c <= 0 v fades out towards pi and gives only the sense; the axis is then the column of
// S with the largest diagonal element, which is at least (1 - c) / 3 >= 1/3 of a unit there, turned
// so that axis · v >= 0. In both cases the angle is atan2(axis · v / 2, c), which unlike acos(c) is
// accurate near 0 and near pi; it lies in [0, pi].
//
// The identity (v = 0 with c > 0) gives the reset rotation, axis (1, 0, 0) and angle 0, and true.
// The block is taken to be a rotation and is not tested for it. False, with the reset rotation, only
// for a matrix smaller than 3x3 or one whose diagonal holds NaN (then no axis can be found).
bool MatSq::GetRotation(Rotation& r) const {
  r.Reset();
  if (GetStore() == nullptr || m_nRows < 3 || m_nCols < 3 || m_nSize < 3 * m_nCols) return false;
  const auto e = [this](int i, int j) { return GetElem(i, j); };
  const double c = (e(0, 0) + e(1, 1) + e(2, 2) - 1.0) / 2.0;
  const SMat v(e(2, 1) - e(1, 2), e(0, 2) - e(2, 0), e(1, 0) - e(0, 1));
  SMat axis;
  if (c > 0.0) {
    if (v.IsZero(0.0)) return true;
    axis = v;
  } else {
    int i = 0;
    for (int k = 1; k < 3; ++k)
      if (e(k, k) > e(i, i)) i = k;
    if (!(e(i, i) - c > 0.0)) return false;
    for (int k = 0; k < 3; ++k) axis[k] = k == i ? e(i, i) - c : (e(k, i) + e(i, k)) / 2.0;
    if (axis.Prod(v) < 0.0) axis.SwapDirection();
  }
  if (!axis.Normalize(0.0)) return false;
  r.SMat::Set(axis.x, axis.y, axis.z);
  // axis · v is not negative by construction; fabs keeps a zero v at +0 so that pi is not -pi.
  r.angle = std::atan2(std::fabs(axis.Prod(v)) / 2.0, c);
  return true;
}

void CMFrame::GetRotation(Rotation& r) {
  r.Reset();
  MatSq M(3);
  ToMatrix(M);
  const double cosA = (M.Trace() - 1.0) / 2.0;
  // Rounding can put a trace just past 3 (or -1); the clamp sends such a frame down the near-0 or
  // near-pi branch instead of turning s into NaN.
  const double s = 2.0 * std::sqrt(std::max(0.0, 1.0 - cosA * cosA));
  // 0.01 on 2 sin(angle) is deliberately coarse: angles within about 0.005 rad of 0 or pi go to the
  // matrix method, and only a rotation within 1e-7 of the identity stays reset.
  if (std::fabs(s) < 0.01) {
    if (std::fabs(cosA - 1.0) < 1e-7) return;
    M.GetRotation(r);
    return;
  }
  r.SMat::Set((M(3, 2) - M(2, 3)) / s, (M(1, 3) - M(3, 1)) / s, (M(2, 1) - M(1, 2)) / s);
  r.angle = std::acos(cosA);
}

void CMFrame::Rotate(const Rotation& r) {
  if (r.IsTrivial()) return;
  SMat d = static_cast<const SMat&>(r);
  ToGlobalVector(d);
  Rotate(d, r.angle);
}
