#include <gtest/gtest.h>
#include <znmt64/CircleSolver.h>

#include <cmath>

namespace {

constexpr double kTwoPi = 6.28318530717958;

// Radius r about c with the axis along n normalised.
CCircle Circle(const SMat& c, const SMat& n, double r) {
  CCircle k(r);
  k.origin = c;
  k.dir = n;
  k.dir.Normalize(1e-10);
  return k;
}

CLineal Line(const SMat& p, const SMat& d) {
  CLineal l(d);
  l.origin = p;
  return l;
}

// A tilted circle and a skew one: no closed form applies, so the search runs.
const CCircle kTilted = Circle(SMat(0.1, -0.2, 0.3), SMat(0.3, -0.4, 1.0), 1.3);
const CCircle kSkew = Circle(SMat(1.5, 0.4, -0.2), SMat(1.0, 0.7, 0.2), 0.9);

}  // namespace

TEST(CircleSolver, ObjectiveAndExactSlope) {
  CircleSolver s(kTilted);
  s.SetCircle(kSkew, false);
  ASSERT_TRUE(s.IsValid());
  for (double t : {0.3, 1.7, 2.9, 4.4, 6.0}) {
    SMat p, q;
    s.GetPoint(t, p);
    EXPECT_NEAR(p.Dist(kTilted.origin), 1.3, 1e-12);
    EXPECT_NEAR((p - kTilted.origin).Prod(kTilted.dir), 0.0, 1e-12);
    const double d = s.DistTarget(p, q);
    EXPECT_DOUBLE_EQ(s.GetExtremFuncVal(t), d * d);
    // The slope against a central difference of the objective.
    const double h = 1e-6;
    const double diff = (s.GetExtremFuncVal(t + h) - s.GetExtremFuncVal(t - h)) / (2 * h);
    EXPECT_NEAR(s.GetSolverBrentMethodFunctValue(t), diff, 1e-7) << t;
  }
}

TEST(CircleSolver, SolveReportsPointsAngleAndCount) {
  const CCircle unit;  // radius 1 about the origin, axis z
  CircleSolver s(unit);
  SMat p1, p2;
  int count = -1;
  double t = -1;

  // A line parallel to the plane and off the axis, beside the circle: one nearest point.
  s.SetLine(Line(SMat(0, 3, 2), SMat(1, 0, 0)));
  EXPECT_NEAR(s.Solve(&p1, &p2, &count, &t), std::sqrt(8.0), 1e-12);
  EXPECT_EQ(count, 1);
  EXPECT_NEAR(p1.Dist(SMat(0, 1, 0)), 0.0, 1e-12);
  EXPECT_NEAR(p2.Dist(SMat(0, 3, 2)), 0.0, 1e-12);
  SMat at;
  s.GetPoint(t, at);
  EXPECT_TRUE(t >= 0.0 && t < kTwoPi);
  EXPECT_NEAR(at.Dist(p1), 0.0, 1e-12);

  // Over the centre the line has two nearest points, (1, 0, 0) and (-1, 0, 0).
  s.SetLine(Line(SMat(0, 0, 2), SMat(1, 0, 0)));
  EXPECT_NEAR(s.Solve(&p1, &p2, &count), 2.0, 1e-12);
  EXPECT_EQ(count, 2);
  EXPECT_NEAR(std::fabs(p1.x), 1.0, 1e-12);

  // A segment whose near end faces the circle from outside.
  s.SetSegment(CSegment(SMat(3, 0, 1), SMat(5, 0, 1)));
  EXPECT_NEAR(s.Solve(&p1, &p2, &count), std::sqrt(5.0), 1e-12);
  EXPECT_EQ(count, 1);
  EXPECT_NEAR(p2.Dist(SMat(3, 0, 1)), 0.0, 1e-12);

  // The axis is as near everywhere: closed form, several points.
  s.SetLine(Line(SMat(0, 0, -4), SMat(0, 0, 1)));
  EXPECT_NEAR(s.Solve(&p1, &p2, &count), 1.0, 1e-15);
  EXPECT_EQ(count, 2);

  // A point target: the circle's own nearest point.
  s.SetCircle(Circle(SMat(0.3, -0.4, 0.7), SMat(1, 1, 0), 0.0), false);
  EXPECT_NEAR(s.Solve(&p1, &p2, &count), std::sqrt(0.25 + 0.49), 1e-12);
  EXPECT_EQ(count, 1);
  EXPECT_NEAR(p1.Dist(SMat(0.6, -0.8, 0)), 0.0, 1e-12);
}

