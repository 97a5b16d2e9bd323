// The framework's narrow string, on std::string. Text is bytes; where a wide form is needed
// (AllocSysString, the wide constructor) the bytes are read and written as UTF-8.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/platform/Com.h>
#include <znmt64/platform/Types.h>

#include <cstdarg>
#include <string>

class ZNPF_API CString {
 public:
  CString() = default;
  CString(const CString&) = default;
  CString(CString&&) noexcept = default;
  CString(const char* psz) : m_str(psz != nullptr ? psz : "") {}  // NOLINT: implicit as in the framework
  CString(const char* pch, int nLength) : m_str(pch, nLength > 0 ? std::size_t(nLength) : 0) {}
  explicit CString(char ch, int nRepeat = 1) : m_str(nRepeat > 0 ? std::size_t(nRepeat) : 0, ch) {}
  // Wide text, encoded as UTF-8; null is the empty string.
  explicit CString(const wchar_t* psz);

  CString& operator=(const CString&) = default;
  CString& operator=(CString&&) noexcept = default;
  CString& operator=(const char* psz) { m_str = psz != nullptr ? psz : ""; return *this; }
  CString& operator=(char ch) { m_str.assign(1, ch); return *this; }

  // printf semantics, output of any length.
  void Format(const char* pszFormat, ...) __attribute__((format(printf, 2, 3)));
  void AppendFormat(const char* pszFormat, ...) __attribute__((format(printf, 2, 3)));
  void FormatV(const char* pszFormat, va_list args);
  void AppendFormatV(const char* pszFormat, va_list args);

  int GetLength() const { return static_cast<int>(m_str.size()); }
  bool IsEmpty() const { return m_str.empty(); }
  void Empty() { m_str.clear(); }
  operator const char*() const { return m_str.c_str(); }  // NOLINT: implicit as in the framework
  const char* GetString() const { return m_str.c_str(); }

  // The characters, writable, with room for at least nMinBufLength characters and a zero. Until
  // ReleaseBuffer the length includes that room (zero-filled); ReleaseBuffer(-1) takes the length
  // up to the first zero, ReleaseBuffer(n) sets it to n.
  char* GetBuffer(int nMinBufLength = 0);
  char* GetBufferSetLength(int nNewLength);
  void ReleaseBuffer(int nNewLength = -1);

  // Indices count from 0 and must lie in [0, GetLength()); they are not checked, as in the
  // framework's release build.
  char GetAt(int nIndex) const { return m_str[std::size_t(nIndex)]; }
  char operator[](int nIndex) const { return m_str[std::size_t(nIndex)]; }
  void SetAt(int nIndex, char ch) { m_str[std::size_t(nIndex)] = ch; }

  // Sub-strings; counts and positions outside the string are clamped to it, as the framework does.
  CString Left(int nCount) const;
  CString Mid(int iFirst) const;
  CString Mid(int iFirst, int nCount) const;
  CString Right(int nCount) const;
  // Index of the first occurrence at or after iStart, or -1.
  int Find(char ch, int iStart = 0) const;
  int Find(const char* pszSub, int iStart = 0) const;
  int ReverseFind(char ch) const;
  int Compare(const char* psz) const;
  CString& MakeUpper();
  CString& MakeLower();

  CString& operator+=(const CString& s) { m_str += s.m_str; return *this; }
  CString& operator+=(const char* psz) { if (psz != nullptr) m_str += psz; return *this; }
  CString& operator+=(char ch) { m_str += ch; return *this; }

  // A new BSTR of the text read as UTF-8 (a byte that is not part of a valid sequence stands for
  // itself, as in Latin-1); the caller frees it with SysFreeString.
  BSTR AllocSysString() const;

  const std::string& str() const { return m_str; }

 private:
  std::string m_str;
};

inline CString operator+(const CString& a, const CString& b) { CString r(a); r += b; return r; }
inline CString operator+(const CString& a, const char* b) { CString r(a); r += b; return r; }
inline CString operator+(const char* a, const CString& b) { CString r(a); r += b; return r; }
inline CString operator+(const CString& a, char b) { CString r(a); r += b; return r; }
inline CString operator+(char a, const CString& b) { CString r(a); r += b; return r; }

// Every mix is spelled out: with the implicit conversions both ways a single overload would be
// ambiguous against the built-in pointer comparison.
inline bool operator==(const CString& a, const CString& b) { return a.str() == b.str(); }
inline bool operator==(const CString& a, const char* b) { return a.Compare(b) == 0; }
inline bool operator==(const char* a, const CString& b) { return b.Compare(a) == 0; }
inline bool operator!=(const CString& a, const CString& b) { return !(a == b); }
inline bool operator!=(const CString& a, const char* b) { return !(a == b); }
inline bool operator!=(const char* a, const CString& b) { return !(a == b); }
inline bool operator<(const CString& a, const CString& b) { return a.str() < b.str(); }
inline bool operator<(const CString& a, const char* b) { return a.Compare(b) < 0; }
inline bool operator<(const char* a, const CString& b) { return b.Compare(a) > 0; }
