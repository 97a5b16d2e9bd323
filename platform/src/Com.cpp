#include <znmt64/platform/Com.h>

#include <cstdlib>
#include <cwchar>
#include <limits>

namespace {
// The 32-bit byte count sits immediately before the first character.
UINT* Prefix(BSTR bstr) { return reinterpret_cast<UINT*>(bstr) - 1; }

// Type codes whose value VariantClear and VariantCopy know how to free and copy.
bool IsSupportedType(VARTYPE vt) {
  if ((vt & VT_BYREF) != 0) return (vt & VT_ARRAY) == 0;
  switch (vt) {
    case VT_EMPTY: case VT_NULL: case VT_I2: case VT_I4: case VT_R4: case VT_R8: case VT_CY:
    case VT_DATE: case VT_BSTR: case VT_DISPATCH: case VT_ERROR: case VT_BOOL: case VT_UNKNOWN:
    case VT_I1: case VT_UI1: case VT_UI2: case VT_UI4: case VT_I8: case VT_UI8: case VT_INT:
    case VT_UINT:
      return true;
    default:
      return false;
  }
}
}  // namespace

BSTR SysAllocString(const OLECHAR* psz) {
  if (psz == nullptr) return nullptr;
  std::size_t n = std::wcslen(psz);
  if (n > std::numeric_limits<UINT>::max()) return nullptr;
  return SysAllocStringLen(psz, static_cast<UINT>(n));
}

BSTR SysAllocStringLen(const OLECHAR* strIn, UINT ui) {
  // The byte count must fit the 32-bit prefix.
  if (ui > (std::numeric_limits<UINT>::max() - sizeof(OLECHAR)) / sizeof(OLECHAR)) return nullptr;
  std::size_t bytes = std::size_t(ui) * sizeof(OLECHAR);
  // malloc's alignment keeps the characters after the 4-byte prefix aligned for wchar_t.
  static_assert(sizeof(UINT) % alignof(OLECHAR) == 0);
  void* block = std::malloc(sizeof(UINT) + bytes + sizeof(OLECHAR));
  if (block == nullptr) return nullptr;
  *static_cast<UINT*>(block) = static_cast<UINT>(bytes);
  BSTR s = reinterpret_cast<BSTR>(static_cast<UINT*>(block) + 1);
  if (strIn != nullptr)
    std::wmemcpy(s, strIn, ui);
  else
    std::wmemset(s, L'\0', ui);
  s[ui] = L'\0';
  return s;
}

void SysFreeString(BSTR bstr) {
  if (bstr != nullptr) std::free(Prefix(bstr));
}

UINT SysStringByteLen(BSTR bstr) { return bstr != nullptr ? *Prefix(bstr) : 0; }
UINT SysStringLen(BSTR bstr) { return SysStringByteLen(bstr) / sizeof(OLECHAR); }

void VariantInit(VARIANTARG* pvarg) {
  pvarg->vt = VT_EMPTY;
  pvarg->wReserved1 = pvarg->wReserved2 = pvarg->wReserved3 = 0;
  pvarg->llVal = 0;  // the widest member: the whole value is zero
}

HRESULT VariantClear(VARIANTARG* pvarg) {
  if (pvarg == nullptr) return E_INVALIDARG;
  if (!IsSupportedType(pvarg->vt)) return DISP_E_BADVARTYPE;
  if (pvarg->vt == VT_BSTR) {
    SysFreeString(pvarg->bstrVal);
  } else if ((pvarg->vt == VT_UNKNOWN || pvarg->vt == VT_DISPATCH) && pvarg->punkVal != nullptr) {
    pvarg->punkVal->Release();
  }
  VariantInit(pvarg);
  return S_OK;
}

HRESULT VariantCopy(VARIANTARG* pvargDest, const VARIANTARG* pvargSrc) {
  if (pvargDest == nullptr || pvargSrc == nullptr) return E_INVALIDARG;
  if (pvargDest == pvargSrc) return S_OK;
  if (!IsSupportedType(pvargSrc->vt)) return DISP_E_BADVARTYPE;
  HRESULT hr = VariantClear(pvargDest);
  if (FAILED(hr)) return hr;
  *pvargDest = *pvargSrc;
  if (pvargSrc->vt == VT_BSTR && pvargSrc->bstrVal != nullptr) {
    pvargDest->bstrVal = SysAllocStringLen(pvargSrc->bstrVal, SysStringLen(pvargSrc->bstrVal));
    if (pvargDest->bstrVal == nullptr) {
      VariantInit(pvargDest);
      return E_OUTOFMEMORY;
    }
  } else if ((pvargSrc->vt == VT_UNKNOWN || pvargSrc->vt == VT_DISPATCH) && pvargSrc->punkVal != nullptr) {
    pvargSrc->punkVal->AddRef();
  }
  return S_OK;
}
