#include <znmt64/CPlane.h>
#include <znmt64/CSegment.h>

#include <znbl64/PCExBase.h>
#include <znbl64/Range.h>

#include <cmath>

#include "LinesTestUtil.h"

namespace {
const CSegment kX10(SMat(0, 0, 0), SMat(10, 0, 0));
}

TEST(CSegment, DegenerateEndsAndLocation) {
  CSegment s(SMat(1, 1, 1), SMat(1, 1, 1));
  EXPECT_TRUE(s.length == 0.0 && Near(s.dir, 0, 0, 0));  // the raw difference
  EXPECT_TRUE(kX10.IsInRangeParam(-1e-10) && !kX10.IsInRangeParam(10.0 + 1e-10));

  // The off-line test compares |s| with the distance from P: 5 along, 1e-6 off passes, 1e-4 not.
  EXPECT_EQ(kX10.GetLocation(SMat(5, 1e-6, 0), 1e-10), CSegment::eSegInside);
  EXPECT_EQ(kX10.GetLocation(SMat(5, 1e-4, 0), 1e-10), CSegment::eSegOffLine);
  EXPECT_EQ(kX10.GetLocation(SMat(10, 0, 0), 1e-10), CSegment::eSegAtQ);
  EXPECT_EQ(kX10.GetLocation(SMat(-1, 0, 0), 1e-10), CSegment::eSegBeforeP);
  EXPECT_EQ(kX10.GetPointLocation(-5e-11, 1e-10), CSegment::eSegAtP);
  EXPECT_EQ(kX10.GetPointLocation(10.0 + 2e-9, 1e-10), CSegment::eSegBeyondQ);
  EXPECT_FALSE(kX10.ContainsSegm(CSegment(SMat(2, 0, 0), SMat(11, 0, 0))));

  const CPlane z0(Line(0, 0, 0, 0, 0, 1));
  EXPECT_EQ(CSegment(SMat(0, 0, 0), SMat(0, 0, 1)).GetLocation(z0), CPlane::ePositive);
  EXPECT_EQ(CSegment(SMat(0, 0, -1), SMat(0, 0, 1)).GetLocation(z0), CPlane::eLocnUndefined);
  SMat hit;
  EXPECT_EQ(CSegment(SMat(0, 0, 1), SMat(0, 0, 3)).GetIntersectionPlane(z0, hit), CSegment::eSegBeforeP);
  EXPECT_EQ(kX10.GetIntersectionPlane(z0, hit), CSegment::eSegOffLine);

  // At an end a vector leaning away from the segment counts as normal.
  const SMat p(0, 0, 0), away(-1, 1, 0), into(1, 1, 0), mid(5, 0, 0), up(5, 3, 0), beyond(12, 0, 0);
  EXPECT_TRUE(kX10.IsNormal(&p, &away) && kX10.IsNormal(&mid, &up));
  EXPECT_FALSE(kX10.IsNormal(&p, &into) || kX10.IsNormal(&beyond, &up));

  // The 2D polyline codes: off-line goes out as 8 and does not come back.
  EXPECT_EQ(CSegment::LocSegmToMLine(CSegment::eSegOffLine), CMLine::eMLOffLine);
  EXPECT_EQ(CSegment::LocnMLineToSegm(CMLine::eMLOffLine), CSegment::eSegUndefined);
}

