#include <znmt64/CMFrame.h>
#include <znmt64/CPlane.h>
#include <znmt64/CSegment.h>
#include <znmt64/DistContext.h>
#include <znmt64/Triangle3D.h>

#include <znag64/AnGeoState.h>
#include <znbl64/Range.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {
void ExpectVec(const SMat& v, double x, double y, double z, double tol = 1e-15) {
  EXPECT_NEAR(v.x, x, tol);
  EXPECT_NEAR(v.y, y, tol);
  EXPECT_NEAR(v.z, z, tol);
}

CPlane Plane(double px, double py, double pz, double nx, double ny, double nz) {
  CLineal l(nx, ny, nz);
  l.SetOrigin(px, py, pz);
  return CPlane(l);
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
  // e = 1.5·tol either side.
  EXPECT_EQ(z0.GetPointLocation(SMat(0, 0, 1.4e-10), 1e-10), CPlane::eOnPlane);
  EXPECT_EQ(z0.GetPointLocation(SMat(0, 0, 1.6e-10), 1e-10), CPlane::ePositive);
  EXPECT_EQ(z0.GetPointLocation(SMat(0, 0, -1.4e-10), 1e-10), CPlane::eOnPlane);
  EXPECT_EQ(z0.GetPointLocation(SMat(5, 5, -1.6e-10), 1e-10), CPlane::eNegative);
  EXPECT_EQ(z0.GetPointLocation(SMat(0, 0, 1e-3), 1e-4), CPlane::ePositive);

  // Within 15·tol the virtual distance decides, with the dot product's sign; beyond, the dot
  // product alone.
  const FlatShape zero(0.0);
  EXPECT_EQ(zero.GetPointLocation(SMat(0, 0, 1.4e-9), 1e-10), CPlane::eOnPlane);
  EXPECT_EQ(zero.GetPointLocation(SMat(0, 0, 1.6e-9), 1e-10), CPlane::ePositive);
  const FlatShape far(1.0);
  EXPECT_EQ(far.GetPointLocation(SMat(0, 0, 1e-12), 1e-10), CPlane::ePositive);
  EXPECT_EQ(far.GetPointLocation(SMat(0, 0, -1e-12), 1e-10), CPlane::eNegative);

  EXPECT_EQ(z0.GetLocation(*static_cast<const CLineal*>(&z0)), CPlane::eLineCrossing);
  CLineal above(1, 1, 0);
  above.SetOrigin(0, 0, 2);
  EXPECT_EQ(z0.GetLocation(above), CPlane::eLineAbove);
  above.SetOrigin(0, 0, 0);
  EXPECT_EQ(z0.GetLocation(above), CPlane::eLineInPlane);

  EXPECT_EQ(z0.GetSegmentLocation(CSegment(SMat(0, 0, -1), SMat(0, 0, 2))), CPlane::eSegmCrossing);
  EXPECT_EQ(z0.GetSegmentLocation(CSegment(SMat(0, 0, 0), SMat(0, 0, 2))), CPlane::eSegmTouching);
  EXPECT_EQ(z0.GetSegmentLocation(CSegment(SMat(0, 0, -1), SMat(1, 0, -2))), CPlane::eSegmBelow);
  EXPECT_TRUE(z0.Contains(SMat(4, 4, 1e-10)));
  EXPECT_FALSE(z0.Contains(SMat(4, 4, 1.1e-10)));
}

