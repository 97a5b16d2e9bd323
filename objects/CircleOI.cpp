#include <znmt64/CMFrame.h>
#include <znmt64/CircleOI.h>
#include <znmt64/DynaModuleMatr.h>
#include <znmt64/FrameOI.h>
#include <znmt64/Mat.h>

#include "ComObject.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
CircleOI& CircleOI::XAxis::Outer() { return OuterOf<CircleOI>(this, offsetof(CircleOI, m_xAxis)); }
CircleOI& CircleOI::XLocation::Outer() { return OuterOf<CircleOI>(this, offsetof(CircleOI, m_xLocation)); }
CircleOI& CircleOI::XCircle3D_Zn2::Outer() { return OuterOf<CircleOI>(this, offsetof(CircleOI, m_xCircle3D_Zn2)); }
CircleOI& CircleOI::XMetrics::Outer() { return OuterOf<CircleOI>(this, offsetof(CircleOI, m_xMetrics)); }
CircleOI& CircleOI::XMetrics2::Outer() { return OuterOf<CircleOI>(this, offsetof(CircleOI, m_xMetrics2)); }
CircleOI& CircleOI::XSection::Outer() { return OuterOf<CircleOI>(this, offsetof(CircleOI, m_xSection)); }
#pragma GCC diagnostic pop

// ---- the object ----------------------------------------------------------------------------------

CircleOI::CircleOI(CCircle* c) : circle(c) {
  if (circle == nullptr) {
    m_pOwnCircle = std::make_unique<CCircle>();
    circle = m_pOwnCircle.get();
  }
}

CircleOI::CircleOI() : CircleOI(nullptr) {}

CircleOI::~CircleOI() {
  if (m_pDrawing != nullptr) m_pDrawing->Release();
}

