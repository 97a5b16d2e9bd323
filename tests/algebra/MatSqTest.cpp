#include <gtest/gtest.h>
#include <znmt64/MatSq.h>
#include <znmt64/Polinom.h>
#include <znmt64/SMat.h>

#include <cmath>
#include <initializer_list>

namespace {

MatSq Make(int n, std::initializer_list<double> rowMajor) {
  MatSq m(n);
  int k = 0;
  for (double v : rowMajor) m[k++] = v;
  return m;
}

TEST(MatSq, DiagonalPlacementAndTraces) {
  MatSq d(1, 2, 3);  // the third value lands on flat element 7, (3, 2)
  EXPECT_EQ(d[0], 1.0);
  EXPECT_EQ(d[4], 2.0);
  EXPECT_EQ(d(3, 2), 3.0);
  EXPECT_EQ(d(3, 3), 0.0);
  MatSq two(2);  // flat elements 4 and 7 lie past a 2×2 block
  two.SetDiag(5, 6, 7);
  EXPECT_EQ(two[0], 5.0);
  EXPECT_EQ(two[3], 0.0);

  MatSq i4(4);
  i4.SetUnitary();
  EXPECT_EQ(i4.Trace(), 4.0);
  EXPECT_EQ(i4.Tr(), 3.0);
}

TEST(MatSq, MinorsAndCofactors) {
  const MatSq m2 = Make(2, {1, 2, 3, 4});
  EXPECT_EQ(m2.A(0, 1), -3.0);
  EXPECT_EQ(m2.A(1, 1), 1.0);

  const MatSq m3 = Make(3, {1, 2, 3, 4, 5, 6, 7, 8, 10});
  MatSq minor(2);
  m3.Minor(1, 0, minor);
  EXPECT_TRUE(minor.EqualsTo(Make(2, {2, 3, 8, 10})));
  EXPECT_EQ(m3.A(0, 0), 2.0);
  EXPECT_EQ(m3.A(0, 1), 2.0);  // −(4·10 − 6·7)
  EXPECT_EQ(m3.A(1, 0), 4.0);  // −(2·10 − 3·8)

  MatSq d5(5);  // a 4×4 minor does not fit the stack buffer
  d5.SetUnitary();
  d5 *= 2.0;
  EXPECT_NEAR(d5.A(2, 2), 16.0, 1e-12);
  EXPECT_NEAR(d5.A(2, 3), 0.0, 1e-12);
}

TEST(MatSq, AffineBlocks) {
  MatSq i3(3);
  i3.SetUnitary();
  Mat t(3, 1);
  t[0] = 1, t[1] = 2, t[2] = 3;
  MatSq a(4);
  a.SetAffinne(i3, t);
  EXPECT_TRUE(a.EqualsTo(Make(4, {1, 0, 0, 1, 0, 1, 0, 2, 0, 0, 1, 3, 0, 0, 0, 1})));

  MatSq lin(3);
  a.GetLinPart(lin);
  EXPECT_TRUE(lin.IsIdentity());
  Mat col;
  col.SelectCol(a, 4);  // how callers read the translation
  EXPECT_EQ(col[2], 3.0);

  // GetTranslation places the first column from (n, n) on: on a 4×4 only (4, 4) is inside.
  MatSq big(4);
  big.SetAll(-1.0);
  a.GetTranslation(big);
  EXPECT_EQ(big(4, 4), 1.0);
  EXPECT_EQ(big(3, 4), -1.0);
  Mat small(3, 1);
  a.GetTranslation(small);
  EXPECT_TRUE(small.IsZero(0.0));
}

TEST(MatSq, RotationBlockAndCoordinateTransform) {
  MatSq r(3);
  r.SetAll(9.0);
  r.CreateRotationMatr(std::acos(-1.0) / 2);
  EXPECT_NEAR(r(1, 1), 0.0, 1e-15);
  EXPECT_EQ(r(1, 2), -1.0);
  EXPECT_EQ(r(2, 1), 1.0);
  EXPECT_EQ(r(1, 3), 9.0);  // outside the 2×2 block nothing changes

  const SMat a(0, 1, 0), b(0, 0, 1), c(1, 0, 0);
  MatSq f(4);
  f.SetAll(7.0);
  f.FindTransformToCoordSystem(a, b, c);
  SMat v(1, 2, 3), w;
  w.Mult(f, v);
  EXPECT_TRUE(w.Is(2, 3, 1));  // (a·v, b·v, c·v)
  EXPECT_EQ(f(1, 4), 7.0);     // no fourth component to take
  EXPECT_EQ(f(4, 1), 7.0);
}

TEST(MatSq, CharacteristicPolynomial) {
  MatSq i3(3);
  i3.SetUnitary();
  Polinom p(1);
  i3.GetCharPolinom(p);
  ASSERT_EQ(p.GetDegree(), 3);
  EXPECT_EQ(p.GetCoef(0), -1.0);
  EXPECT_EQ(p.GetCoef(1), 3.0);
  EXPECT_EQ(p.GetCoef(2), -3.0);
  EXPECT_EQ(p.GetCoef(3), 1.0);

  // Eigenvalues 2, 3, 4: λ³ − 9λ² + 26λ − 24.
  Make(3, {2, 1, 5, 0, 3, 7, 0, 0, 4}).GetCharPolinom(p);
  EXPECT_EQ(p.GetCoef(0), -24.0);
  EXPECT_EQ(p.GetCoef(1), 26.0);
  EXPECT_EQ(p.GetCoef(2), -9.0);

  Polinom q(1);
  MatSq(2).GetCharPolinom(q);  // only 3×3 matrices
  EXPECT_EQ(q.GetDegree(), 1);
}

}  // namespace
