#include <znmt64/platform/CFile.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

IMPLEMENT_DYNAMIC(CFile, CObject)

namespace {
// One marker byte per access right and per denial, far past any real data. Every open CFile holds
// a shared lock on the markers of what it does and what it denies; shared locks never conflict, so
// a conflict is found by asking whether another open file description holds the opposite marker.
// The locks are taken before the check, so of two racing opens at least one sees the other.
constexpr off_t kMarkerBase = 0x7FFFFFFFFFFFFF00;
enum Marker { kReads, kWrites, kDeniesRead, kDeniesWrite };

struct flock Range(Marker m, short type) {
  struct flock fl;
  std::memset(&fl, 0, sizeof fl);
  fl.l_type = type;
  fl.l_whence = SEEK_SET;
  fl.l_start = kMarkerBase + m;
  fl.l_len = 1;
  return fl;
}

bool HeldByOther(int fd, Marker m) {
  struct flock fl = Range(m, F_WRLCK);
  return ::fcntl(fd, F_OFD_GETLK, &fl) == 0 && fl.l_type != F_UNLCK;
}

// Places this open's markers and checks them against the others'. Returns 0, EAGAIN for a sharing
// violation, or another errno when the locks are not available (then sharing is not enforced).
int ClaimShare(int fd, bool reads, bool writes, bool deniesRead, bool deniesWrite) {
  const bool mine[] = {reads, writes, deniesRead, deniesWrite};
  for (int m = kReads; m <= kDeniesWrite; ++m) {
    if (!mine[m]) continue;
    struct flock fl = Range(Marker(m), F_RDLCK);
    if (::fcntl(fd, F_OFD_SETLK, &fl) != 0) return errno;
  }
  if ((reads && HeldByOther(fd, kDeniesRead)) || (writes && HeldByOther(fd, kDeniesWrite)) ||
      (deniesRead && HeldByOther(fd, kReads)) || (deniesWrite && HeldByOther(fd, kWrites)))
    return EAGAIN;
  return 0;
}

bool SameFile(int a, int b) {
  struct stat sa, sb;
  return ::fstat(a, &sa) == 0 && ::fstat(b, &sb) == 0 && sa.st_dev == sb.st_dev && sa.st_ino == sb.st_ino;
}

// EBADF on an open descriptor means it was not opened for that direction: the framework reports
// accessDenied there, and invalidFile only for a file that is not open.
[[noreturn]] void ThrowIo(int err, int fd, const CString& name) {
  if (err == EBADF && fd != CFile::hFileNull) AfxThrowFileException(CFileException::accessDenied, err, name);
  CFileException::ThrowErrno(err, name);
}

void CloseQuietly(int& fd) {
  if (fd != CFile::hFileNull) ::close(fd);
  fd = CFile::hFileNull;
}
}  // namespace

CFile::CFile(LPCTSTR lpszFileName, UINT nOpenFlags) {
  CFileException error;
  if (!Open(lpszFileName, nOpenFlags, &error))
    AfxThrowFileException(error.m_cause, error.m_lOsError, error.m_strFileName);
}

CFile::~CFile() {
  if (m_hFile != hFileNull && m_bCloseOnDelete) Abort();
  CloseQuietly(m_hLockFile);
}