TEST(CPlane, LocationCodeConversions) {
  EXPECT_EQ(CPlane::ToSegmLocn(CPlane::ePositive), CPlane::ToSegmLocn(CPlane::eOnPlane));
  EXPECT_EQ(CPlane::ToSegmLocn(CPlane::eNegative), CPlane::eSegmNegativeSide);
  EXPECT_EQ(CPlane::ToSegmLocn(CPlane::eLocnUndefined), CPlane::eSegmUndefined);
  EXPECT_EQ(CPlane::ToObjectLocn(CPlane::eOnPlane), 3);
  EXPECT_EQ(CPlane::ToObjectLocn(CPlane::ePositive), 5);
  EXPECT_EQ(CPlane::ToLineLocation(CPlane::ePositive), CPlane::eLineAbove);
  EXPECT_EQ(CPlane::ToPlaneLocation(Corner2D::eCornerInside), 5);
  EXPECT_EQ(CPlane::ToPlaneLocation(Corner2D::eCornerAtVertex), 7);
  EXPECT_EQ(CPlane::ToPlaneLocation(Corner2D::eCornerOnSide2), 3);
  EXPECT_EQ(CPlane::ToPlaneLocation(Corner2D::eCornerOnExtension), 1);
  EXPECT_EQ(CPlane::ToPlaneLocation(Corner2D::eCornerOutside), 0);
  EXPECT_EQ(CPlane::GetOppositeLocation(CPlane::eSegmBelow), CPlane::eSegmAbove);
  EXPECT_EQ(CPlane::GetOppositeLocation(CPlane::eSegmPositiveSide), CPlane::eSegmNegativeSide);
  EXPECT_EQ(CPlane::GetOppositeLocation(CPlane::eSegmCrossing), CPlane::eSegmCrossing);

  const CPlane::ELocn n = CPlane::eNegative;
  const CPlane::ELocn o = CPlane::eOnPlane;
  const CPlane::ELocn p = CPlane::ePositive;
  EXPECT_EQ(CPlane::GetSegmLocn(n, n), CPlane::eSegmBelow);
  EXPECT_EQ(CPlane::GetSegmLocn(p, p), CPlane::eSegmAbove);
  EXPECT_EQ(CPlane::GetSegmLocn(o, o), CPlane::eSegmInPlane);
  EXPECT_EQ(CPlane::GetSegmLocn(n, p), CPlane::eSegmCrossing);
  EXPECT_EQ(CPlane::GetSegmLocn(p, n), CPlane::eSegmCrossing);
  EXPECT_EQ(CPlane::GetSegmLocn(o, p), CPlane::eSegmTouching);
  EXPECT_EQ(CPlane::GetSegmLocn(n, o), CPlane::eSegmTouching);
  EXPECT_EQ(CPlane::GetSegmLocn(CPlane::eLocnUndefined, p), CPlane::eSegmUndefined);
}

// The library's typical request: a plane, a segment, a context asking for both points.
TEST(CPlane, SegmentDistanceTypicalRequest) {
  const CPlane z0 = Plane(0, 0, 0, 0, 0, 1);
  DistContext ctx;
  ctx.SetNeed(true, true);
  const CSegment crossing(SMat(0, 0, -1), SMat(0, 0, 2));
  EXPECT_EQ(z0.Dist(crossing, ctx), 1.0);  // by the ends only: crossing is not 0
  ExpectVec(*ctx.Pt(false), 0.0, 0.0, -1.0);
  ExpectVec(*ctx.Pt(true), 0.0, 0.0, 0.0);
  EXPECT_EQ(ctx.dDist, 1.0);
  EXPECT_EQ(ctx.pPt1, &ctx.aPts[0]);

  // A farther segment leaves the best distance but still writes its points.
  EXPECT_EQ(z0.Dist(CSegment(SMat(3, 0, 4), SMat(3, 0, 5)), ctx), 4.0);
  EXPECT_EQ(ctx.dDist, 1.0);
  ExpectVec(*ctx.Pt(false), 3.0, 0.0, 4.0);
  ExpectVec(*ctx.Pt(true), 3.0, 0.0, 0.0);

  // On a tie the end point Q is taken; an external place receives it.
  SMat mine;
  DistContext ext;
  ext.pPt2 = &mine;
  EXPECT_EQ(z0.Dist(CSegment(SMat(1, 0, 2), SMat(1, 0, -2)), ext), 2.0);
  ExpectVec(mine, 1.0, 0.0, -2.0);
  ExpectVec(*ext.Pt(true), 1.0, 0.0, 0.0);
}

