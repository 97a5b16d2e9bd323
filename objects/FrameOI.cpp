#include <znmt64/CMFrame.h>
#include <znmt64/DynaModuleMatr.h>
#include <znmt64/FrameOI.h>
#include <znmt64/MatSq.h>

#include "ComObject.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
FrameOI& FrameOI::X3DObject::Outer() { return OuterOf<FrameOI>(this, offsetof(FrameOI, m_x3DObject)); }
FrameOI& FrameOI::XFrame::Outer() { return OuterOf<FrameOI>(this, offsetof(FrameOI, m_xFrame)); }
FrameOI& FrameOI::XFrameEx::Outer() { return OuterOf<FrameOI>(this, offsetof(FrameOI, m_xFrameEx)); }
FrameOI& FrameOI::XFrame2::Outer() { return OuterOf<FrameOI>(this, offsetof(FrameOI, m_xFrame2)); }
FrameOI& FrameOI::XFrame3::Outer() { return OuterOf<FrameOI>(this, offsetof(FrameOI, m_xFrame3)); }
#pragma GCC diagnostic pop

// ---- the object ----------------------------------------------------------------------------------

FrameOI::FrameOI() : frame(nullptr), owns(0) { m_nRef = 0; }

FrameOI::FrameOI(CMFrame& f) : frame(&f), owns(0) { m_nRef = 0; }

FrameOI::FrameOI(int own) : frame(own != 0 ? new CMFrame : nullptr), owns(own) { m_nRef = 0; }

FrameOI::~FrameOI() {
  if (owns != 0) delete frame;
}

IFrame* FrameOI::Create(CMFrame& f) {
  FrameOI* o = new FrameOI(f);
  IFrame* p = nullptr;
  if (FAILED(o->QueryInterface(IID_IFrame, reinterpret_cast<void**>(&p)))) {
    delete o;
    return nullptr;
  }
  return p;
}

IUnknown* FrameOI::Create() {
  FrameOI* o = new FrameOI(1);
  IFrame* p = nullptr;
  if (FAILED(o->QueryInterface(IID_IFrame, reinterpret_cast<void**>(&p)))) {
    delete o;
    return nullptr;
  }
  return p;
}

