#include <znmt64/CMFrame.h>
#include <znmt64/MatSq.h>
#include <znmt64/Rotation.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;
const SMat kAxis(1.0 / std::sqrt(14.0), 2.0 / std::sqrt(14.0), 3.0 / std::sqrt(14.0));

CMFrame Turned(const SMat& axis, double angle) {
  CMFrame f;
  f.Rotate(axis, angle);
  return f;
}

}  // namespace

TEST(Rotation, TrivialAndFound) {
  EXPECT_TRUE(Rotation().IsTrivial() && Rotation().Is(1.0, 0.0, 0.0) && Rotation(0.0, 0.0, 1.0, 1e-11).IsTrivial());
  EXPECT_TRUE(Rotation(0.0, 0.0, 0.0, 1.0).IsTrivial());
  EXPECT_TRUE(Rotation(static_cast<const double*>(nullptr)).Is(0.0, 0.0, 0.0));  // nothing read

  Rotation r;
  SMat x(1.0, 0.0, 0.0), y(0.0, 2.0, 0.0), x2(3.0, 0.0, 0.0), minus(-1.0, 0.0, 0.0);
  EXPECT_TRUE(r.FindRotation(x, y) && r == Rotation(0.0, 0.0, 1.0, kPi / 2));
  // Parallel and opposite directions have no axis: the zero cross product stays.
  EXPECT_TRUE(!r.FindRotation(x, x2) && r.Is(0.0, 0.0, 0.0) && r.angle == 0.0);
  EXPECT_FALSE(r.FindRotation(x, minus));
  SMat a(1.0, 2.0, -0.5), b(-2.0, 0.3, 1.0);
  ASSERT_TRUE(r.FindRotation(a, b));
  a.Rotate(r, r.angle);
  EXPECT_TRUE(a.IsSameDirection(b, 1e-12));
  // Either direction may be the rotation's own axis, which the cross product overwrites.
  Rotation own(1.0, 0.0, 0.0, 0.3);
  EXPECT_TRUE(own.FindRotation(own, y) && own == Rotation(0.0, 0.0, 1.0, kPi / 2));
  own = Rotation(0.0, 1.0, 0.0, 0.3);
  EXPECT_TRUE(own.FindRotation(x, own) && own == Rotation(0.0, 0.0, 1.0, kPi / 2));
}

TEST(Rotation, FromFrameInEveryBranch) {
  Rotation r;
  CMFrame().GetRotation(r);
  EXPECT_TRUE(r == Rotation());
  // Within 1e-7 of the identity in cos (below about 4.5e-4 rad) the rotation stays reset.
  Turned(kAxis, 1e-4).GetRotation(r);
  EXPECT_TRUE(r == Rotation());
  // Up to 0.005 rad off 0 or pi the matrix method takes over, with full precision; beyond, the
  // axis inherits the digits 1 - cos^2 has lost (about 1e-12 at 0.01).
  for (double angle : {1e-3, 0.004, 0.01, 1.3, 3.1, kPi - 0.004, kPi - 1e-7}) {
    Turned(kAxis, angle).GetRotation(r);
    EXPECT_TRUE(r.IsSame(kAxis, 1e-11)) << angle;
    EXPECT_NEAR(r.angle, angle, 1e-13) << angle;
  }
  // At pi exactly the sense of the axis is not defined.
  const SMat diag(std::sqrt(0.5), std::sqrt(0.5), 0.0);
  Turned(diag, kPi).GetRotation(r);
  EXPECT_TRUE(r.IsSame(diag, 1e-15, true));
  EXPECT_NEAR(r.angle, kPi, 1e-15);
}

TEST(Rotation, FromMatrix) {
  CMFrame f = Turned(kAxis, 2.5);
  f.SetOrigin(7.0, 8.0, 9.0);  // the translation column is not read
  MatSq m(4);
  f.ToMatrix(m);
  Rotation r;
  ASSERT_TRUE(m.GetRotation(r));
  EXPECT_TRUE(r.IsSame(kAxis, 1e-14));
  EXPECT_NEAR(r.angle, 2.5, 1e-14);

  MatSq id(3), small(2), nan(3);
  id.SetUnitary();
  r.Set(0.0, 1.0, 0.0, 1.0);
  EXPECT_TRUE(id.GetRotation(r) && r == Rotation());
  nan(1, 1) = std::nan("");
  EXPECT_FALSE(small.GetRotation(r) || nan.GetRotation(r));
}

TEST(Rotation, TurnsFrames) {
  CMFrame f;
  f.SetOrigin(1.0, 2.0, 3.0);
  f.Rotate(kPi / 2, 2);  // local X is global Y
  const CMFrame before = f;
  Rotation trivial(0.0, 0.0, 1.0, 1e-11);
  f.Rotate(trivial);
  EXPECT_TRUE(f.IsSame(before, 0.0));
  Rotation r(1.0, 0.0, 0.0, kPi / 2);  // read in local terms: about global Y
  f.Rotate(r);
  EXPECT_TRUE(f.origin.Is(1.0, 2.0, 3.0) && f.axes[0].Is(0.0, 1.0, 0.0) && f.axes[2].Is(1.0, 0.0, 0.0));

  // GetRotation and Rotate are inverse: the identity turned by a frame's rotation is that frame.
  CMFrame g = Turned(SMat(0.3, -1.0, 2.0), 1.9), h;
  Rotation gr;
  g.GetRotation(gr);
  h.Rotate(gr);
  EXPECT_TRUE(h.IsSame(g, 1e-14));
}
