#include <znmt64/platform/CException.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <cstring>

TEST(Exceptions, RunTimeClassesFollowTheHierarchy) {
  CMemoryException mem;
  EXPECT_TRUE(mem.IsKindOf(RUNTIME_CLASS(CMemoryException)));
  EXPECT_TRUE(mem.IsKindOf(RUNTIME_CLASS(CException)));
  EXPECT_TRUE(mem.IsKindOf(RUNTIME_CLASS(CObject)));
  EXPECT_FALSE(mem.IsKindOf(RUNTIME_CLASS(CFileException)));
  EXPECT_STREQ(mem.GetRuntimeClass()->m_lpszClassName, "CMemoryException");

  CException base;
  EXPECT_TRUE(base.IsKindOf(RUNTIME_CLASS(CException)));
  EXPECT_FALSE(base.IsKindOf(RUNTIME_CLASS(CMemoryException)));

  CFileException file;
  CArchiveException archive;
  CInvalidArgException arg;
  EXPECT_TRUE(file.IsKindOf(RUNTIME_CLASS(CException)));
  EXPECT_FALSE(file.IsKindOf(RUNTIME_CLASS(CArchiveException)));
  EXPECT_TRUE(archive.IsKindOf(RUNTIME_CLASS(CException)));
  EXPECT_FALSE(archive.IsKindOf(RUNTIME_CLASS(CFileException)));
  EXPECT_TRUE(arg.IsKindOf(RUNTIME_CLASS(CException)));
  EXPECT_EQ(CRuntimeClass::FromName("CMemoryException"), RUNTIME_CLASS(CMemoryException));
}

TEST(Exceptions, CausesHaveTheFrameworksValues) {
  EXPECT_EQ(CFileException::none, 0);
  EXPECT_EQ(CFileException::fileNotFound, 2);
  EXPECT_EQ(CFileException::accessDenied, 5);
  EXPECT_EQ(CFileException::sharingViolation, 11);
  EXPECT_EQ(CFileException::endOfFile, 14);
  EXPECT_EQ(CArchiveException::readOnly, 2);
  EXPECT_EQ(CArchiveException::endOfFile, 3);
  EXPECT_EQ(CArchiveException::badSchema, 7);
  EXPECT_EQ(CFileException::ErrnoToException(ENOENT), CFileException::fileNotFound);
  EXPECT_EQ(CFileException::ErrnoToException(EACCES), CFileException::accessDenied);
  EXPECT_EQ(CFileException::ErrnoToException(ENOSPC), CFileException::diskFull);
  EXPECT_EQ(CFileException::ErrnoToException(EDOM), CFileException::genericException);
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

TEST(Exceptions, GetErrorMessageTruncatesToTheBuffer) {
  CFileException e(CFileException::fileNotFound, ENOENT, "/tmp/matrix.bin");
  char buf[64];
  UINT help = 77;
  ASSERT_TRUE(e.GetErrorMessage(buf, sizeof buf, &help));
  EXPECT_STREQ(buf, "/tmp/matrix.bin was not found.");
  EXPECT_EQ(help, 0u);

  char small[10];
  std::memset(small, 'X', sizeof small);
  ASSERT_TRUE(e.GetErrorMessage(small, sizeof small));
  EXPECT_STREQ(small, "/tmp/matr");  // nine characters and the zero

  char one[1] = {'X'};
  EXPECT_TRUE(e.GetErrorMessage(one, 1));
  EXPECT_EQ(one[0], '\0');
  EXPECT_FALSE(e.GetErrorMessage(nullptr, 0));

  CMemoryException mem;
  ASSERT_TRUE(mem.GetErrorMessage(buf, 4));
  EXPECT_STREQ(buf, "Out");

  CException base;
  buf[0] = 'X';
  EXPECT_FALSE(base.GetErrorMessage(buf, sizeof buf));
  EXPECT_STREQ(buf, "");
}

TEST(Exceptions, MessagesNameTheFileOrAnUnnamedOne) {
  char buf[128];
  CFileException(CFileException::sharingViolation, -1, "a.bin").GetErrorMessage(buf, sizeof buf);
  EXPECT_STREQ(buf, "A sharing violation occurred while accessing a.bin.");
  CArchiveException(CArchiveException::endOfFile).GetErrorMessage(buf, sizeof buf);
  EXPECT_STREQ(buf, "An attempt was made to access an unnamed file past its end.");
  CArchiveException(99, "x").GetErrorMessage(buf, sizeof buf);  // unknown cause: the generic text
  EXPECT_STREQ(buf, "An unknown error occurred while accessing x.");
}
