#include <znmt64/platform/CArchive.h>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "TempFile.h"

namespace {
using Bytes = std::vector<unsigned char>;

// Stores through an archive on a new file and returns the file's bytes.
template <class F>
Bytes Stored(const TempFile& tmp, F&& store, int bufSize = 4096) {
  {
    CFile f(tmp.c_str(), CFile::modeCreate | CFile::modeWrite | CFile::shareDenyWrite | CFile::typeBinary);
    CArchive ar(&f, CArchive::store, bufSize);
    store(ar);
    ar.Close();
  }
  return tmp.Bytes();
}

// Runs f on a loading archive over the file.
template <class F>
void Loaded(const TempFile& tmp, F&& load, int bufSize = 4096) {
  CFile f(tmp.c_str(), CFile::modeRead | CFile::shareDenyWrite | CFile::typeBinary);
  CArchive ar(&f, CArchive::load, bufSize);
  load(ar);
}

template <class F>
int ArchiveCause(F&& f) {
  try {
    f();
  } catch (CArchiveException* e) {
    int cause = e->m_cause;
    e->Delete();
    return cause;
  }
  return -1;
}
}  // namespace

TEST(CArchive, ModesAreTheFrameworks) {
  EXPECT_EQ(CArchive::store, 0);
  EXPECT_EQ(CArchive::load, 1);
  TempFile tmp;
  CFile f(tmp.c_str(), CFile::modeCreate | CFile::modeReadWrite);
  CArchive out(&f, CArchive::store);
  EXPECT_TRUE(out.IsStoring());
  EXPECT_FALSE(out.IsLoading());
  EXPECT_EQ(out.GetFile(), &f);
  out.Close();
  EXPECT_EQ(out.GetFile(), nullptr);
  CArchive in(&f, CArchive::load);
  EXPECT_TRUE(in.IsLoading());
}

TEST(CArchive, BytesAreLittleEndianOnEveryHost) {
  TempFile tmp;
  Bytes b = Stored(tmp, [](CArchive& ar) {
    ar << true << 'A' << std::uint16_t(0x0102) << std::int32_t(-2) << std::uint64_t(0x0102030405060708)
       << 1.0f << -2.0;
  });
  const Bytes expected = {0x01, 'A',  0x02, 0x01, 0xFE, 0xFF, 0xFF, 0xFF,  // bool, char, WORD, int
                          0x08, 0x07, 0x06, 0x05, 0x04, 0x03, 0x02, 0x01,  // 64-bit
                          0x00, 0x00, 0x80, 0x3F,                          // 1.0f
                          0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xC0};  // -2.0
  EXPECT_EQ(b, expected);
}

TEST(CArchive, EveryArithmeticTypeRoundTripsBitExact) {
  const double doubles[] = {0.0,
                            -0.0,
                            1.0 / 3.0,
                            std::numeric_limits<double>::denorm_min(),
                            -std::numeric_limits<double>::max(),
                            std::numeric_limits<double>::infinity(),
                            std::bit_cast<double>(std::uint64_t(0x7FF0000000000001)),  // signalling NaN
                            std::bit_cast<double>(std::uint64_t(0xFFF8DEADBEEF0001))};  // NaN payload
  const float floats[] = {-0.0f, 1e-45f, std::bit_cast<float>(std::uint32_t(0x7FA00001)),
                          std::bit_cast<float>(std::uint32_t(0xFFC12345))};
  TempFile tmp;
  Stored(tmp, [&](CArchive& ar) {
    ar << false << true << char(-7) << static_cast<signed char>(-128) << static_cast<unsigned char>(255);
    ar << std::numeric_limits<short>::min() << std::numeric_limits<unsigned short>::max();
    ar << std::numeric_limits<int>::min() << std::numeric_limits<unsigned int>::max();
    ar << std::numeric_limits<long>::min() << std::numeric_limits<unsigned long>::max();
    ar << std::numeric_limits<long long>::min() << std::numeric_limits<unsigned long long>::max();
    for (double d : doubles) ar << d;
    for (float x : floats) ar << x;
  });
  Loaded(tmp, [&](CArchive& ar) {
    bool b0, b1;
    char c;
    signed char sc;
    unsigned char uc;
    short s;
    unsigned short us;
    int i;
    unsigned u;
    long l;
    unsigned long ul;
    long long ll;
    unsigned long long ull;
    ar >> b0 >> b1 >> c >> sc >> uc >> s >> us >> i >> u >> l >> ul >> ll >> ull;
    EXPECT_FALSE(b0);
    EXPECT_TRUE(b1);
    EXPECT_EQ(c, char(-7));
    EXPECT_EQ(sc, -128);
    EXPECT_EQ(uc, 255);
    EXPECT_EQ(s, std::numeric_limits<short>::min());
    EXPECT_EQ(us, std::numeric_limits<unsigned short>::max());
    EXPECT_EQ(i, std::numeric_limits<int>::min());
    EXPECT_EQ(u, std::numeric_limits<unsigned int>::max());
    EXPECT_EQ(l, std::numeric_limits<long>::min());
    EXPECT_EQ(ul, std::numeric_limits<unsigned long>::max());
    EXPECT_EQ(ll, std::numeric_limits<long long>::min());
    EXPECT_EQ(ull, std::numeric_limits<unsigned long long>::max());
    for (double d : doubles) {
      double r;
      ar >> r;
      EXPECT_EQ(std::bit_cast<std::uint64_t>(r), std::bit_cast<std::uint64_t>(d));
    }
    for (float x : floats) {
      float r;
      ar >> r;
      EXPECT_EQ(std::bit_cast<std::uint32_t>(r), std::bit_cast<std::uint32_t>(x));
    }
    EXPECT_TRUE(ar.IsBufferEmpty());
  });
}

