#include <znmt64/platform/CString.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <vector>

namespace {
// Appends the UTF-8 form of code point c.
void AppendUtf8(std::string& out, char32_t c) {
  if (c < 0x80) {
    out += char(c);
  } else if (c < 0x800) {
    out += char(0xC0 | (c >> 6));
    out += char(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    out += char(0xE0 | (c >> 12));
    out += char(0x80 | ((c >> 6) & 0x3F));
    out += char(0x80 | (c & 0x3F));
  } else {
    out += char(0xF0 | (c >> 18));
    out += char(0x80 | ((c >> 12) & 0x3F));
    out += char(0x80 | ((c >> 6) & 0x3F));
    out += char(0x80 | (c & 0x3F));
  }
}

// Decodes one UTF-8 sequence at s[i] (i advanced past it). A byte that does not start a valid,
// shortest-form sequence of a code point outside the surrogates is taken as its Latin-1 value.
char32_t NextCodePoint(const std::string& s, std::size_t& i) {
  auto byte = [&](std::size_t k) { return static_cast<unsigned char>(s[k]); };
  const unsigned char b0 = byte(i);
  const int extra = b0 >= 0xC2 && b0 <= 0xDF ? 1 : b0 >= 0xE0 && b0 <= 0xEF ? 2 : b0 >= 0xF0 && b0 <= 0xF4 ? 3 : 0;
  if (extra > 0 && i + std::size_t(extra) < s.size()) {
    char32_t c = b0 & (0x3F >> extra);
    bool ok = true;
    for (int k = 1; k <= extra && ok; ++k) {
      ok = (byte(i + k) & 0xC0) == 0x80;
      c = (c << 6) | (byte(i + k) & 0x3F);
    }
    const char32_t least[] = {0, 0x80, 0x800, 0x10000};
    if (ok && c >= least[extra] && c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF)) {
      i += std::size_t(extra) + 1;
      return c;
    }
  }
  ++i;
  return b0;
}
}  // namespace

CString::CString(const wchar_t* psz) {
  if (psz == nullptr) return;
  for (; *psz != L'\0'; ++psz) {
    char32_t c = static_cast<char32_t>(*psz);
    AppendUtf8(m_str, c <= 0x10FFFF && (c < 0xD800 || c > 0xDFFF) ? c : 0xFFFD);
  }
}

void CString::FormatV(const char* pszFormat, va_list args) {
  m_str.clear();
  AppendFormatV(pszFormat, args);
}

void CString::AppendFormatV(const char* pszFormat, va_list args) {
  va_list probe;
  va_copy(probe, args);
  int n = std::vsnprintf(nullptr, 0, pszFormat, probe);
  va_end(probe);
  if (n <= 0) return;
  std::size_t old = m_str.size();
  m_str.resize(old + std::size_t(n));
  // vsnprintf writes the terminating zero too; std::string keeps room for it past size().
  std::vsnprintf(m_str.data() + old, std::size_t(n) + 1, pszFormat, args);
}

void CString::Format(const char* pszFormat, ...) {
  va_list args;
  va_start(args, pszFormat);
  FormatV(pszFormat, args);
  va_end(args);
}

void CString::AppendFormat(const char* pszFormat, ...) {
  va_list args;
  va_start(args, pszFormat);
  AppendFormatV(pszFormat, args);
  va_end(args);
}

char* CString::GetBuffer(int nMinBufLength) {
  if (nMinBufLength > GetLength()) m_str.resize(std::size_t(nMinBufLength), '\0');
  return m_str.data();
}

char* CString::GetBufferSetLength(int nNewLength) {
  m_str.resize(nNewLength > 0 ? std::size_t(nNewLength) : 0, '\0');
  return m_str.data();
}

void CString::ReleaseBuffer(int nNewLength) {
  std::size_t n = nNewLength < 0 ? std::strlen(m_str.c_str()) : std::size_t(nNewLength);
  m_str.resize(n, '\0');
}

CString CString::Left(int nCount) const {
  nCount = std::clamp(nCount, 0, GetLength());
  return CString(m_str.data(), nCount);
}

CString CString::Mid(int iFirst) const { return Mid(iFirst, GetLength()); }

CString CString::Mid(int iFirst, int nCount) const {
  iFirst = std::clamp(iFirst, 0, GetLength());
  nCount = std::clamp(nCount, 0, GetLength() - iFirst);
  return CString(m_str.data() + iFirst, nCount);
}

CString CString::Right(int nCount) const {
  nCount = std::clamp(nCount, 0, GetLength());
  return CString(m_str.data() + (GetLength() - nCount), nCount);
}

int CString::Find(char ch, int iStart) const {
  if (iStart < 0 || iStart >= GetLength()) return -1;
  std::size_t k = m_str.find(ch, std::size_t(iStart));
  return k == std::string::npos ? -1 : int(k);
}

int CString::Find(const char* pszSub, int iStart) const {
  if (pszSub == nullptr || iStart < 0 || iStart > GetLength()) return -1;
  std::size_t k = m_str.find(pszSub, std::size_t(iStart));
  return k == std::string::npos ? -1 : int(k);
}

int CString::ReverseFind(char ch) const {
  std::size_t k = m_str.rfind(ch);
  return k == std::string::npos ? -1 : int(k);
}

int CString::Compare(const char* psz) const { return std::strcmp(m_str.c_str(), psz != nullptr ? psz : ""); }

CString& CString::MakeUpper() {
  for (char& c : m_str) c = char(std::toupper(static_cast<unsigned char>(c)));
  return *this;
}

CString& CString::MakeLower() {
  for (char& c : m_str) c = char(std::tolower(static_cast<unsigned char>(c)));
  return *this;
}

BSTR CString::AllocSysString() const {
  std::vector<OLECHAR> wide;
  wide.reserve(m_str.size());
  for (std::size_t i = 0; i < m_str.size();) wide.push_back(static_cast<OLECHAR>(NextCodePoint(m_str, i)));
  return SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
}
