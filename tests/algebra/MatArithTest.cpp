#include <gtest/gtest.h>
#include <znmt64/SMat.h>

#include <cmath>
#include <utility>

#include "AlgebraTestUtil.h"

namespace {

TEST(MatArith, FlatElementWiseAndNorms) {
  Mat a = Make(2, 2, {1, -2, 3, -4});
  a += 1.0;
  a *= 2.0;
  a -= Make(4, 1, {1, 1, 1, 1});  // shapes are not compared
  EXPECT_TRUE(a == Make(2, 2, {3, -3, 7, -7}));

  Mat v = Make(3, 1, {3, -4, 0});
  EXPECT_EQ(v.NormInf(), 4.0);
  EXPECT_TRUE(!v.Normalize(5.0) && v[0] == 3.0);  // eps equal to the norm is not enough
  EXPECT_TRUE(v.Normalize(4.9) && v[1] == -0.8 && v.IsUnitary());
}

TEST(MatArith, SumAndDifferenceThrowTheSameMessageByPointer) {
  const Mat a = Make(2, 2, {1, 2, 3, 4});
  EXPECT_TRUE(a - 0.5 * a == Make(2, 2, {0.5, 1, 1.5, 2}));
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
  EXPECT_TRUE(a * b == Make(2, 2, {58, 64, 139, 154}));
  // Two inner terms, whatever a's column count.
  EXPECT_TRUE(a * Make(2, 1, {1, 1}) == Make(2, 1, {3, 9}));
  EXPECT_EQ((Make(1, 3, {1, 2, 3}) * SMat(4, 5, 6))[0], 32.0);
  Mat c = a;
  c *= b;  // re-shapes
  EXPECT_TRUE(c.NCols() == 2 && c == a * b);

  Mat s = Make(2, 2, {1, 2, 3, 4}), left = s, right = s;
  const Mat t = Make(2, 2, {0, 1, 1, 0});
  left.MultLeft(t);
  right.MultRight(t);
  EXPECT_TRUE(left == t * s && right == s * t);
  s.Mult(s, s);  // the factors are copied first
  EXPECT_TRUE(s == Make(2, 2, {7, 10, 15, 22}));
  Mat empty;  // takes the shape; without a block nothing is written
  empty.Mult(a, b);
  EXPECT_EQ(empty.NRows(), 2);
}

TEST(MatArith, StructureQuirks) {
  Mat m = Make(2, 3, {1, 2, 3, 4, 5, 6});
  m.Transpose();
  EXPECT_TRUE(m.NRows() == 3 && m == Make(3, 2, {1, 4, 2, 5, 3, 6}));
  Mat id(4, 4);
  id.SetToIdentity();
  id(2, 3) = 1e-10;
  EXPECT_TRUE(id.IsIdentity());
  id(2, 3) = 2e-10;
  EXPECT_FALSE(id.IsIdentity());

  // By column count: a 3×2 matrix has the 2×2 determinant of its first four flat elements.
  EXPECT_EQ(Make(3, 2, {1, 2, 3, 4, 100, 100}).Det(), -2.0);
  EXPECT_EQ(Make(3, 3, {2, 0, 1, 1, 3, 2, 1, 1, 2}).Det(), 6.0);
  EXPECT_EQ(Make(4, 4, {2, 0, 0, 0, 0, 3, 0, 0, 0, 0, 0, 4, 0, 0, 5, 0}).Det(), -120.0);
  EXPECT_EQ(Make(4, 4, {1, 2, 3, 4, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2}).Det(), 0.0);  // zero row
}

TEST(MatArith, InverseResidualsAndSingularity) {
  for (int n : {5, 20}) {
    Mat a = Random(n, n, n, n), inv;
    ASSERT_TRUE(a.GetInverse(inv));
    EXPECT_TRUE((a * inv).IsIdentity(1e-13)) << n;
  }
  Mat z = Make(3, 3, {1, 2, 3, 0, 0, 0, 4, 5, 6});
  Mat inv = Make(3, 3, {9, 9, 9, 9, 9, 9, 9, 9, 9});
  EXPECT_FALSE(z.GetInverse(inv) || z.Invert());
  EXPECT_TRUE(inv[4] == 9.0 && z[0] == 1.0);
}

TEST(MatArith, RigidTransforms) {
  Mat m = Make(4, 4, {1, 0, 0, 1, 0, 1, 0, 2, 0, 0, 1, 3, 0, 0, 0, 1});
  m.OrthogonalInverse();
  EXPECT_TRUE(m == Make(4, 4, {1, 0, 0, -1, 0, 1, 0, -2, 0, 0, 1, -3, 0, 0, 0, 1}));

  Mat r(4, 4);
  r.FindRotation(std::acos(-1.0) / 2, Make(3, 1, {0, 0, 1}));
  EXPECT_TRUE(r == Make(4, 4, {0, -1, 0, 0, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
  r(1, 4) = 5.0;
  Mat back = r;
  back.OrthogonalInverse();
  EXPECT_TRUE((back * r).IsIdentity());
}

TEST(MatArith, VectorHelpersAndComparisons) {
  // A sign flipped when two elements are non-zero, else the last or the first element set to 1.
  const std::pair<V, V> nonCollinear[] = {{{0, 2, 5}, {0, -2, 5}}, {{0, 2, 0}, {0, 2, 1}}, {{0, 0, 2}, {1, 0, 2}}};
  for (const auto& [in, out] : nonCollinear) {
    Mat got;
    Make(3, 1, in).GetAnyNonCollinear(got);
    EXPECT_EQ(Flat(got), out);
  }

  EXPECT_EQ(Make(3, 2, {0, 0, 1e-6, 0, 0, 1}).FindNonZeroRow(), 2);  // squared norm 1e-12
  EXPECT_TRUE(Make(1, 3, {2, -3 - 5e-11, 4 + 1e-11}).IsInteger());
  EXPECT_FALSE(Make(1, 2, {2, 0.5}).IsInteger());

  Mat v = Make(3, 1, {1 + 1e-12, 0, 0});
  EXPECT_TRUE(v == 1.0 && v != 1.0);  // != is exact, not the negation of ==
  Mat tiny = Make(3, 1, {1e-6, 0, 0});  // squared norm 1e-12
  EXPECT_TRUE(tiny == 0.0 && !(tiny != 0.0));
  // != is == evaluated from the other side, so against an empty matrix both hold.
  Mat empty;
  EXPECT_TRUE(empty == v && empty != v);
}

}  // namespace
