#include <znmt64/platform/CFile.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <memory>

#include "TempFile.h"

namespace {
// Runs f and returns the cause of the CFileException* it throws (deleting it), or -1.
template <class F>
int FileCause(F&& f) {
  try {
    f();
  } catch (CFileException* e) {
    int cause = e->m_cause;
    e->Delete();
    return cause;
  }
  return -1;
}
}  // namespace

TEST(CFile, ModeValuesAreTheFrameworks) {
  EXPECT_EQ(CFile::modeRead, 0u);
  EXPECT_EQ(CFile::modeWrite, 1u);
  EXPECT_EQ(CFile::modeReadWrite, 2u);
  EXPECT_EQ(CFile::shareExclusive, 0x10u);
  EXPECT_EQ(CFile::shareDenyWrite, 0x20u);
  EXPECT_EQ(CFile::shareDenyRead, 0x30u);
  EXPECT_EQ(CFile::shareDenyNone, 0x40u);
  EXPECT_EQ(CFile::modeNoInherit, 0x80u);
  EXPECT_EQ(CFile::modeCreate, 0x1000u);
  EXPECT_EQ(CFile::modeNoTruncate, 0x2000u);
  EXPECT_EQ(CFile::typeText, 0x4000u);
  EXPECT_EQ(CFile::typeBinary, 0x8000u);
}

TEST(CFile, ConstructorThrowsFileNotFound) {
  TempFile missing;
  try {
    CFile f(missing.c_str(), CFile::modeRead | CFile::shareDenyWrite);
    FAIL() << "opened a missing file";
  } catch (CFileException* e) {
    EXPECT_EQ(e->m_cause, CFileException::fileNotFound);
    EXPECT_EQ(e->m_lOsError, ENOENT);
    EXPECT_EQ(e->m_strFileName, missing.c_str());
    e->Delete();
  }
}

TEST(CFile, OpenReportsFailureThroughTheExceptionObject) {
  TempFile missing;
  CFile f;
  CFileException error;
  EXPECT_FALSE(f.Open(missing.c_str(), CFile::modeRead, &error));
  EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
  EXPECT_EQ(f.m_hFile, CFile::hFileNull);
  EXPECT_FALSE(f.Open((std::string(missing.c_str()) + "/below").c_str(), CFile::modeRead, &error));
  EXPECT_EQ(error.m_cause, CFileException::fileNotFound);
  // A directory is not a file.
  auto dir = std::filesystem::path(missing.c_str()).parent_path();
  EXPECT_FALSE(f.Open(dir.c_str(), CFile::modeRead, &error));
  EXPECT_EQ(error.m_cause, CFileException::accessDenied);
  EXPECT_FALSE(f.Open("", CFile::modeRead));
}

TEST(CFile, WritesReadsAndSeeks) {
  TempFile tmp;
  CFile f(tmp.c_str(), CFile::modeCreate | CFile::modeReadWrite | CFile::typeBinary);
  EXPECT_EQ(f.GetFilePath(), tmp.c_str());
  EXPECT_EQ(f.GetFileName(), std::filesystem::path(tmp.c_str()).filename().c_str());
  const char data[] = "0123456789";
  f.Write(data, 10);
  EXPECT_EQ(f.GetLength(), 10u);
  EXPECT_EQ(f.GetPosition(), 10u);
  f.SeekToBegin();
  char buf[16] = {};
  EXPECT_EQ(f.Read(buf, 4), 4u);
  EXPECT_STREQ(buf, "0123");
  EXPECT_EQ(f.Seek(-2, CFile::end), 8u);
  EXPECT_EQ(f.Seek(1, CFile::current), 9u);
  EXPECT_EQ(FileCause([&] { f.Seek(-1, CFile::begin); }), CFileException::badSeek);
  EXPECT_EQ(f.SeekToEnd(), 10u);
  f.SetLength(4);
  EXPECT_EQ(f.GetLength(), 4u);
  f.Flush();
  f.Close();
  EXPECT_EQ(f.m_hFile, CFile::hFileNull);
  EXPECT_EQ(tmp.Bytes(), (std::vector<unsigned char>{'0', '1', '2', '3'}));
}

