#include <gtest/gtest.h>
#include <znmt64/Polinom.h>

#include <vector>

namespace {

using V = std::vector<double>;

// The roots of the polynomial with coefficient of x^k at k, as (re, im) pairs; the zeroed C
// objects show through where GetRoots writes no imaginary part.
V Roots(const V& coefs) {
  Polinom p(static_cast<int>(coefs.size()) - 1);
  p.Initze(coefs.data());
  C r[2];
  const int n = p.GetRoots(r);
  V out;
  for (int k = 0; k < n; ++k) out.insert(out.end(), {r[k].x, r[k].y});
  return out;
}

TEST(Polinom, Construction) {
  const Polinom x3(3);  // the monic x³
  EXPECT_EQ(V(x3.m_pData, x3.m_pData + 4), (V{0, 0, 0, 1}));
  Mat m(2, 3);  // the first row gives the coefficients
  m.Initze(V{4, 5, 6, 7, 8, 9}.data());
  EXPECT_EQ(V({Polinom(m).GetCoef(2), double(Polinom(m).GetDegree())}), (V{6, 2}));
}

TEST(Polinom, RootsFromTheLowThreeCoefficients) {
  EXPECT_EQ(Roots({2, -3, 1}), (V{2, 0, 1, 0}));      // the "+" root first
  EXPECT_EQ(Roots({-2, -2, 4}), (V{1, 0, -0.5, 0}));  // 2(2x + 1)(x − 1)
  EXPECT_EQ(Roots({1, 0, 1}), (V{0, -1, 0, 1}));      // conjugates, −i first
  EXPECT_EQ(Roots({1, -2, 1}), (V{1, 0}));            // a double root once
  EXPECT_EQ(Roots({-4, 2, 1e-11}), (V{2, 0}));        // a negligible x² makes it linear
  EXPECT_EQ(Roots({-4, 2}), (V{2, 0}));               // no x² coefficient at all
  EXPECT_EQ(Roots({3, 1e-11, 0}), V{});
  EXPECT_EQ(Roots({2, -3, 1, 1}), (V{2, 0, 1, 0}));   // x³ is not looked at
}

}  // namespace
