#include <znmt64/CMFrame.h>
#include <znmt64/FrameOI.h>

#include <cmath>

#include "ObjectsTestUtil.h"

TEST(FrameOI, QueryTableAndOneCountForAllInterfaces) {
  CMFrame f;
  auto* o = new FrameOI(f);
  EXPECT_EQ(o->m_nRef, 0u);
  EXPECT_EQ(o->QueryInterface(IID_IFrame, nullptr), DISP_E_PARAMNOTOPTIONAL);
  // The private identifier lends the frame itself, uncounted.
  void* p = nullptr;
  EXPECT_EQ(o->QueryInterface(IID_WrappedObject, &p), S_OK);
  EXPECT_TRUE(p == &f && o->m_nRef == 0u);
  const QueryRow rows[] = {{IID_I3DObject, &o->m_x3DObject}, {IID_IUnknown, &o->m_x3DObject},
                           {IID_IFrame, &o->m_xFrame},       {IID_IFrame2, &o->m_xFrame2},
                           {IID_IFrameEx, &o->m_xFrameEx},   {IID_IFrame3, &o->m_xFrame3}};
  CheckQueryTable(o, rows, IID_IFrame2, &o->m_xFrame2);  // ends the object
  EXPECT_TRUE(f.IsUnitary());                             // the caller's frame outlives it
}

TEST(FrameOI, CreateAndOwnership) {
  IUnknown* u = FrameOI::Create();  // owns its frame: a leak check under ASan
  ASSERT_NE(u, nullptr);
  EXPECT_EQ(Query<IUnknown>(u, IID_IFrame), u);  // Create hands out IFrame
  EXPECT_TRUE(Query<CMFrame>(u, IID_WrappedObject)->IsUnitary());
  EXPECT_EQ(u->Release(), 1u);
  EXPECT_EQ(u->Release(), 0u);

  CMFrame f;
  f.SetOrigin(1.0, 2.0, 3.0);
  IFrame* i = FrameOI::Create(f);
  double pt[3] = {1.0, 1.0, 1.0};
  EXPECT_TRUE(i->ToGlobal(pt) == S_OK && pt[2] == 4.0);
  EXPECT_EQ(i->Release(), 0u);
  EXPECT_EQ(f.origin.z, 3.0);
}

TEST(FrameOI, GeometryModuleQueryAlwaysSucceeds) {
  CMFrame f;
  auto* o = new FrameOI(f);
  IFrame* keep = Query<IFrame>(&o->m_x3DObject, IID_IFrame);
  void* p = kUntouched;
  EXPECT_EQ(o->QueryInterface(IID_GeomFrameDelegate, &p), S_OK);  // no geometry module loaded
  EXPECT_EQ(p, kUntouched);
  {
    FakeSibling geom(DMID_GEOM);
    StubUnknown answer;
    geom.answer = &answer;
    EXPECT_EQ(keep->QueryInterface(IID_GeomFrameDelegate, &p), S_OK);
    EXPECT_TRUE(p == &answer && answer.refs == 2u);
    EXPECT_EQ(o->m_nRef, 2u);  // the frame object is counted as well
    EXPECT_TRUE(geom.command == 26 && geom.iid == IID_GeomFrameDelegate && geom.subject == o);
    for (HRESULT status : {E_FAIL, S_OK}) {  // a failure, then success without an interface
      geom.status = status;
      geom.answer = nullptr;
      p = kUntouched;
      EXPECT_TRUE(o->QueryInterface(IID_GeomFrameDelegate, &p) == S_OK && p == kUntouched);
    }
    EXPECT_EQ(o->m_nRef, 2u);
  }
  keep->Release();
  keep->Release();
}

TEST(FrameOI, OperationsForwardToTheFrame) {
  CMFrame f;
  FrameOI o(f);
  o.AddRef();  // on the stack: never released to 0
  IFrame3& f3 = o.m_xFrame3;
  EXPECT_EQ(f3.SetOrigin(1.0, 2.0, 3.0), S_OK);
  EXPECT_EQ(f3.Rotate(std::acos(-1.0) / 2, 2), S_OK);  // X turns into Y
  double x, y, z;
  EXPECT_TRUE(f3.GetAxis(0, &x, &y, &z) == S_OK && std::fabs(y - 1.0) < 1e-15);
  EXPECT_EQ(f3.GetAxis(3, &x, &y, &z), E_INVALIDARG);
  EXPECT_EQ(f3.GetAxis(0, &x, nullptr, &z), DISP_E_PARAMNOTOPTIONAL);

  // False answers of the frame are S_FALSE; the frame's byte-sized axis number does not wrap.
  EXPECT_EQ(o.m_xFrame2.SetAxis(256, 0.0, 1.0, 0.0), S_FALSE);
  // A zero axis is stored before its normalisation fails; the invalid frame's matrix is then
  // left as it was while the frame is repaired.
  EXPECT_EQ(f3.SetAxis(1, 0.0, 0.0, 0.0), S_FALSE);
  double m[16] = {};
  EXPECT_TRUE(o.m_xFrame.GetMatrix(m) == S_OK && m[15] == 0.0);
  EXPECT_TRUE(f3.Reset() == S_OK && f3.SetOrigin(5.0, 2.0, 3.0) == S_OK);
  EXPECT_TRUE(o.m_xFrame.GetMatrix(m) == S_OK && m[3] == 5.0 && m[15] == 1.0);
  EXPECT_EQ(f3.Invert(), S_OK);

  // Another frame, reached through the private identifier.
  CMFrame g;
  g.SetOrigin(-5.0, -2.0, 0.0);
  IFrame* other = FrameOI::Create(g);
  double d = 0.0;
  EXPECT_TRUE(f3.Dist(other, &d) == S_OK && d == 3.0);
  EXPECT_TRUE(f3.FrameToLocal(other) == S_OK && g.origin.z == 3.0);
  StubUnknown stranger;
  EXPECT_EQ(f3.FrameToLocal(&stranger), E_NOINTERFACE);
  EXPECT_EQ(f3.FrameToLocal(nullptr), DISP_E_PARAMNOTOPTIONAL);
  other->Release();

  // Without a frame every operation fails, also as the other frame of one that has one.
  FrameOI empty;
  empty.AddRef();
  EXPECT_EQ(empty.m_xFrameEx.Push(), E_UNEXPECTED);
  EXPECT_EQ(f3.FrameToLocal(&empty.m_xFrame2), E_UNEXPECTED);
  EXPECT_EQ(Query<void>(&empty.m_xFrame, IID_WrappedObject), nullptr);
  EXPECT_EQ(o.m_nRef + empty.m_nRef, 2u);
}