TEST(CFile, ReadReturnsTheShortCountAtTheEnd) {
  TempFile tmp;
  tmp.Put({1, 2, 3, 4, 5});
  CFile f(tmp.c_str(), CFile::modeRead | CFile::shareDenyWrite);
  unsigned char buf[8] = {};
  EXPECT_EQ(f.Read(buf, 3), 3u);
  EXPECT_EQ(f.Read(buf, 8), 2u);
  EXPECT_EQ(buf[0], 4);
  EXPECT_EQ(buf[1], 5);
  EXPECT_EQ(f.Read(buf, 8), 0u);
  EXPECT_EQ(f.Read(buf, 0), 0u);
}

TEST(CFile, CreateTruncatesUnlessNoTruncate) {
  TempFile tmp;
  tmp.Put({9, 9, 9});
  {
    CFile f(tmp.c_str(), CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite);
    EXPECT_EQ(f.GetLength(), 3u);
    f.Write("\x01", 1);
  }
  EXPECT_EQ(tmp.Bytes(), (std::vector<unsigned char>{1, 9, 9}));
  { CFile f(tmp.c_str(), CFile::modeCreate | CFile::modeWrite); }
  EXPECT_TRUE(tmp.Bytes().empty());
}

TEST(CFile, ErrorsOnAClosedOrWrongModeFileThrow) {
  TempFile tmp;
  tmp.Put({1});
  CFile f(tmp.c_str(), CFile::modeRead);
  EXPECT_EQ(FileCause([&] { f.Write("x", 1); }), CFileException::accessDenied);
  f.Close();
  char c;
  EXPECT_EQ(FileCause([&] { f.Read(&c, 1); }), CFileException::invalidFile);
  f.Abort();  // on a closed file: nothing, no throw
}

// Sharing: two CFile objects of one process conflict as two processes would.
TEST(CFile, DenyWriteRefusesWritersAndKeepsTheFile) {
  TempFile tmp;
  tmp.Put({1, 2, 3});
  CFile reader(tmp.c_str(), CFile::modeRead | CFile::shareDenyWrite);

  CFile other;
  CFileException error;
  EXPECT_FALSE(other.Open(tmp.c_str(), CFile::modeCreate | CFile::modeWrite | CFile::shareDenyNone, &error));
  EXPECT_EQ(error.m_cause, CFileException::sharingViolation);
  EXPECT_EQ(tmp.Bytes().size(), 3u);  // the refused create did not truncate
  EXPECT_FALSE(other.Open(tmp.c_str(), CFile::modeReadWrite | CFile::shareDenyNone, &error));
  EXPECT_EQ(error.m_cause, CFileException::sharingViolation);
  EXPECT_EQ(FileCause([&] { CFile f(tmp.c_str(), CFile::modeWrite | CFile::shareDenyNone); }),
            CFileException::sharingViolation);

  // Readers that allow the existing reader are welcome; one that denies reading is not.
  EXPECT_TRUE(other.Open(tmp.c_str(), CFile::modeRead | CFile::shareDenyWrite));
  other.Close();
  EXPECT_TRUE(other.Open(tmp.c_str(), CFile::modeRead | CFile::shareDenyNone));
  other.Close();
  EXPECT_FALSE(other.Open(tmp.c_str(), CFile::modeRead | CFile::shareDenyRead));

  reader.Close();
  EXPECT_TRUE(other.Open(tmp.c_str(), CFile::modeWrite | CFile::shareDenyNone));
}

TEST(CFile, AWriterBlocksDenyWriteOpens) {
  TempFile tmp;
  // Write-only, so its markers live on the second descriptor.
  CFile writer(tmp.c_str(), CFile::modeCreate | CFile::modeWrite | CFile::shareDenyNone);
  CFile other;
  EXPECT_FALSE(other.Open(tmp.c_str(), CFile::modeRead | CFile::shareDenyWrite));
  EXPECT_TRUE(other.Open(tmp.c_str(), CFile::modeRead | CFile::shareDenyNone));
  other.Close();
  writer.Close();
  EXPECT_TRUE(other.Open(tmp.c_str(), CFile::modeRead | CFile::shareDenyWrite));
}

TEST(CFile, ExclusiveAndCompatibilityModesDenyEverything) {
  TempFile tmp;
  tmp.Put({1});
  for (UINT share : {UINT(CFile::shareExclusive), UINT(CFile::shareCompat)}) {
    auto first = std::make_unique<CFile>(tmp.c_str(), CFile::modeRead | share);
    CFile other;
    EXPECT_FALSE(other.Open(tmp.c_str(), CFile::modeRead | CFile::shareDenyNone));
    first.reset();  // the destructor closes and so releases the file
    EXPECT_TRUE(other.Open(tmp.c_str(), CFile::modeRead | CFile::shareDenyNone));
  }
}