TEST(CArchive, ShortReadThrowsEndOfFileByPointer) {
  TempFile tmp;
  tmp.Put({1, 2, 3});
  Loaded(tmp, [](CArchive& ar) {
    int i = 0;
    try {
      ar >> i;
      FAIL() << "read past the end";
    } catch (CArchiveException* e) {
      EXPECT_EQ(e->m_cause, CArchiveException::endOfFile);
      EXPECT_EQ(e->m_strFileName, ar.m_strFileName);
      e->Delete();
    }
  });
  Loaded(tmp, [](CArchive& ar) {
    unsigned char buf[16];
    EXPECT_EQ(ar.Read(buf, 16), 3u);  // Read itself reports the short count
    EXPECT_EQ(buf[2], 3);
    EXPECT_EQ(ar.Read(buf, 16), 0u);
  });
}

TEST(CArchive, DirectionIsEnforced) {
  TempFile tmp;
  tmp.Put({1, 2, 3, 4});
  Loaded(tmp, [](CArchive& ar) { EXPECT_EQ(ArchiveCause([&] { ar << 1; }), CArchiveException::readOnly); });
  Stored(tmp, [](CArchive& ar) {
    int i;
    EXPECT_EQ(ArchiveCause([&] { ar >> i; }), CArchiveException::writeOnly);
  });
}

TEST(CArchive, DataCrossesBufferBoundaries) {
  TempFile tmp;
  std::vector<unsigned char> block(1000);
  for (std::size_t k = 0; k < block.size(); ++k) block[k] = static_cast<unsigned char>(k * 7);
  for (int bufSize : {1, 128, 333, 4096}) {  // 1 is raised to the minimum of 128
    Bytes b = Stored(
        tmp,
        [&](CArchive& ar) {
          for (int k = 0; k < 500; ++k) ar << double(k) << std::uint8_t(k);
          ar.Write(block.data(), UINT(block.size()));
          ar << 123;
        },
        bufSize);
    ASSERT_EQ(b.size(), 500u * 9 + 1000 + 4);
    Loaded(
        tmp,
        [&](CArchive& ar) {
          for (int k = 0; k < 500; ++k) {
            double d;
            std::uint8_t u;
            ar >> d >> u;
            ASSERT_EQ(d, double(k));
            ASSERT_EQ(u, std::uint8_t(k));
          }
          std::vector<unsigned char> back(block.size());
          EXPECT_EQ(ar.Read(back.data(), UINT(back.size())), back.size());
          EXPECT_EQ(back, block);
          int last;
          ar >> last;
          EXPECT_EQ(last, 123);
        },
        bufSize);
  }
}

