// The framework's exception base. Exceptions are created on the heap and thrown by pointer;
// the catcher owns the object and releases it with Delete().
#pragma once
#include <znmt64/Config.h>
#include <znmt64/platform/CObject.h>
#include <znmt64/platform/CString.h>

class ZNPF_API CException : public CObject {
  DECLARE_DYNAMIC(CException)
 public:
  explicit CException(BOOL bAutoDelete = TRUE) : m_bAutoDelete(bAutoDelete) {}
  ~CException() override = default;

  // Deletes the object when it was created for automatic deletion (on the heap).
  void Delete();
  // Copies the message into lpszError (at most nMaxError - 1 characters and a terminating zero)
  // and returns TRUE; FALSE with an empty buffer when there is no message. The base has none.
  virtual BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const;

  BOOL m_bAutoDelete;
};

// Out of memory. The numeric allocators throw it by pointer instead of ending the process.
class ZNPF_API CMemoryException : public CException {
  DECLARE_DYNAMIC(CMemoryException)
 public:
  CMemoryException() : CException(TRUE) {}
  BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const override;
};

// An argument out of its range: CArray's indices and sizes. The framework asserts in its debug
// build and throws this in its release build; here it is thrown in every build.
class ZNPF_API CInvalidArgException : public CException {
  DECLARE_DYNAMIC(CInvalidArgException)
 public:
  CInvalidArgException() : CException(TRUE) {}
  BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const override;
};

// An operation the object does not support (CArray::Serialize of an element type that has no
// archive form).
class ZNPF_API CNotSupportedException : public CException {
  DECLARE_DYNAMIC(CNotSupportedException)
 public:
  CNotSupportedException() : CException(TRUE) {}
  BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const override;
};

// A failed file operation. m_lOsError is the errno value (-1 when there is none).
class ZNPF_API CFileException : public CException {
  DECLARE_DYNAMIC(CFileException)
 public:
  // The framework's causes, values 0 to 14.
  enum {
    none,
    genericException,
    fileNotFound,
    badPath,
    tooManyOpenFiles,
    accessDenied,
    invalidFile,
    removeCurrentDir,
    directoryFull,
    badSeek,
    hardIO,
    sharingViolation,
    lockViolation,
    diskFull,
    endOfFile
  };

  explicit CFileException(int cause = none, LONG lOsError = -1, LPCTSTR lpszFileName = nullptr)
      : CException(TRUE), m_cause(cause), m_lOsError(lOsError), m_strFileName(lpszFileName) {}
  // "Access to /tmp/x was denied." and the like; an empty name reads "an unnamed file".
  BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const override;

  // The cause of an errno value: ENOENT is fileNotFound, EACCES accessDenied, ENOSPC diskFull...
  static int ErrnoToException(int nErrno);
  // On this host the operating system's error code is the errno value.
  static int OsErrorToException(LONG lOsError) { return ErrnoToException(int(lOsError)); }
  [[noreturn]] static void ThrowErrno(int nErrno, LPCTSTR lpszFileName = nullptr);
  [[noreturn]] static void ThrowOsError(LONG lOsError, LPCTSTR lpszFileName = nullptr);

  int m_cause;
  LONG m_lOsError;
  CString m_strFileName;
};

// A failed archive operation; m_strFileName is the path of the archive's file.
class ZNPF_API CArchiveException : public CException {
  DECLARE_DYNAMIC(CArchiveException)
 public:
  // The framework's causes, values 0 to 8.
  enum { none, genericException, readOnly, endOfFile, writeOnly, badIndex, badClass, badSchema, bufferFull };

  explicit CArchiveException(int cause = none, LPCTSTR lpszArchiveName = nullptr)
      : CException(TRUE), m_cause(cause), m_strFileName(lpszArchiveName) {}
  BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const override;

  int m_cause;
  CString m_strFileName;
};

// Each creates the exception on the heap and throws the pointer; the catcher calls Delete().
[[noreturn]] ZNPF_API void AfxThrowMemoryException();
[[noreturn]] ZNPF_API void AfxThrowInvalidArgException();
[[noreturn]] ZNPF_API void AfxThrowNotSupportedException();
[[noreturn]] ZNPF_API void AfxThrowFileException(int cause, LONG lOsError = -1, LPCTSTR lpszFileName = nullptr);
[[noreturn]] ZNPF_API void AfxThrowArchiveException(int cause, LPCTSTR lpszArchiveName = nullptr);

// Copies text into a framework message buffer; shared by every GetErrorMessage.
ZNPF_API BOOL AfxCopyErrorMessage(const char* text, LPTSTR lpszError, UINT nMaxError,
                                  UINT* pnHelpContext);
