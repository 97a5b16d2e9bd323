#include <gtest/gtest.h>
#include <znmt64/MatSq.h>
#include <znmt64/Polinom.h>
#include <znmt64/SMat.h>

#include <cmath>

#include "AlgebraTestUtil.h"

namespace {

MatSq Square(int n, const V& rowMajor) {
  MatSq m(n);
  m.Initze(rowMajor.data());
  return m;
}

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

TEST(MatSq, DiagonalPlacementAndTraces) {
  EXPECT_EQ(Flat(MatSq(1, 2, 3)), (V{1, 0, 0, 0, 2, 0, 0, 3, 0}));  // c at flat 7, (3, 2)
  MatSq two(2);  // flat elements 4 and 7 lie past a 2×2 block
  two.SetDiag(5, 6, 7);
  EXPECT_EQ(Flat(two), (V{5, 0, 0, 0}));
  MatSq i4(4);
  i4.SetUnitary();
  EXPECT_EQ(V({i4.Trace(), i4.Tr()}), (V{4, 3}));  // the whole diagonal, the first three
}

TEST(MatSq, MinorsAndCofactors) {
  EXPECT_EQ(Square(2, {1, 2, 3, 4}).A(0, 1), -3.0);
  const MatSq m3 = Square(3, {1, 2, 3, 4, 5, 6, 7, 8, 10});
  MatSq minor(2);
  m3.Minor(1, 0, minor);
  EXPECT_EQ(Flat(minor), (V{2, 3, 8, 10}));
  EXPECT_EQ(m3.A(0, 1), 2.0);  // −(4·10 − 6·7)
}

TEST(MatSq, AffineBlocks) {
  const MatSq i3 = Square(3, {1, 0, 0, 0, 1, 0, 0, 0, 1});
  Mat col = Make(3, 1, {1, 2, 3});
  MatSq a(4);
  a.SetAffinne(i3, col);
  EXPECT_EQ(Flat(a), (V{1, 0, 0, 1, 0, 1, 0, 2, 0, 0, 1, 3, 0, 0, 0, 1}));
  // GetTranslation places the first column from (n, n) on: on a 4×4 only (4, 4) is inside.
  MatSq big(4);
  a.GetTranslation(big);
  EXPECT_EQ(Flat(big), (V{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1}));
  a.GetTranslation(col);  // a 3×1 receives nothing
  EXPECT_EQ(Flat(col), (V{1, 2, 3}));
}

TEST(MatSq, RotationBlockAndCoordinateTransform) {
  MatSq r(3);
  r.SetAll(9.0);
  r.CreateRotationMatr(0.5);  // only the top-left 2×2 block
  const double c = std::cos(0.5), s = std::sin(0.5);
  EXPECT_EQ(Flat(r), (V{c, -s, 9, s, c, 9, 9, 9, 9}));
  MatSq f(4);  // rows a, b, c; no SMat has a fourth component to give
  f.SetAll(7.0);
  f.FindTransformToCoordSystem(SMat(0, 1, 0), SMat(0, 0, 1), SMat(1, 0, 0));
  EXPECT_EQ(Flat(f), (V{0, 1, 0, 7, 0, 0, 1, 7, 1, 0, 0, 7, 7, 7, 7, 7}));
}

TEST(MatSq, CharacteristicPolynomial) {
  Polinom p(1);
  Square(3, {2, 1, 5, 0, 3, 7, 0, 0, 4}).GetCharPolinom(p);  // eigenvalues 2, 3, 4
  EXPECT_EQ(Flat(p), (V{-24, 26, -9, 1}));
  MatSq(2).GetCharPolinom(p);  // only 3×3 matrices
  EXPECT_EQ(Flat(p), (V{-24, 26, -9, 1}));
}

TEST(Polinom, Construction) {
  EXPECT_EQ(Flat(Polinom(3)), (V{0, 0, 0, 1}));  // the monic x³
  const Polinom fromRow(Make(2, 3, {4, 5, 6, 7, 8, 9}));  // the first row gives the coefficients
  EXPECT_TRUE(fromRow.GetCoef(2) == 6.0 && fromRow.GetDegree() == 2);
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