TEST(CPlane, IntersectionsAndConstructions) {
  const CPlane z0 = Plane(0, 0, 0, 0, 0, 1);
  SMat p;
  double t = 0.0;
  EXPECT_TRUE(z0.GetSegmentIntersection(CSegment(SMat(0, 0, -1), SMat(0, 0, 1)), p, &t));
  EXPECT_EQ(t, 1.0);
  // The range is closed at P and open at Q, 1e-10 wide either way.
  EXPECT_TRUE(z0.GetSegmentIntersection(CSegment(SMat(0, 0, 0.5e-10), SMat(0, 0, 1)), p));
  EXPECT_FALSE(z0.GetSegmentIntersection(CSegment(SMat(0, 0, -1), SMat(0, 0, -1e-10)), p));
  EXPECT_FALSE(z0.GetSegmentIntersection(CSegment(SMat(0, 0, 1), SMat(1, 0, 1)), p));

  CLineal common;
  EXPECT_TRUE(z0.GetPlaneIntersection(Plane(2, 0, 0, 1, 0, 0), common));
  ExpectVec(common.origin, 2.0, 0.0, 0.0);

  // PassPlane keeps the old origin: the plane is parallel to the line and the point.
  CPlane q = Plane(0, 0, 7, 1, 0, 0);
  CLineal line(1, 0, 0);
  line.SetOrigin(0, 0, 1);
  EXPECT_TRUE(q.PassPlane(line, SMat(0, 1, 1)));
  ExpectVec(q.origin, 0.0, 0.0, 7.0);
  ExpectVec(q.dir, 0.0, 0.0, 1.0);
  EXPECT_FALSE(q.PassPlane(line, SMat(5, 0, 1)));
  EXPECT_TRUE(q.PassPlane(SMat(0, 0, 0), SMat(1, 0, 0), SMat(0, 0, 1)));  // three points, as CLineal
  ExpectVec(q.dir, 0.0, -1.0, 0.0);

  const CPlane tilted = Plane(0, 0, 1, 0, 0, 1);
  SMat m(1, 2, 3);
  tilted.Mirror(m);
  ExpectVec(m, 1.0, 2.0, -1.0);
  SMat v(1, 2, 3);
  tilted.MirrorVector(v);
  ExpectVec(v, 1.0, 2.0, -3.0);
  SMat w(1, 2, 3);
  EXPECT_TRUE(tilted.ProjectVector(w));
  ExpectVec(w, 1.0, 2.0, 0.0);
  SMat normal(0, 0, -2);
  EXPECT_FALSE(tilted.ProjectVector(normal));
  ExpectVec(normal, 0.0, 0.0, -2.0);

  CMFrame f(static_cast<unsigned char>(0));
  const CPlane slope = Plane(1, 2, 3, 1, 1, 1);
  slope.GetFrame(f);
  EXPECT_TRUE(f.IsValid());
  EXPECT_TRUE(f.GetOrientation());
  ExpectVec(f.axes[2], slope.dir.x, slope.dir.y, slope.dir.z);
  ExpectVec(f.origin, 1.0, 2.0, 3.0);

  CMFrame mirrored;
  mirrored.origin.Set(0, 0, 3);
  mirrored.Mirror(tilted);
  ExpectVec(mirrored.origin, 0.0, 0.0, -1.0);
  ExpectVec(mirrored.axes[2], 0.0, 0.0, -1.0);
  EXPECT_FALSE(mirrored.GetOrientation());
}

TEST(CPlane, HeightsOverABox) {
  // x + z = 1.
  const CPlane up = Plane(1, 0, 0, 1, 0, 1);
  EXPECT_NEAR(up.GetVal(0, 1, 0.25, 9.0), 0.75, 1e-15);
  EXPECT_EQ(Plane(0, 0, 0, 0, 0, 1).GetVal(0, 1, 3.0, 4.0), 0.0);
  EXPECT_EQ(Plane(5, 0, 0, 1, 0, 0).GetVal(0, 1, 3.0, 4.0), 0.0);  // runs along z
  RangeR1 out;
  up.GetValueRange(0, 1, RangeR12D(RangeR1(0, 1), RangeR1(0, 2)), out);
  EXPECT_NEAR(out.GetMin(), 0.0, 1e-15);
  EXPECT_NEAR(out.GetMax(), 1.0, 1e-15);
  // The same plane with its normal turned down: the bounds come out crossed.
  const CPlane down = Plane(1, 0, 0, -1, 0, -1);
  down.GetValueRange(0, 1, RangeR12D(RangeR1(0, 1), RangeR1(0, 2)), out);
  EXPECT_NEAR(out.GetMin(), 1.0, 1e-15);
  EXPECT_NEAR(out.GetMax(), 0.0, 1e-15);
}

TEST(PlaneEqn, EvaluateAndFrames) {
  const PlaneEqn e(0, 0, 2, -2);
  EXPECT_TRUE(e.Satisfies(SMat(0, 0, 1)));
  EXPECT_EQ(e.Evaluate(SMat(0, 0, 2)), 2.0);  // not normalised
  EXPECT_EQ(PlaneEqn().a, 1.0);

  CMFrame f;
  f.origin.Set(0, 0, 1);
  PlaneEqn z0(0, 0, 3, 0);
  z0.ToLocal(&f);  // z = 0 seen from one unit up: z + 1 = 0, with a unit normal
  EXPECT_NEAR(z0.c, 1.0, 1e-15);
  EXPECT_NEAR(z0.d, 1.0, 1e-15);
  z0.ToGlobal(&f);
  EXPECT_NEAR(z0.d, 0.0, 1e-15);
}

