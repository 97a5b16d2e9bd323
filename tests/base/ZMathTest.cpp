#include <znbl64/ZMath.h>

#include <gtest/gtest.h>

#include <climits>
#include <tuple>

TEST(ZMath, ModulodIsExactlyZeroNearMultiples) {
  // Mat::IsInteger relies on an exact 0.0 on both sides of an integer, negatives included.
  for (double x : {-3.0, -0.0, 2.0 + 1e-11, 2.0 - 1e-11, -2.0 + 1e-11, -2.0 - 1e-11, -1e-17})
    EXPECT_EQ(zModulod(x, 1.0, 1e-10), 0.0) << x;
  // The tolerance is inclusive on both sides; a zero modulus has only 0 as a multiple.
  const double cases[][4] = {{2.0 + 1e-9, 1.0, 1e-10, (2.0 + 1e-9) - 2.0},
                             {-2.25, 1.0, 1e-10, 0.75},
                             {1.25, 1.0, 0.25, 0.0},
                             {1.75, 1.0, 0.25, 0.0},
                             {1.5, 1.0, 0.25, 0.5},
                             {5.0, 0.0, 0.1, 5.0},
                             {0.05, 0.0, 0.1, 0.0}};
  for (const auto& c : cases) EXPECT_EQ(zModulod(c[0], c[1], c[2]), c[3]) << c[0] << " mod " << c[1];
}

TEST(ZMath, RoundAndCeilN) {
  EXPECT_EQ(zRound(-2.5), -3);
  EXPECT_EQ(zRound(-1e300), INT_MIN);
  // 2.1 / 0.7 is 3.0000000000000004; the count is clamped to [0, INT_MAX].
  const std::tuple<double, double, int> ceils[] = {{1.01, 0.25, 5}, {0.3, 0.1, 3},  {2.1, 0.7, 3},
                                                   {0.1, 1.0, 1},   {-1.0, 1.0, 0}, {1.0, 0.0, 0},
                                                   {1e300, 1e-300, INT_MAX}};
  for (auto [x, step, n] : ceils) EXPECT_EQ(zCeilN(x, step), n) << x << " / " << step;
}

TEST(ZMath, CyclicIndices) {
  // -2147483648 = -429496730 * 5 + 2.
  const std::tuple<int, int, int> reduced[] = {{3, 7, 1}, {3, -1, 2}, {3, -3, 0}, {5, INT_MIN, 2}, {0, 5, 0}};
  for (auto [n, i, r] : reduced) EXPECT_EQ(CZGroup::Factorize(n, i), r) << i << " mod " << n;
  // Side k of a triangle joins corners k and k+1; indices are reduced first.
  const std::tuple<int, int, int, int> sides[] = {{3, 1, 0, 0}, {3, 0, 2, 2}, {3, -1, 3, 2}, {3, 1, 1, -1},
                                                  {5, 0, 2, -1}};
  for (auto [n, i, j, side] : sides) EXPECT_EQ(CZGroup::GetMin(n, i, j), side) << i << ", " << j;
}
