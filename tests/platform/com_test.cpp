#include <znmt64/platform/Com.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <cwchar>

TEST(Bstr, ByteLengthPrecedesTheCharacters) {
  BSTR b = SysAllocString(L"hello");
  ASSERT_NE(b, nullptr);
  UINT prefix;
  std::memcpy(&prefix, reinterpret_cast<const char*>(b) - sizeof(UINT), sizeof prefix);
  EXPECT_EQ(prefix, 5 * sizeof(wchar_t));
  EXPECT_EQ(SysStringLen(b), 5u);
  EXPECT_EQ(SysStringByteLen(b), 5 * sizeof(wchar_t));
  EXPECT_EQ(std::wcscmp(b, L"hello"), 0);
  SysFreeString(b);
}

TEST(Bstr, LengthCountsEmbeddedZerosAndNullIsEmpty) {
  const wchar_t text[] = {L'a', L'\0', L'b'};
  BSTR b = SysAllocStringLen(text, 3);
  EXPECT_EQ(SysStringLen(b), 3u);
  EXPECT_EQ(b[2], L'b');
  EXPECT_EQ(b[3], L'\0');
  SysFreeString(b);

  b = SysAllocStringLen(nullptr, 4);  // zero-filled room
  EXPECT_EQ(SysStringLen(b), 4u);
  EXPECT_EQ(b[0], L'\0');
  SysFreeString(b);

  EXPECT_EQ(SysAllocString(nullptr), nullptr);
  EXPECT_EQ(SysStringLen(nullptr), 0u);
  SysFreeString(nullptr);
}

namespace {
struct CountedUnknown : IUnknown {
  ULONG refs = 1;
  HRESULT QueryInterface(REFIID riid, void** ppv) override {
    if (ppv == nullptr) return E_POINTER;
    *ppv = riid == IID_IUnknown ? this : nullptr;
    return *ppv != nullptr ? S_OK : E_NOINTERFACE;
  }
  ULONG AddRef() override { return ++refs; }
  ULONG Release() override { return --refs; }
};
}  // namespace

TEST(Variant, LayoutAndCodesAreTheFrameworks) {
  EXPECT_EQ(sizeof(VARIANT), 24u);
  EXPECT_EQ(offsetof(VARIANT, dblVal), 8u);
  EXPECT_EQ(VT_EMPTY, 0);
  EXPECT_EQ(VT_I4, 3);
  EXPECT_EQ(VT_R8, 5);
  EXPECT_EQ(VT_BSTR, 8);
  EXPECT_EQ(VT_UNKNOWN, 13);
}

TEST(Variant, ClearFreesStringsAndReleasesInterfaces) {
  VARIANT v;
  VariantInit(&v);
  EXPECT_EQ(v.vt, VT_EMPTY);
  EXPECT_EQ(v.llVal, 0);

  v.vt = VT_BSTR;
  v.bstrVal = SysAllocString(L"owned");  // a leak here would show under LeakSanitizer
  EXPECT_EQ(VariantClear(&v), S_OK);
  EXPECT_EQ(v.vt, VT_EMPTY);
  EXPECT_EQ(v.bstrVal, nullptr);

  CountedUnknown unk;
  v.vt = VT_UNKNOWN;
  v.punkVal = &unk;
  EXPECT_EQ(VariantClear(&v), S_OK);
  EXPECT_EQ(unk.refs, 0u);
  EXPECT_EQ(v.vt, VT_EMPTY);

  v.vt = VT_R8;
  v.dblVal = 2.5;
  EXPECT_EQ(VariantClear(&v), S_OK);
  EXPECT_EQ(v.vt, VT_EMPTY);

  v.vt = VT_ARRAY | VT_I4;  // no array support: refused, left alone
  EXPECT_EQ(VariantClear(&v), DISP_E_BADVARTYPE);
  EXPECT_EQ(v.vt, VT_ARRAY | VT_I4);
}

TEST(Variant, CopyDuplicatesStringsAndAddRefsInterfaces) {
  VARIANT src, dst;
  VariantInit(&src);
  VariantInit(&dst);
  src.vt = VT_BSTR;
  src.bstrVal = SysAllocString(L"text");
  ASSERT_EQ(VariantCopy(&dst, &src), S_OK);
  EXPECT_EQ(dst.vt, VT_BSTR);
  EXPECT_NE(dst.bstrVal, src.bstrVal);
  EXPECT_EQ(std::wcscmp(dst.bstrVal, L"text"), 0);

  CountedUnknown unk;
  VariantClear(&src);
  src.vt = VT_UNKNOWN;
  src.punkVal = &unk;
  ASSERT_EQ(VariantCopy(&dst, &src), S_OK);  // frees dst's string first
  EXPECT_EQ(unk.refs, 2u);
  VariantClear(&dst);
  VariantClear(&src);
  EXPECT_EQ(unk.refs, 0u);
}
