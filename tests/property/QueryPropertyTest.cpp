// Invariants of the queries on any input, NaN and infinities included: the distance record's best
// distance only goes down, and every location code lies within its enumeration.
#include <znmt64/CCircle.h>
#include <znmt64/CLineal.h>
#include <znmt64/CPlane.h>
#include <znmt64/CSegment.h>
#include <znmt64/DistContext.h>
#include <znmt64/Triangle3D.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

#include "Generators.h"

namespace {

bool In(int v, int lo, int hi) { return lo <= v && v <= hi; }

CLineal AnyLine() {
  CLineal l;
  l.origin = *prop::Point(prop::AnyDouble());
  l.dir = *prop::Point(prop::AnyDouble());
  if (*rc::gen::arbitrary<bool>()) l.Normalize();
  return l;
}

}  // namespace

RC_GTEST_PROP(DistContextProperty, UpdateNeverRaisesTheBestDistance, ()) {
  DistContext ctx(*rc::gen::arbitrary<bool>(), *rc::gen::arbitrary<bool>());
  SMat mine;
  if (*rc::gen::arbitrary<bool>()) ctx.pPt1 = &mine;  // a caller's own place
  const int count = *rc::gen::inRange(1, 20);
  for (int k = 0; k < count; ++k) {
    const SMat p1 = *prop::Point(prop::Coordinate(10.0));
    const SMat p2 = *prop::Point(prop::Coordinate(10.0));
    const double d = *prop::AnyDouble();
    const double before = ctx.dDist;
    ctx.Update(p1, p2, d);
    RC_ASSERT(!(ctx.dDist > before));
    if (d < before) {
      RC_ASSERT(ctx.dDist == d);
      if (ctx.pPt1 != nullptr) RC_ASSERT(*ctx.pPt1 == p1);
      if (ctx.pPt2 != nullptr) RC_ASSERT(*ctx.pPt2 == p2);
    }
    DistContext sub(true, true);
    sub.Update(p2, p1, *prop::AnyDouble());
    const double merged = ctx.dDist;
    ctx.Insert(sub);
    RC_ASSERT(!(ctx.dDist > merged));
  }
}

RC_GTEST_PROP(LocationProperty, LineAndPlaneCodesStayInTheirEnumerations, ()) {
  const CLineal l = AnyLine();
  const CLineal o = AnyLine();
  const CPlane pl(AnyLine());
  const SMat p = *prop::Point(prop::AnyDouble());
  const SMat q = *prop::Point(prop::AnyDouble());

  RC_ASSERT(In(l.GetPointLocation(p), CLineal::eOnLine, CLineal::eOffLine));
  RC_ASSERT(In(l.GetPointLocn(p, q), CLineal::eOnLine, CLineal::eNegativeSide));
  RC_ASSERT(In(l.GetLineOrientation(o), CLineal::eLinePosnUnknown, CLineal::eCoincident));
  SMat foot;
  RC_ASSERT(In(l.Intesect(o, foot), CLineal::eLinePosnUnknown, CLineal::eCoincident));
  RC_ASSERT(In(pl.GetPointLocation(p, *prop::AnyDouble()), CPlane::eLocnUndefined, CPlane::ePositive));
  RC_ASSERT(In(pl.GetLocation(o), CPlane::eLineUndefined, CPlane::eLineCrossing));
}

RC_GTEST_PROP(LocationProperty, SegmentCircleAndTriangleCodesStayInTheirEnumerations, ()) {
  const SMat p = *prop::Point(prop::AnyDouble());
  CSegment s(*prop::Point(prop::AnyDouble()), *prop::Point(prop::AnyDouble()));
  const CPlane pl(AnyLine());
  const int segAt = s.GetLocation(p, *prop::AnyDouble());
  RC_ASSERT(In(segAt, CSegment::eSegInside, CSegment::eSegOffLine) && segAt != CSegment::eSegLocn4);
  const int segT = s.GetPointLocation(*prop::AnyDouble(), *prop::AnyDouble());
  RC_ASSERT(In(segT, CSegment::eSegInside, CSegment::eSegBeyondQ) && segT != CSegment::eSegLocn4);
  RC_ASSERT(In(pl.GetSegmentLocation(s), CPlane::eSegmUndefined, CPlane::eSegmCrossing));
  RC_ASSERT(In(s.GetLocation(pl), CPlane::eLocnUndefined, CPlane::ePositive));

  CCircle c(*prop::AnyDouble());
  c.origin = *prop::Point(prop::AnyDouble());
  c.dir = *prop::Point(prop::AnyDouble());
  RC_ASSERT(In(c.GetPointLocation(p), -1, 1));
  RC_ASSERT(In(c.GetLocationWRT(pl), CPlane::eLineUndefined, CPlane::eLineCrossing));

  const SMat corners[3] = {*prop::Point(prop::AnyDouble()), *prop::Point(prop::AnyDouble()),
                           *prop::Point(prop::AnyDouble())};
  const Triangle3D t(corners);
  RC_ASSERT(In(t.GetPtLocation3D(p), CPlane::eLocnUndefined, CPlane::ePositive));
  RC_ASSERT(In(t.GetPointLocation(p), SimplPointBase::eInside, SimplPointBase::eUndetermined));
  SimplPoint sp(p);
  RC_ASSERT(In(t.GetPointLocation2(sp), SimplPointBase::eInside, SimplPointBase::eUndetermined));
  RC_ASSERT(In(sp.m_eLocn, SimplPointBase::eInside, SimplPointBase::eUndetermined));
}
