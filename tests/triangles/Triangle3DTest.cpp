#include <znmt64/CMFrame.h>
#include <znmt64/Triangle3D.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

// v is (x, y, z) within tol; usable inside a larger condition.
::testing::AssertionResult Near(const SMat& v, double x, double y, double z, double tol = 1e-12) {
  if (std::fabs(v.x - x) <= tol && std::fabs(v.y - y) <= tol && std::fabs(v.z - z) <= tol)
    return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "(" << v.x << ", " << v.y << ", " << v.z << ")";
}

Triangle3D Tri(const SMat& a, const SMat& b, const SMat& c) {
  const SMat p[3] = {a, b, c};
  return Triangle3D(p);
}

}  // namespace

TEST(Triangle3D, SidesRunModuloThree) {
  Triangle3D t = Tri(SMat(0, 0, 0), SMat(4, 0, 0), SMat(0, 3, 0));
  SMat a, b;
  t.GetSides(1, a, b);  // leaving P1: towards P2, then towards P0
  EXPECT_TRUE(a.Is(-4, 3, 0) && b.Is(-4, 0, 0));

  CSegment s;
  EXPECT_TRUE(t.GetSide(0, 2, s) && s.origin.Is(0, 3, 0));  // corners 0 and 2: side 2, from P2
  EXPECT_TRUE(t.GetSide(1, s, true) && s.dir.Is(0.8, -0.6, 0));
  EXPECT_FALSE(t.GetSide(1, 1, s));
  t.SetVertex(1, 0, 0, 0);
  EXPECT_FALSE(t.GetSide(0, s));
}

TEST(Triangle3D, MeasuresKeepTheParallelogramArea) {
  const Triangle3D t = Tri(SMat(0, 0, 0), SMat(1, 0, 0), SMat(0, 1, 0));
  EXPECT_DOUBLE_EQ(t.Area(), 1.0);  // twice the triangle's 0.5
  EXPECT_TRUE(t.IsValid(0.999) && !t.IsValid(1.0));
  EXPECT_NEAR(t.GetCornerAngle(0) + t.GetCornerAngle(1) + t.GetCornerAngle(2), 3.14159265358979, 1e-14);
  EXPECT_EQ(t.GetCornerAngle(3), -9.42477796076938);
  int ind = -1;
  EXPECT_DOUBLE_EQ(t.GetDistVertex(SMat(-1, 0.5, 0), &ind), std::sqrt(1.25));  // as near P0 as P2
  EXPECT_EQ(ind, 0);

  const Triangle3D flat = Tri(SMat(0, 0, 0), SMat(1, 1, 1), SMat(2, 2, 2));
  SMat n;
  CMFrame f;
  EXPECT_FALSE(flat.IsValid(0.0) || flat.GetNormal(n, 1e-10) || flat.GetFrame(f, true));
  EXPECT_TRUE(f.IsUnitary());  // untouched

  // A small triangle's raw product (4e-12) is below tol; its unit sides still give the normal.
  const Triangle3D small = Tri(SMat(0, 0, 0), SMat(0, 2e-6, 0), SMat(0, 0, 2e-6));
  EXPECT_TRUE(!small.GetNormalMin(n, 1e-10) && small.GetNormal(n, 1e-10) && Near(n, 1, 0, 0));
  EXPECT_FALSE(Tri(SMat(0, 0, 0), SMat(0, 5e-11, 0), SMat(0, 0, 1)).GetNormal(n, 1e-10));
}

TEST(Triangle3D, FrameTakesTheCachedNormalUnlessIgnored) {
  Triangle3D t = Tri(SMat(1, 1, 1), SMat(3, 1, 1), SMat(1, 4, 1));
  CMFrame f;
  EXPECT_TRUE(t.GetFrame(f, false) && f.axes[1].Is(0, 1, 0));  // nothing cached yet
  t.vNormal.Set(0, 0, -2);
  EXPECT_TRUE(t.GetFrame(f, false) && f.axes[1].Is(0, -1, 0) && f.axes[2].Is(0, 0, -1));
  EXPECT_TRUE(t.GetFrame(f, true) && f.axes[2].Is(0, 0, 1));

  const Triangle3D copy(t);  // the cache is not copied, nor assigned: the target keeps its own
  Triangle3D target;
  target.vNormal.Set(1, 0, 0);
  target = t;
  EXPECT_TRUE(copy.vNormal.SquareNorm() == 0.0 && Near(target.vNormal, 1, 0, 0));
}

TEST(Triangle3D, PlaneAndFlatCopies) {
  const Triangle3D t = Tri(SMat(1, 1, 1), SMat(3, 1, 1), SMat(2, 4, 1));
  CPlane pl;
  const double n[3] = {0, 0, 5};
  const double zero[3] = {0, 0, 5e-11};
  EXPECT_TRUE(t.GetPlane(pl, n) && pl.dir.Is(0, 0, 5));  // as given, not normalised
  EXPECT_TRUE(t.GetPlane(pl, zero) && pl.dir.Is(0, 0, 1));

  Triangle2D flat;
  EXPECT_TRUE(t.To2D(flat) && flat.m_p[1] == C2DPoint(2, 0) && flat.m_p[2] == C2DPoint(1, 3));
  // y >= 0 whichever way the corners turn.
  EXPECT_TRUE(Tri(SMat(0, 0, 0), SMat(2, 0, 0), SMat(1, -3, 0)).To2D(flat) && flat.m_p[2] == C2DPoint(1, 3));
  EXPECT_FALSE(Tri(SMat(1, 1, 1), SMat(1, 1, 1), SMat(0, 0, 0)).To2D(flat));
}

TEST(Triangle3D, BarycentricPointsAndDivision) {
  Triangle3D t = Tri(SMat(0, 0, 0), SMat(4, 0, 0), SMat(0, 4, 0));
  SMat p;
  t.GetPointBaricentr(1, 1, 2, p);  // the weights are scaled to sum 1
  EXPECT_TRUE(Near(p, 1, 2, 0));
  Bar w;
  w.SetEdgeVert(1, 2);
  t.GetPointBaricentr(w, p);
  EXPECT_TRUE(Near(p, 2, 0, 0));

  Triangle3D other;
  t.Divide(0, p, other);  // this (P0, p, P2), other (p, P1, P2): both counter-clockwise
  EXPECT_TRUE(t.m_p[1].Is(2, 0, 0) && other.m_p[0].Is(2, 0, 0) && other.m_p[1].Is(4, 0, 0));
  t.Divide(1, 1.0, 0, other);  // 1 along side 1, from (2, 0, 0) towards (0, 4, 0)
  EXPECT_TRUE(Near(other.m_p[1], 2 - 1 / std::sqrt(5.0), 2 / std::sqrt(5.0), 0, 1e-15));
}

TEST(Triangle3D, LocationMapsAndText) {
  EXPECT_EQ(Triangle3D::To3DLocn(Corner2D::eCornerInside), CPlane::ePositive);
  EXPECT_EQ(Triangle3D::ToLocn3D(CPlane::eSegmCrossing), CPlane::eOnPlane);  // a crossing is "in"
  EXPECT_TRUE(Triangle3D::IsOnEdge(SimplPointBase::eNearSide));

  EXPECT_STREQ(Tri(SMat(0, 0, 0), SMat(1, 0, 0), SMat(0, 1, 0)).ToString(),
               "(0.000000, 0.000000, 0.000000) (1.000000, 0.000000, 0.000000) (0.000000, 1.000000, 0.000000) ");
}
