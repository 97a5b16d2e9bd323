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

// ---- BSTR ------------------------------------------------------------------------------------
// The framework's layout: the characters are preceded by their length in bytes as a 32-bit
// unsigned integer and followed by a zero character; a BSTR points at the first character, so it
// reads as a C wide string. The characters are wchar_t, 32 bits on Linux (the framework's are
// 16-bit); the prefix counts bytes all the same. A null BSTR is the empty string.
typedef wchar_t OLECHAR;
typedef OLECHAR* BSTR;
typedef const OLECHAR* LPCOLESTR;

// A new BSTR holding a copy of psz up to its zero; null when psz is null or memory runs out.
ZNPF_API BSTR SysAllocString(const OLECHAR* psz);
// A new BSTR of ui characters copied from strIn (which may hold zeros), or zero-filled when
// strIn is null; null when memory runs out.
ZNPF_API BSTR SysAllocStringLen(const OLECHAR* strIn, UINT ui);
// Frees a BSTR made by the functions above; null is allowed.
ZNPF_API void SysFreeString(BSTR bstr);
// Length in characters (byte length / sizeof(OLECHAR)) and in bytes, read from the prefix; 0 for null.
ZNPF_API UINT SysStringLen(BSTR bstr);
ZNPF_API UINT SysStringByteLen(BSTR bstr);

// ---- VARIANT ---------------------------------------------------------------------------------
typedef unsigned short VARTYPE;
typedef SHORT VARIANT_BOOL;
typedef LONG SCODE;
typedef double DATE;
constexpr VARIANT_BOOL VARIANT_TRUE = -1;
constexpr VARIANT_BOOL VARIANT_FALSE = 0;

// The framework's type codes.
enum VARENUM : VARTYPE {
  VT_EMPTY = 0,
  VT_NULL = 1,
  VT_I2 = 2,
  VT_I4 = 3,
  VT_R4 = 4,
  VT_R8 = 5,
  VT_CY = 6,
  VT_DATE = 7,
  VT_BSTR = 8,
  VT_DISPATCH = 9,
  VT_ERROR = 10,
  VT_BOOL = 11,
  VT_VARIANT = 12,
  VT_UNKNOWN = 13,
  VT_I1 = 16,
  VT_UI1 = 17,
  VT_UI2 = 18,
  VT_UI4 = 19,
  VT_I8 = 20,
  VT_UI8 = 21,
  VT_INT = 22,
  VT_UINT = 23,
  VT_ARRAY = 0x2000,
  VT_BYREF = 0x4000,
};

struct tagBRECORD {
  void* pvRecord;
  void* pRecInfo;
};

// The type code, three reserved words, then the value; 24 bytes on a 64-bit host as on the
// framework's. VT_DISPATCH values are held in punkVal (a dispatch interface begins with IUnknown).
struct VARIANT {
  VARTYPE vt;
  WORD wReserved1;
  WORD wReserved2;
  WORD wReserved3;
  union {
    LONGLONG llVal;
    LONG lVal;
    BYTE bVal;
    SHORT iVal;
    FLOAT fltVal;
    DOUBLE dblVal;
    VARIANT_BOOL boolVal;
    SCODE scode;
    DATE date;
    BSTR bstrVal;
    IUnknown* punkVal;
    CHAR cVal;
    USHORT uiVal;
    ULONG ulVal;
    ULONGLONG ullVal;
    INT intVal;
    UINT uintVal;
    void* byref;
    tagBRECORD brecVal;  // not used here; gives the value part its framework size of two pointers
  };
};
typedef VARIANT VARIANTARG;
static_assert(sizeof(VARIANT) == 16 + sizeof(void*));

#define V_VT(pv) ((pv)->vt)
#define V_I4(pv) ((pv)->lVal)
#define V_R8(pv) ((pv)->dblVal)
#define V_BSTR(pv) ((pv)->bstrVal)
#define V_UNKNOWN(pv) ((pv)->punkVal)

// Sets the variant to VT_EMPTY with a zero value, without freeing anything it held.
ZNPF_API void VariantInit(VARIANTARG* pvarg);
// Frees what the variant owns (a BSTR is freed, an interface released; a VT_BYREF value is not
// owned) and leaves it VT_EMPTY. Arrays (VT_ARRAY) and unknown codes are not supported here:
// DISP_E_BADVARTYPE, and the variant is left as it was.
ZNPF_API HRESULT VariantClear(VARIANTARG* pvarg);
// Clears dest, then copies src into it: a BSTR is duplicated, an interface AddRef'ed.
ZNPF_API HRESULT VariantCopy(VARIANTARG* pvargDest, const VARIANTARG* pvargSrc);