HRESULT CircleOI::QueryInterface(const GUID& iid, void** ppv) {
  if (ppv == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  const auto give = [&](IUnknown* itf) {
    *ppv = itf;
    AddRef();
    return S_OK;
  };
  if (iid == IID_IAxis || iid == IID_IUnknown) return give(&m_xAxis);
  if (iid == IID_ILocation) return give(&m_xLocation);
  if (iid == IID_ICircle3D_Zn2) return give(&m_xCircle3D_Zn2);
  if (iid == IID_ISection) return give(&m_xSection);
  if (iid == IID_WrappedObject) {
    // Uncounted: the caller borrows the circle for the length of a call.
    *ppv = circle;
    return S_OK;
  }
  if (iid == IID_IMetrics64) return give(&m_xMetrics);
  if (iid == IID_IMetrics2) return give(&m_xMetrics2);
  if (iid != IID_QuadrCircleDelegate) {
    *ppv = nullptr;
    return E_NOINTERFACE;
  }
  if (circle == nullptr) return kNoCircle;
  QC qc(DMID_QUADR, iid, this, 7);
  const HRESULT hr = dynaModuleMatr.GetInterface(qc);
  if (hr != S_OK) return hr;
  if (qc.m_pInterface == nullptr) return E_UNEXPECTED;
  return give(static_cast<IUnknown*>(qc.m_pInterface));
}

ISection* CircleOI::Drawing() {
  if (circle == nullptr) return nullptr;
  if (m_pDrawing != nullptr && m_drawn.origin == circle->origin && m_drawn.dir == circle->dir &&
      m_drawn.radius == circle->radius)
    return m_pDrawing;
  ISection* fresh = circle->CreateDump();
  if (fresh == nullptr) return nullptr;
  if (m_bCaption) fresh->SetCaption(m_strCaption);
  if (m_pDrawing != nullptr) m_pDrawing->Release();
  m_pDrawing = fresh;
  m_drawn.Copy(*circle);
  return m_pDrawing;
}

// ---- the operations, shared by the interfaces that offer them -----------------------------------

namespace {

// op(circle) on the wrapped circle; E_UNEXPECTED without one. The arc measures throw
// SMat::Angle's exception for a point at the centre: it must not cross the interface.
template <class Op>
HRESULT OnCircle(CircleOI& o, Op op) {
  if (o.circle == nullptr) return E_UNEXPECTED;
  try {
    return op(*o.circle);
  } catch (CMatrExeption* e) {
    e->Delete();
    return E_INVALIDARG;
  }
}

BOOL ToBOOL(bool b) { return b ? TRUE : FALSE; }

namespace op {

HRESULT GetPointLocation(CircleOI& o, const double* p, int* pLocn) {
  if (p == nullptr || pLocn == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnCircle(o, [&](CCircle& c) {
    *pLocn = c.GetPointLocation(SMat(p));
    return S_OK;
  });
}

HRESULT DistPoint(CircleOI& o, const double* p, double* nearest, double* pDist) {
  if (p == nullptr || pDist == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnCircle(o, [&](CCircle& c) {
    SMat near;
    *pDist = c.DistPoint(SMat(p), &near);
    if (nearest != nullptr) near.GetDataCopy(nearest);
    return S_OK;
  });
}

}  // namespace op

}  // namespace

// ---- IAxis, with ILocation --------------------------------------------------------------------

HRESULT CircleOI::XAxis::QueryInterface(REFIID iid, void** ppv) {
  return NestedQueryInterface(Outer(), this, IID_IAxis, iid, ppv);
}
ULONG CircleOI::XAxis::AddRef() { return Outer().AddRef(); }
ULONG CircleOI::XAxis::Release() { return Outer().Release(); }
HRESULT CircleOI::XAxis::GetPointLocation(const double* p, int* pLocn) {
  return op::GetPointLocation(Outer(), p, pLocn);
}
HRESULT CircleOI::XAxis::DistPoint(const double* p, double* nearest, double* pDist) {
  return op::DistPoint(Outer(), p, nearest, pDist);
}
HRESULT CircleOI::XAxis::GetAxis(double* origin, double* dir) {
  if (origin == nullptr || dir == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnCircle(Outer(), [&](CCircle& c) {
    const CLineal& axis = c.GetAxis();
    axis.origin.GetDataCopy(origin);
    axis.dir.GetDataCopy(dir);
    return S_OK;
  });
}
HRESULT CircleOI::XAxis::SetAxis(const double* origin, const double* dir) {
  if (origin == nullptr || dir == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnCircle(Outer(), [&](CCircle& c) {
    SMat d(dir);
    if (!d.Normalize(1e-10)) return S_FALSE;
    CLineal& axis = c.GetAxis();
    axis.origin = SMat(origin);
    axis.dir = d;
    return S_OK;
  });
}

// ---- ILocation --------------------------------------------------------------------------------

HRESULT CircleOI::XLocation::QueryInterface(REFIID iid, void** ppv) {
  return NestedQueryInterface(Outer(), this, IID_ILocation, iid, ppv);
}
ULONG CircleOI::XLocation::AddRef() { return Outer().AddRef(); }
ULONG CircleOI::XLocation::Release() { return Outer().Release(); }
HRESULT CircleOI::XLocation::GetPointLocation(const double* p, int* pLocn) {
  return op::GetPointLocation(Outer(), p, pLocn);
}
HRESULT CircleOI::XLocation::DistPoint(const double* p, double* nearest, double* pDist) {
  return op::DistPoint(Outer(), p, nearest, pDist);
}

// ---- ICircle3D_Zn2 ----------------------------------------------------------------------------

HRESULT CircleOI::XCircle3D_Zn2::QueryInterface(REFIID iid, void** ppv) {
  return NestedQueryInterface(Outer(), this, IID_ICircle3D_Zn2, iid, ppv);
}
ULONG CircleOI::XCircle3D_Zn2::AddRef() { return Outer().AddRef(); }
ULONG CircleOI::XCircle3D_Zn2::Release() { return Outer().Release(); }
HRESULT CircleOI::XCircle3D_Zn2::GetRadius(double* pRadius) {
  if (pRadius == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnCircle(Outer(), [&](CCircle& c) {
    *pRadius = c.radius;
    return S_OK;
  });
}
HRESULT CircleOI::XCircle3D_Zn2::SetRadius(double radius) {
  return OnCircle(Outer(), [&](CCircle& c) {
    c.radius = radius;
    return S_OK;
  });
}
HRESULT CircleOI::XCircle3D_Zn2::GetFrame(const double* ref, IFrame3** ppFrame) {
  if (ppFrame == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnCircle(Outer(), [&](CCircle& c) {
    *ppFrame = nullptr;
    CMFrame f;
    const SMat r(ref);
    if (!c.GetFrame(f, ref != nullptr ? &r : nullptr)) return S_FALSE;
    auto* o = new FrameOI(1);
    *o->frame = f;
    return o->QueryInterface(IID_IFrame3, reinterpret_cast<void**>(ppFrame));
  });
}
HRESULT CircleOI::XCircle3D_Zn2::GetSampling(int n, const double* ref, double* xyz) {
  if (xyz == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnCircle(Outer(), [&](CCircle& c) {
    if (n < 1) return S_OK;
    CArray<SMat, SMat> pts;
    pts.SetSize(n);
    SMat r(ref);
    if (!c.GetSampling(pts, ref != nullptr ? &r : nullptr)) return S_FALSE;
    for (int k = 0; k < n; ++k) pts[k].GetDataCopy(xyz + 3 * k);
    return S_OK;
  });
}

// ---- IMetrics64 -------------------------------------------------------------------------------

HRESULT CircleOI::XMetrics::QueryInterface(REFIID iid, void** ppv) {
  return NestedQueryInterface(Outer(), this, IID_IMetrics64, iid, ppv);
}
ULONG CircleOI::XMetrics::AddRef() { return Outer().AddRef(); }
ULONG CircleOI::XMetrics::Release() { return Outer().Release(); }
HRESULT CircleOI::XMetrics::Dist(const double* p1, const double* p2, double* pLength) {
  if (p1 == nullptr || p2 == nullptr || pLength == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnCircle(Outer(), [&](CCircle& c) {
    *pLength = c.Dist(SMat(p1), SMat(p2));
    return S_OK;
  });
}
HRESULT CircleOI::XMetrics::GetTranslation(const double* p1, const double* p2, double* pLength) {
  if (p1 == nullptr || p2 == nullptr || pLength == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnCircle(Outer(), [&](CCircle& c) {
    *pLength = c.GetTranslation(SMat(p1), SMat(p2));
    return S_OK;
  });
}
HRESULT CircleOI::XMetrics::InsideArc(const double* p, const double* a, const double* b, BOOL* pInside) {
  if (p == nullptr || a == nullptr || b == nullptr || pInside == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnCircle(Outer(), [&](CCircle& c) {
    *pInside = ToBOOL(c.InsideArc(SMat(p), SMat(a), SMat(b)));
    return S_OK;
  });
}
HRESULT CircleOI::XMetrics::Translate(double s, double* p) {
  if (p == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnCircle(Outer(), [&](CCircle& c) {
    SMat v(p);
    c.Translate(s, v);
    v.GetDataCopy(p);
    return S_OK;
  });
}

// ---- IMetrics2 --------------------------------------------------------------------------------

HRESULT CircleOI::XMetrics2::QueryInterface(REFIID iid, void** ppv) {
  return NestedQueryInterface(Outer(), this, IID_IMetrics2, iid, ppv);
}
ULONG CircleOI::XMetrics2::AddRef() { return Outer().AddRef(); }
ULONG CircleOI::XMetrics2::Release() { return Outer().Release(); }
HRESULT CircleOI::XMetrics2::IsOpposite(const double* p1, const double* p2, BOOL* pOpposite) {
  if (p1 == nullptr || p2 == nullptr || pOpposite == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnCircle(Outer(), [&](CCircle& c) {
    *pOpposite = ToBOOL(c.IsOpposite(SMat(p1), SMat(p2)));
    return S_OK;
  });
}
HRESULT CircleOI::XMetrics2::IsAfter(const double* p1, const double* p2, BOOL* pAfter) {
  if (p1 == nullptr || p2 == nullptr || pAfter == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnCircle(Outer(), [&](CCircle& c) {
    *pAfter = ToBOOL(c.IsAfter(SMat(p1), SMat(p2)));
    return S_OK;
  });
}
HRESULT CircleOI::XMetrics2::GetTangent(const double* p, double* tangent) {
  if (p == nullptr || tangent == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  return OnCircle(Outer(), [&](CCircle& c) {
    SMat t;
    if (!c.GetTangent(SMat(p), t)) return S_FALSE;
    t.GetDataCopy(tangent);
    return S_OK;
  });
}

// ---- ISection ---------------------------------------------------------------------------------

template <class Op>
HRESULT CircleOI::XSection::OnDrawing(Op op) {
  CircleOI& o = Outer();
  if (o.circle == nullptr) return E_UNEXPECTED;
  ISection* drawing = o.Drawing();
  return drawing != nullptr ? op(*drawing) : E_FAIL;
}

HRESULT CircleOI::XSection::QueryInterface(REFIID iid, void** ppv) {
  return NestedQueryInterface(Outer(), this, IID_ISection, iid, ppv);
}
ULONG CircleOI::XSection::AddRef() { return Outer().AddRef(); }
ULONG CircleOI::XSection::Release() { return Outer().Release(); }
HRESULT CircleOI::XSection::GetKind(int* pKind) {
  return OnDrawing([&](ISection& s) { return s.GetKind(pKind); });
}
HRESULT CircleOI::XSection::SetCaption(const char* text) {
  CircleOI& o = Outer();
  return OnDrawing([&](ISection& s) {
    const HRESULT hr = s.SetCaption(text);
    if (hr == S_OK) {
      o.m_bCaption = true;
      o.m_strCaption = text;
    }
    return hr;
  });
}
HRESULT CircleOI::XSection::GetCaption(char* buf, UINT max) {
  return OnDrawing([&](ISection& s) { return s.GetCaption(buf, max); });
}
HRESULT CircleOI::XSection::GetVertexCount(int* pCount) {
  return OnDrawing([&](ISection& s) { return s.GetVertexCount(pCount); });
}
HRESULT CircleOI::XSection::GetVertex(int i, double* xyz) {
  return OnDrawing([&](ISection& s) { return s.GetVertex(i, xyz); });
}
HRESULT CircleOI::XSection::GetIndexCount(int* pCount) {
  return OnDrawing([&](ISection& s) { return s.GetIndexCount(pCount); });
}
HRESULT CircleOI::XSection::GetIndex(int pos, LONG* pValue) {
  return OnDrawing([&](ISection& s) { return s.GetIndex(pos, pValue); });
}
HRESULT CircleOI::XSection::GetStripCount(int* pCount) {
  return OnDrawing([&](ISection& s) { return s.GetStripCount(pCount); });
}
HRESULT CircleOI::XSection::GetLength(double* pLength) {
  return OnDrawing([&](ISection& s) { return s.GetLength(pLength); });
}
HRESULT CircleOI::XSection::GetBox(double* pMin, double* pMax) {
  return OnDrawing([&](ISection& s) { return s.GetBox(pMin, pMax); });
}
HRESULT CircleOI::XSection::Transform(const double* m) {
  return OnDrawing([&](ISection& s) { return s.Transform(m); });
}
HRESULT CircleOI::XSection::Clear() {
  return OnDrawing([](ISection& s) { return s.Clear(); });
}
