#include <znmt64/Triangle3D.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

using L = SimplPointBase;

Triangle3D Tri(const SMat& a, const SMat& b, const SMat& c) {
  const SMat p[3] = {a, b, c};
  return Triangle3D(p);
}

// Legs of 2 along x and y in the plane z = 0.
const Triangle3D kRight = Tri(SMat(0, 0, 0), SMat(2, 0, 0), SMat(0, 2, 0));
const Triangle3D kLine = Tri(SMat(0, 0, 0), SMat(1, 0, 0), SMat(2, 0, 0));

}  // namespace

TEST(PointLocation, CodesAndTheirTolerances) {
  const Triangle3D& t = kRight;
  const Triangle3D sliver = Tri(SMat(0, 0, 0), SMat(1, 0, 0), SMat(0.5, 1e-9, 0));
  const Triangle3D tilted = Tri(SMat(1, 0, 0), SMat(0, 1, 0), SMat(0, 0, 1));
  Triangle3D cached = kRight;
  cached.vNormal.Set(1, 0, 0);
  const double up[3] = {0, 0, 1}, x[3] = {1, 0, 0};
  const struct {
    const Triangle3D& tri;
    SMat p;
    L::ELocn locn;
    const double* normal = nullptr;
    double tol = 1e-10;
  } cases[] = {
      {t, SMat(0.5, 0.5, 0), L::eInside},       {t, SMat(2, 0, 0), L::eAtCorner},
      {t, SMat(3, 3, 0), L::eOutside},          {tilted, SMat(0.5, 0, 0.5), L::eOnSide},
      {t, SMat(0.5, 0.5, 2e-10), L::eOffPlane}, {t, SMat(0.5, 0.5, 5e-11), L::eInside},
      // The 2D point tolerance is 1e-8; the near zone opens only with a larger tol.
      {t, SMat(0.5, 5e-9, 0), L::eOnSide},      {t, SMat(0.5, 2e-8, 0), L::eInside},
      {t, SMat(0.5, 1e-4, 0), L::eNearSide, nullptr, 1e-3},
      {sliver, SMat(0.5, 0, 0), L::eFlat},      {kLine, SMat(0.5, 0, 0), L::eUndetermined, up},  // no frame
      // The plane test takes pNormal, else the cached normal, else the triangle's own.
      {t, SMat(0.5, 0.5, 0), L::eOffPlane, x},  {cached, SMat(0.5, 0.5, 0), L::eOffPlane},
      {cached, SMat(0.5, 0.5, 0), L::eInside, up}};
  for (const auto& c : cases)
    EXPECT_EQ(c.tri.GetPointLocation(c.p, c.normal, c.tol), c.locn) << c.p.x << " " << c.p.y << " " << c.p.z;

  const double down[3] = {0, 0, -1};
  EXPECT_EQ(t.GetPtLocation3D(SMat(0.5, 0.5, 1)), CPlane::ePositive);
  EXPECT_EQ(t.GetPtLocation3D(SMat(0.5, 0.5, 1), down), CPlane::eNegative);
  EXPECT_EQ(t.GetPtLocation3D(SMat(0, 0, 0), nullptr, 0.0), CPlane::eOnPlane);
  // Within tol the cosine decides: near P0 a small height counts, far from it it does not.
  EXPECT_EQ(t.GetPtLocation3D(SMat(1e-9, 0, 5e-11)), CPlane::ePositive);
  EXPECT_EQ(t.GetPtLocation3D(SMat(1000, 0, 5e-11)), CPlane::eOnPlane);
}

TEST(PointLocation, LocatedPointTakesTheResult) {
  SimplPoint sp(SMat(1, 0.5, 0));
  EXPECT_EQ(kRight.GetPointLocation2(sp), L::eInside);
  EXPECT_NEAR(sp.adSideDist[1], 0.5 / std::sqrt(2.0), 1e-15);

  sp.m_pt.Set(0.5, 0, 0);
  sp.bSidePosn = true;
  EXPECT_EQ(kRight.GetPointLocation2(sp), L::eOnSide);
  EXPECT_TRUE(sp.m_nInd == 0 && sp.dSidePosn == 0.5);
  sp.m_pt.Set(0.5, 1e-4, 0);  // within dTol2: near the side, or snapped onto it
  EXPECT_EQ(kRight.GetPointLocation2(sp), L::eNearSide);
  sp.bInParam2 = true;
  EXPECT_EQ(kRight.GetPointLocation2(sp), L::eOnSide);

  sp.m_pt.Set(0.5, 0.5, 1e-6);
  EXPECT_TRUE(kRight.GetPointLocation2(sp) == L::eOffPlane && sp.m_eLocn == L::eOffPlane);
  sp.bInPlane = true;  // trusted: the projection is located
  EXPECT_EQ(kRight.GetPointLocation2(sp), L::eInside);
  sp.bInPlane = false;
  sp.m_nInd = 2;
  EXPECT_EQ(kLine.GetPointLocation2(sp), L::eUndetermined);
  EXPECT_TRUE(sp.m_eLocn == L::eInside && sp.m_nInd == 2);  // untouched
}

