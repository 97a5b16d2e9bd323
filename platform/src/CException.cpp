#include <znmt64/platform/CException.h>

#include <cerrno>
#include <cstring>
#include <iterator>

IMPLEMENT_DYNAMIC(CException, CObject)
IMPLEMENT_DYNAMIC(CMemoryException, CException)

void CException::Delete() {
  if (m_bAutoDelete) delete this;
}

BOOL AfxCopyErrorMessage(const char* text, LPTSTR lpszError, UINT nMaxError, UINT* pnHelpContext) {
  if (pnHelpContext != nullptr) *pnHelpContext = 0;
  if (lpszError == nullptr || nMaxError == 0) return FALSE;
  if (text == nullptr || *text == '\0') {
    *lpszError = '\0';
    return FALSE;
  }
  std::size_t n = std::strlen(text);
  if (n > nMaxError - 1) n = nMaxError - 1;
  std::memcpy(lpszError, text, n);
  lpszError[n] = '\0';
  return TRUE;
}

BOOL CException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const {
  return AfxCopyErrorMessage(nullptr, lpszError, nMaxError, pnHelpContext);
}

BOOL CMemoryException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const {
  return AfxCopyErrorMessage("Out of memory.", lpszError, nMaxError, pnHelpContext);
}

void AfxThrowMemoryException() { throw new CMemoryException(); }

IMPLEMENT_DYNAMIC(CInvalidArgException, CException)
IMPLEMENT_DYNAMIC(CNotSupportedException, CException)
IMPLEMENT_DYNAMIC(CFileException, CException)
IMPLEMENT_DYNAMIC(CArchiveException, CException)

BOOL CInvalidArgException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const {
  return AfxCopyErrorMessage("Invalid argument.", lpszError, nMaxError, pnHelpContext);
}

BOOL CNotSupportedException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const {
  return AfxCopyErrorMessage("Unsupported operation was attempted.", lpszError, nMaxError, pnHelpContext);
}

namespace {
// The framework's message texts, %s standing for the file name.
const char* const kFileMessages[] = {
    "No error occurred.",
    "An unknown error occurred while accessing %s.",
    "%s was not found.",
    "%s contains an invalid path.",
    "%s could not be opened because there are too many open files.",
    "Access to %s was denied.",
    "An invalid file handle was associated with %s.",
    "%s could not be removed because it is the current directory.",
    "%s could not be created because the directory is full.",
    "Seek failed on %s.",
    "A hardware I/O error was reported while accessing %s.",
    "A sharing violation occurred while accessing %s.",
    "A locking violation occurred while accessing %s.",
    "Disk full while accessing %s.",
    "An attempt was made to access %s past its end.",
};
const char* const kArchiveMessages[] = {
    "No error occurred.",
    "An unknown error occurred while accessing %s.",
    "An attempt was made to write to the reading %s.",
    "An attempt was made to access %s past its end.",
    "An attempt was made to read from the writing %s.",
    "%s has a bad format.",
    "%s contained an unexpected object.",
    "%s contains an incorrect schema.",
    "The buffer of %s is full.",
};

BOOL FormatCauseMessage(const char* const* table, int count, int cause, const CString& name,
                        LPTSTR lpszError, UINT nMaxError, UINT* pnHelpContext) {
  const char* pattern = cause >= 0 && cause < count ? table[cause] : table[1];
  CString text;
  text.Format(pattern, name.IsEmpty() ? "an unnamed file" : name.GetString());
  return AfxCopyErrorMessage(text, lpszError, nMaxError, pnHelpContext);
}
}  // namespace

BOOL CFileException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const {
  return FormatCauseMessage(kFileMessages, int(std::size(kFileMessages)), m_cause, m_strFileName,
                            lpszError, nMaxError, pnHelpContext);
}

BOOL CArchiveException::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const {
  return FormatCauseMessage(kArchiveMessages, int(std::size(kArchiveMessages)), m_cause, m_strFileName,
                            lpszError, nMaxError, pnHelpContext);
}

int CFileException::ErrnoToException(int nErrno) {
  switch (nErrno) {
    case 0: return none;
    case ENOENT: case ENXIO: case ENODEV: return fileNotFound;
    case ENOTDIR: case ENAMETOOLONG: case ELOOP: return badPath;
    case EMFILE: case ENFILE: return tooManyOpenFiles;
    case EACCES: case EPERM: case EROFS: case EISDIR: case ETXTBSY: case EEXIST: return accessDenied;
    case EBADF: return invalidFile;
    case EBUSY: return sharingViolation;
    case EAGAIN: case EDEADLK: case ENOLCK: return lockViolation;
    case ESPIPE: case EOVERFLOW: return badSeek;
    case EIO: return hardIO;
    case ENOSPC: case EDQUOT: case EFBIG: return diskFull;
    default: return genericException;
  }
}

void CFileException::ThrowErrno(int nErrno, LPCTSTR lpszFileName) {
  AfxThrowFileException(ErrnoToException(nErrno), nErrno, lpszFileName);
}

void CFileException::ThrowOsError(LONG lOsError, LPCTSTR lpszFileName) {
  AfxThrowFileException(OsErrorToException(lOsError), lOsError, lpszFileName);
}

void AfxThrowInvalidArgException() { throw new CInvalidArgException(); }
void AfxThrowNotSupportedException() { throw new CNotSupportedException(); }
void AfxThrowFileException(int cause, LONG lOsError, LPCTSTR lpszFileName) {
  throw new CFileException(cause, lOsError, lpszFileName);
}
void AfxThrowArchiveException(int cause, LPCTSTR lpszArchiveName) {
  throw new CArchiveException(cause, lpszArchiveName);
}
