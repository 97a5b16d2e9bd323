#include <znmt64/platform/CString.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>

TEST(CString, ConstructorsClampAndBytesCompareUnsigned) {
  EXPECT_STREQ(CString(static_cast<const char*>(nullptr)), "");
  EXPECT_EQ(CString('x', 3) + CString('x', -1) + CString("abcdef", 2), "xxxab");
  EXPECT_TRUE(CString("a") < CString("a\xE9") && CString("z") < CString("\xE9"));  // as strcmp does
  EXPECT_FALSE(CString("z") < CString("z"));
}

TEST(CString, FormatHasPrintfSemanticsAndAnyLength) {
  CString s;
  s.Format("CLineal %08x", 0xBEEFu);
  EXPECT_EQ(s, "CLineal 0000beef");
  std::string big(100000, 'q');
  s.Format("<%s|%d>", big.c_str(), 42);
  EXPECT_EQ(s.str(), "<" + big + "|42>");
  EXPECT_EQ(std::strlen(s), std::size_t(s.GetLength()));
}

TEST(CString, SubStringsAndSearchesClampLikeTheFramework) {
  const CString s("Hello, world");
  const std::pair<CString, const char*> cuts[] = {
      {s.Left(5), "Hello"}, {s.Left(-1), ""},   {s.Left(99), "Hello, world"}, {s.Mid(7), "world"},
      {s.Mid(7, 3), "wor"}, {s.Mid(-3, 2), "He"}, {s.Mid(20, 2), ""},         {s.Mid(10, 99), "ld"},
      {s.Right(5), "world"}, {s.Right(0), ""},  {s.Right(99), "Hello, world"}};
  for (const auto& [got, want] : cuts) EXPECT_EQ(got, want);
  const std::pair<int, int> finds[] = {{s.Find('o'), 4},        {s.Find('o', 5), 8},       {s.Find('z'), -1},
                                       {s.Find("world"), 7},    {s.Find("world", 8), -1}, {s.Find(""), 0},
                                       {s.ReverseFind('o'), 8}};
  for (auto [got, want] : finds) EXPECT_EQ(got, want);
}

TEST(CString, ReleaseBufferTakesTheLengthToTheZeroOrAsGiven) {
  CString s("abc");
  std::strcpy(s.GetBuffer(10) + 3, "3456789");  // the buffer starts with the text
  s.ReleaseBuffer();
  EXPECT_EQ(s, "abc3456789");
  s.GetBuffer()[2] = '\0';
  s.ReleaseBuffer();
  EXPECT_EQ(s, "ab");
  std::memcpy(s.GetBufferSetLength(4), "wxyz", 4);
  s.ReleaseBuffer(3);
  EXPECT_EQ(s, "wxy");
}

TEST(CString, AllocSysStringDecodesUtf8WithLengthPrefix) {
  auto wide = [](const CString& s) {
    BSTR b = s.AllocSysString();
    EXPECT_NE(b, nullptr);
    EXPECT_EQ(b[SysStringLen(b)], L'\0');
    std::wstring w(b, SysStringLen(b));
    EXPECT_EQ(CString(b), s);  // and back
    SysFreeString(b);
    return w;
  };
  // A, e-acute, euro sign, U+1F600.
  EXPECT_EQ(wide("A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"), (std::wstring{L'A', 0xE9, 0x20AC, 0x1F600}));
  // Invalid UTF-8 (a lone continuation byte, an overlong form, a cut sequence) stands for itself.
  BSTR b = CString("\x80\xC0\xAFz\xE2\x82").AllocSysString();
  EXPECT_EQ(std::wstring(b, SysStringLen(b)), (std::wstring{0x80, 0xC0, 0xAF, L'z', 0xE2, 0x82}));
  SysFreeString(b);
  EXPECT_EQ(wide(CString()), L"");
}
