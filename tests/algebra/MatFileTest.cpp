#include <znmt64/CLineal.h>
#include <znmt64/CMFrame.h>
#include <znmt64/CMatWriter.h>
#include <znmt64/CPlane.h>
#include <znmt64/platform/CArchive.h>
#include <znmt64/platform/CFile.h>

#include <gtest/gtest.h>
#include <unistd.h>

#include <bit>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

#include "AlgebraTestUtil.h"

namespace fs = std::filesystem;

namespace {

fs::path TestDir() {
  const char* env = std::getenv("ZNMT64_TEST_TMP");
  fs::path dir = env != nullptr && *env != '\0' ? fs::path(env) : fs::temp_directory_path();
  fs::create_directories(dir);
  return dir;
}

// A unique file name of exactly len characters, removed at the end of the test.
struct TempName {
  explicit TempName(std::size_t len = 16) {
    static int counter = 0;
    name = "mf" + std::to_string(::getpid()) + "_" + std::to_string(counter++) + "_";
    name.resize(len, 'x');
  }
  ~TempName() {
    std::error_code ec;
    fs::remove(TestDir() / name, ec);
  }
  std::string Path() const { return (TestDir() / name).string(); }
  std::string name;
};

// Send2F's path must fit in 56 characters, which the test directory's absolute path may not:
// the writing tests work from inside it, with "." as the directory.
struct InTestDir {
  InTestDir() : previous(fs::current_path()) { fs::current_path(TestDir()); }
  ~InTestDir() { fs::current_path(previous); }
  fs::path previous;
};

std::vector<unsigned char> Bytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// The doubles v, little-endian.
void WriteDoubles(const std::string& path, const V& v) {
  std::ofstream out(path, std::ios::binary);
  for (double d : v)
    for (int b = 0; b < 8; ++b) out.put(static_cast<char>(std::bit_cast<std::uint64_t>(d) >> (8 * b)));
}

bool SameBits(const void* a, const void* b, std::size_t n) { return std::memcmp(a, b, n) == 0; }

}  // namespace

TEST(MatFile, RoundTripIsBitExactAndColumnMajor) {
  TempName file;
  Mat m(3, 2);
  const double values[6] = {1.0, -0.0, std::numeric_limits<double>::denorm_min(),
                            std::bit_cast<double>(std::uint64_t{0x7FF8000000000123}), -1e306, 0.1};
  m.Initze(values);
  InTestDir here;
  ASSERT_EQ(m.Send2F(".", file.name.c_str(), 56), 6);
  const std::vector<unsigned char> b = Bytes(file.Path());
  ASSERT_EQ(b.size(), 48u);
  EXPECT_EQ(b[8], 0x01);   // column 0 first: (1,0), the smallest denormal
  EXPECT_EQ(b[31], 0x80);  // column 1 begins with -0.0: only the sign bit
  Mat back(3, 2);
  ASSERT_EQ(back.Load(file.Path().c_str()), 1);
  EXPECT_TRUE(SameBits(back.m_pData, values, sizeof values));

  WriteDoubles(file.Path(), {1, 2, 3, 4, 5, 6});
  Mat wide(2, 3);
  ASSERT_EQ(wide.Load(file.Path().c_str()), 1);
  EXPECT_EQ(Flat(wide), (V{1, 3, 5, 2, 4, 6}));
}

TEST(MatFile, ShortFileKeepsWhatItDoesNotReach) {
  TempName file;
  // Two doubles for six elements: success, the other four go through the reordering as they were.
  WriteDoubles(file.Path(), {1, 2});
  Mat m = Make(2, 3, {10, 11, 12, 13, 14, 15});
  ASSERT_EQ(m.Load(file.Path().c_str()), 1);
  EXPECT_EQ(Flat(m), (V{1, 12, 14, 2, 13, 15}));
  Mat empty;
  EXPECT_EQ(empty.Load(file.Path().c_str()), 1);  // nothing to read
}

TEST(MatFile, FailuresReturnTheirCodesAndChangeNothing) {
  TempName file, missing;
  Mat m = Make(2, 2, {7, 7, 7, 7});
  EXPECT_TRUE(m.Load(missing.Path().c_str()) == 0 && m.Load(nullptr) == 0);
  EXPECT_EQ(Flat(m), (V{7, 7, 7, 7}));
  InTestDir here;
  EXPECT_EQ(m.Send2F(missing.name.c_str(), "m.bin", 56), 0);  // no such directory
  // A read that fails after the open: the kernel refuses to read unmapped memory at offset 0.
  if (fs::exists("/proc/self/mem")) {
    EXPECT_EQ(m.Load("/proc/self/mem"), -1);
  }
  // Other writers are excluded while the file is open for reading.
  ASSERT_EQ(m.Send2F(".", file.name.c_str(), 56), 4);
  CFile reader(file.Path().c_str(), CFile::modeRead | CFile::shareDenyWrite);
  EXPECT_EQ(m.Send2F(".", file.name.c_str(), 56), 0);
}

