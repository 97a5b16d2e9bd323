#include <znmt64/CCircle.h>
#include <znmt64/CSegment.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <utility>

#include "LinesTestUtil.h"

namespace {

// Radius r about c with the axis along n normalised.
CCircle Circle(const SMat& c, const SMat& n, double r, bool disk = false) {
  CCircle k(r);
  k.origin = c;
  k.dir = n;
  k.dir.Normalize(1e-10);
  k.bDisk = disk;
  return k;
}

// How far p lies from the circle (the disc when disk), measured without the solver.
double Off(const CCircle& c, const SMat& p, bool disk = false) {
  const double h = (p - c.origin).Prod(c.dir);
  const double rho = (p - c.origin - h * c.dir).Norm();
  const double out = disk ? std::fmax(rho - c.radius, 0.0) : rho - c.radius;
  return std::hypot(h, out);
}

// DistCircle both ways: one distance, and points on their circles that far apart.
double CheckedCircleDist(const CCircle& a, const CCircle& b) {
  SMat p1, p2, q1, q2;
  const double d = a.DistCircle(b, &p1, &p2);
  EXPECT_NEAR(b.DistCircle(a, &q1, &q2), d, 1e-9);
  EXPECT_NEAR(Off(a, p1) + Off(b, p2) + Off(b, q1) + Off(a, q2), 0.0, 1e-9);
  EXPECT_NEAR(p1.Dist(p2), d, 1e-12);
  return d;
}

// Uniform in [lo, hi) from the generator's raw words, the same on every standard library.
double Uniform(std::mt19937& g, double lo, double hi) { return lo + (hi - lo) * (g() / 4294967296.0); }

SMat RandomVec(std::mt19937& g, double a) { return SMat(Uniform(g, -a, a), Uniform(g, -a, a), Uniform(g, -a, a)); }

}  // namespace

TEST(CircleDistance, CirclesWithKnownAnswers) {
  const SMat z(0, 0, 1);
  const CCircle unit;
  SMat p1, p2;
  // Coaxial in parallel planes; parallel planes apart, nested, crossing.
  EXPECT_NEAR(CheckedCircleDist(unit, Circle(SMat(0, 0, 4), z, 3.0)), std::sqrt(20.0), 1e-12);
  EXPECT_NEAR(unit.DistDisk(Circle(SMat(0, 0, 4), -1.0 * z, 3.0), nullptr, nullptr), 4.0, 1e-12);
  EXPECT_NEAR(CheckedCircleDist(unit, Circle(SMat(5, 0, 3), z, 2.0)), std::sqrt(13.0), 1e-12);
  const CCircle big(2.0);
  const CCircle small = Circle(SMat(0.2, 0, 0), z, 0.5);
  EXPECT_NEAR(CheckedCircleDist(big, small), 1.3, 1e-12);
  big.DistCircle(small, &p1, &p2);
  EXPECT_TRUE(Near(p1, 2, 0, 0, 1e-12) && Near(p2, 0.7, 0, 0, 1e-12));
  EXPECT_NEAR(big.DistDisk(small, nullptr, nullptr), 0.0, 1e-15);
  EXPECT_NEAR(CheckedCircleDist(unit, Circle(SMat(1, 0, 0), z, 1.0)), 0.0, 1e-12);

  // Perpendicular planes: touching; linked through the centres (every pair ties at 1); linked less.
  EXPECT_NEAR(CheckedCircleDist(unit, Circle(SMat(2, 0, 0), SMat(0, 1, 0), 1.0)), 0.0, 1e-12);
  EXPECT_NEAR(CheckedCircleDist(unit, Circle(SMat(1, 0, 0), SMat(0, 1, 0), 1.0)), 1.0, 1e-12);
  const CCircle link = Circle(SMat(0.5, 0, 0), SMat(0, 1, 0), 1.0);
  EXPECT_NEAR(CheckedCircleDist(unit, link), 0.5, 1e-12);
  EXPECT_NEAR(unit.DistDisk(link, nullptr, nullptr), 0.0, 1e-12);

  // DistCircles goes by the flags: the small circle lies inside the big disc.
  CCircle bigDisc = big;
  bigDisc.bDisk = true;
  EXPECT_NEAR(small.DistCircles(bigDisc, nullptr, nullptr), 0.0, 1e-15);
  EXPECT_NEAR(bigDisc.DistCircles(small, &p1, &p2), 0.0, 1e-15);
  EXPECT_NEAR(Off(small, p2), 0.0, 1e-12);
  EXPECT_NEAR(Circle(SMat(0.5, 0, 2), z, 1.0, true).DistCircles(bigDisc, nullptr, nullptr), 2.0, 1e-12);
}

