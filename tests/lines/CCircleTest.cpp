#include <znmt64/CCircle.h>
#include <znmt64/CMFrame.h>

#include <cmath>
#include <utility>

#include "LinesTestUtil.h"

namespace {
constexpr double kPi = 3.14159265358979;
}

TEST(CCircle, LocationBandsOnTheSquaredDistance) {
  const CCircle c;  // unit circle about the origin, axis z
  const std::pair<SMat, int> bands[] = {{SMat(0.99999, 0, 0), -1}, {SMat(1 - 1e-11, 0, 0), 0},
                                        {SMat(1 + 6e-11, 0, 0), 1},  // 1.2e-10 over on the square
                                        {SMat(0, 0, 1e-9), 1}};      // off the plane
  for (const auto& [p, locn] : bands) EXPECT_EQ(c.GetPointLocation(p), locn) << p.x << " " << p.z;
  EXPECT_EQ(c.GetPointLocationPlanar(SMat(0, 0, 1e-9)), -1);

  EXPECT_EQ(c.GetLocationWRT(Line(0, 0, 2, 0, 0, 1)), CPlane::eLineBelow);
  EXPECT_EQ(c.GetLocationWRT(Line(0, 0, 0, 0, 0, -1)), CPlane::eLineInPlane);
  EXPECT_EQ(c.GetLocationWRT(Line(0.5, 0, 0, 1, 0, 0)), CPlane::eLineCrossing);
  EXPECT_EQ(c.GetLocationWRT(Line(1, 0, 0, -1, 0, 0)), CPlane::eLineAbove);  // touching
}

TEST(CCircle, PlaneIntersectionCounts) {
  const CCircle c;
  SMat pts[2];
  EXPECT_TRUE(c.IntersectPlane(Line(0.5, 0, 0, 1, 0, 0), pts) == 2 && Near(pts[1], 0.5, -std::sqrt(0.75), 0));
  EXPECT_TRUE(c.IntersectPlane(Line(1, 0, 0, 1, 0, 0), pts) == 1 && Near(pts[0], 1, 0, 0));
  // The offset to the common line is left in pts[0].
  EXPECT_TRUE(c.IntersectPlane(Line(1.5, 0, 0, 1, 0, 0), pts) == 0 && Near(pts[0], 1.5, 0, 0));
  EXPECT_EQ(c.IntersectPlane(Line(3, 4, 0, 0, 0, 1), pts), 3);
  EXPECT_EQ(c.IntersectPlane(Line(0, 0, 1, 0, 0, 1), pts), 0);

  SMat p1, p2;
  ASSERT_TRUE(c.IntersectPlane(Line(-1, 0, 0, 1, 0, 0), p1, p2));
  EXPECT_TRUE(p1.Is(-1, 0, 0) && p2.Is(0, 0, 0));  // p2 not computed for one point

  CCircle d;
  d.dir.Set(1, 0, 0);
  EXPECT_TRUE(c.IntersectCocentric(d, pts, 1e-10) == 2 && pts[0].Is(0, 1, 0));
  d.dir.Set(0, 0, -1);
  EXPECT_EQ(c.IntersectCocentric(d, pts, 1e-10), 3);
  d.radius = 1 + 1e-10;
  EXPECT_EQ(c.IntersectCocentric(d, pts, 1e-10), 0);
}

TEST(CCircle, CircleIntersectionTestsTheCallersPoints) {
  const CCircle c;
  CCircle o(std::sqrt(0.75));  // in the plane y = 0.5, through c's points (+-sqrt(0.75), 0.5, 0)
  o.origin.Set(0, 0.5, 0);
  o.dir.Set(0, 1, 0);
  SMat p1, p2;
  EXPECT_EQ(c.Intersect(o, p1, p2), 0);  // (0, 0, 0) is on neither
  SMat pts[2];
  ASSERT_EQ(c.IntersectPlane(o, pts), 2);
  p1 = pts[0];
  p2 = pts[1];
  EXPECT_EQ(c.Intersect(o, p1, p2), 2);
  p1.Set(5, 5, 5);
  EXPECT_TRUE(c.Intersect(o, p1, p2) == 1 && Near(p1, p2.x, p2.y, p2.z, 0.0));  // the one on o moves to p1
  CCircle same;
  same.origin.Set(3, 0, 0);
  EXPECT_EQ(c.Intersect(same, p1, p2), 1);  // coplanar

  // This circle meets o's plane at two points of o's disc, one, or none.
  EXPECT_EQ(c.GetCircleLocation(o), 1);
  o.radius = 0.5;
  EXPECT_EQ(c.GetCircleLocation(o), 3);
  o.origin.x = 0.5;
  EXPECT_EQ(c.GetCircleLocation(o), 2);
  same.radius = 3.5;  // coplanar: the two stored zero points decide
  EXPECT_EQ(c.GetCircleLocation(same), 1);
}

