#include <znmt64/platform/CArchive.h>

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "TempFile.h"

namespace {
template <class T>
using Lim = std::numeric_limits<T>;
constexpr UINT kStore = CArchive::store, kLoad = CArchive::load;

// Stores every value, loads each back into its own type, compares the bits and returns the bytes.
template <class... T>
Bytes RoundTrip(T... values) {
  TempFile tmp;
  { (ArchiveOn(tmp, kStore).ar << ... << values); }
  ArchiveOn in(tmp, kLoad);
  int k = 0;
  auto check = [&](auto v) {
    decltype(v) r{};
    in.ar >> r;
    EXPECT_EQ(std::memcmp(&r, &v, sizeof v), 0) << "value " << k;
    ++k;
  };
  (check(values), ...);
  EXPECT_TRUE(in.ar.IsBufferEmpty());
  return tmp.Bytes();
}
}  // namespace

TEST(CArchive, BuffersInTheCallersStorageAndFlushesUnlessTold) {
  EXPECT_TRUE(kStore == 0u && kLoad == 1u);
  TempFile tmp;
  std::vector<unsigned char> mine(256, 0);
  {
    CFile f(tmp.c_str(), CFile::modeCreate | CFile::modeReadWrite);
    CArchive ar(&f, kStore, int(mine.size()), mine.data());
    ar << std::uint32_t(0xA1B2C3D4);
    EXPECT_TRUE(mine[0] == 0xD4 && tmp.Bytes().empty());  // buffered in place, not yet in the file
  }  // the destructor flushes
  EXPECT_EQ(tmp.Bytes(), (Bytes{0xD4, 0xC3, 0xB2, 0xA1}));
  { ArchiveOn(tmp, kStore | CArchive::bNoFlushOnDelete).ar << 1; }
  EXPECT_TRUE(tmp.Bytes().empty());
}

TEST(CArchive, ValuesAreLittleEndianOnEveryHostAndRoundTripBitExact) {
  const Bytes expected = {0x01, 'A',  0x02, 0x01, 0xFE, 0xFF, 0xFF, 0xFF,  // bool, char, WORD, int
                          0x08, 0x07, 0x06, 0x05, 0x04, 0x03, 0x02, 0x01,  // 64-bit
                          0x00, 0x00, 0x80, 0x3F,                          // 1.0f
                          0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xC0};  // -2.0
  EXPECT_EQ(RoundTrip(true, 'A', std::uint16_t(0x0102), std::int32_t(-2), std::uint64_t(0x0102030405060708),
                      1.0f, -2.0),
            expected);
  RoundTrip(false, char(-7), Lim<signed char>::min(), Lim<unsigned char>::max(), Lim<short>::min(),
            Lim<unsigned short>::max(), Lim<int>::min(), Lim<unsigned>::max(), Lim<long>::min(),
            Lim<unsigned long>::max(), Lim<long long>::min(), Lim<unsigned long long>::max());
  RoundTrip(0.0, -0.0, 1.0 / 3.0, Lim<double>::denorm_min(), -Lim<double>::max(), Lim<double>::infinity(),
            std::bit_cast<double>(std::uint64_t(0x7FF0000000000001)),  // signalling NaN
            std::bit_cast<double>(std::uint64_t(0xFFF8DEADBEEF0001)),  // NaN payload
            -0.0f, 1e-45f, std::bit_cast<float>(std::uint32_t(0x7FA00001)),
            std::bit_cast<float>(std::uint32_t(0xFFC12345)));
}

TEST(CArchive, MisuseAndBadDataThrowArchiveExceptionsByPointer) {
  TempFile tmp;
  tmp.Put({1, 2, 3});
  {
    ArchiveOn in(tmp, kLoad);
    int i = 0;
    try {
      in.ar >> i;
      FAIL() << "read past the end";
    } catch (CArchiveException* e) {
      EXPECT_TRUE(e->m_cause == CArchiveException::endOfFile && e->m_strFileName == tmp.c_str());
      e->Delete();
    }
    EXPECT_EQ(CauseOf<CArchiveException>([&] { in.ar << 1; }), CArchiveException::readOnly);
  }
  {
    ArchiveOn in(tmp, kLoad);
    unsigned char buf[16];
    EXPECT_TRUE(in.ar.Read(buf, 16) == 3u && buf[2] == 3);  // Read itself reports the short count
    EXPECT_EQ(in.ar.Read(buf, 16), 0u);
  }
  {
    ArchiveOn out(tmp, kStore);
    int i;
    EXPECT_EQ(CauseOf<CArchiveException>([&] { out.ar >> i; }), CArchiveException::writeOnly);
  }
  const std::pair<Bytes, int> corrupt[] = {
      {{0xFF, 0xFE, 0xFF, 2, 'a', 0, 'b', 0}, CArchiveException::badSchema},             // a wide string
      {{0xFF, 0xFF, 0xFF, 0xF0, 0xFF, 0xFF, 0x7F, 'a'}, CArchiveException::endOfFile}};  // 2 GB claimed
  for (const auto& [bytes, cause] : corrupt) {
    tmp.Put(bytes);
    ArchiveOn in(tmp, kLoad);
    CString s;
    EXPECT_EQ(CauseOf<CArchiveException>([&] { in.ar >> s; }), cause);
  }
}