TEST(CircleDistance, LinesAndCones) {
  const CCircle unit;
  SMat p1, p2;
  bool found = false;
  // Through the disc: 0 at the pierce point for the disc; the rim's own distance otherwise.
  const CLineal through = Line(0.3, 0.2, -1, 0, 0, 1);
  EXPECT_TRUE(unit.FindNearestPoints(through, &found, &p1, &p2, true) == 0.0 && found && Near(p1, 0.3, 0.2, 0));
  EXPECT_NEAR(unit.FindNearestPoints(through, &found, &p1, &p2, false), 1.0 - std::sqrt(0.13), 1e-12);
  EXPECT_TRUE(found && Near(p2, 0.3, 0.2, 0, 1e-12));
  // Not unique: parallel to the plane over a chord; crossing the circle twice in its plane; the axis.
  EXPECT_NEAR(unit.FindNearestPoints(Line(0, 0.5, 2, 1, 0, 0), &found, &p1, &p2, false), 2.0, 1e-12);
  EXPECT_FALSE(found);
  EXPECT_NEAR(unit.FindNearestPoints(Line(0, 0.5, 0, 1, 0, 0), &found, &p1, &p2, false), 0.0, 1e-12);
  EXPECT_FALSE(found);
  EXPECT_NEAR(unit.FindNearestPoints(Line(0, 0, 5, 0, 0, -1), &found, &p1, &p2, false), 1.0, 1e-15);
  EXPECT_FALSE(found);
  EXPECT_EQ(unit.FindNearestPoints(CLineal(SMat(0, 0, 0)), &found, &p1, &p2, false), 1e307);

  // The nearest point (1, 0, 0) is 2 from the axis x = 3: slant 2 / sin a, apex 2·cot a back.
  const CLineal axis = Line(3, 0, 0, 0, 0, 1);
  const double a = 0.5;
  DistContext ctx(true, true);
  EXPECT_NEAR(unit.DistConical(axis, a, &ctx), 2.0 / std::sin(a), 1e-12);
  EXPECT_TRUE(ctx.nCount == 1 && Near(*ctx.Pt(true), 1, 0, 0, 1e-12));
  EXPECT_TRUE(Near(*ctx.Pt(false), 3, 0, -2.0 / std::tan(a), 1e-12));
  // A right angle is the plain distance; a worse candidate leaves the record alone.
  EXPECT_NEAR(unit.DistConical(axis, 1.570796326794895, &ctx), 2.0, 1e-12);
  EXPECT_NEAR(unit.DistConical(Line(6, 0, 0, 0, 0, 1), 1.570796326794895, &ctx), 5.0, 1e-12);
  EXPECT_NEAR(ctx.dDist, 2.0, 1e-12);
  EXPECT_EQ(unit.DistConical(axis, 1e-11, nullptr), 0.0);
}

TEST(CircleDistance, DiscAndSegment) {
  const CCircle unit;
  SMat p1, p2;
  // Missing the disc: the near end against the rim.
  const CSegment beside(SMat(2, 0, 1), SMat(3, 0, 1));
  EXPECT_NEAR(unit.DistDisk(beside, &p1, &p2), std::sqrt(2.0), 1e-12);
  EXPECT_NEAR(p1.Dist(SMat(1, 0, 0)) + p2.Dist(SMat(2, 0, 1)), 0.0, 1e-12);
  // Through the disc; short of it; crossing the plane outside, nearest at the rim mid-segment.
  EXPECT_TRUE(unit.DistDisk(CSegment(SMat(0.5, 0, -1), SMat(0.5, 0, 1)), &p1, &p2) == 0.0 && Near(p2, 0.5, 0, 0));
  EXPECT_NEAR(unit.DistDisk(CSegment(SMat(0.5, 0, 1), SMat(0.5, 0, 2)), &p1, &p2), 1.0, 1e-15);
  EXPECT_TRUE(Near(p1, 0.5, 0, 0));
  EXPECT_NEAR(unit.DistDisk(CSegment(SMat(3, 0, -1), SMat(1, 0, 1)), &p1, &p2), std::sqrt(0.5), 1e-12);
  EXPECT_TRUE(Near(p2, 1.5, 0, 0.5, 1e-9));

  EXPECT_TRUE(unit.IsCloserThan(beside, 1.5));
  EXPECT_FALSE(unit.IsCloserThan(beside, 1.4) || unit.IsCloserThan(CSegment(SMat(9, 0, 0), SMat(9, 1, 0)), 1.0));
}

TEST(CircleDistance, AgreesWithDenseSampling) {
  std::mt19937 g(20240611u);
  for (int run = 0; run < 8; ++run) {
    const CCircle a = Circle(RandomVec(g, 1.5), RandomVec(g, 1.0), Uniform(g, 0.3, 2.0), true);
    const CCircle b = Circle(RandomVec(g, 1.5), RandomVec(g, 1.0), Uniform(g, 0.3, 2.0), true);
    const CSegment s(RandomVec(g, 2.5), RandomVec(g, 2.5));
    SMat p1, p2, e;
    const double dc = CheckedCircleDist(a, b);
    const double dd = a.DistDisk(b, &p1, &p2);
    EXPECT_NEAR(Off(a, p1, true) + Off(b, p2, true) + std::fabs(p1.Dist(p2) - dd), 0.0, 1e-9);
    const double ds = a.DistDisk(s, &p1, &p2);

    // The rims sampled densely against the exact distances to the other object.
    CArray<SMat, SMat> ra, rb;
    ra.SetSize(20000);
    rb.SetSize(20000);
    a.GetSampling(ra);
    b.GetSampling(rb);
    s.GetQ(e);
    double bc = 1e307, bd = 1e307, bs = 1e307;
    for (INT_PTR k = 0; k < ra.GetSize(); ++k) {
      bc = std::fmin(bc, b.FindNearestPoint(ra[k], p1));
      bd = std::fmin(bd, std::fmin(b.FindNearestDiscPoint(ra[k], p1), a.FindNearestDiscPoint(rb[k], p1)));
      double dseg = 0.0;
      s.FindNearestPoint(ra[k], nullptr, &dseg);
      bs = std::fmin(bs, dseg);
    }
    bs = std::fmin(bs, std::fmin(a.FindNearestDiscPoint(s.origin, p1), a.FindNearestDiscPoint(e, p1)));
    // Never above the samples, and near them (the points above show it is not below the truth).
    for (const auto& [d, dense] : {std::pair{dc, bc}, std::pair{dd, bd}, std::pair{ds, bs}}) {
      EXPECT_LE(d, dense + 1e-12) << run;
      if (d > 0.0) {
        EXPECT_NEAR(d, dense, 1e-3) << run;
      }
    }
  }
}