TEST(CCircle, ArcMeasures) {
  CCircle c(2.0);
  const SMat a(2, 0, 0), b(0, 2, 0), opp(-2, 0, 0);
  EXPECT_DOUBLE_EQ(c.GetTranslation(a, opp), kPi * 2);
  EXPECT_NEAR(c.GetTranslation(b, a), kPi, 1e-14);  // no sense: the shorter arc either way
  EXPECT_EQ(c.GetTranslation(a, a), 0.0);
  EXPECT_FALSE(c.IsOpposite(a, a) || c.IsAfter(a, opp));
  EXPECT_TRUE(c.InsideArc(opp, a, b) && !c.InsideArc(b, a, opp));  // as the three lengths are combined

  SMat p = a;
  c.Translate(kPi, p);  // a quarter of the circumference 4pi
  EXPECT_TRUE(Near(p, 0, 2, 0, 1e-12));
}

TEST(CCircle, NearestPointsOfCircleAndDisc) {
  CCircle c(2.0);
  c.origin.Set(1, 1, 1);
  SMat out;
  EXPECT_DOUBLE_EQ(c.FindNearestPoint(SMat(1, 6, 5), out), 5.0);
  EXPECT_TRUE(Near(out, 1, 3, 1));
  EXPECT_DOUBLE_EQ(c.FindNearestPoint(SMat(1, 1, 4), out), std::sqrt(13.0));  // on the axis

  SMat p(1.5, 1, 4);
  EXPECT_DOUBLE_EQ(c.DistPoint(p), std::sqrt(1.5 * 1.5 + 9));  // bDisk decides
  c.bDisk = true;
  DistContext ctx(true, true);
  EXPECT_DOUBLE_EQ(c.DistPoint(p, ctx), 3.0);
  EXPECT_TRUE(Near(*ctx.Pt(true), 1.5, 1, 1));
  EXPECT_TRUE(c.FindNearestDiscPoint(p, p) == 3.0 && Near(p, 1.5, 1, 1));  // into its own argument

  SMat p1, p2;
  EXPECT_DOUBLE_EQ(c.DistPlane(Line(0, 0, 4, 0, 0, 1), &p1, &p2), 3.0);
  EXPECT_TRUE(Near(p1, 1, 1, 1) && Near(p2, 1, 1, 4));  // parallel: the disc's centre
  const double s = 1 / std::sqrt(2.0);
  EXPECT_NEAR(c.DistPlane(Line(0, 5, 0, 0, 1, 1), &p1, &p2), 3 * s - 2 * s, 1e-14);
  EXPECT_TRUE(Near(p1, 1, 3, 1, 1e-12));
  EXPECT_TRUE(c.DistPlane(Line(0, 0, 0, 1, 0, 0), &p1, &p2) == 0.0 && c.GetPointLocation(p1) == 0);  // crossing
}

TEST(CCircle, FramesSamplingAndNormals) {
  CCircle c;
  const SMat ref(1, 0, 3);  // made orthogonal to the axis
  const SMat along(0, 0, 3);
  CMFrame f;
  EXPECT_TRUE(c.GetFrame(f, &ref) && f.axes[1].Is(0, 1, 0) && !c.GetFrame(f, &along));

  CArray<SMat, SMat> pts;
  pts.SetSize(4);
  SMat r(1, 0, 0);
  EXPECT_TRUE(c.GetSampling(pts, &r) && Near(pts[1], 0, 1, 0, 1e-12) && Near(pts[3], 0, -1, 0, 1e-12));
  CLineal normals[3];
  c.origin.Set(0, 0, 2);
  c.radius = 2;
  ASSERT_TRUE(c.GetSampling(3, nullptr, normals));
  for (const CLineal& l : normals) {
    EXPECT_DOUBLE_EQ(l.origin.Dist(c.origin), 2.0);
    EXPECT_TRUE(Near(l.dir, l.origin.x / 2, l.origin.y / 2, 0, 1e-12));
  }

  const SMat in(0.5, 0, 2), on(2, 0, 2), out(3, 0, 2);
  const SMat up(0.5, 0, 3), radial(4, 0, 2), tangential(2, 1, 2);
  EXPECT_TRUE(c.IsNormal(&in, &up) && c.IsNormal(&on, &radial) && c.IsNormal(&on, &on));
  EXPECT_FALSE(c.IsNormal(&in, &radial) || c.IsNormal(&on, &tangential) || c.IsNormal(&out, &radial));
}

TEST(CCircle, ThreePointsKeepTheRadius) {
  CCircle c(5.0);
  const SMat pts[3] = {SMat(1, 0, 0), SMat(0, 1, 0), SMat(-1, 0, 0)};
  ASSERT_TRUE(c.DefineFromThreePoints(pts));
  EXPECT_TRUE(c.radius == 5.0 && Near(c.origin, 0, 0, 0, 1e-12) && Near(c.dir, 0, 0, 1, 1e-12));
  const SMat line[3] = {SMat(1, 1, 1), SMat(2, 2, 2), SMat(3, 3, 3)};
  EXPECT_FALSE(c.DefineFromThreePoints(line));

  c.tag = 5;
  c.bDisk = true;
  const CCircle copy(c);  // unlike CLineal's, the copy constructor takes the tag
  EXPECT_TRUE(copy.tag == 5 && copy.bDisk);
}
