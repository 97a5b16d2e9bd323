#include <gtest/gtest.h>
#include <znmt64/MatSq.h>
#include <znmt64/Polinom.h>
#include <znmt64/SMat.h>

#include <cmath>
#include <vector>

namespace {

using V = std::vector<double>;
V Flat(const Mat& m) { return V(m.m_pData, m.m_pData + m.m_nSize); }
MatSq Make(int n, const V& rowMajor) {
  MatSq m(n);
  m.Initze(rowMajor.data());
  return m;
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
  EXPECT_EQ(Make(2, {1, 2, 3, 4}).A(0, 1), -3.0);
  const MatSq m3 = Make(3, {1, 2, 3, 4, 5, 6, 7, 8, 10});
  MatSq minor(2);
  m3.Minor(1, 0, minor);
  EXPECT_EQ(Flat(minor), (V{2, 3, 8, 10}));
  EXPECT_EQ(m3.A(0, 1), 2.0);  // −(4·10 − 6·7)
}

TEST(MatSq, AffineBlocks) {
  const MatSq i3 = Make(3, {1, 0, 0, 0, 1, 0, 0, 0, 1});
  Mat col(3, 1);
  col.Initze(V{1, 2, 3}.data());
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
  Make(3, {2, 1, 5, 0, 3, 7, 0, 0, 4}).GetCharPolinom(p);  // eigenvalues 2, 3, 4
  EXPECT_EQ(Flat(p), (V{-24, 26, -9, 1}));
  MatSq(2).GetCharPolinom(p);  // only 3×3 matrices
  EXPECT_EQ(Flat(p), (V{-24, 26, -9, 1}));
}

}  // namespace
