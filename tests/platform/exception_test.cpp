#include <znmt64/platform/CException.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <utility>
#include <vector>

#include "TempFile.h"

TEST(Exceptions, RunTimeClassesFollowTheHierarchy) {
  CException base;
  CMemoryException mem;
  CFileException file;
  CArchiveException archive;
  CInvalidArgException arg;
  const CRuntimeClass *ex = RUNTIME_CLASS(CException), *memory = RUNTIME_CLASS(CMemoryException);
  EXPECT_TRUE(mem.IsKindOf(memory) && mem.IsKindOf(ex) && mem.IsKindOf(RUNTIME_CLASS(CObject)));
  EXPECT_TRUE(base.IsKindOf(ex) && file.IsKindOf(ex) && archive.IsKindOf(ex) && arg.IsKindOf(ex));
  EXPECT_FALSE(mem.IsKindOf(RUNTIME_CLASS(CFileException)) || base.IsKindOf(memory) ||
               file.IsKindOf(RUNTIME_CLASS(CArchiveException)) ||
               archive.IsKindOf(RUNTIME_CLASS(CFileException)));
  EXPECT_STREQ(mem.GetRuntimeClass()->m_lpszClassName, "CMemoryException");
  EXPECT_EQ(CRuntimeClass::FromName("CMemoryException"), memory);
}

TEST(Exceptions, ErrnoMapsToTheFrameworksCause) {
  const std::pair<int, int> errnos[] = {{ENOENT, CFileException::fileNotFound},
                                        {EACCES, CFileException::accessDenied},
                                        {ENOSPC, CFileException::diskFull},
                                        {EDOM, CFileException::genericException}};
  for (auto [err, cause] : errnos) EXPECT_EQ(CFileException::ErrnoToException(err), cause) << err;
}

TEST(Exceptions, ThrownByPointerAndDeletedByTheCatcher) {
  try {
    AfxThrowFileException(CFileException::diskFull, ENOSPC, "/data/m.bin");
  } catch (CException* e) {
    ASSERT_TRUE(e->IsKindOf(RUNTIME_CLASS(CFileException)));
    auto* fe = static_cast<CFileException*>(e);
    EXPECT_TRUE(fe->m_cause == CFileException::diskFull && fe->m_lOsError == ENOSPC);
    EXPECT_EQ(fe->m_strFileName, "/data/m.bin");
    e->Delete();  // LeakSanitizer checks that this frees it
  }
  EXPECT_EQ(CauseOf<CArchiveException>([] { AfxThrowArchiveException(CArchiveException::badClass); }),
            CArchiveException::badClass);
  EXPECT_EQ(CauseOf<CMemoryException>([] { AfxThrowMemoryException(); }), 0);
  // An exception on the stack is not deleted by Delete().
  CException onStack(FALSE);
  onStack.Delete();
}

TEST(Exceptions, MessagesNameTheFileAndTruncateToTheBuffer) {
  // The text written into a buffer of exactly n characters; "-" and the text when there is none.
  auto message = [](const CException& e, UINT n = 128) {
    std::vector<char> buf(n, 'X');
    const BOOL has = e.GetErrorMessage(buf.data(), n);
    return (has ? "" : "-") + std::string(buf.data());
  };
  const CFileException e(CFileException::fileNotFound, ENOENT, "/tmp/matrix.bin");
  EXPECT_EQ(message(e), "/tmp/matrix.bin was not found.");
  EXPECT_EQ(message(CFileException(CFileException::sharingViolation, -1, "a.bin")),
            "A sharing violation occurred while accessing a.bin.");
  EXPECT_EQ(message(CArchiveException(CArchiveException::endOfFile)),
            "An attempt was made to access an unnamed file past its end.");
  EXPECT_EQ(message(CArchiveException(99, "x")), "An unknown error occurred while accessing x.");  // generic
  EXPECT_EQ(message(e, 10), "/tmp/matr");  // nine characters and the zero
  EXPECT_EQ(message(e, 1), "");
  EXPECT_EQ(message(CMemoryException(), 4), "Out");
  EXPECT_EQ(message(CException()), "-");  // the base has none, and empties the buffer
  UINT help = 77;
  char buf[64];
  EXPECT_TRUE(e.GetErrorMessage(buf, sizeof buf, &help) && help == 0u);
  EXPECT_FALSE(e.GetErrorMessage(nullptr, 0));
}
