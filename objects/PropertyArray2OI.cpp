#include <znmt64/PropertyArray2OI.h>

#include "ComObject.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
PropertyArray2OI& PropertyArray2OI::XPropertyArray2::Outer() {
  return OuterOf<PropertyArray2OI>(this, offsetof(PropertyArray2OI, m_xPropertyArray2));
}
#pragma GCC diagnostic pop

HRESULT PropertyArray2OI::Create(IPropertyArrayStd* p, void** ppv) {
  if (p == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  auto* o = new PropertyArray2OI(p);
  const HRESULT hr = o->m_xPropertyArray2.QueryInterface(IID_IPropertyArray2, ppv);
  // Only a null ppv fails here; the wrapper nobody holds must not outlive the call.
  if (FAILED(hr)) delete o;
  return hr;
}

HRESULT PropertyArray2OI::XPropertyArray2::QueryInterface(REFIID iid, void** ppv) {
  if (ppv == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  IPropertyArrayStd* in = Outer().inner;
  if (in == nullptr) return E_UNEXPECTED;
  if (iid != IID_IPropertyArray2) return in->QueryInterface(iid, ppv);
  *ppv = this;
  AddRef();
  return S_OK;
}

ULONG PropertyArray2OI::XPropertyArray2::AddRef() {
  PropertyArray2OI& o = Outer();
  if (o.inner == nullptr) return 1;
  ++o.count;
  return o.inner->AddRef();
}

ULONG PropertyArray2OI::XPropertyArray2::Release() {
  PropertyArray2OI& o = Outer();
  if (o.inner == nullptr) return 1;
  const ULONG r = o.inner->Release();
  if (--o.count == 0) delete &o;
  return r;
}

HRESULT PropertyArray2OI::XPropertyArray2::GetCount(LONG* pCount) {
  IPropertyArrayStd* in = Outer().inner;
  return in != nullptr ? in->GetCount(pCount) : E_UNEXPECTED;
}

HRESULT PropertyArray2OI::XPropertyArray2::GetElement(LONG index, VARIANT* pElement) {
  IPropertyArrayStd* in = Outer().inner;
  if (in == nullptr) return E_UNEXPECTED;
  if (pElement == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  IUnknown* element = nullptr;
  if (FAILED(in->GetElement(index, &element))) return E_NOINTERFACE;
  pElement->vt = VT_UNKNOWN;
  pElement->punkVal = element;
  return S_OK;
}

HRESULT PropertyArray2OI::XPropertyArray2::GetText(LONG index, BSTR* pText) {
  IPropertyArrayStd* in = Outer().inner;
  if (in == nullptr) return E_UNEXPECTED;
  // Refused like GetElement's rather than written through.
  if (pText == nullptr) return DISP_E_PARAMNOTOPTIONAL;
  CString text;
  const HRESULT hr = in->GetText(index, &text);
  if (FAILED(hr)) return hr;
  *pText = text.AllocSysString();
  return S_OK;
}