TEST(CArchive, UsesTheCallersBuffer) {
  TempFile tmp;
  std::vector<unsigned char> mine(256, 0);
  {
    CFile f(tmp.c_str(), CFile::modeCreate | CFile::modeWrite);
    CArchive ar(&f, CArchive::store, int(mine.size()), mine.data());
    ar << std::uint32_t(0xA1B2C3D4);
    EXPECT_EQ(mine[0], 0xD4);  // buffered in place, not yet in the file
    EXPECT_TRUE(tmp.Bytes().empty());
  }  // the destructor flushes
  EXPECT_EQ(tmp.Bytes(), (Bytes{0xD4, 0xC3, 0xB2, 0xA1}));
}

TEST(CArchive, NoFlushOnDeleteDropsTheBuffer) {
  TempFile tmp;
  CFile f(tmp.c_str(), CFile::modeCreate | CFile::modeWrite);
  {
    CArchive ar(&f, CArchive::store | CArchive::bNoFlushOnDelete);
    ar << 1;
  }
  EXPECT_EQ(f.GetLength(), 0u);
}

TEST(CArchive, FlushWhileLoadingReturnsTheUnreadBytesToTheFile) {
  TempFile tmp;
  tmp.Put({1, 0, 0, 0, 2, 0, 0, 0, 3, 0});
  CFile f(tmp.c_str(), CFile::modeRead);
  {
    CArchive ar(&f, CArchive::load);
    int i;
    ar >> i;
    EXPECT_EQ(i, 1);
    ar.Close();
  }
  EXPECT_EQ(f.GetPosition(), 4u);
  CArchive again(&f, CArchive::load);
  int j;
  again >> j;
  EXPECT_EQ(j, 2);
}

TEST(CArchive, CountsUseTheFrameworksEscapes) {
  TempFile tmp;
  Bytes b = Stored(tmp, [](CArchive& ar) {
    ar.WriteCount(0xFFFE);
    ar.WriteCount(0xFFFF);
    ar.WriteCount(0x123456789ull);
  });
  EXPECT_EQ(b, (Bytes{0xFE, 0xFF,                                         //
                      0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0x00,                 //
                      0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x89, 0x67, 0x45, 0x23, 0x01, 0, 0, 0}));
  Loaded(tmp, [](CArchive& ar) {
    EXPECT_EQ(ar.ReadCount(), 0xFFFEu);
    EXPECT_EQ(ar.ReadCount(), 0xFFFFu);
    EXPECT_EQ(ar.ReadCount(), 0x123456789ull);
  });
}

TEST(CArchive, StringsCarryTheFrameworksLengthPrefix) {
  TempFile tmp;
  const CString s254(std::string(254, 'a').c_str()), s255(std::string(255, 'b').c_str()),
      s65534(std::string(65534, 'c').c_str());
  Bytes b = Stored(tmp, [&](CArchive& ar) { ar << CString() << CString("hi") << s254 << s255 << s65534; });
  ASSERT_EQ(b.size(), 1u + 3 + 255 + 258 + 65541);
  EXPECT_EQ(b[0], 0);
  EXPECT_EQ(Bytes(b.begin() + 1, b.begin() + 4), (Bytes{2, 'h', 'i'}));
  EXPECT_EQ(b[4], 254);
  EXPECT_EQ(Bytes(b.begin() + 259, b.begin() + 262), (Bytes{0xFF, 0xFF, 0x00}));
  EXPECT_EQ(Bytes(b.begin() + 517, b.begin() + 524), (Bytes{0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0x00, 0x00}));
  Loaded(tmp, [&](CArchive& ar) {
    CString e("x"), hi, a, c, d;
    ar >> e >> hi >> a >> c >> d;
    EXPECT_TRUE(e.IsEmpty());
    EXPECT_EQ(hi, "hi");
    EXPECT_EQ(a, s254);
    EXPECT_EQ(c, s255);
    EXPECT_EQ(d, s65534);
  });
}

TEST(CArchive, CorruptStringRecordsThrow) {
  TempFile tmp;
  tmp.Put({0xFF, 0xFE, 0xFF, 2, 'a', 0, 'b', 0});  // a wide-string record
  Loaded(tmp, [](CArchive& ar) {
    CString s;
    EXPECT_EQ(ArchiveCause([&] { ar >> s; }), CArchiveException::badSchema);
  });
  tmp.Put({0xFF, 0xFF, 0xFF, 0xF0, 0xFF, 0xFF, 0x7F, 'a'});  // claims 2 GB, holds one byte
  Loaded(tmp, [](CArchive& ar) {
    CString s;
    EXPECT_EQ(ArchiveCause([&] { ar >> s; }), CArchiveException::endOfFile);
  });
}
