#include <znmt64/CLineal.h>
#include <znmt64/CMFrame.h>
#include <znmt64/CMatWriter.h>
#include <znmt64/CPlane.h>
#include <znmt64/Mat.h>
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

namespace fs = std::filesystem;

namespace {

fs::path TestDir() {
  const char* env = std::getenv("ZNMT64_TEST_TMP");
  fs::path dir = env != nullptr && *env != '\0' ? fs::path(env) : fs::temp_directory_path();
  fs::create_directories(dir);
  return dir;
}

// A unique file name of exactly len characters (at least 12).
std::string UniqueName(std::size_t len = 16) {
  static int counter = 0;
  std::string name = "mf" + std::to_string(::getpid()) + "_" + std::to_string(counter++) + "_";
  name.resize(len, 'x');
  return name;
}

// Removes the file at the end of the test.
struct Cleanup {
  fs::path path;
  ~Cleanup() {
    std::error_code ec;
    fs::remove(path, ec);
  }
};

void WriteDoubles(const fs::path& p, const std::vector<double>& v, std::size_t bytes) {
  std::vector<unsigned char> raw(v.size() * 8);
  for (std::size_t k = 0; k < v.size(); ++k)
    for (int b = 0; b < 8; ++b) raw[8 * k + b] = static_cast<unsigned char>(std::bit_cast<std::uint64_t>(v[k]) >> (8 * b));
  std::ofstream(p, std::ios::binary).write(reinterpret_cast<const char*>(raw.data()), std::streamsize(bytes));
}

std::vector<double> Elements(const Mat& m) { return {m.m_pData, m.m_pData + m.m_nSize}; }

}  // namespace

TEST(MatFile, RoundTripIsBitExactAndColumnMajor) {
  const fs::path dir = TestDir();
  const std::string name = UniqueName();
  Cleanup gone{dir / name};
  Mat m(3, 2);
  const double values[6] = {1.0, -0.0, std::numeric_limits<double>::denorm_min(),
                            std::bit_cast<double>(std::uint64_t{0x7FF8000000000123}), -1e306, 0.1};
  m.Initze(values);
  ASSERT_EQ(m.Send2F(dir.c_str(), name.c_str(), 56), 6);

  std::ifstream in(dir / name, std::ios::binary);
  const std::vector<unsigned char> bytes{std::istreambuf_iterator<char>(in), {}};
  ASSERT_EQ(bytes.size(), 48u);
  // Column 0 first: elements (0,0), (1,0), (2,0) = values 0, 2, 4; little-endian.
  EXPECT_EQ(bytes[8 + 7], 0x00);  // denorm_min: 1 in the lowest byte
  EXPECT_EQ(bytes[8], 0x01);
  EXPECT_EQ(bytes[24 + 7], 0x80);  // -0.0: only the sign bit
  std::uint64_t second = 0;
  for (int b = 7; b >= 0; --b) second = (second << 8) | bytes[24 + b];
  EXPECT_EQ(second, std::bit_cast<std::uint64_t>(-0.0));

  Mat back(3, 2);
  ASSERT_EQ(back.Load((dir / name).c_str()), 1);
  EXPECT_EQ(std::memcmp(back.m_pData, values, sizeof values), 0);
}

TEST(MatFile, LoadReordersAndKeepsWhatAShortFileDoesNotReach) {
  const fs::path path = TestDir() / UniqueName();
  Cleanup gone{path};
  WriteDoubles(path, {1, 2, 3, 4, 5, 6}, 48);
  Mat m(2, 3);
  ASSERT_EQ(m.Load(path.c_str()), 1);
  EXPECT_EQ(Elements(m), (std::vector<double>{1, 3, 5, 2, 4, 6}));

  // Two doubles for six elements: success, the other four go through the reordering as they were.
  WriteDoubles(path, {1, 2}, 16);
  const double before[6] = {10, 11, 12, 13, 14, 15};
  m.Initze(before);
  ASSERT_EQ(m.Load(path.c_str()), 1);
  EXPECT_EQ(Elements(m), (std::vector<double>{1, 12, 14, 2, 13, 15}));

  // Half a double replaces half of its bytes.
  WriteDoubles(path, {std::bit_cast<double>(std::uint64_t{0x1122334455667788})}, 4);
  Mat v(1, 1);
  v[0] = std::bit_cast<double>(std::uint64_t{0xAAAAAAAAAAAAAAAA});
  ASSERT_EQ(v.Load(path.c_str()), 1);
  EXPECT_EQ(std::bit_cast<std::uint64_t>(v[0]), 0xAAAAAAAA55667788u);

  Mat empty;
  EXPECT_EQ(empty.Load(path.c_str()), 1);  // nothing to read
}

