// The framework's component-object conventions: GUIDs, IUnknown, BSTR and VARIANT.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/platform/Types.h>

#include <cstring>

// 128-bit identifier in the framework's layout (16 bytes, fields in this order).
struct GUID {
  DWORD Data1;
  WORD Data2;
  WORD Data3;
  BYTE Data4[8];
};
typedef GUID IID;
typedef GUID CLSID;
typedef const GUID& REFGUID;
typedef const IID& REFIID;
static_assert(sizeof(GUID) == 16);

inline bool operator==(const GUID& a, const GUID& b) { return std::memcmp(&a, &b, sizeof(GUID)) == 0; }
inline bool operator!=(const GUID& a, const GUID& b) { return !(a == b); }
inline bool IsEqualGUID(REFGUID a, REFGUID b) { return a == b; }
inline bool IsEqualIID(REFIID a, REFIID b) { return a == b; }

constexpr GUID GUID_NULL = {0, 0, 0, {0, 0, 0, 0, 0, 0, 0, 0}};
// {00000000-0000-0000-C000-000000000046}
constexpr IID IID_IUnknown = {0x00000000, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

struct IUnknown {
  virtual HRESULT QueryInterface(REFIID riid, void** ppvObject) = 0;
  virtual ULONG AddRef() = 0;
  virtual ULONG Release() = 0;

 protected:
  ~IUnknown() = default;
};