TEST(PointLocation, RecordsResetAndCopyByTheirRules) {
  SimplPoint a(SMat(1, 2, 3));
  a.m_eLocn = L::eOnSide;
  a.m_nInd = 1;
  a.bSidePosn = a.bInPlane = true;
  a.dTol = 1e-6;
  a.dTol2 = 1e-3;
  a.adSideDist[0] = 4.0;
  const SimplPoint b(a);  // the result comes along, the options, dTol and distances do not
  EXPECT_TRUE(b.IsSame(a) && b.dTol2 == 1e-3 && b.dTol == 1e-10 && b.adSideDist[0] == -1.0);
  SimplPoint c;
  c.CopyInMembers(a);
  EXPECT_TRUE(c.bInPlane && c.dTol == 1e-6);
  a.Reset();  // the location stays until the base's Reset
  EXPECT_TRUE(a.m_eLocn == L::eOnSide && !a.bInPlane);

  SimplPointBase p(SMat(1, 0, 0)), q(SMat(1, 0, 5e-11));
  p.m_eLocn = q.m_eLocn = L::eOnSide;
  q.m_nInd = 1;
  EXPECT_TRUE(!p.IsSame(q) && p.IsSame2(q));
}

TEST(PointLocation, SnappingToSidesAndCorners) {
  SimplPoint sp(SMat(1e-4, 0.5, 0));  // its foot on side 0 is 1e-4 from corner 0
  EXPECT_TRUE(sp.StickToSideModify(0, kRight) && sp.m_eLocn == L::eAtCorner && sp.m_pt == SMat(0, 0, 0));
  EXPECT_FALSE(sp.StickToSideModify(0, kRight));
  sp.m_pt.Set(2 - 1e-4, 0.2, 0);
  EXPECT_FALSE(sp.StickToSideModify(0, kRight));  // already at a corner: moved to the foot only
  EXPECT_EQ(sp.m_pt, SMat(2 - 1e-4, 0, 0));
  sp.m_pt.Set(1, 0.1, 0);
  EXPECT_TRUE(sp.StickToSideModify(0, kRight));  // away from the ends a side wins, corner or not
  EXPECT_TRUE(sp.m_eLocn == L::eOnSide && sp.dSidePosn == 1.0);

  const double cornerTol[3] = {1e-5, 1e-5, 1e-5};
  SimplPoint g(SMat(0.3, 0.3, 0));
  EXPECT_FALSE(g.StickGeometry(kRight, cornerTol));  // nothing known, nothing snapped
  g.adCornerDist[1] = 1e-6;
  g.adCornerDist[2] = 5e-7;
  EXPECT_TRUE(g.StickGeometry(kRight, cornerTol));  // the first corner, not the nearest
  EXPECT_TRUE(g.m_nInd == 1 && g.m_pt == SMat(0.3, 0.3, 0));  // and the point is not moved
  g.adSideDist[0] = 0.0;
  EXPECT_FALSE(g.StickGeometry(kRight, cornerTol));  // a corner location is never overridden

  SimplPoint h;
  h.adSideDist[0] = 1e-4;
  h.adSideDist[1] = 5e-5;
  EXPECT_TRUE(h.StickGeometry(kRight, cornerTol) && h.m_nInd == 1);  // the nearer at their common corner
  EXPECT_FALSE(h.StickGeometry(kRight, cornerTol));  // already on a side
  h.m_eLocn = L::eInside;
  h.adSideDist[1] = -1.0;
  h.adSideDist[2] = 3e-4;  // known, but not near
  EXPECT_TRUE(h.StickGeometry(kRight, nullptr) && h.m_nInd == 0);
}

TEST(PointLocation, NearnessAndNearestSides) {
  SimplPoint sp;
  sp.adSideDist[0] = 0.0;
  sp.adCornerDist[1] = 2e-5;
  EXPECT_FALSE(sp.IsNearEdge());  // 0 and unknown distances do not count, 2e-5 is too far
  sp.adSideDist[2] = 5e-6;
  EXPECT_TRUE(sp.IsNearEdge());
  sp.m_eLocn = L::eOnSide;
  EXPECT_FALSE(sp.IsNearEdge());

  SimplPoint p(SMat(1, 0.1, 0));
  EXPECT_EQ(p.GetNearestSide(1, kRight, false), 1);  // nothing known: no comparison
  p.adCornerDist[0] = 0.1;
  p.adCornerDist[1] = 1.0;
  EXPECT_EQ(p.GetNearestSide(1, kRight, false), 0);  // corner 0 is near enough to compare
  EXPECT_NEAR(p.adSideDist[1], 0.9 / std::sqrt(2.0), 1e-15);
  EXPECT_EQ(p.CalcNearestSide(kRight), 0);
  p.adSideDist[0] = 7.0;  // cached values are not recomputed
  EXPECT_EQ(p.CalcNearestSide(kRight), 1);
  EXPECT_EQ(p.GetNearestSide(0, kRight, true), 1);
}