TEST(CircleSolver, FindsMinimaBetweenSamples) {
  // Pairs whose least minimum lies within a sample step of a maximum: beside the ridge over a
  // small circle's axis, and in a smooth minimum-maximum pair.
  const CCircle cases[][2] = {
      {Circle(SMat(1.2058756048791111, 1.2265611891634762, 0.96414989791810513),
              SMat(0.72096646363047046, 0.57937017141926694, -0.38018096058296069), 1.068099658144638),
       Circle(SMat(0.88259869271786195, 0.94957237068786626, -0.053851745957528507),
              SMat(-0.46523347985048819, -0.82078462864516022, 0.33146704603328481), 0.065530964400386443)},
      {Circle(SMat(0.40858069527894258, 1.3357883258722723, 0.63661726098507643),
              SMat(0.65758694310985022, -0.67125833966755311, 0.34204042696471215), 1.8850010775728152),
       Circle(SMat(0.84370582597330213, 0.85906092775985599, -0.99511533253826201),
              SMat(0.34748478736501104, -0.93654155375277892, 0.046305946100083505), 0.30254195807501671)},
  };
  for (const auto& c : cases) {
    CircleSolver s(c[0]);
    s.SetCircle(c[1], false);
    double dense = 1e307;
    for (int k = 0; k < 100000; ++k) dense = std::fmin(dense, s.GetExtremFuncVal(kTwoPi * k / 100000));
    dense = std::sqrt(dense);
    const double d = s.Solve();
    EXPECT_LE(d, dense + 1e-15);
    EXPECT_NEAR(d, dense, 1e-7);
  }
}

TEST(CircleSolver, FallbackAndInvalidInput) {
  // A blocked Brent's method leaves the bisection of GetExtrem; the minimum is still found, to the
  // difference quotient's precision.
  CircleSolver exact(kTilted);
  exact.SetCircle(kSkew, false);
  CircleSolver blocked(kTilted);
  blocked.SetCircle(kSkew, false);
  blocked.nBlock = 1;
  const double d = exact.Solve();
  EXPECT_GT(d, 0.05);
  EXPECT_NEAR(blocked.Solve(), d, 1e-9);

  SMat p1(7, 7, 7);
  int count = 5;
  CircleSolver none(kTilted);
  EXPECT_FALSE(none.IsValid());
  EXPECT_EQ(none.Solve(&p1, nullptr, &count), 1e307);
  EXPECT_EQ(count, 0);
  EXPECT_EQ(none.GetExtremFuncVal(1.0), 1e307);

  CCircle noAxis(2.0);
  noAxis.dir.SetAll(0.0);
  CircleSolver s(noAxis);
  s.SetLine(Line(SMat(0, 0, 0), SMat(1, 0, 0)));
  EXPECT_EQ(s.Solve(&p1), 1e307);
  CircleSolver t(kTilted);
  t.SetLine(CLineal(SMat(0, 0, 0)));  // no direction
  EXPECT_EQ(t.Solve(&p1), 1e307);
  t.SetCircle(noAxis, true);
  EXPECT_EQ(t.Solve(&p1), 1e307);
  EXPECT_TRUE(p1.Is(7, 7, 7));

  // A point needs no axis.
  noAxis.radius = 0.0;
  CircleSolver point(noAxis);
  point.SetLine(Line(SMat(0, 3, 0), SMat(1, 0, 0)));
  EXPECT_NEAR(point.Solve(&p1), 3.0, 1e-15);
}