TEST(CArchive, DataCrossesBufferBoundaries) {
  TempFile tmp;
  Bytes block(1000), back(1000);
  for (std::size_t k = 0; k < block.size(); ++k) block[k] = static_cast<unsigned char>(k * 7);
  for (int bufSize : {1, 128, 333, 4096}) {  // 1 is raised to the minimum of 128
    {
      ArchiveOn out(tmp, kStore, bufSize);
      for (int k = 0; k < 500; ++k) out.ar << double(k) << std::uint8_t(k);
      out.ar.Write(block.data(), UINT(block.size()));
      out.ar << 123;
    }
    ASSERT_EQ(tmp.Bytes().size(), 500u * 9 + 1000 + 4);
    ArchiveOn in(tmp, kLoad, bufSize);
    double d;
    std::uint8_t u;
    for (int k = 0; k < 500; ++k) {
      in.ar >> d >> u;
      ASSERT_TRUE(d == double(k) && u == std::uint8_t(k)) << k;
    }
    EXPECT_TRUE(in.ar.Read(back.data(), UINT(back.size())) == back.size() && back == block);
    int last;
    in.ar >> last;
    EXPECT_TRUE(last == 123 && in.ar.IsBufferEmpty());
  }
}

TEST(CArchive, FlushWhileLoadingReturnsTheUnreadBytesToTheFile) {
  TempFile tmp;
  tmp.Put({1, 0, 0, 0, 2, 0, 0, 0, 3, 0});
  CFile f(tmp.c_str(), CFile::modeRead);
  int i, j;
  {
    CArchive ar(&f, kLoad);
    ar >> i;
    ar.Close();
  }
  EXPECT_EQ(f.GetPosition(), 4u);
  CArchive again(&f, kLoad);
  again >> j;
  EXPECT_TRUE(i == 1 && j == 2);
}

TEST(CArchive, CountsAndStringsUseTheFrameworksEscapes) {
  TempFile tmp;
  {
    ArchiveOn out(tmp, kStore);
    for (DWORD_PTR n : {0xFFFEull, 0xFFFFull, 0x123456789ull}) out.ar.WriteCount(n);
  }
  EXPECT_EQ(tmp.Bytes(), (Bytes{0xFE, 0xFF,                                         //
                                0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00,                 //
                                0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x89, 0x67, 0x45, 0x23, 0x01, 0, 0, 0}));
  {
    ArchiveOn in(tmp, kLoad);
    for (DWORD_PTR n : {0xFFFEull, 0xFFFFull, 0x123456789ull}) EXPECT_EQ(in.ar.ReadCount(), n);
  }

  const CString s254(std::string(254, 'a').c_str()), s255(std::string(255, 'b').c_str()),
      s65534(std::string(65534, 'c').c_str());
  { ArchiveOn(tmp, kStore).ar << CString() << CString("hi") << s254 << s255 << s65534; }
  const Bytes b = tmp.Bytes();
  ASSERT_EQ(b.size(), 1u + 3 + 255 + 258 + 65541);
  EXPECT_EQ(Bytes(b.begin(), b.begin() + 5), (Bytes{0, 2, 'h', 'i', 254}));
  EXPECT_EQ(Bytes(b.begin() + 259, b.begin() + 262), (Bytes{0xFF, 0xFF, 0x00}));
  EXPECT_EQ(Bytes(b.begin() + 517, b.begin() + 524), (Bytes{0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0x00, 0x00}));
  ArchiveOn in(tmp, kLoad);
  CString e("x"), hi, a, c, d;
  in.ar >> e >> hi >> a >> c >> d;
  EXPECT_TRUE(e.IsEmpty() && hi == "hi" && a == s254 && c == s255 && d == s65534);
}
