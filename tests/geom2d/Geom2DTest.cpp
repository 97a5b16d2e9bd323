#include <znag64/Circle2D.h>
#include <znag64/MLine.h>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <tuple>

TEST(C2DPoint, RotateAndNormalize) {
  C2DPoint r(1, 0), d(3, 4), tiny(1e-10, 0);
  r.Rotate(std::numbers::pi / 2);  // counter-clockwise
  EXPECT_TRUE(std::fabs(r.x) < 1e-16 && r.y == 1.0);
  EXPECT_TRUE(d.Normalize() && d == C2DPoint(0.6, 0.8));
  EXPECT_TRUE(!tiny.Normalize() && tiny.x == 1e-10);
  Segment2D s(C2DPoint(1, 1), C2DPoint(1, 1));  // no direction: dir keeps the zero difference
  EXPECT_EQ(s.dir, C2DPoint(0, 0));
}

TEST(CMLine, LocationCodesAndIndices) {
  CMLine l;
  EXPECT_EQ(l.GetLocation(C2DPoint(), 1e-10), CMLine::eMLDegenerate);
  l.SetVertex(2, C2DPoint(2, 2));  // grows with zero vertices
  l.SetVertex(1, C2DPoint(2, 0));
  ASSERT_EQ(l.GetSize(), 3);
  const struct { double x, y; CMLine::ELocn e; int ind; } cases[] = {
      {0, 0, CMLine::eMLAtStart, 0},   {2, 2, CMLine::eMLAtEnd, 2},    {2, 0, CMLine::eMLAtVertex, 1},
      {1, 0, CMLine::eMLInside, 0},    {2, 1, CMLine::eMLInside, 1},   {-1, 1e-10, CMLine::eMLBeforeStart, 0},
      {2, 3, CMLine::eMLBeyondEnd, 1}, {1, 1, CMLine::eMLOffLine, -1}, {-1, 2e-10, CMLine::eMLOffLine, -1},
      {3, 0, CMLine::eMLOffLine, -1},  // past an inner vertex is no extension
  };
  for (const auto& c : cases) {
    int ind = -7;
    EXPECT_EQ(l.GetLocation(C2DPoint(c.x, c.y), 1e-10, &ind), c.e) << c.x << ", " << c.y;
    EXPECT_EQ(ind, c.ind) << c.x << ", " << c.y;
  }
  l.SetVertex(3, C2DPoint(0, 0));  // closed: the shared vertex is the start
  EXPECT_EQ(l.GetLocation(C2DPoint(0, 0), 1e-10), CMLine::eMLAtStart);
}

TEST(Corner2D, ConvexAndReflexCorners) {
  const Corner2D q;  // first quadrant
  Corner2D r;         // three quarters of a turn, from +x counter-clockwise to -y
  ASSERT_TRUE(r.Set(C2DPoint(1, 1), C2DPoint(5, 0), C2DPoint(0, -2)));
  EXPECT_EQ(r.dir2, C2DPoint(0, -1));
  const std::tuple<const Corner2D&, C2DPoint, Corner2D::ECornerLocn> cases[] = {
      {q, C2DPoint(1e-10, 0), Corner2D::eCornerAtVertex}, {q, C2DPoint(2, 1e-10), Corner2D::eCornerOnSide1},
      {q, C2DPoint(0, 2), Corner2D::eCornerOnSide2},      {q, C2DPoint(-1, 0), Corner2D::eCornerOnExtension},
      {q, C2DPoint(2, -2e-10), Corner2D::eCornerOutside}, {r, C2DPoint(0, 0), Corner2D::eCornerInside},
      {r, C2DPoint(2, 0), Corner2D::eCornerOutside},      {r, C2DPoint(0, 1), Corner2D::eCornerOnExtension}};
  for (const auto& [corner, p, locn] : cases)
    EXPECT_EQ(corner.GetLocation(p, 1e-10), locn) << p.x << ", " << p.y;
  EXPECT_TRUE(!r.Set(C2DPoint(), C2DPoint(), C2DPoint(0, 1)) && r.vertex == C2DPoint(1, 1));
  r.dir1 = C2DPoint();
  EXPECT_EQ(r.GetLocation(C2DPoint(5, 5), 1e-10), Corner2D::eCornerUndefined);
}

TEST(Circle2D, ThreePointsAndCollinear) {
  Circle2D c;
  ASSERT_TRUE(c.DefineFromThreePoints(C2DPoint(0, 0), C2DPoint(2, 0), C2DPoint(0, 2)));
  EXPECT_TRUE(c.center == C2DPoint(1, 1) && c.radius == std::sqrt(2.0));
  // The test does not depend on the scale: a tiny triangle has a circle, a long flat one has none.
  ASSERT_TRUE(c.DefineFromThreePoints(C2DPoint(0, 0), C2DPoint(1e-8, 0), C2DPoint(0, 1e-8)));
  EXPECT_DOUBLE_EQ(c.center.x, 5e-9);
  const Circle2D before = c;
  EXPECT_FALSE(c.DefineFromThreePoints(C2DPoint(0, 0), C2DPoint(1, 1), C2DPoint(2, 2)) ||
               c.DefineFromThreePoints(C2DPoint(0, 0), C2DPoint(1e6, 0), C2DPoint(2e6, 1e-5)));
  EXPECT_TRUE(c.center == before.center && c.radius == before.radius);
}
