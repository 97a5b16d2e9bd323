#include <znmt64/platform/CArchive.h>

#include <algorithm>

namespace {
constexpr int kMinBufSize = 128;  // the framework's minimum
}

CArchive::CArchive(CFile* pFile, UINT nMode, int nBufSize, void* lpBuf)
    : m_pFile(pFile), m_nMode(nMode), m_bUserBuf(lpBuf != nullptr && nBufSize >= kMinBufSize) {
  if (pFile == nullptr) AfxThrowInvalidArgException();
  m_strFileName = pFile->GetFilePath();
  m_nBufSize = UINT(std::max(nBufSize, kMinBufSize));
  m_pBufStart = m_bUserBuf ? static_cast<BYTE*>(lpBuf) : new BYTE[m_nBufSize];
  m_pBufCur = m_pBufStart;
  // Storing: the whole buffer is free. Loading: nothing read yet.
  m_pBufMax = IsLoading() ? m_pBufStart : m_pBufStart + m_nBufSize;
}

CArchive::~CArchive() {
  if (m_pFile != nullptr && (m_nMode & bNoFlushOnDelete) == 0) {
    try {
      Close();
    } catch (CException* e) {
      e->Delete();
    }
  }
  Abort();
  if (!m_bUserBuf) delete[] m_pBufStart;
}

UINT CArchive::Read(void* lpBuf, UINT nMax) {
  if (!IsLoading()) AfxThrowArchiveException(CArchiveException::writeOnly, m_strFileName);
  BYTE* out = static_cast<BYTE*>(lpBuf);
  UINT left = nMax;
  while (left > 0) {
    if (m_pBufCur == m_pBufMax) {
      if (left >= m_nBufSize) {  // a large request bypasses the buffer
        UINT got = m_pFile->Read(out, left);
        if (got == 0) break;
        out += got;
        left -= got;
        continue;
      }
      FillBuffer();
      if (m_pBufCur == m_pBufMax) break;  // end of file
    }
    UINT n = std::min(left, UINT(m_pBufMax - m_pBufCur));
    std::memcpy(out, m_pBufCur, n);
    m_pBufCur += n;
    out += n;
    left -= n;
  }
  return nMax - left;
}

void CArchive::ReadExact(void* lpBuf, UINT nCount) {
  if (Read(lpBuf, nCount) != nCount) AfxThrowArchiveException(CArchiveException::endOfFile, m_strFileName);
}

void CArchive::FillBuffer() {
  m_pBufCur = m_pBufStart;
  m_pBufMax = m_pBufStart + m_pFile->Read(m_pBufStart, m_nBufSize);
}

void CArchive::Write(const void* lpBuf, UINT nMax) {
  if (IsLoading()) AfxThrowArchiveException(CArchiveException::readOnly, m_strFileName);
  const BYTE* in = static_cast<const BYTE*>(lpBuf);
  UINT room = UINT(m_pBufMax - m_pBufCur);
  if (nMax <= room) {
    if (nMax > 0) std::memcpy(m_pBufCur, in, nMax);
    m_pBufCur += nMax;
    return;
  }
  Flush();
  if (nMax >= m_nBufSize) {  // a large block goes straight to the file
    m_pFile->Write(in, nMax);
  } else {
    std::memcpy(m_pBufCur, in, nMax);
    m_pBufCur += nMax;
  }
}

void CArchive::Flush() {
  if (m_pFile == nullptr) return;
  if (IsLoading()) {
    if (m_pBufMax != m_pBufCur) m_pFile->Seek(-LONGLONG(m_pBufMax - m_pBufCur), CFile::current);
    m_pBufCur = m_pBufMax = m_pBufStart;
  } else {
    // The buffer is emptied before writing, so a failed write is not repeated by a later flush.
    UINT n = UINT(m_pBufCur - m_pBufStart);
    m_pBufCur = m_pBufStart;
    if (n > 0) m_pFile->Write(m_pBufStart, n);
  }
}

void CArchive::Close() {
  Flush();
  m_pFile = nullptr;
}

void CArchive::Abort() {
  m_pFile = nullptr;
  m_pBufCur = m_pBufStart;
  m_pBufMax = IsLoading() ? m_pBufStart : m_pBufStart + m_nBufSize;
}

void CArchive::WriteCount(DWORD_PTR dwCount) {
  if (dwCount < 0xFFFF) {
    *this << WORD(dwCount);
    return;
  }
  *this << WORD(0xFFFF);
  if (dwCount < 0xFFFFFFFF) {
    *this << DWORD(dwCount);
    return;
  }
  *this << DWORD(0xFFFFFFFF) << ULONGLONG(dwCount);
}

DWORD_PTR CArchive::ReadCount() {
  WORD w;
  *this >> w;
  if (w != 0xFFFF) return w;
  DWORD d;
  *this >> d;
  if (d != 0xFFFFFFFF) return d;
  ULONGLONG q;
  *this >> q;
  return q;
}

CArchive& CArchive::operator<<(const CString& s) {
  const ULONGLONG n = ULONGLONG(s.GetLength());
  if (n < 0xFF) {
    *this << BYTE(n);
  } else {
    *this << BYTE(0xFF);
    if (n < 0xFFFE)
      *this << WORD(n);
    else  // a CString is shorter than 2^31: the 64-bit form is never needed
      *this << WORD(0xFFFF) << DWORD(n);
  }
  Write(s.GetString(), UINT(n));
  return *this;
}

CArchive& CArchive::operator>>(CString& s) {
  ULONGLONG n;
  BYTE b;
  *this >> b;
  n = b;
  if (b == 0xFF) {
    WORD w;
    *this >> w;
    if (w == 0xFFFE) AfxThrowArchiveException(CArchiveException::badSchema, m_strFileName);
    n = w;
    if (w == 0xFFFF) {
      DWORD d;
      *this >> d;
      n = d;
      if (d == 0xFFFFFFFF) *this >> n;
    }
  }
  // A CString holds at most INT_MAX characters.
  if (n > 0x7FFFFFFF) AfxThrowArchiveException(CArchiveException::badIndex, m_strFileName);
  // Read in steps, so a corrupt length costs no more memory than the file really holds.
  CString text;
  constexpr UINT kStep = 1u << 16;
  for (UINT done = 0; done < n;) {
    UINT step = UINT(std::min<ULONGLONG>(kStep, n - done));
    char* p = text.GetBufferSetLength(int(done + step)) + done;
    ReadExact(p, step);
    done += step;
  }
  s = std::move(text);
  return *this;
}
