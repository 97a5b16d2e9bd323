#include <znmt64/CCircle.h>
#include <znmt64/CMFrame.h>
#include <znmt64/CircleOI.h>
#include <znmt64/FrameOI.h>

#include <gtest/gtest.h>
#include <znag64/AnGeoState.h>

#include <cmath>
#include <cstring>

#include "ObjectsTestUtil.h"

namespace {

constexpr GUID kUnknownIid = {0x12345678, 0x9ABC, 0xDEF0, {1, 2, 3, 4, 5, 6, 7, 8}};
void* const kUntouched = reinterpret_cast<void*>(0x5A5A);

template <class I>
I* Query(IUnknown* from, REFIID iid) {
  void* p = nullptr;
  EXPECT_EQ(from->QueryInterface(iid, &p), S_OK);
  return static_cast<I*>(p);
}

}  // namespace

TEST(CircleOI, QueryTableInOrder) {
  auto* o = new CircleOI();
  ASSERT_NE(o->circle, nullptr);
  EXPECT_EQ(o->m_nRef, 1u);  // the constructing client's reference
  EXPECT_EQ(o->QueryInterface(IID_IAxis, nullptr), DISP_E_PARAMNOTOPTIONAL);

  const struct {
    const IID& iid;
    IUnknown* itf;
  } rows[] = {{IID_IAxis, &o->m_xAxis},
              {IID_IUnknown, &o->m_xAxis},
              {IID_ILocation, &o->m_xLocation},
              {IID_ICircle3D_Zn2, &o->m_xCircle3D_Zn2},
              {IID_ISection, &o->m_xSection},
              {IID_IMetrics64, &o->m_xMetrics},
              {IID_IMetrics2, &o->m_xMetrics2}};
  ULONG refs = 1;
  for (const auto& row : rows) {
    void* p = nullptr;
    EXPECT_EQ(o->QueryInterface(row.iid, &p), S_OK);
    EXPECT_EQ(p, static_cast<void*>(row.itf));
    EXPECT_EQ(o->m_nRef, ++refs);
  }
  EXPECT_EQ(Query<void>(&o->m_xMetrics2, IID_WrappedObject), o->circle);
  EXPECT_EQ(o->m_nRef, refs);
  void* p = kUntouched;
  EXPECT_EQ(o->QueryInterface(kUnknownIid, &p), E_NOINTERFACE);
  EXPECT_EQ(p, nullptr);

  for (const auto& row : rows) {
    EXPECT_EQ(row.itf->QueryInterface(IID_IMetrics64, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(Query<IUnknown>(row.itf, row.iid), row.itf);
    EXPECT_EQ(Query<IUnknown>(row.itf, IID_ISection), &o->m_xSection);
  }
  refs += 2 * std::size(rows);
  for (ULONG k = refs; k > 1; --k) EXPECT_EQ(rows[k % std::size(rows)].itf->Release(), k - 1);
  EXPECT_EQ(o->m_xMetrics.Release(), 0u);  // and the circle it made is freed with it
}

TEST(CircleOI, QuadricModuleDelegationReportsFailures) {
  CCircle c;
  auto* o = new CircleOI(&c);
  EXPECT_EQ(o->circle, &c);
  void* p = kUntouched;
  EXPECT_EQ(o->QueryInterface(IID_QuadrCircleDelegate, &p), DM_E_NOTLOADED);
  EXPECT_EQ(p, kUntouched);
  {
    FakeSibling quadr(DMID_QUADR);
    StubUnknown answer;
    quadr.answer = &answer;
    EXPECT_EQ(o->QueryInterface(IID_QuadrCircleDelegate, &p), S_OK);
    EXPECT_EQ(p, &answer);
    EXPECT_EQ(o->m_nRef, 2u);
    EXPECT_EQ(quadr.command, 7);
    EXPECT_EQ(quadr.iid, IID_QuadrCircleDelegate);
    EXPECT_EQ(quadr.subject, o);

    quadr.answer = nullptr;
    p = kUntouched;
    EXPECT_EQ(o->QueryInterface(IID_QuadrCircleDelegate, &p), E_UNEXPECTED);
    quadr.status = E_FAIL;
    EXPECT_EQ(o->QueryInterface(IID_QuadrCircleDelegate, &p), E_FAIL);
    EXPECT_EQ(p, kUntouched);
    // No circle: the plain decimal status, and the module is not asked.
    o->circle = nullptr;
    EXPECT_EQ(o->QueryInterface(IID_QuadrCircleDelegate, &p), 5023);
    EXPECT_EQ(quadr.requests, 3);
    EXPECT_EQ(o->m_nRef, 2u);
  }
  o->Release();
  o->Release();
  EXPECT_EQ(c.radius, 1.0);  // the caller's circle outlives the object

  CircleOI own(nullptr);
  EXPECT_NE(own.circle, nullptr);
}

TEST(CircleOI, OperationsForwardToTheCircle) {
  CCircle c;  // unit circle about the origin, axis z
  CircleOI o(&c);
  ILocation& loc = o.m_xLocation;
  const double inside[3] = {0.99999, 0.0, 0.0}, on[3] = {1.0 - 1e-11, 0.0, 0.0}, off[3] = {0.0, 0.0, 1e-9};
  int locn = 9;
  EXPECT_EQ(loc.GetPointLocation(inside, &locn), S_OK);
  EXPECT_EQ(locn, -1);
  EXPECT_EQ(o.m_xAxis.GetPointLocation(on, &locn), S_OK);
  EXPECT_EQ(locn, 0);
  EXPECT_EQ(loc.GetPointLocation(off, &locn), S_OK);
  EXPECT_EQ(locn, 1);
  const double far[3] = {3.0, 0.0, 4.0};
  double d = 0.0, near[3];
  EXPECT_EQ(loc.DistPoint(far, nullptr, &d), S_OK);
  EXPECT_EQ(loc.DistPoint(far, near, &d), S_OK);
  EXPECT_DOUBLE_EQ(d, std::sqrt(20.0));
  EXPECT_EQ(near[0], 1.0);

  const double a[3] = {1.0, 0.0, 0.0}, b[3] = {-1.0, 0.0, 0.0}, q[3] = {0.0, 1.0, 0.0}, centre[3] = {};
  IMetrics64& m = o.m_xMetrics;
  EXPECT_EQ(m.GetTranslation(a, b, &d), S_OK);
  EXPECT_EQ(d, 3.14159265358979);
  EXPECT_EQ(m.Dist(a, q, &d), S_OK);
  EXPECT_DOUBLE_EQ(d, std::acos(-1.0) / 2);
  EXPECT_EQ(m.Dist(a, centre, &d), E_INVALIDARG);  // no angle at the centre: no exception escapes
  BOOL yes = FALSE;
  EXPECT_EQ(o.m_xMetrics2.IsOpposite(a, b, &yes), S_OK);
  EXPECT_EQ(yes, TRUE);
  double t[3];
  EXPECT_EQ(o.m_xMetrics2.GetTangent(centre, t), S_FALSE);

  ICircle3D_Zn2& c3 = o.m_xCircle3D_Zn2;
  double xyz[12];
  EXPECT_EQ(c3.GetSampling(4, a, xyz), S_OK);
  EXPECT_NEAR(xyz[4], 1.0, 1e-14);  // the second point (0, 1, 0)
  EXPECT_NEAR(xyz[9], 0.0, 1e-14);  // the fourth (0, -1, 0)
  EXPECT_NEAR(xyz[10], -1.0, 1e-14);
  IFrame3* f = reinterpret_cast<IFrame3*>(kUntouched);
  const double up[3] = {0.0, 0.0, 2.0};
  EXPECT_EQ(c3.GetFrame(up, &f), S_FALSE);
  EXPECT_EQ(f, nullptr);
  EXPECT_EQ(c3.SetRadius(2.0), S_OK);
  const double axisAt[3] = {0.0, 0.0, 5.0}, axisDir[3] = {0.0, 0.0, -3.0}, zero[3] = {};
  EXPECT_EQ(o.m_xAxis.SetAxis(axisAt, zero), S_FALSE);
  EXPECT_EQ(o.m_xAxis.SetAxis(axisAt, axisDir), S_OK);
  EXPECT_EQ(c.dir.z, -1.0);
  ASSERT_EQ(c3.GetFrame(a, &f), S_OK);
  double x, y, z;
  EXPECT_EQ(f->GetOrigin(&x, &y, &z), S_OK);
  EXPECT_EQ(z, 5.0);
  EXPECT_EQ(f->GetAxis(2, &x, &y, &z), S_OK);
  EXPECT_EQ(z, -1.0);
  // A circle is not a frame: the frame operations refuse it.
  EXPECT_EQ(f->FrameToLocal(&o.m_xAxis), E_NOINTERFACE);
  EXPECT_EQ(f->Release(), 0u);

  o.circle = nullptr;
  EXPECT_EQ(c3.GetRadius(&d), E_UNEXPECTED);
  EXPECT_EQ(o.m_xSection.Clear(), E_UNEXPECTED);
}

TEST(CircleOI, SectionIsTheCirclesDrawing) {
  CCircle c(2.0);
  CircleOI o(&c);
  ISection* s = Query<ISection>(&o.m_xAxis, IID_ISection);
  int n = 0;
  EXPECT_EQ(s->GetKind(&n), S_OK);
  EXPECT_EQ(n, 9);
  ASSERT_EQ(s->GetVertexCount(&n), S_OK);
  ASSERT_GT(n, 2);
  double v[3];
  EXPECT_EQ(s->GetVertex(n / 2, v), S_OK);
  EXPECT_NEAR(std::hypot(v[0], v[1]), 2.0, 1e-12);
  char caption[32];
  EXPECT_EQ(s->GetCaption(caption, sizeof caption), S_OK);
  EXPECT_EQ(std::strncmp(caption, "CCircle ", 8), 0);

  // Edits stay on the drawing until the circle changes; the caption outlives a redraw.
  EXPECT_EQ(s->SetCaption("rim"), S_OK);
  EXPECT_EQ(s->Clear(), S_OK);
  EXPECT_EQ(s->GetVertexCount(&n), S_OK);
  EXPECT_EQ(n, 0);
  EXPECT_EQ(c.radius, 2.0);
  c.radius = 3.0;
  EXPECT_EQ(s->GetVertexCount(&n), S_OK);
  EXPECT_GT(n, 2);
  EXPECT_EQ(s->GetCaption(caption, sizeof caption), S_OK);
  EXPECT_STREQ(caption, "rim");

  // The 2D module's debugger draws the object itself.
  Dbg3D dbg;
  EXPECT_EQ(dbg.Show(&o.m_xMetrics), S_OK);
  ASSERT_EQ(dbg.m_items.size(), 1u);
  EXPECT_TRUE(dbg.m_items[0].bSection);
  EXPECT_EQ(dbg.m_items[0].data.caption, "rim");
  EXPECT_EQ(dbg.m_items[0].data.GetVertexCount(), n);
  EXPECT_EQ(s->Release(), 1u);
}