TEST(MatFile, FailuresReturnTheirCodesAndChangeNothing) {
  const fs::path dir = TestDir();
  Mat m(2, 2);
  m.SetAll(7.0);
  EXPECT_EQ(m.Load((dir / UniqueName()).c_str()), 0);
  EXPECT_EQ(m.Load(nullptr), 0);
  EXPECT_EQ(Elements(m), (std::vector<double>(4, 7.0)));
  EXPECT_EQ(m.Send2F((dir / UniqueName()).c_str(), "m.bin", 56), 0);  // no such directory

  // A read that fails after the open: the kernel refuses to read unmapped memory at offset 0.
  if (fs::exists("/proc/self/mem")) {
    EXPECT_EQ(m.Load("/proc/self/mem"), -1);
  }

  // Other writers are excluded while the file is open for reading, and the other way round.
  const std::string name = UniqueName();
  Cleanup gone{dir / name};
  ASSERT_EQ(m.Send2F(dir.c_str(), name.c_str(), 56), 4);
  {
    CFile reader((dir / name).c_str(), CFile::modeRead | CFile::shareDenyWrite);
    EXPECT_EQ(m.Send2F(dir.c_str(), name.c_str(), 56), 0);
  }
  {
    CFile writer((dir / name).c_str(), CFile::modeWrite | CFile::shareDenyNone);
    EXPECT_EQ(m.Load((dir / name).c_str()), 0);
  }
}

TEST(MatFile, PathMustFitFiftySixCharacters) {
  // From inside the test directory, so that the path's length does not depend on where it is.
  const fs::path cwd = fs::current_path();
  fs::current_path(TestDir());
  Mat m(1, 2);
  const std::string fits = UniqueName(53), over = UniqueName(54);  // "./" + name + zero
  Cleanup a{fits}, b{over};
  EXPECT_EQ(m.Send2F(".", fits.c_str(), 56), 2);
  EXPECT_EQ(m.Send2F(".", over.c_str(), 56), 0);
  EXPECT_EQ(m.Send2F(".", over.c_str(), 1000), 0);  // a larger claim does not enlarge the buffer
  EXPECT_EQ(m.Send2F(".", fits.c_str(), 55), 0);    // the caller's own bound
  EXPECT_EQ(m.Send2F(nullptr, fits.c_str(), 56), 0);
  EXPECT_TRUE(fs::exists(fits));
  EXPECT_FALSE(fs::exists(over));
  fs::current_path(cwd);
}

namespace {

bool SameBits(const SMat& a, const SMat& b) { return std::memcmp(&a, &b, sizeof(SMat)) == 0; }

}  // namespace

