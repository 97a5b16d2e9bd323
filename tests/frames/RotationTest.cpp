#include <znmt64/CMFrame.h>
#include <znmt64/MatSq.h>
#include <znmt64/Rotation.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;

// The identity frame turned by angle about the unit axis.
CMFrame Turned(const SMat& axis, double angle) {
  CMFrame f;
  f.Rotate(axis, angle);
  return f;
}

SMat Unit(double x, double y, double z) {
  SMat v(x, y, z);
  v.Normalize(0.0);
  return v;
}

}  // namespace

TEST(Rotation, TrivialAndConstruction) {
  const Rotation r;
  EXPECT_TRUE(r.IsTrivial());
  EXPECT_TRUE(r.Is(1.0, 0.0, 0.0));
  EXPECT_EQ(r.angle, 0.0);
  EXPECT_TRUE(Rotation(0.0, 0.0, 1.0, 1e-11).IsTrivial());
  EXPECT_TRUE(Rotation(0.0, 0.0, 0.0, 1.0).IsTrivial());
  EXPECT_FALSE(Rotation(0.0, 0.0, 2.0, 1e-9).IsTrivial());  // the axis is taken as given

  const double p[4] = {0.0, 3.0, 0.0, 0.25};
  EXPECT_TRUE(Rotation(p) == Rotation(0.0, 3.0, 0.0, 0.25));
  const Rotation none(static_cast<const double*>(nullptr));
  EXPECT_TRUE(none.Is(0.0, 0.0, 0.0));
  EXPECT_EQ(none.angle, 0.0);
  EXPECT_FALSE(Rotation(0.0, 0.0, 1.0, 0.5) == Rotation(0.0, 0.0, 1.0, 0.5 + 2e-10));
}

TEST(Rotation, FindRotation) {
  Rotation r;
  SMat x(1.0, 0.0, 0.0), y(0.0, 2.0, 0.0);
  EXPECT_TRUE(r.FindRotation(x, y));
  EXPECT_TRUE(r.Is(0.0, 0.0, 1.0));
  EXPECT_DOUBLE_EQ(r.angle, kPi / 2);

  // Parallel and opposite directions have no axis: the zero cross product stays.
  SMat x2(3.0, 0.0, 0.0), minus(-1.0, 0.0, 0.0);
  EXPECT_FALSE(r.FindRotation(x, x2));
  EXPECT_TRUE(r.Is(0.0, 0.0, 0.0));
  EXPECT_EQ(r.angle, 0.0);
  EXPECT_FALSE(r.FindRotation(x, minus));

  // The turn found carries from onto to.
  SMat a(1.0, 2.0, -0.5), b(-2.0, 0.3, 1.0);
  ASSERT_TRUE(r.FindRotation(a, b));
  SMat turned = a;
  turned.Rotate(r, r.angle);
  EXPECT_TRUE(turned.IsSameDirection(b, 1e-12));
}

TEST(Rotation, FrameRotationGeneralBranch) {
  Rotation r;
  CMFrame().GetRotation(r);
  EXPECT_TRUE(r == Rotation());

  Turned(SMat(0.0, 0.0, 1.0), 0.5).GetRotation(r);
  EXPECT_TRUE(r.IsSame(SMat(0.0, 0.0, 1.0), 1e-15));
  EXPECT_NEAR(r.angle, 0.5, 1e-15);

  const SMat axis = Unit(1.0, 2.0, 3.0);
  // Near the 0.01 threshold the axis inherits the digits 1 - cos^2 has lost (about 1e-12).
  for (double angle : {0.01, 1.3, 3.1}) {
    Turned(axis, angle).GetRotation(r);
    EXPECT_TRUE(r.IsSame(axis, 1e-11)) << angle;
    EXPECT_NEAR(r.angle, angle, 1e-13);
  }
}

TEST(Rotation, FrameRotationNearZeroAndPi) {
  const SMat axis = Unit(1.0, 2.0, 3.0);
  Rotation r;
  // Within 1e-7 of the identity in cos (angles below about 4.5e-4) the rotation stays reset.
  Turned(axis, 1e-4).GetRotation(r);
  EXPECT_TRUE(r == Rotation());
  // Up to 0.005 rad off 0 or pi the matrix method takes over, with full precision.
  for (double angle : {1e-3, 0.004, kPi - 0.004, kPi - 1e-7}) {
    Turned(axis, angle).GetRotation(r);
    EXPECT_TRUE(r.IsSame(axis, 1e-9)) << angle;
    EXPECT_NEAR(r.angle, angle, 1e-14) << angle;
  }
  // At pi exactly the sense of the axis is not defined.
  const SMat diag = Unit(1.0, 1.0, 0.0);
  Turned(diag, kPi).GetRotation(r);
  EXPECT_TRUE(r.IsSame(diag, 1e-15, true));
  EXPECT_NEAR(r.angle, kPi, 1e-15);
}

TEST(Rotation, MatrixExtraction) {
  const SMat axis = Unit(-2.0, 0.5, 1.0);
  CMFrame f = Turned(axis, 2.5);
  f.SetOrigin(7.0, 8.0, 9.0);  // the translation column is not read
  MatSq m(4);
  f.ToMatrix(m);
  Rotation r;
  ASSERT_TRUE(m.GetRotation(r));
  EXPECT_TRUE(r.IsSame(axis, 1e-14));
  EXPECT_NEAR(r.angle, 2.5, 1e-14);

  MatSq id(3);
  id.SetUnitary();
  r.Set(0.0, 1.0, 0.0, 1.0);
  EXPECT_TRUE(id.GetRotation(r));
  EXPECT_TRUE(r == Rotation());

  MatSq small(2);
  small.SetUnitary();
  EXPECT_FALSE(small.GetRotation(r));
  MatSq nan(3);
  nan(1, 1) = std::nan("");
  EXPECT_FALSE(nan.GetRotation(r));
}

TEST(Rotation, RotateFrameByRotation) {
  CMFrame f;
  f.SetOrigin(1.0, 2.0, 3.0);
  f.Rotate(kPi / 2, 2);  // local X is global Y
  const CMFrame before = f;
  Rotation trivial(0.0, 0.0, 1.0, 1e-11);
  f.Rotate(trivial);
  EXPECT_TRUE(f.IsSame(before, 0.0));

  // The axis is read in local terms: local X, that is global Y.
  Rotation r(1.0, 0.0, 0.0, kPi / 2);
  f.Rotate(r);
  EXPECT_TRUE(f.origin.Is(1.0, 2.0, 3.0));
  EXPECT_TRUE(f.axes[0].Is(0.0, 1.0, 0.0));
  EXPECT_TRUE(f.axes[2].Is(1.0, 0.0, 0.0));

  // GetRotation and Rotate are inverse: the identity turned by a frame's rotation is that frame.
  const CMFrame g = Turned(Unit(0.3, -1.0, 2.0), 1.9);
  Rotation gr;
  CMFrame(g).GetRotation(gr);
  CMFrame h;
  h.Rotate(gr);
  EXPECT_TRUE(h.IsSame(g, 1e-14));
}