TEST(CSegment, PointAndLineDistances) {
  SMat foot;
  SegmentPoint sp[2];
  EXPECT_TRUE(kX10.Dist(SMat(-3, 4, 0), &foot, sp) == 5.0 && Near(foot, 0, 0, 0));
  EXPECT_TRUE(sp[0].kind == CSegment::eSegAtP && sp[0].t == 0.0 && sp[0].len == 10.0);
  EXPECT_EQ(kX10.Dist(SMat(-3, 4, 0)), 4.0);  // two arguments: the carrier line's distance
  double d = 0.0;
  EXPECT_TRUE(kX10.FindNearestPoint(SMat(13, 4, 0), nullptr, &d) == 10.0 && d == 5.0);
  CSegment whole = kX10, rest;
  EXPECT_EQ(whole.BreakAtPoint(SMat(4, 1, 0), rest), 4.0);
  EXPECT_TRUE(rest.origin.x == 4.0 && rest.length == 6.0);

  // Against a line: crossing above the middle, then beyond Q with the segment's point clamped.
  SMat p1, p2;
  EXPECT_TRUE(kX10.SquareDist(Line(4, -5, 2, 0, 1, 0), &p1, &p2, sp) == 4.0 && Near(p2, 4, 0, 2));
  EXPECT_TRUE(sp[0].kind == CSegment::eSegInside && sp[1].t == 5.0 && sp[1].len == 1e307);
  EXPECT_DOUBLE_EQ(kX10.Dist(Line(13, 0, 2, 0, 1, 0), &p1, &p2, sp), std::sqrt(13.0));
  EXPECT_TRUE(Near(p1, 10, 0, 0) && sp[0].kind == CSegment::eSegAtQ);

  // With record 1's flag set, parallel lines answer at once.
  sp[0].Reset();
  sp[1].Reset();
  sp[1].flag = true;
  sp[1].posn = CLineal::eSkew;
  EXPECT_EQ(kX10.SquareDist(Line(-20, 3, 0, 1, 0, 0), &p1, &p2, sp), 9.0);
  EXPECT_TRUE(sp[1].posn == CLineal::eLinePosnUnknown && sp[0].t == 1e307);  // nothing else written

  sp[0].kind = CSegment::eSegInside;
  sp[0].len = 1.0;
  sp[0].t = 0.5e-10;
  EXPECT_FALSE(sp[0].IsValid());
}

TEST(CSegment, SegmentDistances) {
  const CSegment unit(SMat(0, 0, 0), SMat(1, 0, 0));
  SMat p1, p2;
  SegmentPoint sp[2];
  // Parallel and apart along their line: from the first foot to o's P, not from Q (one-sided).
  EXPECT_DOUBLE_EQ(unit.DistSegm(CSegment(SMat(5, 1, 0), SMat(6, 1, 0)), &p1, &p2, sp), std::sqrt(26.0));
  EXPECT_TRUE(Near(p1, 0, 0, 0) && Near(p2, 5, 1, 0) && sp[1].kind == CSegment::eSegAtP);
  EXPECT_DOUBLE_EQ(unit.SquareDistSegment(CSegment(SMat(5, 1, 0), SMat(6, 1, 0))), 26.0);

  // Crossing segments, one above the other.
  EXPECT_DOUBLE_EQ(kX10.DistSegm(CSegment(SMat(1, -1, 1), SMat(1, 1, 1)), &p1, &p2, sp), 1.0);
  EXPECT_TRUE(Near(p1, 1, 0, 0) && Near(p2, 1, 0, 1) && sp[1].kind == CSegment::eSegInside && sp[1].len == 2.0);

  // o's nearest point beyond its Q: p2 is clamped to o's Q, p1 stays at the foot.
  const CSegment shortO(SMat(3, -5, 2), SMat(3, -4, 2));
  EXPECT_DOUBLE_EQ(kX10.DistSegm(shortO, &p1, &p2, sp), std::sqrt(20.0));
  EXPECT_TRUE(Near(p2, 3, -4, 2) && sp[1].kind == CSegment::eSegAtQ && sp[1].t == 1.0);
  EXPECT_DOUBLE_EQ(kX10.SquareDistSegment(shortO), 20.0);
  EXPECT_TRUE(kX10.SquareDistSegment(CSegment(SMat(2, 0, 0), SMat(3, 0, 0)), &p1, &p2) == 0.0 && Near(p2, 2, 0, 0));
}

