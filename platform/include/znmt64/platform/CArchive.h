// The framework's buffered binary archive over a CFile. Every value is written little-endian,
// whatever the host, and read back bit for bit (floating-point values by their bit patterns, NaN
// payloads and signed zeros included).
#pragma once
#include <znmt64/Config.h>
#include <znmt64/platform/CException.h>
#include <znmt64/platform/CFile.h>
#include <znmt64/platform/CString.h>

#include <bit>
#include <cstring>
#include <type_traits>

class ZNPF_API CArchive {
 public:
  // The framework's mode values. bNoFlushOnDelete: the destructor does not flush.
  enum Mode { store = 0, load = 1, bNoFlushOnDelete = 2 };

  // The archive does not own the file. A buffer smaller than 128 bytes is replaced by a private
  // one of 128 bytes; lpBuf, when given, is the caller's and is not freed.
  CArchive(CFile* pFile, UINT nMode, int nBufSize = 4096, void* lpBuf = nullptr);
  // Flushes (unless bNoFlushOnDelete) like Close; an exception from that last flush cannot leave a
  // destructor and is deleted: a caller who must know calls Close first.
  ~CArchive();
  CArchive(const CArchive&) = delete;
  CArchive& operator=(const CArchive&) = delete;

  BOOL IsLoading() const { return (m_nMode & load) != 0; }
  BOOL IsStoring() const { return (m_nMode & load) == 0; }
  BOOL IsBufferEmpty() const { return m_pBufCur == m_pBufMax; }
  CFile* GetFile() const { return m_pFile; }

  // Loading: reads up to nMax bytes and returns the count read, short only at the end of the file.
  // Storing: throws CArchiveException writeOnly.
  UINT Read(void* lpBuf, UINT nMax);
  // Storing: buffers or writes all nMax bytes. Loading: throws CArchiveException readOnly.
  void Write(const void* lpBuf, UINT nMax);
  // Storing: writes the buffer to the file. Loading: discards the buffer and moves the file back to
  // the first byte not yet consumed.
  void Flush();
  // Flushes and detaches from the file (which stays open).
  void Close();
  // Detaches from the file without writing the buffer; never throws.
  void Abort();

  // The framework's element count: a WORD below 0xFFFF, else 0xFFFF then a DWORD below
  // 0xFFFFFFFF, else 0xFFFFFFFF then the 64-bit count.
  void WriteCount(DWORD_PTR dwCount);
  DWORD_PTR ReadCount();

  // Arithmetic values: bool and char types as one byte, the others in their host size (so long is
  // eight bytes here), little-endian. operator>> throws CArchiveException endOfFile on a short read.
  CArchive& operator<<(bool v) { return Put(static_cast<unsigned char>(v ? 1 : 0)); }
  CArchive& operator<<(char v) { return Put(v); }
  CArchive& operator<<(signed char v) { return Put(v); }
  CArchive& operator<<(unsigned char v) { return Put(v); }
  CArchive& operator<<(short v) { return Put(v); }
  CArchive& operator<<(unsigned short v) { return Put(v); }
  CArchive& operator<<(int v) { return Put(v); }
  CArchive& operator<<(unsigned int v) { return Put(v); }
  CArchive& operator<<(long v) { return Put(v); }
  CArchive& operator<<(unsigned long v) { return Put(v); }
  CArchive& operator<<(long long v) { return Put(v); }
  CArchive& operator<<(unsigned long long v) { return Put(v); }
  CArchive& operator<<(float v) { return Put(std::bit_cast<std::uint32_t>(v)); }
  CArchive& operator<<(double v) { return Put(std::bit_cast<std::uint64_t>(v)); }

  CArchive& operator>>(bool& v) { v = Get<unsigned char>() != 0; return *this; }
  CArchive& operator>>(char& v) { v = Get<char>(); return *this; }
  CArchive& operator>>(signed char& v) { v = Get<signed char>(); return *this; }
  CArchive& operator>>(unsigned char& v) { v = Get<unsigned char>(); return *this; }
  CArchive& operator>>(short& v) { v = Get<short>(); return *this; }
  CArchive& operator>>(unsigned short& v) { v = Get<unsigned short>(); return *this; }
  CArchive& operator>>(int& v) { v = Get<int>(); return *this; }
  CArchive& operator>>(unsigned int& v) { v = Get<unsigned int>(); return *this; }
  CArchive& operator>>(long& v) { v = Get<long>(); return *this; }
  CArchive& operator>>(unsigned long& v) { v = Get<unsigned long>(); return *this; }
  CArchive& operator>>(long long& v) { v = Get<long long>(); return *this; }
  CArchive& operator>>(unsigned long long& v) { v = Get<unsigned long long>(); return *this; }
  CArchive& operator>>(float& v) { v = std::bit_cast<float>(Get<std::uint32_t>()); return *this; }
  CArchive& operator>>(double& v) { v = std::bit_cast<double>(Get<std::uint64_t>()); return *this; }

  // The framework's narrow-string record: the length as a BYTE below 0xFF, else 0xFF and a WORD
  // below 0xFFFE, else 0xFFFF and a DWORD below 0xFFFFFFFF, else 0xFFFFFFFF and a 64-bit length;
  // then the characters, no terminator. A wide-string record (marker 0xFF 0xFFFE) is not read:
  // CArchiveException badSchema.
  CArchive& operator<<(const CString& s);
  CArchive& operator>>(CString& s);

  CString m_strFileName;  // the file's path, for the exceptions' messages

 private:
  template <typename T>
  CArchive& Put(T v) {
    using U = std::make_unsigned_t<T>;
    U u = static_cast<U>(v);
    unsigned char bytes[sizeof(T)];
    if constexpr (sizeof(T) == 1) {
      bytes[0] = static_cast<unsigned char>(u);
    } else if constexpr (std::endian::native == std::endian::little) {
      std::memcpy(bytes, &u, sizeof(T));
    } else {
      for (std::size_t i = 0; i < sizeof(T); ++i) bytes[i] = static_cast<unsigned char>(u >> (8 * i));
    }
    Write(bytes, sizeof(T));
    return *this;
  }
  template <typename T>
  T Get() {
    using U = std::make_unsigned_t<T>;
    unsigned char bytes[sizeof(T)];
    ReadExact(bytes, sizeof(T));
    U u = 0;
    if constexpr (std::endian::native == std::endian::little) {
      std::memcpy(&u, bytes, sizeof(T));
    } else {
      for (std::size_t i = 0; i < sizeof(T); ++i) u = static_cast<U>(u | (U(bytes[i]) << (8 * i)));
    }
    return static_cast<T>(u);
  }
  // Read, throwing endOfFile when fewer than nCount bytes remain.
  void ReadExact(void* lpBuf, UINT nCount);
  void FillBuffer();

  CFile* m_pFile;
  UINT m_nMode;
  UINT m_nBufSize;
  bool m_bUserBuf;
  BYTE* m_pBufStart;
  BYTE* m_pBufCur;
  BYTE* m_pBufMax;  // storing: end of the buffer; loading: end of the valid data
};
