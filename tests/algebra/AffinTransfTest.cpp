#include <gtest/gtest.h>
#include <znmt64/AffinTransf.h>

#include <vector>

namespace {

using V = std::vector<double>;
V Flat(const double* p, int n) { return V(p, p + n); }

TEST(AffinTransf, CopiesInvertAndProjectiveForm) {
  MatSq i3(3);
  i3.SetUnitary();
  EXPECT_EQ(AffinTransf(i3).m_mL.NRows(), 0);  // the overlap with an empty linear part
  AffinTransf a(3);
  a.m_mL = i3;
  a.m_mL *= 2.0;
  a.m_vT.Set(1, 2, 0);
  AffinTransf b(a);  // an empty linear part takes the source's shape
  EXPECT_TRUE(b.m_mL.IsLike(a.m_mL) && b.m_mL.EqualsTo(a.m_mL) && b.m_vT.Is(1, 2, 0));
  a.Invert();  // the translation is negated, not turned by the inverse
  MatSq p(4);
  a.ToProjective(p);
  EXPECT_EQ(Flat(p.m_pData, 16), (V{0.5, 0, 0, -1, 0, 0.5, 0, -2, 0, 0, 0.5, 0, 0, 0, 0, 1}));
}

TEST(Tensor3, BothIndexOrdersAddressOneBlock) {
  Tensor3 t(2, 3, 4);  // layers of row-major d1×d2, then the put/elem order
  EXPECT_EQ(&t.Elem(1, 0, 0) - t.m_pData, 3);
  EXPECT_EQ(&t(0, 0, 1) - t.m_pData, 6);
  EXPECT_EQ(&t(1, 2, 3) - t.m_pData, 23);
  Tensor3 u(2, 3, 3);  // the third index runs fastest
  u.put(1, 1, SMat(1, 2, 3));
  u.put(2, 3, SMat(4, 5, 6));
  EXPECT_EQ(Flat(u.m_pData, 3), (V{1, 2, 3}));
  EXPECT_EQ(Flat(u.m_pData + 15, 3), (V{4, 5, 6}));
  Tensor3 w(1, 1, 2);  // only d3 components move
  w.put(1, 1, SMat(1, 2, 3));
  SMat r(7, 7, 7);
  w.elem(r, 1, 1);
  EXPECT_TRUE(r.Is(1, 2, 7));
  {
    Mat layer(2, 3, false);
    t.GetCrossection(2, layer);  // aliases layer 2; the matrix never frees it
    layer(2, 1) = 5.0;
  }
  EXPECT_EQ(t(1, 0, 1), 5.0);
}

TEST(StereographicPoint, SphereMapAndProjectionAreInverse) {
  double s[3];
  const double two[2] = {2.0, 0.0}, z[2] = {-1.5, 0.75};
  C().GetMapRihmanSphere(s);
  EXPECT_EQ(Flat(s, 3), (V{0, 0, -1}));
  C(two).GetMapRihmanSphere(s);
  EXPECT_EQ(Flat(s, 3), (V{1, 0, 0}));
  C p;
  const double pole[3] = {0, 0, 1};
  EXPECT_TRUE(p.ProjectStereographic(s) && p == C(two));
  EXPECT_FALSE(p.ProjectStereographic(pole));  // the point stays
  EXPECT_TRUE(p == C(two));
  C(z).GetMapRihmanSphere(s);
  EXPECT_TRUE(p.ProjectStereographic(s) && p == C(z));
}

}  // namespace
