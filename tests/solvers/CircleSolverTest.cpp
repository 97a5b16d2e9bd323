#include <gtest/gtest.h>
#include <znmt64/CircleSolver.h>

#include <cmath>

namespace {

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
    for (int k = 0; k < 100000; ++k) dense = std::fmin(dense, s.GetExtremFuncVal(6.28318530717958 * k / 100000));
    dense = std::sqrt(dense);
    const double d = s.Solve();
    EXPECT_LE(d, dense + 1e-15);
    EXPECT_NEAR(d, dense, 1e-7);
  }
}

TEST(CircleSolver, FallbackAndInvalidInput) {
  // A blocked Brent's method leaves the bisection of GetExtrem, to the difference quotient's
  // precision.
  CircleSolver exact(kTilted);
  exact.SetCircle(kSkew, false);
  CircleSolver blocked(exact);
  blocked.nBlock = 1;
  EXPECT_GT(exact.Solve(), 0.05);
  EXPECT_NEAR(blocked.Solve(), exact.Solve(), 1e-9);

  SMat p1(7, 7, 7);
  int count = 5;
  CircleSolver none(kTilted);
  EXPECT_EQ(none.Solve(&p1, nullptr, &count), 1e307);
  EXPECT_EQ(count, 0);
  EXPECT_TRUE(p1.Is(7, 7, 7));
  // A point needs no axis.
  CCircle point(0.0);
  point.dir.SetAll(0.0);
  CircleSolver s(point);
  s.SetLine(Line(SMat(0, 3, 0), SMat(1, 0, 0)));
  EXPECT_NEAR(s.Solve(&p1), 3.0, 1e-15);
}
