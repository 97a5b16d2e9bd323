#include <gtest/gtest.h>
#include <znmt64/AffinTransf.h>

#include <cmath>

namespace {

MatSq Identity(int n) {
  MatSq m(n);
  m.SetUnitary();
  return m;
}

TEST(AffinTransf, ConstructionAndCopyKeepShapes) {
  Mat i3 = Identity(3);
  AffinTransf fromMat(i3);  // the overlap with an empty linear part is empty
  EXPECT_EQ(fromMat.m_mL.NRows(), 0);
  EXPECT_EQ(fromMat.m_mL.m_pData, nullptr);

  AffinTransf a(3);
  a.m_mL.SetUnitary();
  a.m_vT.Set(1, 2, 3);
  AffinTransf b(a);  // an empty linear part takes the source's shape
  EXPECT_TRUE(b.m_mL.IsLike(a.m_mL));
  EXPECT_TRUE(b.m_mL.IsIdentity());
  EXPECT_TRUE(b.m_vT.Is(1, 2, 3));
  AffinTransf small(2);  // a shaped linear part keeps its shape
  small = a;
  EXPECT_EQ(small.m_mL.NRows(), 2);
  EXPECT_EQ(small.m_mL[0], 1.0);
  EXPECT_EQ(small.m_mL[3], 0.0);  // a's flat element 3
}

TEST(AffinTransf, InvertNegatesTranslationWithoutTurningIt) {
  AffinTransf a(3);
  a.m_mL.SetUnitary();
  a.m_mL *= 2.0;
  a.m_vT.Set(1, 2, 0);
  a.Invert();
  EXPECT_EQ(a.m_mL(1, 1), 0.5);
  EXPECT_EQ(a.m_mL(3, 3), 0.5);
  EXPECT_EQ(a.m_mL(1, 2), 0.0);
  EXPECT_TRUE(a.m_vT.Is(-1, -2, 0));  // not (−0.5, −1, 0)

  MatSq p(4);
  a.ToProjective(p);
  EXPECT_EQ(p(1, 1), 0.5);
  EXPECT_EQ(p(2, 4), -2.0);
  EXPECT_EQ(p(4, 4), 1.0);
  EXPECT_EQ(p(4, 1), 0.0);
}

TEST(Tensor3, BothIndexOrdersAddressOneBlock) {
  Tensor3 t(2, 3, 4);
  EXPECT_EQ(&t.Elem(1, 0, 0), t.m_pData + 3);  // layers of row-major d1×d2
  EXPECT_EQ(&t(0, 0, 1), t.m_pData + 6);
  EXPECT_EQ(&t(1, 2, 3), t.m_pData + 23);

  Tensor3 u(2, 3, 3);  // put/elem: the third index runs fastest
  u = 0.0;
  u.put(1, 1, SMat(1, 2, 3));
  u.put(2, 3, SMat(4, 5, 6));
  EXPECT_EQ(u.m_pData[0], 1.0);
  EXPECT_EQ(u.m_pData[2], 3.0);
  EXPECT_EQ(u.m_pData[15], 4.0);
  EXPECT_EQ(u.m_pData[17], 6.0);
  SMat v;
  u.elem(v, 2, 3);
  EXPECT_TRUE(v.Is(4, 5, 6));

  Tensor3 w(1, 1, 2);  // only d3 components move
  w = 9.0;
  w.put(1, 1, SMat(1, 2, 3));
  SMat r(7, 7, 7);
  w.elem(r, 1, 1);
  EXPECT_TRUE(r.Is(1, 2, 7));
}

TEST(Tensor3, CrossectionAliasesALayerAndArithmetic) {
  Tensor3 t(2, 2, 3);
  t = 1.0;
  {
    Mat layer(2, 2, false);
    t.GetCrossection(2, layer);  // the alias is never freed by the matrix
    layer(1, 2) = 5.0;
    EXPECT_EQ(layer.GetStore(), t.m_pData + 4);
  }
  EXPECT_EQ(t(0, 1, 1), 5.0);

  Tensor3 s(2, 2, 3);
  s = 2.0;
  t += s;
  t *= 2.0;
  t -= s;
  EXPECT_EQ(t(0, 1, 1), 12.0);
  EXPECT_EQ(t(1, 1, 2), 4.0);

  double* block = t.m_pData;
  t.SetDimensions(1, 2, 3);  // a smaller shape keeps the block and its values
  EXPECT_EQ(t.m_pData, block);
  EXPECT_EQ(t.m_nSize, 6);
  t.Reset();
  EXPECT_EQ(t.m_pData, nullptr);
  EXPECT_EQ(t.m_n1 + t.m_n2 + t.m_n3 + t.m_nSize, 0);
}

TEST(StereographicPoint, SphereMapAndProjectionAreInverse) {
  double s[3];
  C().GetMapRihmanSphere(s);
  EXPECT_EQ(s[0], 0.0);
  EXPECT_EQ(s[2], -1.0);  // the south pole
  const double two[2] = {2.0, 0.0};
  C(two).GetMapRihmanSphere(s);
  EXPECT_EQ(s[0], 1.0);
  EXPECT_EQ(s[2], 0.0);

  C p;
  const double equator[3] = {1, 0, 0}, pole[3] = {0, 0, 1};
  EXPECT_TRUE(p.ProjectStereographic(equator));
  EXPECT_EQ(p.x, 2.0);
  EXPECT_FALSE(p.ProjectStereographic(pole));
  EXPECT_EQ(p.x, 2.0);

  const double z[2] = {-1.5, 0.75};
  C(z).GetMapRihmanSphere(s);
  EXPECT_NEAR(s[0] * s[0] + s[1] * s[1] + s[2] * s[2], 1.0, 1e-15);
  EXPECT_TRUE(p.ProjectStereographic(s));
  EXPECT_TRUE(p == C(z));
  EXPECT_FALSE(p == C());
}

}  // namespace
