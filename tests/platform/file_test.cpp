#include <znmt64/platform/CFile.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <memory>
#include <string>

#include "TempFile.h"

namespace {
// The cause Open reports for the path and flags, or -1 when it opens.
int OpenCause(const char* path, UINT flags) {
  CFile f;
  CFileException error;
  return f.Open(path, flags, &error) ? -1 : error.m_cause;
}
}  // namespace

TEST(CFile, FailedOpensReportTheCause) {
  TempFile missing;
  try {
    CFile f(missing.c_str(), CFile::modeRead | CFile::shareDenyWrite);
    FAIL() << "opened a missing file";
  } catch (CFileException* e) {
    EXPECT_TRUE(e->m_cause == CFileException::fileNotFound && e->m_lOsError == ENOENT);
    EXPECT_EQ(e->m_strFileName, missing.c_str());
    e->Delete();
  }
  CFile f;
  EXPECT_FALSE(f.Open(missing.c_str(), CFile::modeRead) || f.Open("", CFile::modeRead));
  EXPECT_EQ(f.m_hFile, CFile::hFileNull);
  // A directory is not a file.
  auto dir = std::filesystem::path(missing.c_str()).parent_path();
  EXPECT_EQ(OpenCause(dir.c_str(), CFile::modeRead), CFileException::accessDenied);
}

TEST(CFile, WritesReadsSeeksAndTruncates) {
  TempFile tmp;
  CFile f(tmp.c_str(), CFile::modeCreate | CFile::modeReadWrite | CFile::typeBinary);
  EXPECT_EQ(f.GetFileName(), std::filesystem::path(tmp.c_str()).filename().c_str());
  f.Write("0123456789", 10);
  EXPECT_TRUE(f.GetLength() == 10u && f.GetPosition() == 10u);
  f.SeekToBegin();
  char buf[16] = {};
  EXPECT_TRUE(f.Read(buf, 4) == 4u && std::string(buf) == "0123");
  EXPECT_TRUE(f.Seek(-3, CFile::end) == 7u && f.Seek(1, CFile::current) == 8u);
  EXPECT_EQ(CauseOf<CFileException>([&] { f.Seek(-1, CFile::begin); }), CFileException::badSeek);
  EXPECT_TRUE(f.Read(buf, 16) == 2u && buf[1] == '9' && f.Read(buf, 16) == 0u);  // short counts at the end
  EXPECT_EQ(f.SeekToEnd(), 10u);
  f.SetLength(4);
  f.Close();
  EXPECT_EQ(f.m_hFile, CFile::hFileNull);
  EXPECT_EQ(tmp.Bytes(), (Bytes{'0', '1', '2', '3'}));

  CFile(tmp.c_str(), CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite).Write("9", 1);
  EXPECT_EQ(tmp.Bytes(), (Bytes{'9', '1', '2', '3'}));
  CFile(tmp.c_str(), CFile::modeCreate | CFile::modeWrite).Close();
  EXPECT_TRUE(tmp.Bytes().empty());
}

TEST(CFile, ErrorsOnAClosedOrWrongModeFileThrow) {
  TempFile tmp;
  tmp.Put({1});
  CFile f(tmp.c_str(), CFile::modeRead);
  EXPECT_EQ(CauseOf<CFileException>([&] { f.Write("x", 1); }), CFileException::accessDenied);
  f.Close();
  char c;
  EXPECT_EQ(CauseOf<CFileException>([&] { f.Read(&c, 1); }), CFileException::invalidFile);
  f.Abort();  // on a closed file: nothing, no throw
}

// Sharing: two CFile objects of one process conflict as two processes would.
TEST(CFile, SharingModesRefuseConflictingOpens) {
  TempFile tmp;
  tmp.Put({1, 2, 3});
  const char* p = tmp.c_str();
  {
    CFile reader(p, CFile::modeRead | CFile::shareDenyWrite);
    const UINT none = CFile::shareDenyNone;
    EXPECT_EQ(OpenCause(p, CFile::modeCreate | CFile::modeWrite | none), CFileException::sharingViolation);
    EXPECT_EQ(tmp.Bytes().size(), 3u);  // the refused create did not truncate
    EXPECT_EQ(CauseOf<CFileException>([&] { CFile f(p, CFile::modeWrite | none); }),
              CFileException::sharingViolation);
    // Readers that allow the existing reader are welcome; one that denies reading is not.
    EXPECT_EQ(OpenCause(p, CFile::modeRead | CFile::shareDenyWrite), -1);
    EXPECT_EQ(OpenCause(p, CFile::modeRead | none), -1);
    EXPECT_NE(OpenCause(p, CFile::modeRead | CFile::shareDenyRead), -1);
  }
  {
    // Write-only, so its markers live on the second descriptor.
    CFile writer(p, CFile::modeWrite | CFile::shareDenyNone);
    EXPECT_NE(OpenCause(p, CFile::modeRead | CFile::shareDenyWrite), -1);
    EXPECT_EQ(OpenCause(p, CFile::modeRead | CFile::shareDenyNone), -1);
  }
  EXPECT_EQ(OpenCause(p, CFile::modeRead | CFile::shareDenyWrite), -1);
  for (UINT share : {UINT(CFile::shareExclusive), UINT(CFile::shareCompat)}) {
    auto first = std::make_unique<CFile>(p, CFile::modeRead | share);
    EXPECT_NE(OpenCause(p, CFile::modeRead | CFile::shareDenyNone), -1);
    first.reset();  // the destructor closes and so releases the file
    EXPECT_EQ(OpenCause(p, CFile::modeRead | CFile::shareDenyNone), -1);
  }
}
