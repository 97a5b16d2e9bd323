#include <znmt64/CMFrame.h>
#include <znmt64/Triangle3D.h>

#include <gtest/gtest.h>
#include <znbl64/Range.h>

#include <cmath>

namespace {

void ExpectVec(const SMat& v, double x, double y, double z, double tol = 1e-12) {
  EXPECT_NEAR(v.x, x, tol);
  EXPECT_NEAR(v.y, y, tol);
  EXPECT_NEAR(v.z, z, tol);
}

Triangle3D Tri(const SMat& a, const SMat& b, const SMat& c) {
  const SMat p[3] = {a, b, c};
  return Triangle3D(p);
}

// The unit right triangle of the z = 0 plane.
Triangle3D Unit() { return Tri(SMat(0, 0, 0), SMat(1, 0, 0), SMat(0, 1, 0)); }

}  // namespace

TEST(Triangle3D, CornersAndSidesRunModuloThree) {
  Triangle3D t = Tri(SMat(0, 0, 0), SMat(4, 0, 0), SMat(0, 3, 0));
  EXPECT_EQ(&t.GetNextPoint(2), &t.m_p[0]);
  EXPECT_EQ(&t.GetPrevPoint(0), &t.m_p[2]);
  EXPECT_EQ(&t.GetNextPoint(-1), &t.m_p[0]);

  SMat v(9, 9, 9);
  t.GetSide(2, v);  // P2 -> P0
  ExpectVec(v, 0, -3, 0);
  t.GetSide(3, v);
  ExpectVec(v, 0, -3, 0);
  SMat a, b;
  t.GetSides(1, a, b);  // leaving P1: towards P2, then towards P0
  ExpectVec(a, -4, 3, 0);
  ExpectVec(b, -4, 0, 0);
  EXPECT_DOUBLE_EQ(t.GetSideLength(1), 5.0);
  EXPECT_EQ(t.GetSideLength(3), 0.0);

  CSegment s;
  ASSERT_TRUE(t.GetSide(0, 2, s));  // corners 0 and 2 are joined by side 2, from P2
  ExpectVec(s.origin, 0, 3, 0);
  EXPECT_DOUBLE_EQ(s.length, 3.0);
  ASSERT_TRUE(t.GetSide(1, s, true));
  ExpectVec(s.origin, 0, 3, 0);
  ExpectVec(s.dir, 0.8, -0.6, 0);
  EXPECT_FALSE(t.GetSide(1, 1, s));
  t.SetVertex(1, 0, 0, 0);
  EXPECT_FALSE(t.GetSide(0, s));
  t.SetVertex(3, 7, 7, 7);  // no such corner
  ExpectVec(t.m_p[2], 0, 3, 0);
}

TEST(Triangle3D, MeasuresKeepTheParallelogramArea) {
  const Triangle3D t = Unit();
  EXPECT_DOUBLE_EQ(t.Area(), 1.0);  // twice the triangle's 0.5
  EXPECT_TRUE(t.IsValid(0.999));
  EXPECT_FALSE(t.IsValid(1.0));
  EXPECT_DOUBLE_EQ(t.GetShortestSide(), 1.0);
  EXPECT_DOUBLE_EQ(t.GetSize(), std::sqrt(2.0));
  EXPECT_NEAR(t.GetCornerAngle(0) + t.GetCornerAngle(1) + t.GetCornerAngle(2), 3.14159265358979, 1e-14);
  EXPECT_EQ(t.GetCornerAngle(3), -9.42477796076938);

  int ind = -1;
  EXPECT_DOUBLE_EQ(t.GetDistVertex(SMat(-1, 0.5, 0), &ind), std::sqrt(1.25));  // as near P0 as P2
  EXPECT_EQ(ind, 0);
  RangeR1 r;
  t.GetAxisProjection(1, r);
  EXPECT_EQ(r.GetMin(), 0.0);
  EXPECT_EQ(r.GetMax(), 1.0);

  const Triangle3D flat = Tri(SMat(0, 0, 0), SMat(1, 1, 1), SMat(2, 2, 2));
  EXPECT_EQ(flat.Area(), 0.0);
  EXPECT_FALSE(flat.IsValid(0.0));
  SMat n;
  EXPECT_FALSE(flat.GetNormal(n, 1e-10));
  CMFrame f;
  EXPECT_FALSE(flat.GetFrame(f, true));
  EXPECT_TRUE(f.IsUnitary());  // untouched
}

TEST(Triangle3D, NormalRescuesSmallTriangles) {
  const Triangle3D small = Tri(SMat(0, 0, 0), SMat(0, 2e-6, 0), SMat(0, 0, 2e-6));
  SMat n;
  EXPECT_FALSE(small.GetNormalMin(n, 1e-10));  // raw product 4e-12
  ASSERT_TRUE(small.GetNormal(n, 1e-10));
  ExpectVec(n, 1, 0, 0);
  const Triangle3D tiny = Tri(SMat(0, 0, 0), SMat(0, 5e-11, 0), SMat(0, 0, 1));
  EXPECT_FALSE(tiny.GetNormal(n, 1e-10));  // a side below tol: no rescue

  CLineal axis;
  ASSERT_TRUE(Unit().GetNormal(axis));
  ExpectVec(axis.dir, 0, 0, 1);
}

