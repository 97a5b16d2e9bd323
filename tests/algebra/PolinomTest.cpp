#include <gtest/gtest.h>
#include <znmt64/Polinom.h>

#include <initializer_list>

namespace {

Polinom Make(std::initializer_list<double> coefs) {  // coefficient of x^k at k
  Polinom p(static_cast<int>(coefs.size()) - 1);
  int k = 0;
  for (double c : coefs) p.SetCoef(k++, c);
  return p;
}

TEST(Polinom, CoefficientsAndDegree) {
  Polinom x3(3);
  EXPECT_EQ(x3.GetDegree(), 3);
  for (int k = 0; k < 3; ++k) EXPECT_EQ(x3.GetCoef(k), 0.0);
  EXPECT_EQ(x3.GetCoef(3), 1.0);

  Mat m(2, 3);  // the first row gives the coefficients
  m[0] = 4.0;
  m[2] = 6.0;
  m[3] = 9.0;
  Polinom p(m);
  EXPECT_EQ(p.GetDegree(), 2);
  EXPECT_EQ(p.GetCoef(0), 4.0);
  EXPECT_EQ(p.GetCoef(2), 6.0);
  p.Coef(1) = -1.0;
  p.SetDegree(1);  // a lower degree keeps the block
  EXPECT_EQ(p.GetCoef(1), -1.0);
}

TEST(Polinom, QuadraticRoots) {
  C r[2];
  ASSERT_EQ(Make({2, -3, 1}).GetRoots(r), 2);  // the "+" root first
  EXPECT_EQ(r[0].x, 2.0);
  EXPECT_EQ(r[1].x, 1.0);
  EXPECT_EQ(r[0].y, 0.0);

  C c[2];
  ASSERT_EQ(Make({1, 0, 1}).GetRoots(c), 2);  // conjugates, negative imaginary part first
  EXPECT_EQ(c[0].x, 0.0);
  EXPECT_EQ(c[0].y, -1.0);
  EXPECT_EQ(c[1].y, 1.0);

  C d[2];
  ASSERT_EQ(Make({1, -2, 1}).GetRoots(d), 1);
  EXPECT_EQ(d[0].x, 1.0);

  C e[2];
  ASSERT_EQ(Make({-2, -2, 4}).GetRoots(e), 2);  // 4x² − 2x − 2 = 2(2x + 1)(x − 1)
  EXPECT_EQ(e[0].x, 1.0);
  EXPECT_EQ(e[1].x, -0.5);
}

TEST(Polinom, LowerDegreesAndHigherTerms) {
  C r[2];
  ASSERT_EQ(Make({-4, 2, 1e-11}).GetRoots(r), 1);  // a negligible x² makes it linear
  EXPECT_EQ(r[0].x, 2.0);
  C s[2];
  ASSERT_EQ(Make({-4, 2}).GetRoots(s), 1);  // degree 1: no x² coefficient at all
  EXPECT_EQ(s[0].x, 2.0);
  EXPECT_EQ(Make({3}).GetRoots(s), 0);
  EXPECT_EQ(Make({3, 1e-11, 0}).GetRoots(s), 0);

  // Only x⁰ … x² count: the cubic x³ + x² − 3x + 2 answers with the roots of x² − 3x + 2.
  C t[2];
  ASSERT_EQ(Make({2, -3, 1, 1}).GetRoots(t), 2);
  EXPECT_EQ(t[0].x, 2.0);
  EXPECT_EQ(t[1].x, 1.0);
}

}  // namespace
