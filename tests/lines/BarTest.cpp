#include <znmt64/Bar.h>

#include <gtest/gtest.h>

namespace {

Bar W(double w0, double w1, double w2) {
  Bar b;
  b.w[0] = w0;
  b.w[1] = w1;
  b.w[2] = w2;
  return b;
}

void ExpectW(const Bar& b, double w0, double w1, double w2) {
  EXPECT_DOUBLE_EQ(b.w[0], w0);
  EXPECT_DOUBLE_EQ(b.w[1], w1);
  EXPECT_DOUBLE_EQ(b.w[2], w2);
}

}  // namespace

TEST(Bar, CornersBorderPointsAndCombinations) {
  Bar b = W(7, 8, 9);
  b.SetCorner(5);
  ExpectW(b, 0, 0, 1);
  b.SetEdgeVert(5, 2);  // from corner 2 back towards corner 0
  ExpectW(b, 0.5, 0, 0.5);
  b.SetEdgeVert(6, 2);
  ExpectW(b, 1, 0, 0);
  b.SetEdgeVert(4, 3);
  ExpectW(b, 0, 2.0 / 3, 1.0 / 3);
  b.SetEdgeVert(1, 0);  // no division: nothing changes
  ExpectW(b, 0, 2.0 / 3, 1.0 / 3);

  Bar a = W(1, 0, 0);
  a.Combine(a, W(0, 0, 1), 1.5);  // into its own operand, and beyond the second
  ExpectW(a, -0.5, 0, 1.5);
}

TEST(Bar, CornerAndSideTests) {
  EXPECT_EQ(W(0.5, 0.5, 0).GetCorner(1e-10), -1);
  EXPECT_EQ(W(1, 1, 0).GetCorner(1e-10), 0);  // the first match; the others are not looked at
  EXPECT_EQ(W(0, 0, 1 - 5e-11).GetCorner(1e-10), 2);
  EXPECT_EQ(W(0, 0, 1 - 2e-10).GetCorner(1e-10), -1);

  EXPECT_FALSE(W(0.5, 0.5, 0).IsInsideOpen(1e-10) || W(0.5, 0.5, 0).IsOutsideClosed(1e-10));  // on a side
  EXPECT_TRUE(W(0.2, 0.3, 0.5).IsInsideOpen(1e-10) && !W(0.2, 0.3, 0.5).IsInsideOpen(0.2));
  EXPECT_TRUE(!W(1.1, 0, -5e-11).IsOutsideClosed(1e-10) && W(1.1, 0, -2e-10).IsOutsideClosed(1e-10));
}
