#include <gtest/gtest.h>
#include <znmt64/Mat.h>
#include <znmt64/SMat.h>

#include <cmath>
#include <cstring>
#include <initializer_list>
#include <random>

namespace {

Mat Make(int rows, int cols, std::initializer_list<double> v) {
  Mat m(rows, cols);
  int k = 0;
  for (double x : v) m[k++] = x;
  return m;
}

// Diagonally dominant, hence well conditioned.
Mat RandomWellConditioned(int n, unsigned seed) {
  std::mt19937 gen(seed);
  std::uniform_real_distribution<double> u(-1.0, 1.0);
  Mat m(n, n);
  for (int i = 1; i <= n; ++i)
    for (int j = 1; j <= n; ++j) m(i, j) = u(gen) + (i == j ? n : 0.0);
  return m;
}

TEST(MatArith, FlatElementWiseAndNorms) {
  Mat a = Make(2, 2, {1, -2, 3, -4});
  a += 1.0;
  a *= 2.0;
  EXPECT_EQ(a[0], 4.0);
  EXPECT_EQ(a[3], -6.0);
  Mat b = Make(4, 1, {1, 1, 1, 1});  // shapes are not compared
  a -= b;
  EXPECT_EQ(a[1], -3.0);
  EXPECT_EQ(a.Prod(b), 3.0 - 3.0 + 7.0 - 7.0);

  Mat v = Make(3, 1, {3, -4, 0});
  EXPECT_EQ(v.SquareNorm(), 25.0);
  EXPECT_EQ(v.Norm(), 5.0);
  EXPECT_EQ(v.NormInf(), 4.0);
  EXPECT_FALSE(v.Normalize(5.0));  // eps equal to the norm is not enough
  EXPECT_EQ(v[0], 3.0);
  EXPECT_TRUE(v.Normalize(4.9));
  EXPECT_EQ(v[1], -0.8);
  EXPECT_TRUE(v.IsUnitary());
  EXPECT_TRUE(v.IsOrtho(Make(3, 1, {0, 0, 1}), 0.0));
  EXPECT_EQ(Mat().NormInf(), 0.0);
}

TEST(MatArith, SumAndDifferenceThrowTheSameMessageByPointer) {
  const Mat a = Make(2, 2, {1, 2, 3, 4});
  const Mat b = Make(2, 2, {4, 3, 2, 1});
  EXPECT_EQ((a + b)[2], 5.0);
  EXPECT_EQ((a - b)[0], -3.0);
  EXPECT_EQ((-a)[3], -4.0);
  EXPECT_EQ((0.5 * a)[1], 1.0);

  for (bool sum : {true, false}) {
    try {
      const Mat c = sum ? a + Mat(2, 3) : a - Mat(2, 3);
      ADD_FAILURE() << "no exception";
    } catch (CMatrExeption* e) {
      EXPECT_STREQ(e->m_szMessage, "Mat::operator+(): different matrix dimentions");
      e->Delete();
    }
  }
}

TEST(MatArith, ProductsTakeTheInnerCountFromTheRightFactor) {
  const Mat a = Make(2, 3, {1, 2, 3, 4, 5, 6});
  const Mat b = Make(3, 2, {7, 8, 9, 10, 11, 12});
  const Mat p = a * b;
  ASSERT_EQ(p.NRows(), 2);
  ASSERT_EQ(p.NCols(), 2);
  EXPECT_EQ(p[0], 58.0);
  EXPECT_EQ(p[3], 154.0);
  // Two inner terms only, and the columns of a are not checked against it.
  const Mat q = a * Make(2, 1, {1, 1});
  EXPECT_EQ(q[0], 3.0);
  EXPECT_EQ(q[1], 9.0);
  EXPECT_EQ((Make(1, 3, {1, 2, 3}) * SMat(4, 5, 6))[0], 32.0);

  Mat c = a;
  c *= b;  // re-shapes
  EXPECT_EQ(c.NCols(), 2);
  EXPECT_TRUE(c == p);

  Mat s = Make(2, 2, {1, 2, 3, 4});
  const Mat t = Make(2, 2, {0, 1, 1, 0});
  Mat left = s, right = s;
  left.MultLeft(t);
  right.MultRight(t);
  EXPECT_TRUE(left == t * s);
  EXPECT_TRUE(right == s * t);
  s.Mult(s, s);  // the factors are copied first
  EXPECT_TRUE(s == Make(2, 2, {7, 10, 15, 22}));

  Mat empty;  // the shape is taken, nothing is written without a block
  empty.Mult(a, b);
  EXPECT_EQ(empty.NRows(), 2);
  EXPECT_EQ(empty.m_pData, nullptr);
}

TEST(MatArith, StructureQuirks) {
  Mat m = Make(2, 3, {1, 2, 3, 4, 5, 6});
  m.Transpose();
  EXPECT_EQ(m.NRows(), 3);
  EXPECT_TRUE(m == Make(3, 2, {1, 4, 2, 5, 3, 6}));

  Mat id(4, 4);
  id.SetToIdentity();
  EXPECT_EQ(id.Tr(), 3.0);  // three elements only
  EXPECT_TRUE(id.IsIdentity());
  id(2, 3) = 1e-10;
  EXPECT_TRUE(id.IsIdentity());
  id(2, 3) = 2e-10;
  EXPECT_FALSE(id.IsIdentity());
  EXPECT_FALSE(Mat(2, 3).IsIdentity(1.0));

  // By column count: 3×2 is a 2×2 determinant of its first four flat elements.
  EXPECT_EQ(Make(3, 2, {1, 2, 3, 4, 100, 100}).Det(), -2.0);
  EXPECT_EQ(Make(3, 3, {2, 0, 1, 1, 3, 2, 1, 1, 2}).Det(), 6.0);
  const Mat four = Make(4, 4, {2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 0, 4, 0, 0, 5, 0});
  EXPECT_DOUBLE_EQ(four.Det(), -120.0);
  EXPECT_EQ(Make(4, 4, {1, 2, 3, 4, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2}).Det(), 0.0);  // zero row
}

TEST(MatArith, InverseResidualsAndSingularity) {
  for (int n : {5, 20}) {
    Mat a = RandomWellConditioned(n, 7u + n), inv;
    ASSERT_TRUE(a.GetInverse(inv));
    Mat prod = a * inv;
    EXPECT_TRUE(prod.IsIdentity(1e-13)) << n;
    Mat b = a;
    ASSERT_TRUE(b.Invert());
    EXPECT_EQ(std::memcmp(b.m_pData, inv.m_pData, sizeof(double) * n * n), 0);
  }
  Mat z = Make(3, 3, {1, 2, 3, 0, 0, 0, 4, 5, 6});
  Mat inv = Make(3, 3, {9, 9, 9, 9, 9, 9, 9, 9, 9});
  EXPECT_FALSE(z.GetInverse(inv));
  EXPECT_EQ(inv[4], 9.0);
  EXPECT_FALSE(z.Invert());
  EXPECT_EQ(z[0], 1.0);
}

TEST(MatArith, RigidTransforms) {
  Mat m(4, 4);
  m.SetToIdentity();
  m(1, 4) = 1.0;
  m(2, 4) = 2.0;
  m(3, 4) = 3.0;
  m.OrthogonalInverse();
  EXPECT_TRUE(m == Make(4, 4, {1, 0, 0, -1, 0, 1, 0, -2, 0, 0, 1, -3, 0, 0, 0, 1}));

  Mat r(4, 4);
  r.FindRotation(std::acos(-1.0) / 2, Make(3, 1, {0, 0, 1}));
  EXPECT_TRUE(r == Make(4, 4, {0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
  r(1, 4) = 5.0;
  r(3, 4) = -1.0;
  Mat back = r;
  back.OrthogonalInverse();
  EXPECT_TRUE((back * r).IsIdentity());
}

TEST(MatArith, VectorHelpers) {
  Mat out;
  Make(3, 1, {0, 2, 5}).GetAnyNonCollinear(out);
  EXPECT_TRUE(out == Make(3, 1, {0, -2, 5}));
  Make(3, 1, {0, 2, 0}).GetAnyNonCollinear(out);
  EXPECT_TRUE(out == Make(3, 1, {0, 2, 1}));
  Make(3, 1, {0, 0, 2}).GetAnyNonCollinear(out);
  EXPECT_TRUE(out == Make(3, 1, {1, 0, 2}));
  Make(3, 1, {1e-10, 0, 0}).GetAnyNonCollinear(out);
  EXPECT_TRUE(out == Make(3, 1, {1e-10, 0, 0}));

  EXPECT_EQ(Make(3, 2, {0, 0, 1e-6, 0, 0, 1}).FindNonZeroRow(), 2);  // squared norm 1e-12
  EXPECT_EQ(Mat(2, 2).FindNonZeroRow(), -1);
  EXPECT_TRUE(Make(1, 3, {2, -3 - 5e-11, 4 + 1e-11}).IsInteger());
  EXPECT_FALSE(Make(1, 2, {2, 0.5}).IsInteger());
  EXPECT_EQ(Make(2, 1, {0, 0}).Dist(Make(2, 1, {3, 4})), 5.0);
}

TEST(MatArith, ComparisonsWithALength) {
  Mat v = Make(3, 1, {1 + 1e-12, 0, 0});
  EXPECT_TRUE(v == 1.0);
  EXPECT_TRUE(v != 1.0);  // exact, not the negation of ==
  Mat w = Make(3, 1, {1, 0, 0});
  EXPECT_FALSE(w != 1.0);
  Mat tiny = Make(3, 1, {1e-6, 0, 0});  // squared norm 1e-12
  EXPECT_TRUE(tiny == 0.0);
  EXPECT_FALSE(tiny != 0.0);
  // != is == evaluated from the other side, so against an empty matrix both hold.
  Mat empty;
  const Mat some = Make(3, 1, {1, 2, 3});
  EXPECT_TRUE(empty == some);
  EXPECT_TRUE(empty != some);
}

}  // namespace
