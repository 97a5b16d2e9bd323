#include <znmt64/CMFrame.h>
#include <znmt64/CPlane.h>
#include <znmt64/CSegment.h>
#include <znmt64/DistContext.h>
#include <znmt64/Triangle3D.h>

#include <znbl64/Range.h>

#include <tuple>

#include "LinesTestUtil.h"

namespace {
CPlane Plane(double px, double py, double pz, double nx, double ny, double nz) {
  return CPlane(Line(px, py, pz, nx, ny, nz));
}

// A shape whose own distance differs from the dot product, to see which one a query reads.
struct FlatShape : CPlane {
  explicit FlatShape(double dist) : d(dist) { dir.Set(0, 0, 1); }
  double Dist(const SMat&, SMat*) const override { return d; }
  double d;
};
}  // namespace

TEST(CPlane, PointLocationBand) {
  const CPlane z0 = Plane(0, 0, 0, 0, 0, 1);
  // A band of 1.5·tol; within 15·tol the virtual distance with the dot product's sign decides.
  const FlatShape touching(0.0), away(1.0);
  const std::tuple<const CPlane&, SMat, CPlane::ELocn> cases[] = {
      {z0, SMat(0, 0, 1.4e-10), CPlane::eOnPlane},      {z0, SMat(0, 0, 1.6e-10), CPlane::ePositive},
      {z0, SMat(5, 5, -1.6e-10), CPlane::eNegative},    {touching, SMat(0, 0, 1.4e-9), CPlane::eOnPlane},
      {touching, SMat(0, 0, 1.6e-9), CPlane::ePositive}, {away, SMat(0, 0, -1e-12), CPlane::eNegative}};
  for (const auto& [plane, p, locn] : cases) EXPECT_EQ(plane.GetPointLocation(p, 1e-10), locn) << p.z;

  EXPECT_EQ(z0.GetLocation(Line(0, 0, 2, 1, 1, 0)), CPlane::eLineAbove);
  EXPECT_EQ(z0.GetLocation(Line(0, 0, 2, 1, 1, 1)), CPlane::eLineCrossing);
  EXPECT_EQ(z0.GetSegmentLocation(CSegment(SMat(0, 0, -1), SMat(0, 0, 2))), CPlane::eSegmCrossing);
  EXPECT_EQ(z0.GetSegmentLocation(CSegment(SMat(0, 0, 0), SMat(0, 0, 2))), CPlane::eSegmTouching);
}

TEST(CPlane, LocationCodeConversions) {
  EXPECT_EQ(CPlane::ToSegmLocn(CPlane::ePositive), CPlane::eSegmInPlane);  // like a point in the plane
  const CPlane::ELocn n = CPlane::eNegative, o = CPlane::eOnPlane, p = CPlane::ePositive;
  const std::tuple<CPlane::ELocn, CPlane::ELocn, CPlane::ESegmLocn> segm[] = {
      {p, p, CPlane::eSegmAbove}, {p, n, CPlane::eSegmCrossing}, {n, o, CPlane::eSegmTouching},
      {o, o, CPlane::eSegmInPlane}, {CPlane::eLocnUndefined, p, CPlane::eSegmUndefined}};
  for (auto [a, b, locn] : segm) EXPECT_EQ(CPlane::GetSegmLocn(a, b), locn) << a << " " << b;
}

// The library's typical request: a plane, a segment, a record asking for both nearest points.
TEST(CPlane, SegmentDistanceTypicalRequest) {
  const CPlane z0 = Plane(0, 0, 0, 0, 0, 1);
  DistContext ctx;
  ctx.SetNeed(true, true);
  EXPECT_EQ(z0.Dist(CSegment(SMat(0, 0, -1), SMat(0, 0, 2)), ctx), 1.0);  // ends only: crossing is not 0
  EXPECT_TRUE(ctx.Pt(false)->Is(0, 0, -1) && ctx.Pt(true)->Is(0, 0, 0) && ctx.dDist == 1.0);
  // A farther segment leaves the best distance but still writes its points.
  EXPECT_EQ(z0.Dist(CSegment(SMat(3, 0, 4), SMat(3, 0, 5)), ctx), 4.0);
  EXPECT_TRUE(ctx.dDist == 1.0 && ctx.Pt(false)->Is(3, 0, 4));

  // A tie takes Q; an external place receives it.
  SMat mine;
  DistContext ext;
  ext.pPt2 = &mine;
  EXPECT_EQ(z0.Dist(CSegment(SMat(1, 0, 2), SMat(1, 0, -2)), ext), 2.0);
  EXPECT_TRUE(mine.Is(1, 0, -2) && ext.Pt(true)->Is(1, 0, 0));
}