TEST(CSegment, Intersections) {
  const CSegment unit(SMat(0, 0, 0), SMat(1, 0, 0));
  SMat p;
  double t[2];
  CLineal::ELinePosn posn = CLineal::eLinePosnUnknown;
  EXPECT_EQ(unit.GetIntesection(Line(2, -1, 0, 0, 1, 0), p, t, &posn), eNikNo);  // at parameter 2
  EXPECT_EQ(posn, CLineal::eIntersecting);
  EXPECT_TRUE(unit.GetIntesection(Line(0.5, -1, 0, 0, 1, 0), p) == eNikYes && Near(p, 0.5, 0, 0));
  EXPECT_EQ(unit.GetIntesection(Line(0.5, -1, 1, 0, 1, 0), p), eNikNo);  // skew
  EXPECT_EQ(unit.GetIntesection(Line(0, 1, 0, 1, 0, 0), p, t), eNikUndefined);
  EXPECT_EQ(t[0], 1e307);
  // Coincident: p becomes P, t the parameters of P and Q on the line, in the line's sense.
  EXPECT_EQ(unit.GetIntesection(Line(5, 0, 0, -1, 0, 0), p, t, &posn), eNikUndefined);
  EXPECT_TRUE(Near(p, 0, 0, 0) && posn == CLineal::eCoincident && t[0] == 5.0 && t[1] == 4.0);

  SegmentPoint sp[2];
  EXPECT_EQ(kX10.GetIntesection(CSegment(SMat(3, -1, 0), SMat(3, 1, 0)), p, sp), eNikYes);
  EXPECT_TRUE(sp[0].t == 3.0 && sp[1].t == 1.0 && sp[1].posn == CLineal::eIntersecting && sp[1].len == 2.0);
  EXPECT_EQ(kX10.GetIntesection(CSegment(SMat(3, 1, 0), SMat(3, 2, 0)), p, sp), eNikNo);  // short of o
  EXPECT_EQ(kX10.GetIntesection(CSegment(SMat(3, 0, 0), SMat(3, 2, 0)), p), eNikYes);      // at o's P

  RangeR1 r;
  CSegment cut = kX10;
  EXPECT_TRUE(cut.IntersectCollinear(CSegment(SMat(4, 0, 0), SMat(15, 0, 0)), &r));
  EXPECT_TRUE(cut.origin.x == 4.0 && cut.length == 6.0);
  // Running the other way the set comes out reversed, which as an interval is empty.
  EXPECT_TRUE(kX10.GetCollinearIntersSet(CSegment(SMat(15, 0, 0), SMat(4, 0, 0)), &r));
  EXPECT_TRUE(r.GetMin() == 10.0 && r.GetMax() == 4.0);
  cut = kX10;
  EXPECT_TRUE(!cut.IntersectCollinear(CSegment(SMat(15, 0, 0), SMat(4, 0, 0))) && cut.length == 10.0);
  EXPECT_FALSE(kX10.GetCollinearIntersSet(CSegment(SMat(4, 1, 0), SMat(15, 1, 0))));
}

TEST(PointArray, PolylineQueries) {
  PointArray a;
  EXPECT_EQ(a.Dist(SMat(1, 1, 1)), 1e307);
  const SMat pts[] = {SMat(0, 0, 0), SMat(4, 0, 0), SMat(4, 3, 0)};
  a.Set(pts, 1);
  EXPECT_EQ(a.Dist(SMat(3, 4, 0)), 5.0);  // one point
  a.Set(pts, 3);
  SMat near;
  EXPECT_TRUE(a.Dist(SMat(6, 1, 0), &near) == 2.0 && Near(near, 4, 1, 0));
  CSegment s;
  EXPECT_TRUE(a.GetSegment(1, s) && s.length == 3.0);

  PointArray b;
  ASSERT_TRUE(XmlRoundTrip(a, b));
  ASSERT_EQ(b.GetSize(), 3);
  EXPECT_TRUE(Near(b[2], 4, 3, 0, 0.0));
  PCExBase bad;
  ASSERT_TRUE(bad.LoadString("<Pa N=\"2\" P=\"1 2 3\" />"));
  EXPECT_TRUE(!b.PersistXML(bad) && b.GetSize() == 3);  // unchanged
}