TEST(Triangle3D, FrameTakesTheCachedNormalUnlessIgnored) {
  Triangle3D t = Tri(SMat(1, 1, 1), SMat(3, 1, 1), SMat(1, 4, 1));
  CMFrame f;
  ASSERT_TRUE(t.GetFrame(f, false));  // nothing cached yet
  ExpectVec(f.origin, 1, 1, 1);
  ExpectVec(f.axes[0], 1, 0, 0);
  ExpectVec(f.axes[1], 0, 1, 0);
  ExpectVec(f.axes[2], 0, 0, 1);

  t.vNormal.Set(0, 0, -2);  // a cached normal, taken as it points
  ASSERT_TRUE(t.GetFrame(f, false));
  ExpectVec(f.axes[1], 0, -1, 0);
  ExpectVec(f.axes[2], 0, 0, -1);
  ASSERT_TRUE(t.GetFrame(f, true));
  ExpectVec(f.axes[2], 0, 0, 1);

  const Triangle3D copy(t);  // the cache is not copied
  EXPECT_EQ(copy.vNormal.SquareNorm(), 0.0);
  Triangle3D target;
  target.vNormal.Set(1, 0, 0);
  target = t;  // nor assigned: the target keeps its own
  ExpectVec(target.vNormal, 1, 0, 0);
}

TEST(Triangle3D, PlaneAndFlatCopies) {
  const Triangle3D t = Tri(SMat(1, 1, 1), SMat(3, 1, 1), SMat(2, 4, 1));
  CPlane pl;
  const double n[3] = {0, 0, 5};
  ASSERT_TRUE(t.GetPlane(pl, n));
  ExpectVec(pl.origin, 1, 1, 1);
  ExpectVec(pl.dir, 0, 0, 5);  // as given, not normalised
  const double zero[3] = {0, 0, 5e-11};
  ASSERT_TRUE(t.GetPlane(pl, zero));
  ExpectVec(pl.dir, 0, 0, 1);

  Triangle2D flat;
  ASSERT_TRUE(t.To2D(flat));
  EXPECT_EQ(flat.m_p[0], C2DPoint(0, 0));
  EXPECT_EQ(flat.m_p[1], C2DPoint(2, 0));
  EXPECT_EQ(flat.m_p[2], C2DPoint(1, 3));
  const Triangle3D mirrored = Tri(SMat(0, 0, 0), SMat(2, 0, 0), SMat(1, -3, 0));
  ASSERT_TRUE(mirrored.To2D(flat));
  EXPECT_EQ(flat.m_p[2], C2DPoint(1, 3));  // y >= 0 always
  EXPECT_FALSE(Tri(SMat(1, 1, 1), SMat(1, 1, 1), SMat(0, 0, 0)).To2D(flat));

  CMFrame f;
  f.SetOrigin(1, 1, 0);
  t.To2D(f, flat);
  EXPECT_EQ(flat.m_p[2], C2DPoint(1, 3));
}

TEST(Triangle3D, BarycentricPointsAndDivision) {
  Triangle3D t = Tri(SMat(0, 0, 0), SMat(4, 0, 0), SMat(0, 4, 0));
  SMat p;
  t.GetPointBaricentr(1, 1, 2, p);  // weights scaled to sum 1
  ExpectVec(p, 1, 2, 0);
  Bar w;
  w.SetEdgeVert(1, 2);
  t.GetPointBaricentr(w, p);
  ExpectVec(p, 2, 0, 0);

  Triangle3D other;
  t.Divide(0, p, other);
  ExpectVec(t.m_p[1], 2, 0, 0);
  ExpectVec(t.m_p[2], 0, 4, 0);
  ExpectVec(other.m_p[0], 2, 0, 0);
  ExpectVec(other.m_p[1], 4, 0, 0);
  SMat n1, n2;
  ASSERT_TRUE(t.GetNormal(n1, 1e-10) && other.GetNormal(n2, 1e-10));
  ExpectVec(n1, 0, 0, 1);
  ExpectVec(n2, 0, 0, 1);

  t.Divide(1, 1.0, 0, other);  // 1 along side 1 from (2, 0, 0) towards (0, 4, 0)
  ExpectVec(other.m_p[1], 2 - 1 / std::sqrt(5.0), 2 / std::sqrt(5.0), 0, 1e-15);
}

TEST(Triangle3D, LocationMapsAndText) {
  EXPECT_EQ(Triangle3D::To3DLocn(Corner2D::eCornerInside), CPlane::ePositive);
  EXPECT_EQ(Triangle3D::To3DLocn(Corner2D::eCornerOnExtension), CPlane::eOnPlane);
  EXPECT_EQ(Triangle3D::To3DLocn(Corner2D::eCornerOutside), CPlane::eNegative);
  EXPECT_EQ(Triangle3D::To3DLocn(Corner2D::eCornerUndefined), CPlane::eLocnUndefined);
  EXPECT_EQ(Triangle3D::ToLocn3D(CPlane::eSegmBelow), CPlane::eNegative);
  EXPECT_EQ(Triangle3D::ToLocn3D(CPlane::eSegmAbove), CPlane::ePositive);
  EXPECT_EQ(Triangle3D::ToLocn3D(CPlane::eSegmCrossing), CPlane::eOnPlane);
  EXPECT_EQ(Triangle3D::ToLocn3D(CPlane::eSegmUndefined), CPlane::eLocnUndefined);
  EXPECT_TRUE(Triangle3D::IsOnEdge(SimplPointBase::eNearSide));
  EXPECT_FALSE(Triangle3D::IsOnEdge(SimplPointBase::eInside));
  EXPECT_FALSE(Triangle3D::IsOnEdge(SimplPointBase::eOutside));

  EXPECT_STREQ(Unit().ToString(),
               "(0.000000, 0.000000, 0.000000) (1.000000, 0.000000, 0.000000) (0.000000, 1.000000, 0.000000) ");
}