TEST(CPlane, IntersectionsAndConstructions) {
  const CPlane z0 = Plane(0, 0, 0, 0, 0, 1);
  SMat p;
  double t = 0.0;
  EXPECT_TRUE(z0.GetSegmentIntersection(CSegment(SMat(0, 0, -1), SMat(0, 0, 1)), p, &t) && t == 1.0);
  // 1e-10 of slack before P, none past Q.
  EXPECT_TRUE(z0.GetSegmentIntersection(CSegment(SMat(0, 0, 0.5e-10), SMat(0, 0, 1)), p));
  EXPECT_FALSE(z0.GetSegmentIntersection(CSegment(SMat(0, 0, -1), SMat(0, 0, -1e-10)), p));

  // PassPlane keeps the old origin: the plane is parallel to the line and the point.
  CPlane q = Plane(0, 0, 7, 1, 0, 0);
  const CLineal line = Line(0, 0, 1, 1, 0, 0);
  EXPECT_TRUE(q.PassPlane(line, SMat(0, 1, 1)) && q.origin.Is(0, 0, 7) && q.dir.Is(0, 0, 1));
  EXPECT_FALSE(q.PassPlane(line, SMat(5, 0, 1)));

  const CPlane z1 = Plane(0, 0, 1, 0, 0, 1);
  SMat v(1, 2, -3), normal(0, 0, -2);
  EXPECT_TRUE(z1.ProjectVector(v) && v.Is(1, 2, 0) && !z1.ProjectVector(normal));

  CMFrame mirrored;
  mirrored.origin.Set(0, 0, 3);
  mirrored.Mirror(z1);
  EXPECT_TRUE(mirrored.origin.Is(0, 0, -1) && mirrored.axes[2].Is(0, 0, -1) && !mirrored.GetOrientation());
}

TEST(CPlane, HeightsOverABox) {
  const CPlane up = Plane(1, 0, 0, 1, 0, 1);  // x + z = 1
  EXPECT_NEAR(up.GetVal(0, 1, 0.25, 9.0), 0.75, 1e-15);
  EXPECT_EQ(Plane(5, 0, 0, 1, 0, 0).GetVal(0, 1, 3.0, 4.0), 0.0);  // runs along z
  RangeR1 out;
  up.GetValueRange(0, 1, RangeR12D(RangeR1(0, 1), RangeR1(0, 2)), out);
  EXPECT_NEAR(out.GetMin(), 0.0, 1e-15);
  EXPECT_NEAR(out.GetMax(), 1.0, 1e-15);
  // The same plane with its normal turned down: the bounds come out crossed.
  Plane(1, 0, 0, -1, 0, -1).GetValueRange(0, 1, RangeR12D(RangeR1(0, 1), RangeR1(0, 2)), out);
  EXPECT_NEAR(out.GetMin(), 1.0, 1e-15);
  EXPECT_NEAR(out.GetMax(), 0.0, 1e-15);
}

TEST(PlaneEqn, EvaluateAndFrames) {
  EXPECT_EQ(PlaneEqn(0, 0, 2, -2).Evaluate(SMat(0, 0, 2)), 2.0);  // not normalised
  CMFrame f;
  f.origin.Set(0, 0, 1);
  PlaneEqn z0(0, 0, 3, 0);
  z0.ToLocal(&f);  // z = 0 seen from one unit up: z + 1 = 0, with a unit normal
  EXPECT_NEAR(z0.c, 1.0, 1e-15);
  EXPECT_NEAR(z0.d, 1.0, 1e-15);
}

TEST(Planeal, SpansAndHalfPlanes) {
  const Planeal p;
  Planeal o;
  o.v.Set(0, 1.01e-5, 1);
  EXPECT_EQ(p.GetOrientation(o), Planeal::eSameSense);
  o.v.Set(0, 0.99e-5, 1);
  EXPECT_EQ(p.GetOrientation(o), Planeal::eTransversal);
  EXPECT_EQ(p.GetVectDirection(SMat(0, 0, -1)), Planeal::eDirNegative);
  o.u = o.v;
  EXPECT_EQ(o.GetVectDirection(SMat(0, 0, 1)), Planeal::eDirUndefined);

  PlanealLoc half;  // the edge is the line through loc along x, the half-plane y > 0 of z = 1
  half.loc.Set(0, 0, 1);
  bool onEdge = true;
  EXPECT_TRUE(half.IsInPositiveSemispace(SMat(0, 2e-10, 5), &onEdge) && !onEdge);
  SMat hit(7, 7, 7);
  EXPECT_TRUE(half.GetSegmentIntersection(CSegment(), hit) && hit.Is(7, 7, 7));  // computes nothing

  // Side 0 misses the plane z = 1, side 1 meets it on the -v side, side 2 on the edge plane.
  const SMat corners[3] = {SMat(0, 1, 2), SMat(0, 1, 3), SMat(0, -1, 0)};
  EXPECT_EQ(half.GetIntersectionTriangleEdge(Triangle3D(corners), hit, &onEdge, false), 1);
  EXPECT_TRUE(Near(hit, 0, -1.0 / 3.0, 1));
  EXPECT_TRUE(half.GetIntersectionTriangleEdge(Triangle3D(corners), hit, &onEdge, true) == -1 && onEdge);
  const SMat point[3] = {SMat(1, 1, 1), SMat(1, 1, 1), SMat(1, 1, 1)};
  EXPECT_EQ(half.GetIntersectionTriangleEdge(Triangle3D(point), hit, nullptr, true), 0);
}

TEST(PlaneArray, CopiesTakeTheTags) {
  PlaneArray a;
  a.SetSize(2);
  a[1].tag = 12;
  PlaneArray c;
  c.Add(CPlane());
  c = a;  // element by element with CLineal::Copy: tags too
  EXPECT_TRUE(c.GetSize() == 2 && c[1].tag == 12 && PlaneArray(a)[1].tag == 12);
}