BOOL CFile::Open(LPCTSTR lpszFileName, UINT nOpenFlags, CFileException* pError) {
  Abort();
  auto fail = [&](int cause, int err) {
    CloseQuietly(m_hFile);
    CloseQuietly(m_hLockFile);
    m_strFileName.Empty();
    if (pError != nullptr) {
      pError->m_cause = cause;
      pError->m_lOsError = err;
      pError->m_strFileName = lpszFileName;
    }
    return FALSE;
  };
  if (lpszFileName == nullptr || *lpszFileName == '\0') return fail(CFileException::badPath, ENOENT);

  const UINT access = nOpenFlags & 3;
  if (access == 3) return fail(CFileException::genericException, EINVAL);
  const bool reads = access != modeWrite, writes = access != modeRead;
  const bool truncate = (nOpenFlags & modeCreate) != 0 && (nOpenFlags & modeNoTruncate) == 0;
  int oflags = access == modeRead ? O_RDONLY : access == modeWrite ? O_WRONLY : O_RDWR;
  if ((nOpenFlags & modeCreate) != 0) oflags |= O_CREAT;
  if ((nOpenFlags & modeNoInherit) != 0) oflags |= O_CLOEXEC;
  // A writable file is truncated only after the sharing check; a read-only one cannot be later.
  if (truncate && !writes) oflags |= O_TRUNC;

  do m_hFile = ::open(lpszFileName, oflags, 0666);
  while (m_hFile < 0 && errno == EINTR);
  if (m_hFile < 0) return fail(CFileException::ErrnoToException(errno), errno);
  struct stat st;
  if (::fstat(m_hFile, &st) != 0) return fail(CFileException::ErrnoToException(errno), errno);
  if (S_ISDIR(st.st_mode)) return fail(CFileException::accessDenied, EISDIR);

  bool deniesRead = false, deniesWrite = false;
  switch (nOpenFlags & 0x70) {
    case shareDenyNone: break;
    case shareDenyRead: deniesRead = true; break;
    case shareDenyWrite: deniesWrite = true; break;
    default: deniesRead = deniesWrite = true; break;  // shareCompat, shareExclusive
  }
  int lockFd = m_hFile;
  if (!reads) {
    m_hLockFile = ::open(lpszFileName, O_RDONLY | O_CLOEXEC);
    if (m_hLockFile >= 0 && !SameFile(m_hFile, m_hLockFile)) CloseQuietly(m_hLockFile);
    lockFd = m_hLockFile;
  }
  if (lockFd != hFileNull) {
    int err = ClaimShare(lockFd, reads, writes, deniesRead, deniesWrite);
    if (err == EAGAIN) return fail(CFileException::sharingViolation, EAGAIN);
  }

  if (truncate && writes && ::ftruncate(m_hFile, 0) != 0) return fail(CFileException::ErrnoToException(errno), errno);
  m_strFileName = lpszFileName;
  return TRUE;
}

UINT CFile::Read(void* lpBuf, UINT nCount) {
  UINT done = 0;
  while (done < nCount) {
    ssize_t n = ::read(m_hFile, static_cast<char*>(lpBuf) + done, nCount - done);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) ThrowIo(errno, m_hFile, m_strFileName);
    if (n == 0) break;  // end of file
    done += UINT(n);
  }
  return done;
}

void CFile::Write(const void* lpBuf, UINT nCount) {
  UINT done = 0;
  while (done < nCount) {
    ssize_t n = ::write(m_hFile, static_cast<const char*>(lpBuf) + done, nCount - done);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) ThrowIo(errno, m_hFile, m_strFileName);
    if (n == 0) AfxThrowFileException(CFileException::diskFull, ENOSPC, m_strFileName);
    done += UINT(n);
  }
}

ULONGLONG CFile::Seek(LONGLONG lOff, UINT nFrom) {
  const int whence = nFrom == begin ? SEEK_SET : nFrom == current ? SEEK_CUR : nFrom == end ? SEEK_END : -1;
  if (whence < 0) AfxThrowFileException(CFileException::badSeek, EINVAL, m_strFileName);
  off_t pos = ::lseek(m_hFile, off_t(lOff), whence);
  if (pos < 0) AfxThrowFileException(errno == EBADF ? CFileException::invalidFile : CFileException::badSeek,
                                     errno, m_strFileName);
  return ULONGLONG(pos);
}

ULONGLONG CFile::GetLength() const {
  struct stat st;
  if (::fstat(m_hFile, &st) != 0) CFileException::ThrowErrno(errno, m_strFileName);
  return ULONGLONG(st.st_size);
}

void CFile::SetLength(ULONGLONG dwNewLen) {
  if (::ftruncate(m_hFile, off_t(dwNewLen)) != 0) CFileException::ThrowErrno(errno, m_strFileName);
}

ULONGLONG CFile::GetPosition() const {
  off_t pos = ::lseek(m_hFile, 0, SEEK_CUR);
  if (pos < 0) CFileException::ThrowErrno(errno, m_strFileName);
  return ULONGLONG(pos);
}

void CFile::Flush() {
  if (m_hFile != hFileNull && ::fsync(m_hFile) != 0 && errno != EINVAL)  // EINVAL: not syncable (a pipe)
    CFileException::ThrowErrno(errno, m_strFileName);
}

void CFile::Close() {
  int err = 0;
  if (m_hFile != hFileNull && ::close(m_hFile) != 0 && errno != EINTR) err = errno;
  m_hFile = hFileNull;
  CloseQuietly(m_hLockFile);
  CString name = m_strFileName;
  m_strFileName.Empty();
  if (err != 0) CFileException::ThrowErrno(err, name);
}

void CFile::Abort() {
  CloseQuietly(m_hFile);
  CloseQuietly(m_hLockFile);
  m_strFileName.Empty();
}

CString CFile::GetFileName() const {
  int slash = m_strFileName.ReverseFind('/');
  return slash < 0 ? m_strFileName : m_strFileName.Mid(slash + 1);
}
