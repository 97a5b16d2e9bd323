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
  EXPECT_EQ(d, -1.0);
  EXPECT_EQ(indx[1], 2);
  EXPECT_TRUE(swap == Make(2, 2, {1, 0, 0, 1}));

  Mat tie = Make(2, 2, {1, 0, 1, 1});  // equal scaled candidates: the last row is the pivot
  ASSERT_TRUE(tie.LUDecompose(indx, d));
  EXPECT_EQ(indx[1], 2);
  EXPECT_EQ(d, -1.0);
  EXPECT_TRUE(SameBits(tie, Make(2, 2, {1, 1, 1, -1})));

  Mat singular = Make(2, 2, {1, 2, 2, 4});  // decomposes, with a tiny last pivot
  ASSERT_TRUE(singular.LUDecompose(indx, d));
  EXPECT_EQ(singular(2, 2), 1e-20);
  const double det = Make(4, 4, {1, 2, 0, 0, 2, 4, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}).Det();
  EXPECT_NE(det, 0.0);
  EXPECT_LT(std::fabs(det), 1e-19);

  Mat zero = Make(3, 3, {1, 2, 3, 0, 0, 0, 4, 5, 6});
  const Mat before = zero;
  EXPECT_FALSE(zero.LUDecompose(indx, d));
  EXPECT_TRUE(SameBits(zero, before));
  EXPECT_FALSE(Mat(2, 3).LUDecompose(indx, d));  // no 3×3 block to work on
}

TEST(LinearSystems, StackAndHeapSizesDecomposeAlike) {
  // A 16×16 matrix is decomposed with work storage on the stack; the 17×17 [A 0; 0 1] on the
  // heap. Its top-left block must come out bit for bit the same.
  const Mat a = Random(16, 16, 3u, 0.5);
  Mat big(17, 17);
  big.Copy(a);
  big(17, 17) = 1.0;
  Mat small = a;
  int is[17], ib[18];
  double ds = 0.0, db = 0.0;
  ASSERT_TRUE(small.LUDecompose(is, ds));
  ASSERT_TRUE(big.LUDecompose(ib, db));
  EXPECT_EQ(ds, db);
  Mat top(16, 16);
  top.Copy(big);
  EXPECT_TRUE(SameBits(small, top));
  EXPECT_EQ(std::memcmp(is + 1, ib + 1, sizeof(int) * 16), 0);
}

TEST(LinearSystems, SolveByCramerOrInPlaceLU) {
  Mat two = Make(2, 2, {2, 1, 1, 3});
  const Mat twoBefore = two;
  Mat rhs = Make(2, 1, {3, 5});
  two.Solve(rhs);
  EXPECT_EQ(rhs[0], 4.0 / 5.0);
  EXPECT_EQ(rhs[1], 7.0 / 5.0);
  EXPECT_TRUE(SameBits(two, twoBefore));
  Mat flat = Make(2, 2, {1, 2, 2, 4});  // no test of the determinant
  Mat r = Make(2, 1, {1, 1});
  flat.Solve(r);
  EXPECT_TRUE(std::isinf(r[0]));

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

  Mat zero = Make(3, 3, {1, 2, 3, 0, 0, 0, 4, 5, 6});
  Mat y = Make(3, 1, {1, 2, 3});
  zero.Solve(y);  // an undecomposable matrix gives no answer: rhs stays
  EXPECT_TRUE(SameBits(y, Make(3, 1, {1, 2, 3})));
}

TEST(LinearSystems, GetAnySolution) {
  Mat x = Make(3, 1, {7, 7, 7});
  EXPECT_TRUE(Make(2, 3, {0, 0, 3, 9, 9, 9}).GetAnySolution(6.0, x));
  EXPECT_TRUE(SameBits(x, Make(3, 1, {0, 0, 2})));
  EXPECT_FALSE(Make(1, 3, {0, 1e-10, 0}).GetAnySolution(6.0, x));
  EXPECT_TRUE(SameBits(x, Make(3, 1, {1, 0, 0})));
}

TEST(LinearSystems, OneBasedViewsAndAllocators) {
  Mat m = Make(2, 3, {1, 2, 3, 4, 5, 6});
  EXPECT_EQ(GetVec1(m)[4], 4.0);
  double** a = GetRowPtrs(m);
  EXPECT_EQ(&a[2][3], &m(2, 3));
  EXPECT_EQ(a[1][1], 1.0);
  free_rowptrs(a);

  double* v = dvector(3, 5);  // 3 … 5 and one spare
  for (int k = 3; k <= 6; ++k) v[k] = k;
  free_dvector(v, 3);
  int* iv = ivector(1, 4);
  for (int k = 1; k <= 5; ++k) iv[k] = k;
  free_ivector(iv, 1);

  EXPECT_EXIT(nrerror("allocation failure in dvector()"), ::testing::ExitedWithCode(1),
              "Numerical Recipes run-time error\\.\\.\\.\nallocation failure in dvector\\(\\)\n"
              "\\.\\.\\.now exiting to system\\.\\.\\.\n");
}

}  // namespace