TEST(Planeal, SpansAndHalfPlanes) {
  Planeal p;
  EXPECT_TRUE(p.IsValid());
  p.u.Set(0, 0, 0);
  EXPECT_FALSE(p.Init(false));
  p.u.Set(2, 0, 0);
  p.v.Set(1, 1, 0);
  EXPECT_TRUE(p.Init(false));
  ExpectVec(p.v, 0.0, 1.0, 0.0);

  Planeal o;
  o.v.Set(0, 1e-5 * 1.01, 1);
  EXPECT_EQ(p.GetOrientation(o), Planeal::eSameSense);
  o.v.Set(0, 1e-5 * 0.99, 1);
  EXPECT_EQ(p.GetOrientation(o), Planeal::eTransversal);
  o.v.Set(0, -1, 0);
  EXPECT_EQ(p.GetOrientation(o), Planeal::eOppositeSense);
  EXPECT_EQ(p.GetVectDirection(SMat(0, 0, -1)), Planeal::eDirNegative);
  EXPECT_EQ(p.GetVectDirection(SMat(5, 5, 0)), Planeal::eDirInPlane);
  o.u = o.v;
  EXPECT_EQ(o.GetVectDirection(SMat(0, 0, 1)), Planeal::eDirUndefined);

  PlanealLoc half;
  half.loc.Set(0, 0, 1);
  bool onEdge = true;
  EXPECT_TRUE(half.IsInPositiveSemispace(SMat(0, 2e-10, 5), &onEdge));
  EXPECT_FALSE(onEdge);
  EXPECT_FALSE(half.IsInPositiveSemispace(SMat(0, 0.5e-10, 5), &onEdge));
  EXPECT_TRUE(onEdge);
  SMat untouched(7, 7, 7);
  EXPECT_TRUE(half.GetSegmentIntersection(CSegment(SMat(9, 9, 9), SMat(9, 9, 9)), untouched));
  ExpectVec(untouched, 7.0, 7.0, 7.0);
  CPlane pl;
  half.GetPlane(pl);
  ExpectVec(pl.dir, 0.0, 0.0, 1.0);
  ExpectVec(pl.origin, 0.0, 0.0, 1.0);

  // Side 0 misses the plane z = 1, side 1 meets it on the -v side, side 2 on the edge plane.
  const SMat corners[3] = {SMat(0, 1, 2), SMat(0, 1, 3), SMat(0, -1, 0)};
  const Triangle3D tri(corners);
  SMat hit;
  EXPECT_EQ(half.GetIntersectionTriangleEdge(tri, hit, &onEdge, false), 1);
  ExpectVec(hit, 0.0, -1.0 / 3.0, 1.0, 1e-15);
  EXPECT_EQ(half.GetIntersectionTriangleEdge(tri, hit, &onEdge, true), -1);
  EXPECT_TRUE(onEdge);  // side 2's crossing, the last one looked at
  const SMat point[3] = {SMat(1, 1, 1), SMat(1, 1, 1), SMat(1, 1, 1)};
  EXPECT_EQ(half.GetIntersectionTriangleEdge(Triangle3D(point), hit, nullptr, true), 0);
}

TEST(CPlane, DebugDisc) {
  const CPlane pl = Plane(1, 2, 3, 0, 1, 0);
  Dbg3D& dbg = *AnGeoState::GetDbg();
  const size_t before = dbg.m_items.size();
  pl.Dp(2.0);
  ASSERT_EQ(dbg.m_items.size(), before + 1);
  const Dbg3D::Item& item = dbg.m_items.back();
  EXPECT_EQ(item.data.caption.rfind("CPlane ", 0), 0u);
  EXPECT_EQ(item.color, 65535u);
  EXPECT_EQ(item.nMode, 0);
  ASSERT_GT(item.data.GetVertexCount(), 0);
  const double* v = item.data.GetVertex(0);
  EXPECT_NEAR(SMat(v).Dist(SMat(1, 2, 3)), 2.0, 1e-14);  // on the rim about the plane's point
  EXPECT_NEAR(v[1], 2.0, 1e-14);
}

TEST(PlaneArray, CopiesKeepTags) {
  PlaneArray a;
  a.SetSize(2);
  a[0] = Plane(0, 0, 1, 0, 0, 1);
  a[0].tag = 11;
  a[1].tag = 12;
  PlaneArray b(a);
  ASSERT_EQ(b.GetSize(), 2);
  EXPECT_EQ(b[0].tag, 11);
  EXPECT_EQ(b[1].tag, 12);
  ExpectVec(b[0].origin, 0.0, 0.0, 1.0);
  PlaneArray c;
  c.Add(CPlane());
  c = a;
  EXPECT_EQ(c[1].tag, 12);
}
