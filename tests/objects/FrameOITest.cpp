#include <znmt64/CMFrame.h>
#include <znmt64/FrameOI.h>

#include <gtest/gtest.h>
#include <znag64/Section.h>

#include <cmath>

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

TEST(FrameOI, QueryTableInOrder) {
  CMFrame f;
  auto* o = new FrameOI(f);
  EXPECT_EQ(o->m_nRef, 0u);
  EXPECT_EQ(o->frame, &f);
  EXPECT_EQ(o->owns, 0);
  EXPECT_EQ(o->QueryInterface(IID_IFrame, nullptr), DISP_E_PARAMNOTOPTIONAL);
  EXPECT_EQ(o->m_nRef, 0u);

  const struct {
    const IID& iid;
    IUnknown* itf;
  } rows[] = {{IID_I3DObject, &o->m_x3DObject}, {IID_IUnknown, &o->m_x3DObject},
              {IID_IFrame, &o->m_xFrame},       {IID_IFrame2, &o->m_xFrame2},
              {IID_IFrameEx, &o->m_xFrameEx},   {IID_IFrame3, &o->m_xFrame3}};
  ULONG refs = 0;
  for (const auto& row : rows) {
    void* p = nullptr;
    EXPECT_EQ(o->QueryInterface(row.iid, &p), S_OK);
    EXPECT_EQ(p, static_cast<void*>(row.itf));
    EXPECT_EQ(o->m_nRef, ++refs);
  }

  // The private identifier lends the frame itself, uncounted.
  void* p = nullptr;
  EXPECT_EQ(o->QueryInterface(IID_WrappedObject, &p), S_OK);
  EXPECT_EQ(p, &f);
  EXPECT_EQ(o->m_nRef, refs);

  p = kUntouched;
  EXPECT_EQ(o->QueryInterface(kUnknownIid, &p), E_NOINTERFACE);
  EXPECT_EQ(p, nullptr);

  // Each interface answers its own identifier, refuses a null ppv and passes the rest on.
  for (const auto& row : rows) {
    EXPECT_EQ(row.itf->QueryInterface(IID_IFrame3, nullptr), DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(Query<IUnknown>(row.itf, row.iid), row.itf);
    EXPECT_EQ(Query<IUnknown>(row.itf, IID_IFrame3), &o->m_xFrame3);
    EXPECT_EQ(Query<void>(row.itf, IID_WrappedObject), &f);
  }
  refs += 2 * std::size(rows);
  EXPECT_EQ(o->m_nRef, refs);

  // One count for all interfaces: the last Release through any of them ends the object.
  for (ULONG k = refs; k > 1; --k) EXPECT_EQ(rows[k % std::size(rows)].itf->Release(), k - 1);
  EXPECT_EQ(o->m_xFrame2.Release(), 0u);
  EXPECT_TRUE(f.IsUnitary());  // the caller's frame is left alone
}

TEST(FrameOI, CreateAndOwnership) {
  // Both are leak checks under ASan as much as count checks.
  IUnknown* u = FrameOI::Create();
  ASSERT_NE(u, nullptr);
  auto* owned = Query<IFrame3>(u, IID_IFrame3);
  EXPECT_EQ(owned->Release(), 1u);
  CMFrame* inner = Query<CMFrame>(u, IID_WrappedObject);
  ASSERT_NE(inner, nullptr);
  EXPECT_TRUE(inner->IsUnitary());
  EXPECT_EQ(Query<void>(u, IID_IFrame), static_cast<void*>(u));  // Create hands out IFrame
  EXPECT_EQ(u->Release(), 1u);
  EXPECT_EQ(u->Release(), 0u);

  CMFrame f;
  f.SetOrigin(1.0, 2.0, 3.0);
  IFrame* i = FrameOI::Create(f);
  ASSERT_NE(i, nullptr);
  double pt[3] = {1.0, 1.0, 1.0};
  EXPECT_EQ(i->ToGlobal(pt), S_OK);
  EXPECT_EQ(pt[2], 4.0);
  EXPECT_EQ(i->Release(), 0u);
  EXPECT_EQ(f.origin.z, 3.0);

  FrameOI none(0), own(7);
  EXPECT_EQ(none.frame, nullptr);
  ASSERT_NE(own.frame, nullptr);
  EXPECT_EQ(own.owns, 7);
}

TEST(FrameOI, DelegatesToTheGeometryModuleAndAlwaysSucceeds) {
  CMFrame f;
  auto* o = new FrameOI(f);
  IFrame* keep = Query<IFrame>(&o->m_x3DObject, IID_IFrame);
  void* p = kUntouched;
  // No geometry module loaded: success, *ppv as it was.
  EXPECT_EQ(o->QueryInterface(IID_GeomFrameDelegate, &p), S_OK);
  EXPECT_EQ(p, kUntouched);
  {
    FakeSibling geom(DMID_GEOM);
    StubUnknown answer;
    geom.answer = &answer;
    EXPECT_EQ(keep->QueryInterface(IID_GeomFrameDelegate, &p), S_OK);
    EXPECT_EQ(p, &answer);
    EXPECT_EQ(answer.refs, 2u);
    EXPECT_EQ(o->m_nRef, 2u);  // the wrapper is counted as well
    EXPECT_EQ(geom.command, 26);
    EXPECT_EQ(geom.iid, IID_GeomFrameDelegate);
    EXPECT_EQ(geom.subject, o);

    for (HRESULT status : {E_FAIL, S_OK}) {  // a failure, then success without an interface
      geom.status = status;
      geom.answer = nullptr;
      p = kUntouched;
      EXPECT_EQ(o->QueryInterface(IID_GeomFrameDelegate, &p), S_OK);
      EXPECT_EQ(p, kUntouched);
    }
    EXPECT_EQ(geom.requests, 3);
    EXPECT_EQ(o->m_nRef, 2u);
  }
  keep->Release();
  keep->Release();
}

TEST(FrameOI, OperationsForwardToTheFrame) {
  CMFrame f;
  auto* o = new FrameOI(f);
  IFrame3* f3 = Query<IFrame3>(&o->m_xFrame, IID_IFrame3);
  IFrame2* f2 = Query<IFrame2>(f3, IID_IFrame2);
  IFrameEx* fx = Query<IFrameEx>(f3, IID_IFrameEx);
  IFrame* fr = Query<IFrame>(f3, IID_IFrame);

  EXPECT_EQ(f3->SetOrigin(1.0, 2.0, 3.0), S_OK);
  EXPECT_EQ(fx->Push(), S_OK);
  EXPECT_EQ(f3->Rotate(std::acos(-1.0) / 2, 2), S_OK);  // X -> Y
  double x, y, z;
  EXPECT_EQ(f3->GetAxis(0, &x, &y, &z), S_OK);
  EXPECT_NEAR(x, 0.0, 1e-15);
  EXPECT_NEAR(y, 1.0, 1e-15);
  EXPECT_EQ(f3->GetAxis(3, &x, &y, &z), E_INVALIDARG);
  EXPECT_EQ(f3->GetAxis(0, &x, nullptr, &z), DISP_E_PARAMNOTOPTIONAL);
  double v[3] = {1.0, 0.0, 0.0};
  EXPECT_EQ(fx->ToGlobalVector(v), S_OK);
  EXPECT_NEAR(v[1], 1.0, 1e-15);
  EXPECT_EQ(fx->Pop(), S_OK);
  EXPECT_EQ(f.axes[0].x, 1.0);
  EXPECT_EQ(fx->Pop(), S_OK);  // nothing saved: the frame stays

  // The frame's false answers come back as S_FALSE; the byte-sized axis number does not wrap.
  EXPECT_EQ(f2->SetAxis(1, 0.0, 0.0, 0.0), S_FALSE);
  EXPECT_EQ(f2->SetAxis(256, 0.0, 1.0, 0.0), S_FALSE);
  EXPECT_EQ(f.axes[0].x, 1.0);
  const double target[3] = {1.0, 2.0, 3.0}, up[3] = {0.0, 1.0, 0.0};
  EXPECT_EQ(f2->LookAt(target, up, TRUE), S_FALSE);
  EXPECT_EQ(f2->MakeValid(3), S_FALSE);

  // The zero vector was stored before its normalisation failed: the frame is now invalid, and
  // asking for its matrix repairs it and leaves the matrix as it was.
  double m[16] = {};
  EXPECT_EQ(fr->GetMatrix(m), S_OK);
  EXPECT_EQ(m[15], 0.0);
  EXPECT_EQ(f3->Reset(), S_OK);
  EXPECT_EQ(f3->SetOrigin(1.0, 2.0, 3.0), S_OK);
  EXPECT_EQ(fr->GetMatrix(m), S_OK);
  EXPECT_EQ(m[3], 1.0);
  EXPECT_EQ(m[7], 2.0);
  EXPECT_EQ(m[15], 1.0);
  m[3] = 5.0;
  EXPECT_EQ(fr->SetMatrix(m), S_OK);
  EXPECT_EQ(f.origin.x, 5.0);

  EXPECT_EQ(f3->Invert(), S_OK);
  EXPECT_EQ(f.origin.x, -5.0);
  BOOL right = FALSE;
  EXPECT_EQ(f3->GetOrientation(&right), S_OK);
  EXPECT_EQ(right, TRUE);

  // Another frame object, reached through the private identifier.
  CMFrame g;
  g.SetOrigin(-5.0, -2.0, 0.0);
  IFrame* other = FrameOI::Create(g);
  double d = 0.0;
  EXPECT_EQ(f3->Dist(other, &d), S_OK);
  EXPECT_EQ(d, 3.0);
  EXPECT_EQ(f3->FrameToLocal(other), S_OK);
  EXPECT_EQ(g.origin.z, 3.0);
  StubUnknown stranger;
  EXPECT_EQ(f3->FrameToLocal(&stranger), E_NOINTERFACE);
  EXPECT_EQ(f3->FrameToLocal(nullptr), DISP_E_PARAMNOTOPTIONAL);
  other->Release();

  for (IUnknown* i : {static_cast<IUnknown*>(f3), static_cast<IUnknown*>(f2), static_cast<IUnknown*>(fx)}) i->Release();
  EXPECT_EQ(fr->Release(), 0u);
}

TEST(FrameOI, WithoutAFrameEveryOperationFails) {
  FrameOI empty;  // on the stack: never released to 0
  empty.AddRef();
  BOOL valid = TRUE;
  double xyz[3] = {};
  EXPECT_EQ(empty.m_x3DObject.IsValid(&valid), E_UNEXPECTED);
  EXPECT_EQ(empty.m_x3DObject.IsValid(nullptr), DISP_E_PARAMNOTOPTIONAL);
  EXPECT_EQ(empty.m_xFrame.ToLocal(xyz), E_UNEXPECTED);
  EXPECT_EQ(empty.m_xFrameEx.Push(), E_UNEXPECTED);
  EXPECT_EQ(empty.m_xFrame2.MakeValid(0), E_UNEXPECTED);
  EXPECT_EQ(empty.m_xFrame3.Invert(), E_UNEXPECTED);
  void* p = kUntouched;
  EXPECT_EQ(empty.QueryInterface(IID_WrappedObject, &p), S_OK);
  EXPECT_EQ(p, nullptr);
  // Handed to a frame object that has a frame, it has none to offer.
  CMFrame f;
  IFrame* full = FrameOI::Create(f);
  IFrame3* full3 = Query<IFrame3>(full, IID_IFrame3);
  EXPECT_EQ(full3->FrameToLocal(&empty.m_xFrame3), E_UNEXPECTED);
  full3->Release();
  full->Release();
  EXPECT_EQ(empty.m_nRef, 1u);
}
