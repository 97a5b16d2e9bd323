#include <znmt64/platform/Com.h>

#include <gtest/gtest.h>

#include <cstring>
#include <cwchar>

namespace {
struct CountedUnknown : IUnknown {
  ULONG refs = 1;
  HRESULT QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  ULONG AddRef() override { return ++refs; }
  ULONG Release() override { return --refs; }
};
}  // namespace

TEST(Bstr, ByteLengthPrecedesTheCharactersAndCountsEmbeddedZeros) {
  BSTR b = SysAllocString(L"hello");
  UINT prefix;
  std::memcpy(&prefix, reinterpret_cast<const char*>(b) - sizeof(UINT), sizeof prefix);
  EXPECT_TRUE(prefix == 5 * sizeof(wchar_t) && SysStringByteLen(b) == prefix && SysStringLen(b) == 5u);
  EXPECT_EQ(std::wcscmp(b, L"hello"), 0);
  SysFreeString(b);

  const wchar_t text[] = {L'a', L'\0', L'b'};
  b = SysAllocStringLen(text, 3);
  EXPECT_TRUE(SysStringLen(b) == 3u && b[2] == L'b' && b[3] == L'\0');
  SysFreeString(b);
  b = SysAllocStringLen(nullptr, 4);  // zero-filled room
  EXPECT_TRUE(SysStringLen(b) == 4u && b[0] == L'\0');
  SysFreeString(b);

  EXPECT_TRUE(SysAllocString(nullptr) == nullptr && SysStringLen(nullptr) == 0u);
  SysFreeString(nullptr);
}

// A leaked string would show under LeakSanitizer; the interface's count shows its releases.
TEST(Variant, ClearAndCopyOwnStringsAndCountInterfaces) {
  VARIANT src, dst;
  VariantInit(&src);
  VariantInit(&dst);
  EXPECT_TRUE(src.vt == VT_EMPTY && src.llVal == 0);
  src.vt = VT_BSTR;
  src.bstrVal = SysAllocString(L"text");
  ASSERT_EQ(VariantCopy(&dst, &src), S_OK);
  EXPECT_TRUE(dst.vt == VT_BSTR && dst.bstrVal != src.bstrVal && std::wcscmp(dst.bstrVal, L"text") == 0);
  EXPECT_EQ(VariantClear(&src), S_OK);
  EXPECT_TRUE(src.vt == VT_EMPTY && src.bstrVal == nullptr);

  CountedUnknown unk;
  src.vt = VT_UNKNOWN;
  src.punkVal = &unk;
  ASSERT_EQ(VariantCopy(&dst, &src), S_OK);  // frees dst's string first
  EXPECT_EQ(unk.refs, 2u);
  EXPECT_TRUE(VariantClear(&dst) == S_OK && VariantClear(&src) == S_OK && unk.refs == 0u && src.vt == VT_EMPTY);

  src.vt = VT_R8;
  EXPECT_TRUE(VariantClear(&src) == S_OK && src.vt == VT_EMPTY);
  src.vt = VT_ARRAY | VT_I4;  // no array support: refused, left alone
  EXPECT_TRUE(VariantClear(&src) == DISP_E_BADVARTYPE && src.vt == (VT_ARRAY | VT_I4));
}