TEST(MatFile, PathMustFitFiftySixCharacters) {
  InTestDir here;
  Mat m(1, 2);
  TempName fits(53), over(54);  // "./" + name + the terminating zero
  EXPECT_EQ(m.Send2F(".", fits.name.c_str(), 56), 2);
  EXPECT_EQ(m.Send2F(".", over.name.c_str(), 56), 0);
  EXPECT_EQ(m.Send2F(".", over.name.c_str(), 1000), 0);  // a larger claim does not enlarge the buffer
  EXPECT_EQ(m.Send2F(".", fits.name.c_str(), 55), 0);    // the caller's own bound
  EXPECT_EQ(m.Send2F(nullptr, fits.name.c_str(), 56), 0);
  EXPECT_FALSE(fs::exists(over.name));
}

TEST(CMatWriter, RecordsRoundTripBitExact) {
  const unsigned sizes[] = {24, 48, 72, 32, 0};
  for (int t = 0; t < 5; ++t) EXPECT_EQ(CMatWriter::GetStorageSize(static_cast<CMatWriter::EObjectType>(t)), sizes[t]);

  TempName file;
  SMat v(-0.0, std::bit_cast<double>(std::uint64_t{0x7FF0000000000ABC}), 1.0 / 3.0);
  CLineal l(SMat(0.6, 0.0, 0.8));
  l.origin.Set(1e-300, 2.5, -3.0);
  PlaneEqn e(0.1, 0.2, 0.3, -4.0);
  CMFrame f;  // right-handed, axes exact under renormalisation
  f.SetOrigin(1.0, -2.0, 0.1);
  f.axes[0].Set(0.0, 1.0, 0.0);
  f.axes[1].Set(-1.0, 0.0, 0.0);
  {
    CFile out(file.Path().c_str(), CFile::modeCreate | CFile::modeWrite);
    CArchive ar(&out, CArchive::store);
    CMatWriter w(ar);
    w.Serialize(v), w.Serialize(l), w.Serialize(e), w.Serialize(f);
    ar.Close();
  }
  const std::vector<unsigned char> b = Bytes(file.Path());
  ASSERT_EQ(b.size(), 24u + 48u + 32u + 72u);
  EXPECT_EQ(b[8], 0xBC);         // the NaN's payload, lowest byte first
  EXPECT_EQ(b[104 + 39], 0x3F);  // the frame's X (0, 1, 0) after its origin
  EXPECT_EQ(b[104 + 55], 0xBF);  // then its Y (-1, 0, 0)

  SMat v2(9, 9, 9);
  CLineal l2;
  PlaneEqn e2;
  CMFrame f2;
  {
    CFile in(file.Path().c_str(), CFile::modeRead);
    CArchive ar(&in, CArchive::load);
    CMatWriter w;
    w.Serialize(v2);  // no archive yet: nothing happens
    EXPECT_EQ(v2.x, 9.0);
    w.Attach(ar);
    w.Serialize(v2), w.Serialize(l2), w.Serialize(e2), w.Serialize(f2);
  }
  EXPECT_TRUE(SameBits(&v2, &v, sizeof v));
  EXPECT_TRUE(SameBits(&l2.origin, &l.origin, sizeof(SMat)) && SameBits(&l2.dir, &l.dir, sizeof(SMat)));
  EXPECT_TRUE(SameBits(&e2.a, &e.a, 4 * sizeof(double)));
  EXPECT_TRUE(SameBits(&f2.origin, &f.origin, sizeof(SMat)) && SameBits(f2.axes, f.axes, 2 * sizeof(SMat)));
  // Z is rebuilt as -(X x Y): the frame comes back left-handed.
  EXPECT_TRUE(f2.axes[2].z == -1.0 && !f2.GetOrientation());
}

TEST(CMatWriter, ShortArchiveThrowsAndLeavesTheObject) {
  TempName file;
  WriteDoubles(file.Path(), {1, 2, 3, 4, 5});
  CFile in(file.Path().c_str(), CFile::modeRead);
  CArchive ar(&in, CArchive::load);
  CMatWriter w(ar);
  SMat v;
  w.Serialize(v);
  EXPECT_EQ(v.z, 3.0);
  CLineal l(SMat(0.0, 0.0, 1.0));
  l.origin.Set(7.0, 7.0, 7.0);
  try {
    w.Serialize(l);  // 16 bytes left of 48
    ADD_FAILURE() << "no throw";
  } catch (CArchiveException* ex) {
    EXPECT_EQ(ex->m_cause, CArchiveException::endOfFile);
    ex->Delete();
  }
  EXPECT_TRUE(l.origin.x == 7.0 && l.dir.z == 1.0);
}
