#include <znmt64/PropertyArray2OI.h>

#include "ObjectsTestUtil.h"

namespace {

// An older property array of two elements; element 1 has no interface, element 2 no text.
class StdArray : public IPropertyArrayStd {
 public:
  HRESULT QueryInterface(REFIID iid, void** ppv) override { return unk.QueryInterface(iid, ppv); }
  ULONG AddRef() override { return unk.AddRef(); }
  ULONG Release() override { return unk.Release(); }
  HRESULT GetCount(LONG* pCount) override {
    *pCount = 2;
    return S_FALSE;  // passed through as it stands
  }
  HRESULT GetElement(LONG index, IUnknown** ppElement) override {
    if (index != 0) return E_INVALIDARG;
    element.AddRef();
    *ppElement = &element;
    return S_OK;
  }
  HRESULT GetText(LONG index, CString* pText) override {
    if (index == 2) return E_INVALIDARG;
    pText->Format("element %d", int(index));
    return S_OK;
  }
  StubUnknown unk, element;
};

}  // namespace

TEST(PropertyArray2OI, CountsMoveTogether) {
  StdArray inner;
  void* p = kUntouched;
  EXPECT_EQ(PropertyArray2OI::Create(nullptr, &p), DISP_E_PARAMNOTOPTIONAL);
  EXPECT_EQ(p, kUntouched);
  EXPECT_EQ(PropertyArray2OI::Create(&inner, nullptr), DISP_E_PARAMNOTOPTIONAL);  // nothing leaks

  ASSERT_EQ(PropertyArray2OI::Create(&inner, &p), S_OK);
  auto* pa = static_cast<IPropertyArray2*>(p);
  EXPECT_EQ(pa->AddRef(), 3u);  // the inner object's count is the one reported
  EXPECT_EQ(Query<IPropertyArray2>(pa, IID_IPropertyArray2), pa);
  EXPECT_EQ(inner.unk.refs, 4u);

  // Any other identifier is the inner object's answer: the caller then holds the inner object.
  EXPECT_EQ(Query<IUnknown>(pa, IID_IUnknown), &inner.unk);
  inner.unk.Release();
  EXPECT_EQ(pa->QueryInterface(IID_IPropertyArray2, nullptr), DISP_E_PARAMNOTOPTIONAL);

  for (ULONG left : {3u, 2u, 1u}) EXPECT_EQ(pa->Release(), left);  // then the wrapper is gone
  EXPECT_EQ(inner.unk.refs, 1u);                                    // the creator's reference stays
}

TEST(PropertyArray2OI, ElementsAsVariantAndSystemString) {
  StdArray inner;
  void* p = nullptr;
  ASSERT_EQ(PropertyArray2OI::Create(&inner, &p), S_OK);
  auto* pa = static_cast<IPropertyArray2*>(p);

  LONG n = 0;
  EXPECT_TRUE(pa->GetCount(&n) == S_FALSE && n == 2);

  VARIANT v;
  VariantInit(&v);
  EXPECT_EQ(pa->GetElement(0, &v), S_OK);
  EXPECT_TRUE(v.vt == 13 && v.punkVal == &inner.element && inner.element.refs == 2u);
  EXPECT_EQ(VariantClear(&v), S_OK);  // the variant held the reference
  EXPECT_EQ(inner.element.refs, 1u);
  EXPECT_EQ(pa->GetElement(1, &v), E_NOINTERFACE);  // not the inner E_INVALIDARG
  EXPECT_EQ(v.vt, VT_EMPTY);
  EXPECT_EQ(pa->GetElement(0, nullptr), DISP_E_PARAMNOTOPTIONAL);

  BSTR text = nullptr;
  EXPECT_EQ(pa->GetText(1, &text), S_OK);
  EXPECT_STREQ(text, L"element 1");
  SysFreeString(text);
  EXPECT_EQ(pa->GetText(2, &text), E_INVALIDARG);
  EXPECT_EQ(pa->GetText(1, nullptr), DISP_E_PARAMNOTOPTIONAL);
  pa->Release();

  // Without an inner object.
  PropertyArray2OI empty;
  IPropertyArray2& e = empty.m_xPropertyArray2;
  EXPECT_TRUE(e.AddRef() == 1u && e.Release() == 1u);
  EXPECT_EQ(e.GetCount(&n), E_UNEXPECTED);
  EXPECT_EQ(e.GetText(0, &text), E_UNEXPECTED);
  EXPECT_EQ(e.QueryInterface(IID_IPropertyArray2, &p), E_UNEXPECTED);
}
