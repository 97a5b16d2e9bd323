#include <gtest/gtest.h>
#include <znmt64/NRCUtil.h>

#include <cmath>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "../support/CroutReference.h"
#include "AlgebraTestUtil.h"

namespace {

// Bit for bit, except that any NaN equals any NaN: which NaN a product of two NaNs gives depends
// on the order the compiler puts its operands in, and the language leaves that open.
bool SameBits(const Mat& a, const Mat& b) {
  if (a.m_nSize != b.m_nSize) return false;
  for (int k = 0; k < a.m_nSize; ++k)
    if (std::memcmp(&a.m_pData[k], &b.m_pData[k], sizeof(double)) != 0 &&
        !(std::isnan(a.m_pData[k]) && std::isnan(b.m_pData[k])))
      return false;
  return true;
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

// Decomposes m both ways and compares factors, pivot rows and sign bit for bit.
void ExpectSameAsReference(const Mat& m, const char* what) {
  const int n = m.NCols();
  Mat ours = m, ref = m;
  std::vector<int> io(n + 1, 0), ir(n + 1, 0);
  double dOurs = 0.0, dRef = 0.0;
  SCOPED_TRACE(std::string(what) + ' ' + std::to_string(n));
  ASSERT_EQ(ours.LUDecompose(io.data(), dOurs), CroutReference(ref, ir.data(), dRef));
  EXPECT_TRUE(SameBits(ours, ref) && io == ir && dOurs == dRef);
}

TEST(LinearSystems, BlockedFactorsMatchTheTextbookLoopBitForBit) {
  // Sizes across the column-by-column width, the split points and the packing blocks.
  for (int n : {1, 2, 3, 4, 15, 16, 17, 31, 33, 64, 97, 200, 257}) {
    ExpectSameAsReference(Random(n, n, 100u + n, 0.0), "random");
    ExpectSameAsReference(Random(n, n, 200u + n, n), "dominant");
  }
  // Small integers: exact ties in the scaled pivot choice and exact zeros all through the loop.
  std::mt19937 gen(7u);
  std::uniform_int_distribution<int> small(-2, 2);
  for (int n : {40, 200}) {
    Mat m(n, n);
    for (int k = 0; k < n * n; ++k) m[k] = small(gen);
    ExpectSameAsReference(m, "ties");
  }
  // Repeated rows, scaled by powers of two: every candidate of a column ties, pivots become exactly
  // zero and are replaced by 1e-20.
  const int n = 200;
  Mat rep(n, n);
  const Mat base = Random(8, n, 9u, 0.0);
  for (int i = 0; i < n; ++i)
    for (int j = 0; j < n; ++j) rep[i * n + j] = std::ldexp(base[(i % 8) * n + j], i % 3);
  ExpectSameAsReference(rep, "repeated rows");
  // Non-finite values follow the same path: NaN never wins a pivot, infinities spread alike.
  Mat odd = Random(n, n, 13u, 0.0);
  odd[5 * n + 7] = std::nan("");
  odd[150 * n + 3] = INFINITY;
  ExpectSameAsReference(odd, "non-finite");
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

  // Larger systems keep the textbook factors in the matrix and back-substitute on them.
  for (int n : {3, 130}) {
    Mat a = Random(n, n, 21u + n, 2.0), ref = a;
    std::vector<int> indx(n + 1);
    double d;
    ASSERT_TRUE(CroutReference(ref, indx.data(), d));
    Mat x = Random(n, 1, 22u, 0.0), y = x;
    a.Solve(x);
    std::vector<double*> rows(n + 1);
    FillRowPtrs(rows.data(), ref, n);
    lubksb(rows.data(), n, indx.data(), GetVec1(y));
    EXPECT_TRUE(SameBits(a, ref) && SameBits(x, y)) << n;
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
  EXPECT_EXIT(nrerror("allocation failure in dvector()"), ::testing::ExitedWithCode(1),
              "Numerical Recipes run-time error\\.\\.\\.\nallocation failure in dvector\\(\\)\n"
              "\\.\\.\\.now exiting to system\\.\\.\\.\n");
}

}  // namespace
