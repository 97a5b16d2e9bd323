#include <gtest/gtest.h>
#include <znmt64/Mat.h>
#include <znmt64/NRCUtil.h>

#include <cmath>
#include <cstring>
#include <initializer_list>
#include <random>
#include <vector>

namespace {

Mat Make(int rows, int cols, std::initializer_list<double> v) {
  Mat m(rows, cols);
  int k = 0;
  for (double x : v) m[k++] = x;
  return m;
}

Mat Random(int rows, int cols, unsigned seed, double diagonal) {
  std::mt19937 gen(seed);
  std::uniform_real_distribution<double> u(-1.0, 1.0);
  Mat m(rows, cols);
  for (int i = 1; i <= rows; ++i)
    for (int j = 1; j <= cols; ++j) m(i, j) = u(gen) + (i == j ? diagonal : 0.0);
  return m;
}

bool SameBits(const Mat& a, const Mat& b) {
  return a.m_nSize == b.m_nSize && std::memcmp(a.m_pData, b.m_pData, sizeof(double) * a.m_nSize) == 0;
}

TEST(LinearSystems, LUPivotsOnScaledGreaterOrEqual) {
  int indx[4];
  double d = 0.0;
  Mat swap = Make(2, 2, {0, 1, 1, 0});
  ASSERT_TRUE(swap.LUDecompose(indx, d));
  EXPECT_TRUE(d == -1.0 && indx[1] == 2 && SameBits(swap, Make(2, 2, {1, 0, 0, 1})));
  Mat tie = Make(2, 2, {1, 0, 1, 1});  // equal scaled candidates: the last row is the pivot
  ASSERT_TRUE(tie.LUDecompose(indx, d));
  EXPECT_TRUE(d == -1.0 && indx[1] == 2 && SameBits(tie, Make(2, 2, {1, 1, 1, -1})));

  Mat singular = Make(2, 2, {1, 2, 2, 4});  // decomposes, with a tiny last pivot
  ASSERT_TRUE(singular.LUDecompose(indx, d));
  EXPECT_EQ(singular(2, 2), 1e-20);
  const double det = Make(4, 4, {1, 2, 0, 0, 2, 4, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}).Det();
  EXPECT_TRUE(det != 0.0 && std::fabs(det) < 1e-19);

  Mat zero = Make(3, 3, {1, 2, 3, 0, 0, 0, 4, 5, 6});
  const Mat before = zero;
  EXPECT_FALSE(zero.LUDecompose(indx, d));
  EXPECT_TRUE(SameBits(zero, before));
  Mat y = Make(3, 1, {1, 2, 3});
  zero.Solve(y);  // no decomposition, no answer: rhs stays
  EXPECT_TRUE(SameBits(y, Make(3, 1, {1, 2, 3})));
}

TEST(LinearSystems, StackAndHeapSizesDecomposeAlike) {
  // 16×16 decomposes with its work storage on the stack, the 17×17 [A 0; 0 1] on the heap; the
  // top-left block must come out bit for bit the same.
  Mat small = Random(16, 16, 3u, 0.5), big(17, 17), top(16, 16);
  big.Copy(small);
  big(17, 17) = 1.0;
  int is[17], ib[18];
  double ds = 0.0, db = 0.0;
  ASSERT_TRUE(small.LUDecompose(is, ds) && big.LUDecompose(ib, db));
  top.Copy(big);
  EXPECT_TRUE(ds == db && SameBits(small, top));
  EXPECT_EQ(std::memcmp(is + 1, ib + 1, sizeof(int) * 16), 0);
}

TEST(LinearSystems, SolveByCramerOrInPlaceLU) {
  Mat two = Make(2, 2, {2, 1, 1, 3});
  const Mat twoBefore = two;
  Mat rhs = Make(2, 1, {3, 5});
  two.Solve(rhs);
  EXPECT_TRUE(rhs[0] == 4.0 / 5.0 && rhs[1] == 7.0 / 5.0 && SameBits(two, twoBefore));
  Mat flat = Make(2, 2, {1, 2, 2, 4});  // the determinant is not tested
  flat.Solve(rhs);
  EXPECT_TRUE(std::isinf(rhs[0]));

  for (int n : {3, 5, 20}) {
    Mat a = Random(n, n, 11u + n, n), lu = a;
    const Mat b = Random(n, 1, 5u, 0.0);
    Mat x = b;
    a.Solve(x);
    std::vector<int> indx(n + 1);
    double d;
    lu.LUDecompose(indx.data(), d);
    EXPECT_TRUE(SameBits(a, lu)) << n;  // the factors stay in the matrix
    const Mat back = Random(n, n, 11u + n, n) * x;
    for (int k = 0; k < n; ++k) EXPECT_NEAR(back[k], b[k], 1e-14) << n;
  }
}

TEST(LinearSystems, GetAnySolution) {
  Mat x = Make(3, 1, {7, 7, 7});
  EXPECT_TRUE(Make(2, 3, {0, 0, 3, 9, 9, 9}).GetAnySolution(6.0, x));
  EXPECT_TRUE(SameBits(x, Make(3, 1, {0, 0, 2})));
  EXPECT_FALSE(Make(1, 3, {0, 1e-10, 0}).GetAnySolution(6.0, x));
  EXPECT_TRUE(SameBits(x, Make(3, 1, {1, 0, 0})));
}

TEST(LinearSystems, OneBasedViewsAndFatalError) {
  Mat m = Make(2, 3, {1, 2, 3, 4, 5, 6});
  EXPECT_EQ(GetVec1(m)[4], 4.0);
  double** a = GetRowPtrs(m);
  EXPECT_EQ(&a[2][3], &m(2, 3));
  free_rowptrs(a);
  EXPECT_EXIT(nrerror("allocation failure in dvector()"), ::testing::ExitedWithCode(1),
              "Numerical Recipes run-time error\\.\\.\\.\nallocation failure in dvector\\(\\)\n"
              "\\.\\.\\.now exiting to system\\.\\.\\.\n");
}

}  // namespace
