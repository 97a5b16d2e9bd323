#include <znmt64/CCircle.h>
#include <znmt64/CircleOI.h>
#include <znmt64/FrameOI.h>

#include <znag64/AnGeoState.h>

#include <cmath>
#include <cstring>

#include "ObjectsTestUtil.h"

TEST(CircleOI, QueryTableAndOneCountForAllInterfaces) {
  auto* o = new CircleOI();  // makes its circle, and frees it: a leak check under ASan
  EXPECT_EQ(o->m_nRef, 1u);  // the constructing client's reference
  EXPECT_EQ(o->QueryInterface(IID_IAxis, nullptr), DISP_E_PARAMNOTOPTIONAL);
  void* p = nullptr;
  EXPECT_EQ(o->QueryInterface(IID_WrappedObject, &p), S_OK);
  EXPECT_TRUE(p == o->circle && p != nullptr && o->m_nRef == 1u);
  const QueryRow rows[] = {{IID_IAxis, &o->m_xAxis},         {IID_IUnknown, &o->m_xAxis},
                           {IID_ILocation, &o->m_xLocation}, {IID_ICircle3D_Zn2, &o->m_xCircle3D_Zn2},
                           {IID_ISection, &o->m_xSection},   {IID_IMetrics64, &o->m_xMetrics},
                           {IID_IMetrics2, &o->m_xMetrics2}};
  CheckQueryTable(o, rows, IID_ISection, &o->m_xSection);
}

TEST(CircleOI, QuadricModuleQueryReportsFailures) {
  CCircle c;
  auto* o = new CircleOI(&c);
  void* p = kUntouched;
  EXPECT_EQ(o->QueryInterface(IID_QuadrCircleDelegate, &p), DM_E_NOTLOADED);
  EXPECT_EQ(p, kUntouched);
  {
    FakeSibling quadr(DMID_QUADR);
    StubUnknown answer;
    quadr.answer = &answer;
    EXPECT_EQ(o->QueryInterface(IID_QuadrCircleDelegate, &p), S_OK);
    EXPECT_TRUE(p == &answer && o->m_nRef == 2u);
    EXPECT_TRUE(quadr.command == 7 && quadr.iid == IID_QuadrCircleDelegate && quadr.subject == o);
    quadr.answer = nullptr;
    p = kUntouched;
    EXPECT_EQ(o->QueryInterface(IID_QuadrCircleDelegate, &p), E_UNEXPECTED);
    quadr.status = E_FAIL;
    EXPECT_EQ(o->QueryInterface(IID_QuadrCircleDelegate, &p), E_FAIL);
    EXPECT_EQ(p, kUntouched);
    o->circle = nullptr;  // the module is not asked about no circle
    EXPECT_EQ(o->QueryInterface(IID_QuadrCircleDelegate, &p), 5023);
    EXPECT_EQ(quadr.requests, 3);
  }
  o->Release();
  EXPECT_EQ(o->Release(), 0u);
  EXPECT_EQ(c.radius, 1.0);  // the caller's circle outlives the object
  const CircleOI own(nullptr);  // no circle given: it makes its own
  EXPECT_NE(own.circle, nullptr);
}

TEST(CircleOI, OperationsForwardToTheCircle) {
  CCircle c;  // unit circle about the origin, axis z
  CircleOI o(&c);
  const double inside[3] = {0.99999, 0.0, 0.0}, on[3] = {1.0 - 1e-11, 0.0, 0.0};
  int locn = 9, locn2 = 9;
  EXPECT_EQ(o.m_xLocation.GetPointLocation(inside, &locn), S_OK);
  EXPECT_EQ(o.m_xAxis.GetPointLocation(on, &locn2), S_OK);
  EXPECT_TRUE(locn == -1 && locn2 == 0);
  const double a[3] = {1.0, 0.0, 0.0}, b[3] = {-1.0, 0.0, 0.0}, centre[3] = {};
  double d = 0.0;
  EXPECT_EQ(o.m_xMetrics.GetTranslation(a, b, &d), S_OK);
  EXPECT_EQ(d, 3.14159265358979);
  EXPECT_EQ(o.m_xMetrics.Dist(a, centre, &d), E_INVALIDARG);  // no angle at the centre; nothing escapes
  double t[3];
  EXPECT_EQ(o.m_xMetrics2.GetTangent(centre, t), S_FALSE);

  IFrame3* f = nullptr;
  const double along[3] = {0.0, 0.0, 2.0}, at[3] = {0.0, 0.0, 5.0}, down[3] = {0.0, 0.0, -3.0};
  EXPECT_EQ(o.m_xCircle3D_Zn2.GetFrame(along, &f), S_FALSE);
  EXPECT_TRUE(o.m_xAxis.SetAxis(at, down) == S_OK && c.dir.z == -1.0);
  ASSERT_EQ(o.m_xCircle3D_Zn2.GetFrame(a, &f), S_OK);
  double x, y, z;
  EXPECT_TRUE(f->GetAxis(2, &x, &y, &z) == S_OK && z == -1.0);
  EXPECT_EQ(f->FrameToLocal(&o.m_xAxis), E_NOINTERFACE);  // a circle is not a frame
  EXPECT_EQ(f->Release(), 0u);

  o.circle = nullptr;
  EXPECT_EQ(o.m_xCircle3D_Zn2.GetRadius(&d), E_UNEXPECTED);
  EXPECT_EQ(o.m_xSection.Clear(), E_UNEXPECTED);
}

TEST(CircleOI, SectionIsTheCirclesDrawing) {
  CCircle c(2.0);
  CircleOI o(&c);
  ISection* s = Query<ISection>(&o.m_xAxis, IID_ISection);
  int n = 0;
  ASSERT_EQ(s->GetVertexCount(&n), S_OK);
  ASSERT_GT(n, 2);
  double v[3];
  EXPECT_EQ(s->GetVertex(n / 2, v), S_OK);
  EXPECT_NEAR(std::hypot(v[0], v[1]), 2.0, 1e-12);
  char caption[32];
  EXPECT_TRUE(s->GetCaption(caption, sizeof caption) == S_OK && std::strncmp(caption, "CCircle ", 8) == 0);

  // Edits stay on the drawing until the circle changes; a caption outlives the redraw.
  EXPECT_TRUE(s->SetCaption("rim") == S_OK && s->Clear() == S_OK);
  EXPECT_TRUE(s->GetVertexCount(&n) == S_OK && n == 0);
  c.radius = 3.0;
  EXPECT_TRUE(s->GetVertexCount(&n) == S_OK && n > 2);

  // The 2D module's debugger draws the object itself.
  Dbg3D dbg;
  EXPECT_EQ(dbg.Show(&o.m_xMetrics), S_OK);
  ASSERT_EQ(dbg.m_items.size(), 1u);
  EXPECT_TRUE(dbg.m_items[0].bSection && dbg.m_items[0].data.GetVertexCount() == n);
  EXPECT_EQ(dbg.m_items[0].data.caption, "rim");
  EXPECT_EQ(s->Release(), 1u);
}
