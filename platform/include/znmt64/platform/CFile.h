// The framework's unbuffered binary file, on POSIX open/read/write.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/platform/CException.h>
#include <znmt64/platform/CObject.h>
#include <znmt64/platform/CString.h>

// Sharing modes (shareDenyWrite, shareDenyRead, shareExclusive; shareCompat is exclusive, as in the
// framework) are honoured among the CFile objects of all processes on this host, through advisory
// open-file-description locks on marker bytes far past any real data. They bind only programs that
// use CFile: other programs can still read and write the file. A write-only CFile holds its markers
// on a second, read-only descriptor of the file; when the file cannot be opened for reading, or the
// file system does not support the locks, that CFile opens without sharing checks.
class ZNPF_API CFile : public CObject {
  DECLARE_DYNAMIC(CFile)
 public:
  // The framework's flag values.
  enum OpenFlags : UINT {
    modeRead = 0x0000,
    modeWrite = 0x0001,
    modeReadWrite = 0x0002,
    shareCompat = 0x0000,
    shareExclusive = 0x0010,
    shareDenyWrite = 0x0020,
    shareDenyRead = 0x0030,
    shareDenyNone = 0x0040,
    modeNoInherit = 0x0080,
    modeCreate = 0x1000,
    modeNoTruncate = 0x2000,
    typeText = 0x4000,    // no text mode on this host: ignored
    typeBinary = 0x8000,  // likewise
  };
  enum SeekPosition { begin = 0x0, current = 0x1, end = 0x2 };
  static constexpr int hFileNull = -1;

  CFile() = default;
  // Opens the file or throws the CFileException* that Open would have filled.
  CFile(LPCTSTR lpszFileName, UINT nOpenFlags);
  // Closes the file without throwing.
  ~CFile() override;
  CFile(const CFile&) = delete;
  CFile& operator=(const CFile&) = delete;

  // modeCreate creates the file, and truncates it unless modeNoTruncate is given (truncation comes
  // after the sharing check, so a refused open leaves the file as it was); without modeCreate the
  // file must exist. A directory is refused with accessDenied. On failure returns FALSE and fills
  // pError (cause, errno, file name) when given. An open file is closed first.
  virtual BOOL Open(LPCTSTR lpszFileName, UINT nOpenFlags, CFileException* pError = nullptr);
  // Reads up to nCount bytes; fewer only at the end of the file. Throws on an I/O error.
  virtual UINT Read(void* lpBuf, UINT nCount);
  // Writes all nCount bytes or throws (diskFull, accessDenied, ...).
  virtual void Write(const void* lpBuf, UINT nCount);
  // New position from the origin nFrom (begin, current, end); throws badSeek before the start.
  virtual ULONGLONG Seek(LONGLONG lOff, UINT nFrom);
  void SeekToBegin() { Seek(0, begin); }
  ULONGLONG SeekToEnd() { return Seek(0, end); }
  virtual ULONGLONG GetLength() const;
  virtual void SetLength(ULONGLONG dwNewLen);
  virtual ULONGLONG GetPosition() const;
  // Makes the written data durable (fsync); CFile keeps no buffer of its own.
  virtual void Flush();
  // Close throws when the system reports an error; Abort never throws.
  virtual void Close();
  virtual void Abort();

  // The path as given to Open, and its last component.
  CString GetFilePath() const { return m_strFileName; }
  CString GetFileName() const;

  int m_hFile = hFileNull;
  BOOL m_bCloseOnDelete = TRUE;
  CString m_strFileName;

 private:
  int m_hLockFile = hFileNull;  // the read-only descriptor holding the markers of a write-only file
};
