#include <znmt64/platform/CException.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>
#include <utility>

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
    EXPECT_EQ(fe->m_cause, CFileException::diskFull);
    EXPECT_EQ(fe->m_lOsError, ENOSPC);
    EXPECT_EQ(fe->m_strFileName, "/data/m.bin");
    e->Delete();  // LeakSanitizer checks that this frees it
  }
  try {
    AfxThrowArchiveException(CArchiveException::badClass);
  } catch (CArchiveException* e) {
    EXPECT_EQ(e->m_cause, CArchiveException::badClass);
    e->Delete();
  }
  try {
    AfxThrowMemoryException();
  } catch (CMemoryException* e) {
    e->Delete();
  }
  // An exception on the stack is not deleted by Delete().
  CException onStack(FALSE);
  onStack.Delete();
}

TEST(Exceptions, MessagesNameTheFileAndTruncateToTheBuffer) {
  char buf[128];
  UINT help = 77;
  CFileException e(CFileException::fileNotFound, ENOENT, "/tmp/matrix.bin");
  ASSERT_TRUE(e.GetErrorMessage(buf, sizeof buf, &help));
  EXPECT_STREQ(buf, "/tmp/matrix.bin was not found.");
  EXPECT_EQ(help, 0u);
  CFileException(CFileException::sharingViolation, -1, "a.bin").GetErrorMessage(buf, sizeof buf);
  EXPECT_STREQ(buf, "A sharing violation occurred while accessing a.bin.");
  CArchiveException(CArchiveException::endOfFile).GetErrorMessage(buf, sizeof buf);
  EXPECT_STREQ(buf, "An attempt was made to access an unnamed file past its end.");
  CArchiveException(99, "x").GetErrorMessage(buf, sizeof buf);  // unknown cause: the generic text
  EXPECT_STREQ(buf, "An unknown error occurred while accessing x.");

  char small[10];
  std::memset(small, 'X', sizeof small);
  ASSERT_TRUE(e.GetErrorMessage(small, sizeof small));
  EXPECT_STREQ(small, "/tmp/matr");  // nine characters and the zero
  char one[1] = {'X'};
  EXPECT_TRUE(e.GetErrorMessage(one, 1));
  EXPECT_EQ(one[0], '\0');
  EXPECT_FALSE(e.GetErrorMessage(nullptr, 0));
  ASSERT_TRUE(CMemoryException().GetErrorMessage(buf, 4));
  EXPECT_STREQ(buf, "Out");
  buf[0] = 'X';
  EXPECT_FALSE(CException().GetErrorMessage(buf, sizeof buf));
  EXPECT_STREQ(buf, "");
}