HRESULT FrameOI::QueryInterface(const GUID& iid, void** ppv) {
  if (ppv == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  IUnknown* itf = nullptr;
  if (iid == IID_I3DObject || iid == IID_IUnknown)
    itf = &m_x3DObject;
  else if (iid == IID_IFrame)
    itf = &m_xFrame;
  else if (iid == IID_IFrame2)
    itf = &m_xFrame2;
  else if (iid == IID_IFrameEx)
    itf = &m_xFrameEx;
  else if (iid == IID_IFrame3)
    itf = &m_xFrame3;
  if (itf != nullptr) {
    *ppv = itf;
    AddRef();
    return S_OK;
  }
  if (iid == IID_WrappedObject) {
    // Uncounted: the caller borrows the frame for the length of a call.
    *ppv = frame;
    return S_OK;
  }
  if (iid != IID_GeomFrameDelegate) {
    *ppv = nullptr;
    return E_NOINTERFACE;
  }
  QC qc(DMID_GEOM, iid, this, 26);
  // S_OK whatever the geometry module answers: callers of this identifier look at *ppv only.
  if (dynaModuleMatr.GetInterface(qc) == S_OK && qc.m_pInterface != nullptr) {
    *ppv = qc.m_pInterface;
    AddRef();
  }
  return S_OK;
}

// ---- the operations, shared by the interfaces that offer them -----------------------------------

namespace {

// op(frame) on the wrapped frame; E_UNEXPECTED without one.
template <class Op>
HRESULT OnFrame(FrameOI& o, Op op) {
  if (o.frame == nullptr) return E_UNEXPECTED;
  return op(*o.frame);
}

HRESULT Answer(bool done) { return done ? S_OK : S_FALSE; }

bool IsAxis(int k) { return k >= 0 && k < 3; }

namespace op {

HRESULT IsValid(FrameOI& o, BOOL* pValid) {
  if (pValid == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnFrame(o, [&](CMFrame& f) {
    *pValid = f.IsValid() ? TRUE : FALSE;
    return S_OK;
  });
}

HRESULT TranslateGlob(FrameOI& o, double dx, double dy, double dz) {
  return OnFrame(o, [&](CMFrame& f) {
    f.TranslateGlob(SMat(dx, dy, dz));
    return S_OK;
  });
}

HRESULT RotateAbout(FrameOI& o, const double* dir, double angle) {
  if (dir == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnFrame(o, [&](CMFrame& f) {
    f.Rotate(SMat(dir), angle);
    return S_OK;
  });
}

HRESULT SetTransform(FrameOI& o, const double* m) {
  if (m == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnFrame(o, [&](CMFrame& f) {
    MatSq t(4);
    t.Initze(m);
    f.SetTransform(t);
    return S_OK;
  });
}

HRESULT CreateDump(FrameOI& o, double len, ISection** ppSection) {
  if (ppSection == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnFrame(o, [&](CMFrame& f) {
    *ppSection = f.CreateDump(len);
    return *ppSection != nullptr ? S_OK : E_FAIL;
  });
}

HRESULT GetMatrix(FrameOI& o, double* m) {
  if (m == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnFrame(o, [&](CMFrame& f) {
    f.ToMatrix(m);
    return S_OK;
  });
}

HRESULT SetMatrix(FrameOI& o, const double* m) {
  if (m == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnFrame(o, [&](CMFrame& f) {
    Mat t(4, 4);
    t.Initze(m);
    f.FromMatrix(t);
    return S_OK;
  });
}

// Runs convert on xyz read as an SMat, in place.
template <class Convert>
HRESULT Convert3(FrameOI& o, double* xyz, Convert convert) {
  if (xyz == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnFrame(o, [&](CMFrame& f) {
    SMat v(xyz);
    convert(f, v);
    v.GetDataCopy(xyz);
    return S_OK;
  });
}

HRESULT ToGlobal(FrameOI& o, double* xyz) {
  return Convert3(o, xyz, [](const CMFrame& f, SMat& v) { f.ToGlobal(v); });
}
HRESULT ToLocal(FrameOI& o, double* xyz) {
  return Convert3(o, xyz, [](const CMFrame& f, SMat& v) { f.ToLocal(v); });
}
HRESULT ToGlobalVector(FrameOI& o, double* xyz) {
  return Convert3(o, xyz, [](const CMFrame& f, SMat& v) { f.ToGlobalVector(v); });
}
HRESULT ToLocalVector(FrameOI& o, double* xyz) {
  return Convert3(o, xyz, [](const CMFrame& f, SMat& v) { f.ToLocalVector(v); });
}

HRESULT Push(FrameOI& o) {
  return OnFrame(o, [](CMFrame& f) {
    f.Push();
    return S_OK;
  });
}

HRESULT Pop(FrameOI& o) {
  return OnFrame(o, [](CMFrame& f) {
    f.Pop();
    return S_OK;
  });
}

HRESULT SetAxis(FrameOI& o, int k, double x, double y, double z) {
  return OnFrame(o, [&](CMFrame& f) {
    // The frame takes the axis as a byte: 256 would wrap round to X.
    return Answer(IsAxis(k) && f.SetAxis(static_cast<unsigned char>(k), x, y, z));
  });
}

HRESULT MakeValid(FrameOI& o, int k) {
  return OnFrame(o, [&](CMFrame& f) { return Answer(f.MakeValid(k)); });
}

}  // namespace op

// The frame behind another frame interface of this library, through the uncounted private
// identifier. The interface is first asked for I3DObject, which only frames answer: the private
// identifier alone would hand out a circle's CCircle* just as readily.
HRESULT FrameBehind(IUnknown* pFrame, CMFrame*& other) {
  if (pFrame == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  I3DObject* obj = nullptr;
  HRESULT hr = pFrame->QueryInterface(IID_I3DObject, reinterpret_cast<void**>(&obj));
  if (FAILED(hr)) return hr;
  obj->Release();
  other = nullptr;
  hr = pFrame->QueryInterface(IID_WrappedObject, reinterpret_cast<void**>(&other));
  if (FAILED(hr)) return hr;
  return other != nullptr ? S_OK : E_UNEXPECTED;
}

}  // namespace

// ---- I3DObject --------------------------------------------------------------------------------

HRESULT FrameOI::X3DObject::QueryInterface(REFIID iid, void** ppv) {
  return NestedQueryInterface(Outer(), this, IID_I3DObject, iid, ppv);
}
ULONG FrameOI::X3DObject::AddRef() { return Outer().AddRef(); }
ULONG FrameOI::X3DObject::Release() { return Outer().Release(); }
HRESULT FrameOI::X3DObject::IsValid(BOOL* pValid) { return op::IsValid(Outer(), pValid); }
HRESULT FrameOI::X3DObject::TranslateGlob(double dx, double dy, double dz) {
  return op::TranslateGlob(Outer(), dx, dy, dz);
}
HRESULT FrameOI::X3DObject::Rotate(const double* dir, double angle) { return op::RotateAbout(Outer(), dir, angle); }
HRESULT FrameOI::X3DObject::SetTransform(const double* m) { return op::SetTransform(Outer(), m); }
HRESULT FrameOI::X3DObject::CreateDump(double len, ISection** ppSection) {
  return op::CreateDump(Outer(), len, ppSection);
}

// ---- IFrame -----------------------------------------------------------------------------------

HRESULT FrameOI::XFrame::QueryInterface(REFIID iid, void** ppv) {
  return NestedQueryInterface(Outer(), this, IID_IFrame, iid, ppv);
}
ULONG FrameOI::XFrame::AddRef() { return Outer().AddRef(); }
ULONG FrameOI::XFrame::Release() { return Outer().Release(); }
HRESULT FrameOI::XFrame::IsValid(BOOL* pValid) { return op::IsValid(Outer(), pValid); }
HRESULT FrameOI::XFrame::TranslateGlob(double dx, double dy, double dz) {
  return op::TranslateGlob(Outer(), dx, dy, dz);
}
HRESULT FrameOI::XFrame::Rotate(const double* dir, double angle) { return op::RotateAbout(Outer(), dir, angle); }
HRESULT FrameOI::XFrame::SetTransform(const double* m) { return op::SetTransform(Outer(), m); }
HRESULT FrameOI::XFrame::CreateDump(double len, ISection** ppSection) {
  return op::CreateDump(Outer(), len, ppSection);
}
HRESULT FrameOI::XFrame::GetMatrix(double* m) { return op::GetMatrix(Outer(), m); }
HRESULT FrameOI::XFrame::SetMatrix(const double* m) { return op::SetMatrix(Outer(), m); }
HRESULT FrameOI::XFrame::ToGlobal(double* xyz) { return op::ToGlobal(Outer(), xyz); }
HRESULT FrameOI::XFrame::ToLocal(double* xyz) { return op::ToLocal(Outer(), xyz); }

// ---- IFrameEx ---------------------------------------------------------------------------------

HRESULT FrameOI::XFrameEx::QueryInterface(REFIID iid, void** ppv) {
  return NestedQueryInterface(Outer(), this, IID_IFrameEx, iid, ppv);
}
ULONG FrameOI::XFrameEx::AddRef() { return Outer().AddRef(); }
ULONG FrameOI::XFrameEx::Release() { return Outer().Release(); }
HRESULT FrameOI::XFrameEx::ToGlobalVector(double* xyz) { return op::ToGlobalVector(Outer(), xyz); }
HRESULT FrameOI::XFrameEx::ToLocalVector(double* xyz) { return op::ToLocalVector(Outer(), xyz); }
HRESULT FrameOI::XFrameEx::Push() { return op::Push(Outer()); }
HRESULT FrameOI::XFrameEx::Pop() { return op::Pop(Outer()); }

// ---- IFrame2 ----------------------------------------------------------------------------------

HRESULT FrameOI::XFrame2::QueryInterface(REFIID iid, void** ppv) {
  return NestedQueryInterface(Outer(), this, IID_IFrame2, iid, ppv);
}
ULONG FrameOI::XFrame2::AddRef() { return Outer().AddRef(); }
ULONG FrameOI::XFrame2::Release() { return Outer().Release(); }
HRESULT FrameOI::XFrame2::SetAxis(int k, double x, double y, double z) { return op::SetAxis(Outer(), k, x, y, z); }
HRESULT FrameOI::XFrame2::SetAxes(int i, const double* a, int j, const double* b, BOOL right) {
  if (a == nullptr || b == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnFrame(Outer(), [&](CMFrame& f) {
    SMat va(a), vb(b);
    return Answer(f.SetAxes(i, va, j, vb, right != FALSE));
  });
}
HRESULT FrameOI::XFrame2::LookAt(const double* target, const double* up, BOOL toward) {
  if (target == nullptr || up == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnFrame(Outer(), [&](CMFrame& f) { return Answer(f.LookAt(SMat(target), SMat(up), toward != FALSE)); });
}
HRESULT FrameOI::XFrame2::MakeValid(int k) { return op::MakeValid(Outer(), k); }
HRESULT FrameOI::XFrame2::Align(const double* v) {
  if (v == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnFrame(Outer(), [&](CMFrame& f) {
    SMat dir(v);
    return Answer(f.Align(dir));
  });
}

// ---- IFrame3 ----------------------------------------------------------------------------------

HRESULT FrameOI::XFrame3::QueryInterface(REFIID iid, void** ppv) {
  return NestedQueryInterface(Outer(), this, IID_IFrame3, iid, ppv);
}
ULONG FrameOI::XFrame3::AddRef() { return Outer().AddRef(); }
ULONG FrameOI::XFrame3::Release() { return Outer().Release(); }
HRESULT FrameOI::XFrame3::GetOrigin(double* x, double* y, double* z) {
  if (x == nullptr || y == nullptr || z == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnFrame(Outer(), [&](CMFrame& f) {
    f.origin.GetCoord(*x, *y, *z);
    return S_OK;
  });
}
HRESULT FrameOI::XFrame3::SetOrigin(double x, double y, double z) {
  return OnFrame(Outer(), [&](CMFrame& f) {
    f.SetOrigin(x, y, z);
    return S_OK;
  });
}
HRESULT FrameOI::XFrame3::GetAxis(int k, double* x, double* y, double* z) {
  if (x == nullptr || y == nullptr || z == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnFrame(Outer(), [&](CMFrame& f) {
    if (!IsAxis(k)) return E_INVALIDARG;
    f.GetAxis(k, *x, *y, *z);
    return S_OK;
  });
}
HRESULT FrameOI::XFrame3::SetAxis(int k, double x, double y, double z) { return op::SetAxis(Outer(), k, x, y, z); }
HRESULT FrameOI::XFrame3::IsValid(BOOL* pValid) { return op::IsValid(Outer(), pValid); }
HRESULT FrameOI::XFrame3::GetOrientation(BOOL* pRight) {
  if (pRight == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnFrame(Outer(), [&](CMFrame& f) {
    *pRight = f.GetOrientation() ? TRUE : FALSE;
    return S_OK;
  });
}
HRESULT FrameOI::XFrame3::Reset() {
  return OnFrame(Outer(), [](CMFrame& f) {
    f.Reset();
    return S_OK;
  });
}
HRESULT FrameOI::XFrame3::ToGlobal(double* xyz) { return op::ToGlobal(Outer(), xyz); }
HRESULT FrameOI::XFrame3::ToLocal(double* xyz) { return op::ToLocal(Outer(), xyz); }
HRESULT FrameOI::XFrame3::ToGlobalVector(double* xyz) { return op::ToGlobalVector(Outer(), xyz); }
HRESULT FrameOI::XFrame3::ToLocalVector(double* xyz) { return op::ToLocalVector(Outer(), xyz); }
HRESULT FrameOI::XFrame3::Translate(double x, double y, double z) {
  return OnFrame(Outer(), [&](CMFrame& f) {
    f.Translate(x, y, z);
    return S_OK;
  });
}
HRESULT FrameOI::XFrame3::Rotate(double angle, int k) {
  return OnFrame(Outer(), [&](CMFrame& f) {
    f.Rotate(angle, k);
    return S_OK;
  });
}
HRESULT FrameOI::XFrame3::GetMatrix(double* m) { return op::GetMatrix(Outer(), m); }
HRESULT FrameOI::XFrame3::SetMatrix(const double* m) { return op::SetMatrix(Outer(), m); }
HRESULT FrameOI::XFrame3::MakeValid(int k) { return op::MakeValid(Outer(), k); }
HRESULT FrameOI::XFrame3::Push() { return op::Push(Outer()); }
HRESULT FrameOI::XFrame3::Pop() { return op::Pop(Outer()); }
HRESULT FrameOI::XFrame3::FrameToLocal(IUnknown* pFrame) {
  CMFrame* other = nullptr;
  const HRESULT hr = FrameBehind(pFrame, other);
  if (hr != S_OK) return hr;
  return OnFrame(Outer(), [&](CMFrame& f) {
    f.ToLocal(*other);
    return S_OK;
  });
}
HRESULT FrameOI::XFrame3::Dist(IUnknown* pFrame, double* pDist) {
  if (pDist == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  CMFrame* other = nullptr;
  const HRESULT hr = FrameBehind(pFrame, other);
  if (hr != S_OK) return hr;
  return OnFrame(Outer(), [&](CMFrame& f) {
    *pDist = f.Dist(*other);
    return S_OK;
  });
}
HRESULT FrameOI::XFrame3::Invert() {
  return OnFrame(Outer(), [](CMFrame& f) {
    f.Invert();
    return S_OK;
  });
}
