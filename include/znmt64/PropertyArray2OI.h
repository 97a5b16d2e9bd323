// PropertyArray2OI: presents an object of the older property-array interface IPropertyArrayStd
// as IPropertyArray2, whose element accessors answer in the framework's automation types.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/platform/CString.h>
#include <znmt64/platform/Com.h>

// The older property array, as the module that implements it lays it out.
struct IPropertyArrayStd : IUnknown {
  // The number of elements.
  virtual HRESULT GetCount(LONG* pCount) = 0;
  // Element index's interface, counted for the caller.
  virtual HRESULT GetElement(LONG index, IUnknown** ppElement) = 0;
  // Element index's text.
  virtual HRESULT GetText(LONG index, CString* pText) = 0;
};

// {3C208520-4152-4EDF-8795-24EBBE1E883D}
inline constexpr IID IID_IPropertyArray2 = {
    0x3C208520, 0x4152, 0x4EDF, {0x87, 0x95, 0x24, 0xEB, 0xBE, 0x1E, 0x88, 0x3D}};

struct IPropertyArray2 : IUnknown {
  // IPropertyArrayStd::GetCount, arguments and result unchanged.
  virtual HRESULT GetCount(LONG* pCount) = 0;
  // *pElement := VT_UNKNOWN holding element index's interface (the variant takes the reference).
  // E_NOINTERFACE whatever the inner object answered when it cannot supply the element.
  virtual HRESULT GetElement(LONG index, VARIANT* pElement) = 0;
  // *pText := a new BSTR of element index's text, the caller's to free; on failure the inner
  // object's status. A null pText gives DISP_E_PARAMNOTOPTIONAL.
  virtual HRESULT GetText(LONG index, BSTR* pText) = 0;
};

// The wrapper keeps its own count, which decides its lifetime; what its interface reports is the
// inner object's count, and every AddRef and Release moves both. The wrapper neither takes nor
// gives back the reference handed to its constructor: the inner object's creator keeps it.
//
// Without an inner object every operation answers E_UNEXPECTED, except AddRef and Release,
// which answer 1.
class ZNMT64_API PropertyArray2OI {
 public:
  PropertyArray2OI() : inner(nullptr), count(0) {}
  explicit PropertyArray2OI(IPropertyArrayStd* p) : inner(p), count(0) {}
  virtual ~PropertyArray2OI() = default;
  PropertyArray2OI(const PropertyArray2OI&) = delete;
  PropertyArray2OI& operator=(const PropertyArray2OI&) = delete;

  // *ppv := a new wrapper of p as IPropertyArray2, count 1 (and one more on p). A null p gives
  // DISP_E_PARAMNOTOPTIONAL and leaves *ppv.
  static HRESULT Create(IPropertyArrayStd* p, void** ppv);

  class XPropertyArray2 : public IPropertyArray2 {
   public:
    // IID_IPropertyArray2 gives this interface; any other identifier is the inner object's
    // QueryInterface, so the caller then holds the inner object, not the wrapper.
    HRESULT QueryInterface(REFIID iid, void** ppv) override;
    ULONG AddRef() override;
    ULONG Release() override;
    HRESULT GetCount(LONG* pCount) override;
    HRESULT GetElement(LONG index, VARIANT* pElement) override;
    HRESULT GetText(LONG index, BSTR* pText) override;

   private:
    PropertyArray2OI& Outer();
  };

  XPropertyArray2 m_xPropertyArray2;
  IPropertyArrayStd* inner;
  ULONG count;
};
