#include <znmt64/Bar.h>

#include <gtest/gtest.h>

namespace {

void ExpectWeights(const Bar& b, double w0, double w1, double w2) {
  EXPECT_DOUBLE_EQ(b.w[0], w0);
  EXPECT_DOUBLE_EQ(b.w[1], w1);
  EXPECT_DOUBLE_EQ(b.w[2], w2);
}

Bar Weights(double w0, double w1, double w2) {
  Bar b;
  b.w[0] = w0;
  b.w[1] = w1;
  b.w[2] = w2;
  return b;
}

}  // namespace

TEST(Bar, CornersWrapModuloThree) {
  Bar b = Weights(7, 8, 9);
  b.SetCorner(1);
  ExpectWeights(b, 0, 1, 0);
  b.SetCorner(3);
  ExpectWeights(b, 1, 0, 0);
  b.SetCorner(255);  // 255 = 3 * 85
  ExpectWeights(b, 1, 0, 0);
  b.SetCorner(5);
  ExpectWeights(b, 0, 0, 1);
}

TEST(Bar, CombineAndCopies) {
  Bar a = Weights(1, 0, 0);
  Bar c = Weights(0, 0, 1);
  Bar m;
  m.Combine(a, c, 0.25);
  ExpectWeights(m, 0.75, 0, 0.25);
  m.Combine(a, c, 1.5);  // beyond b: a negative weight, nothing clamps
  ExpectWeights(m, -0.5, 0, 1.5);
  a.Combine(a, c, 0.5);  // into one of its own operands
  ExpectWeights(a, 0.5, 0, 0.5);

  const Bar copy(m);
  ExpectWeights(copy, -0.5, 0, 1.5);
  Bar assigned;
  assigned = a;
  ExpectWeights(assigned, 0.5, 0, 0.5);
  assigned.Reset();
  ExpectWeights(assigned, 0, 0, 0);
}

TEST(Bar, EdgeVerticesWalkTheBorder) {
  Bar b;
  b.SetEdgeVert(0, 2);
  ExpectWeights(b, 1, 0, 0);
  b.SetEdgeVert(1, 2);
  ExpectWeights(b, 0.5, 0.5, 0);
  b.SetEdgeVert(2, 2);
  ExpectWeights(b, 0, 1, 0);
  b.SetEdgeVert(5, 2);  // third side, from corner 2 back towards corner 0
  ExpectWeights(b, 0.5, 0, 0.5);
  b.SetEdgeVert(6, 2);
  ExpectWeights(b, 1, 0, 0);
  b.SetEdgeVert(4, 3);
  ExpectWeights(b, 0, 2.0 / 3, 1.0 / 3);

  b = Weights(0.2, 0.3, 0.5);
  b.SetEdgeVert(1, 0);
  ExpectWeights(b, 0.2, 0.3, 0.5);
  b.SetEdgeVert(1, -1);
  ExpectWeights(b, 0.2, 0.3, 0.5);
}

TEST(Bar, CornerAndInsideTests) {
  EXPECT_EQ(Weights(0.5, 0.5, 0).GetCorner(1e-10), -1);
  EXPECT_EQ(Weights(1, 1, 0).GetCorner(1e-10), 0);  // the first match, the others unchecked
  EXPECT_EQ(Weights(0, 0, 1 - 5e-11).GetCorner(1e-10), 2);
  EXPECT_EQ(Weights(0, 0, 1 - 2e-10).GetCorner(1e-10), -1);

  const Bar onSide = Weights(0.5, 0.5, 0);
  EXPECT_FALSE(onSide.IsInsideOpen(1e-10));
  EXPECT_FALSE(onSide.IsOutsideClosed(1e-10));
  EXPECT_TRUE(Weights(0.2, 0.3, 0.5).IsInsideOpen(1e-10));
  EXPECT_FALSE(Weights(0.2, 0.3, 0.5).IsInsideOpen(0.2));  // 0.2 is not above 0.2
  EXPECT_FALSE(Weights(1.1, 0, -5e-11).IsOutsideClosed(1e-10));
  EXPECT_TRUE(Weights(1.1, 0, -2e-10).IsOutsideClosed(1e-10));
}
