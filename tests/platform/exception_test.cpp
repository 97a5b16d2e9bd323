#include <znmt64/platform/CException.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <utility>
#include <vector>

#include "TempFile.h"

TEST(Exceptions, RunTimeClassesFollowTheHierarchy) {
  const CMemoryException mem;
  const CArchiveException archive;
  const CRuntimeClass *ex = RUNTIME_CLASS(CException), *memory = RUNTIME_CLASS(CMemoryException);
  EXPECT_TRUE(mem.IsKindOf(memory) && mem.IsKindOf(ex) && mem.IsKindOf(RUNTIME_CLASS(CObject)));
  EXPECT_TRUE(CFileException().IsKindOf(ex) && archive.IsKindOf(ex) && CInvalidArgException().IsKindOf(ex));
  EXPECT_FALSE(mem.IsKindOf(RUNTIME_CLASS(CFileException)) || CException().IsKindOf(memory) ||
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

// LeakSanitizer checks that the catcher's Delete frees a thrown one; ASan that one on the stack stays.
TEST(Exceptions, ThrownByPointerAndDeletedByTheCatcher) {
  EXPECT_EQ(CauseOf<CMemoryException>([] { AfxThrowMemoryException(); }), 0);
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
  EXPECT_TRUE(e.GetErrorMessage(buf, sizeof buf, &help) && help == 0u && !e.GetErrorMessage(nullptr, 0));
}
