#include <znag64/Triangle2D.h>

#include <gtest/gtest.h>

#include <cmath>

namespace {

Triangle2D Make(double x0, double y0, double x1, double y1, double x2, double y2, bool bTwoSided = false) {
  Triangle2D t(bTwoSided);
  t.SetVertex(0, x0, y0);
  t.SetVertex(1, x1, y1);
  t.SetVertex(2, x2, y2);
  return t;
}

// The 3-4-5 triangle; (1, 1) is its incentre, 1 from every side.
const Triangle2D kTri = Make(0, 0, 4, 0, 0, 3);

Tri2DPoint Locate(const Triangle2D& tri, double x, double y, double tol = 1e-10, double tol2 = 1e-10,
                  bool snap = false) {
  Tri2DPoint p(C2DPoint(x, y), tol, tol2);
  p.bSidePosn = true;
  p.bInParam2 = snap;
  tri.GetPointLocation(p);
  return p;
}

}  // namespace

TEST(Triangle2D, LocationsIndicesAndSidePositions) {
  const struct { double x, y, tol2; bool snap; Tri2DPoint::ELocn e; int ind; double posn; } cases[] = {
      {2, 1.5, 0, false, Tri2DPoint::eOnSide, 1, 2.5},  // side 1 runs from (4, 0) to (0, 3)
      {0, 3, 0, false, Tri2DPoint::eAtCorner, 2, 0},
      // The point tolerance is inclusive; a corner wins over its two sides.
      {2, -1e-10, 0, false, Tri2DPoint::eOnSide, 0, 2},
      {2, -1.0000001e-10, 0, false, Tri2DPoint::eOutside, -1, 0},
      {2, 1.0000001e-10, 0, false, Tri2DPoint::eInside, -1, 0},
      {-1e-10, 0, 0, false, Tri2DPoint::eAtCorner, 0, 0},
      {-1.0000001e-10, 0, 0, false, Tri2DPoint::eOutside, -1, 0},
      // The snapping zone, inclusive, on both sides of a side; near a corner the nearer side.
      {2, 1e-3, 1e-3, false, Tri2DPoint::eNearSide, 0, 2},
      {2, -5e-4, 1e-3, false, Tri2DPoint::eNearSide, 0, 2},
      {2, 2e-3, 1e-3, false, Tri2DPoint::eInside, -1, 0},
      {2, -2e-3, 1e-3, false, Tri2DPoint::eOutside, -1, 0},
      {3.9995, 1e-4, 1e-3, false, Tri2DPoint::eNearSide, 0, 3.9995},
      // Snapping reports the corner or side itself.
      {3.9995, 1e-4, 1e-3, true, Tri2DPoint::eAtCorner, 1, 0},
      {2, 5e-4, 1e-3, true, Tri2DPoint::eOnSide, 0, 2},
  };
  for (const auto& c : cases) {
    const Tri2DPoint p = Locate(kTri, c.x, c.y, 1e-10, c.tol2, c.snap);
    EXPECT_EQ(p.eLocn, c.e) << c.x << ", " << c.y;
    EXPECT_EQ(p.nInd, c.ind) << c.x << ", " << c.y;
    EXPECT_DOUBLE_EQ(p.dSidePosn, c.posn) << c.x << ", " << c.y;
  }
  const Tri2DPoint in = Locate(kTri, 1, 1);
  for (int i = 0; i < 3; ++i) EXPECT_DOUBLE_EQ(in.adSideDist[i], 1.0);
  EXPECT_DOUBLE_EQ(in.adCornerDist[1], std::sqrt(10.0));
  EXPECT_EQ(Locate(kTri, 7, -4).adSideDist[0], 5.0);  // outside, to the side's nearest end
  // One tolerance leaves no near zone; without bSidePosn the side position stays 0.
  Tri2DPoint q(C2DPoint(3, 5e-4), 1e-4);
  EXPECT_EQ(q.adSideDist[0], -1.0);  // not located yet
  EXPECT_EQ(kTri.GetPointLocation(q), Tri2DPoint::eInside);
  q.dTol = 1e-3;
  EXPECT_TRUE(kTri.GetPointLocation(q) == Tri2DPoint::eOnSide && q.dSidePosn == 0.0);
}

TEST(Triangle2D, DegenerateTriangles) {
  const Triangle2D line = Make(0, 0, 1, 0, 2, 0);
  const Tri2DPoint p = Locate(line, 1, 1);
  EXPECT_TRUE(p.eLocn == Tri2DPoint::eDegenerate && p.nInd == -1);
  EXPECT_EQ(p.adSideDist[0], 1.0);  // distances are still filled
  EXPECT_EQ(Locate(line, 1, 0).eLocn, Tri2DPoint::eDegenerate);
  EXPECT_EQ(Locate(Triangle2D(), 0, 0).eLocn, Tri2DPoint::eDegenerate);

  // Degenerate when the smallest height is at most the point tolerance.
  EXPECT_EQ(Locate(Make(0, 0, 1, 0, 0.5, 1e-10), 0.5, 0).eLocn, Tri2DPoint::eDegenerate);
  EXPECT_EQ(Locate(Make(0, 0, 1, 0, 0.5, 2e-10), 0.5, 0).eLocn, Tri2DPoint::eOnSide);
  EXPECT_EQ(Locate(Make(0, 0, 1, 0, 0.5, 2e-10), 0.5, 0, 1e-9).eLocn, Tri2DPoint::eDegenerate);
}

TEST(Triangle2D, ClockwiseCornersOneAndTwoSided) {
  for (const bool twoSided : {false, true}) {
    const Triangle2D cw = Make(0, 0, 0, 3, 4, 0, twoSided);
    EXPECT_EQ(Locate(cw, 1, 1).eLocn, twoSided ? Tri2DPoint::eInside : Tri2DPoint::eOutside);
    EXPECT_EQ(Locate(cw, 5, 5).eLocn, Tri2DPoint::eOutside);
    // Sides keep the caller's numbering: side 2 runs from (4, 0) back to (0, 0).
    const Tri2DPoint s = Locate(cw, 3, 0);
    EXPECT_TRUE(s.eLocn == Tri2DPoint::eOnSide && s.nInd == 2 && s.dSidePosn == 1.0);
  }
}

TEST(Triangle2D, SetVertexAndNormalize) {
  Triangle2D t = kTri;
  t.SetVertex(3, 9, 9);
  t.SetVertex(-1, 9, 9);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(t.m_p[i], kTri.m_p[i]);

  double a = -1, b = -1, c = -2;
  EXPECT_TRUE(Triangle2D::Normalize(a, b, c) && a == 0.25 && c == 0.5);
  a = 1, b = -1, c = 5e-11;
  EXPECT_TRUE(!Triangle2D::Normalize(a, b, c) && c == 5e-11);
}
