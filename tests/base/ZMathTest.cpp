#include <znbl64/ZMath.h>

#include <gtest/gtest.h>

#include <climits>

TEST(ZMath, ModulodIsExactlyZeroNearMultiples) {
  // Mat::IsInteger relies on an exact 0.0 on both sides of an integer, negatives included.
  for (double x : {-3.0, -0.0, 2.0 + 1e-11, 2.0 - 1e-11, -2.0 + 1e-11, -2.0 - 1e-11, -1e-17})
    EXPECT_EQ(zModulod(x, 1.0, 1e-10), 0.0) << x;
  EXPECT_EQ(zModulod(2.0 + 1e-9, 1.0, 1e-10), (2.0 + 1e-9) - 2.0);
  EXPECT_EQ(zModulod(-2.25, 1.0, 1e-10), 0.75);
  EXPECT_EQ(zModulod(1.25, 1.0, 0.25), 0.0);  // the tolerance is inclusive on both sides
  EXPECT_EQ(zModulod(1.75, 1.0, 0.25), 0.0);
  EXPECT_EQ(zModulod(1.5, 1.0, 0.25), 0.5);
  EXPECT_EQ(zModulod(5.0, 0.0, 0.1), 5.0);  // zero modulus: only 0 is a multiple
  EXPECT_EQ(zModulod(0.05, 0.0, 0.1), 0.0);
}

TEST(ZMath, RoundAndCeilN) {
  EXPECT_EQ(zRound(-2.5), -3);
  EXPECT_EQ(zRound(-1e300), INT_MIN);
  EXPECT_EQ(zCeilN(1.01, 0.25), 5);
  EXPECT_EQ(zCeilN(0.3, 0.1), 3);
  EXPECT_EQ(zCeilN(2.1, 0.7), 3);  // the quotient is 3.0000000000000004
  EXPECT_EQ(zCeilN(0.1, 1.0), 1);
  EXPECT_EQ(zCeilN(-1.0, 1.0), 0);
  EXPECT_EQ(zCeilN(1.0, 0.0), 0);
  EXPECT_EQ(zCeilN(1e300, 1e-300), INT_MAX);
}

TEST(ZMath, CyclicIndices) {
  EXPECT_EQ(CZGroup::Factorize(3, 7), 1);
  EXPECT_EQ(CZGroup::Factorize(3, -1), 2);
  EXPECT_EQ(CZGroup::Factorize(3, -3), 0);
  EXPECT_EQ(CZGroup::Factorize(5, INT_MIN), 2);  // -2147483648 = -429496730 * 5 + 2
  EXPECT_EQ(CZGroup::Factorize(0, 5), 0);
  // Side k of a triangle joins corners k and k+1.
  EXPECT_EQ(CZGroup::GetMin(3, 1, 0), 0);
  EXPECT_EQ(CZGroup::GetMin(3, 0, 2), 2);
  EXPECT_EQ(CZGroup::GetMin(3, -1, 3), 2);  // indices are reduced first
  EXPECT_EQ(CZGroup::GetMin(3, 1, 1), -1);
  EXPECT_EQ(CZGroup::GetMin(5, 0, 2), -1);
}
