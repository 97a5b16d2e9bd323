#include <znmt64/platform/CString.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>

TEST(CString, ConstructsFromTextCharAndCopy) {
  CString empty;
  EXPECT_TRUE(empty.IsEmpty());
  EXPECT_STREQ(empty, "");
  CString fromNull(static_cast<const char*>(nullptr));
  EXPECT_EQ(fromNull.GetLength(), 0);
  CString s("abc");
  EXPECT_EQ(s.GetLength(), 3);
  EXPECT_STREQ(static_cast<const char*>(s), "abc");
  EXPECT_EQ(CString('x', 3), "xxx");
  EXPECT_EQ(CString("abcdef", 2), "ab");
  CString copy(s);
  copy += 'd';
  EXPECT_EQ(s, "abc");
  EXPECT_EQ(copy, "abcd");
  copy.Empty();
  EXPECT_TRUE(copy.IsEmpty());
}

TEST(CString, FormatHasPrintfSemantics) {
  CString s;
  s.Format("CLineal %08x", 0xBEEFu);
  EXPECT_EQ(s, "CLineal 0000beef");
  s.Format("(%.6f, %.6f, %.6f) ", 1.0, -0.5, 2.0 / 3.0);
  EXPECT_EQ(s, "(1.000000, -0.500000, 0.666667) ");
  s.Format("%s", "");
  EXPECT_TRUE(s.IsEmpty());
  s.AppendFormat("%d-%d", 1, 2);
  EXPECT_EQ(s, "1-2");
}

TEST(CString, FormatWritesOutputOfAnyLength) {
  std::string big(100000, 'q');
  CString s;
  s.Format("<%s|%d>", big.c_str(), 42);
  ASSERT_EQ(s.GetLength(), 100000 + 5);
  EXPECT_EQ(s.Left(2), "<q");
  EXPECT_EQ(s.Right(4), "|42>");
  EXPECT_EQ(std::strlen(s), std::size_t(s.GetLength()));
}

TEST(CString, SubStringsClampLikeTheFramework) {
  CString s("Hello, world");
  EXPECT_EQ(s.Left(5), "Hello");
  EXPECT_EQ(s.Left(-1), "");
  EXPECT_EQ(s.Left(99), s);
  EXPECT_EQ(s.Mid(7), "world");
  EXPECT_EQ(s.Mid(7, 3), "wor");
  EXPECT_EQ(s.Mid(-3, 2), "He");
  EXPECT_EQ(s.Mid(20, 2), "");
  EXPECT_EQ(s.Mid(10, 99), "ld");
  EXPECT_EQ(s.Right(5), "world");
  EXPECT_EQ(s.Right(0), "");
  EXPECT_EQ(s.Right(99), s);
  EXPECT_EQ(s.Find('o'), 4);
  EXPECT_EQ(s.Find('o', 5), 8);
  EXPECT_EQ(s.Find('z'), -1);
  EXPECT_EQ(s.Find("world"), 7);
  EXPECT_EQ(s.Find("world", 8), -1);
  EXPECT_EQ(s.Find(""), 0);
  EXPECT_EQ(s.ReverseFind('o'), 8);
}

TEST(CString, OperatorsAndComparisons) {
  CString a("ab");
  CString b = a + "cd" + 'e';
  EXPECT_EQ(b, "abcde");
  EXPECT_EQ("x" + a, "xab");
  EXPECT_EQ('y' + a, "yab");
  EXPECT_EQ(a + a, "abab");
  EXPECT_TRUE(a == CString("ab"));
  EXPECT_TRUE("ab" == a);
  EXPECT_TRUE(a != "ac");
  EXPECT_TRUE(a < "ac");
  EXPECT_TRUE("aa" < a);
  EXPECT_FALSE(a < a);
  // Bytes compare unsigned, as strcmp does.
  EXPECT_TRUE(CString("a") < CString("a\xE9"));
  EXPECT_TRUE(CString("z") < CString("\xE9"));
  EXPECT_EQ(a[1], 'b');
  EXPECT_EQ(a.GetAt(0), 'a');
  a.SetAt(0, 'A');
  EXPECT_EQ(a, "Ab");
  EXPECT_EQ(a.MakeUpper(), "AB");
  EXPECT_EQ(a.MakeLower(), "ab");
}

TEST(CString, GetBufferAndReleaseBuffer) {
  CString s("abc");
  char* p = s.GetBuffer(10);
  EXPECT_STREQ(p, "abc");
  std::strcpy(p, "0123456789");
  s.ReleaseBuffer();
  EXPECT_EQ(s, "0123456789");
  p = s.GetBuffer();
  p[2] = '\0';
  s.ReleaseBuffer();
  EXPECT_EQ(s, "01");
  p = s.GetBufferSetLength(4);
  std::memcpy(p, "wxyz", 4);
  s.ReleaseBuffer(3);
  EXPECT_EQ(s, "wxy");
}

TEST(CString, AllocSysStringDecodesUtf8WithLengthPrefix) {
  CString s("A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");  // A, e-acute, euro sign, U+1F600
  BSTR b = s.AllocSysString();
  ASSERT_NE(b, nullptr);
  ASSERT_EQ(SysStringLen(b), 4u);
  EXPECT_EQ(b[0], L'A');
  EXPECT_EQ(b[1], wchar_t(0xE9));
  EXPECT_EQ(b[2], wchar_t(0x20AC));
  EXPECT_EQ(b[3], wchar_t(0x1F600));
  EXPECT_EQ(b[4], L'\0');
  EXPECT_EQ(CString(b), s);  // and back
  SysFreeString(b);

  // Bytes that are not valid UTF-8 (a lone continuation byte, an overlong form, a truncated
  // sequence) stand for themselves.
  b = CString("\x80\xC0\xAFz\xE2\x82").AllocSysString();
  ASSERT_EQ(SysStringLen(b), 6u);
  EXPECT_EQ(b[0], wchar_t(0x80));
  EXPECT_EQ(b[1], wchar_t(0xC0));
  EXPECT_EQ(b[2], wchar_t(0xAF));
  EXPECT_EQ(b[3], L'z');
  EXPECT_EQ(b[4], wchar_t(0xE2));
  EXPECT_EQ(b[5], wchar_t(0x82));
  SysFreeString(b);

  b = CString().AllocSysString();
  ASSERT_NE(b, nullptr);
  EXPECT_EQ(SysStringLen(b), 0u);
  SysFreeString(b);
}