TEST(CMatWriter, RecordsRoundTripBitExact) {
  EXPECT_EQ(CMatWriter::GetStorageSize(CMatWriter::eVector), 24u);
  EXPECT_EQ(CMatWriter::GetStorageSize(CMatWriter::eLine), 48u);
  EXPECT_EQ(CMatWriter::GetStorageSize(CMatWriter::eFrame), 72u);
  EXPECT_EQ(CMatWriter::GetStorageSize(CMatWriter::ePlaneEqn), 32u);
  EXPECT_EQ(CMatWriter::GetStorageSize(static_cast<CMatWriter::EObjectType>(4)), 0u);

  const fs::path path = TestDir() / UniqueName();
  Cleanup gone{path};
  SMat v(-0.0, std::bit_cast<double>(std::uint64_t{0x7FF0000000000ABC}), 1.0 / 3.0);
  CLineal l(SMat(0.6, 0.0, 0.8));
  l.origin.Set(1e-300, 2.5, -3.0);
  PlaneEqn e(0.1, 0.2, 0.3, -4.0);
  CMFrame f;
  f.SetOrigin(1.0, -2.0, 0.1);
  f.axes[0].Set(0.0, 1.0, 0.0);
  f.axes[1].Set(-1.0, 0.0, 0.0);  // Z stays (0, 0, 1): right-handed
  {
    CFile file(path.c_str(), CFile::modeCreate | CFile::modeWrite);
    CArchive ar(&file, CArchive::store);
    CMatWriter w(ar);
    w.Serialize(v);
    w.Serialize(l);
    w.Serialize(e);
    w.Serialize(f);
    ar.Close();
  }
  ASSERT_EQ(fs::file_size(path), 24u + 48u + 32u + 72u);
  std::ifstream in(path, std::ios::binary);
  const std::vector<unsigned char> bytes{std::istreambuf_iterator<char>(in), {}};
  EXPECT_EQ(bytes[7], 0x80);   // -0.0, little-endian
  EXPECT_EQ(bytes[8], 0xBC);   // the NaN's payload, lowest byte first
  EXPECT_EQ(bytes[24 + 47], 0x3F);  // the line's direction z = 0.8 ends the line record
  EXPECT_EQ(bytes[104 + 39], 0x3F);  // the frame's X (0, 1, 0) after its origin: its y is 1.0
  EXPECT_EQ(bytes[104 + 48 + 7], 0xBF);  // then its Y (-1, 0, 0)

  SMat v2(9, 9, 9);
  CLineal l2;
  PlaneEqn e2;
  CMFrame f2;
  {
    CFile file(path.c_str(), CFile::modeRead);
    CArchive ar(&file, CArchive::load);
    CMatWriter w;
    w.Serialize(v2);  // no archive yet: nothing happens
    EXPECT_EQ(v2.x, 9.0);
    w.Attach(ar);
    w.Serialize(v2);
    w.Serialize(l2);
    w.Serialize(e2);
    w.Serialize(f2);
  }
  EXPECT_TRUE(SameBits(v2, v));
  EXPECT_TRUE(SameBits(l2.origin, l.origin));
  EXPECT_TRUE(SameBits(l2.dir, l.dir));
  EXPECT_EQ(std::memcmp(&e2.a, &e.a, 4 * sizeof(double)), 0);
  EXPECT_TRUE(SameBits(f2.origin, f.origin));
  EXPECT_TRUE(SameBits(f2.axes[0], f.axes[0]));
  EXPECT_TRUE(SameBits(f2.axes[1], f.axes[1]));
  // Z is rebuilt as -(X × Y): the frame comes back left-handed.
  EXPECT_EQ(f2.axes[2].z, -1.0);
  EXPECT_FALSE(f2.GetOrientation());
}

TEST(CMatWriter, ShortArchiveThrowsAndLeavesTheObject) {
  const fs::path path = TestDir() / UniqueName();
  Cleanup gone{path};
  WriteDoubles(path, {1, 2, 3, 4, 5}, 40);
  CFile file(path.c_str(), CFile::modeRead);
  CArchive ar(&file, CArchive::load);
  CMatWriter w(ar);
  SMat v;
  w.Serialize(v);
  EXPECT_EQ(v.z, 3.0);
  CLineal l(SMat(0.0, 0.0, 1.0));
  l.origin.Set(7.0, 7.0, 7.0);
  CArchiveException* caught = nullptr;
  try {
    w.Serialize(l);  // 16 bytes left of 48
  } catch (CArchiveException* ex) {
    caught = ex;
  }
  ASSERT_NE(caught, nullptr);
  EXPECT_EQ(caught->m_cause, CArchiveException::endOfFile);
  caught->Delete();
  EXPECT_EQ(l.origin.x, 7.0);
  EXPECT_EQ(l.dir.z, 1.0);
}
