#include <znmt64/platform/CArray.h>

#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "TempFile.h"

namespace {
// Exposes the framework's protected bookkeeping.
template <class T, class A = const T&>
struct Probe : CArray<T, A> {
  INT_PTR Capacity() const { return this->m_nMaxSize; }
  INT_PTR GrowBy() const { return this->m_nGrowBy; }
};

// Counts live objects, so construction and destruction can be checked to balance.
struct Tracked {
  static inline int live = 0;
  int value = -1;
  Tracked() { ++live; }
  Tracked(int v) : value(v) { ++live; }  // NOLINT: implicit for brevity
  Tracked(const Tracked& o) : value(o.value) { ++live; }
  Tracked& operator=(const Tracked&) = default;
  ~Tracked() { --live; }
};

// A CObject-derived element with its own Serialize, as the library's array elements may be.
struct Point : CObject {
  double x = 0, y = 0;
  void Serialize(CArchive& ar) override { ar.IsStoring() ? void(ar << x << y) : void(ar >> x >> y); }
};

template <class T, class A>
std::vector<T> Items(const CArray<T, A>& a) {
  return std::vector<T>(a.GetData(), a.GetData() + a.GetSize());
}
}  // namespace

TEST(CArray, CapacityFollowsTheGrowthRule) {
  Probe<int> a;
  EXPECT_TRUE(a.IsEmpty() && a.GetCount() == 0 && a.GetUpperBound() == -1 && a.GetData() == nullptr);
  // Step: old size / 8, at least 4, at most 1024; a size past capacity + step is allocated exactly;
  // shrinking keeps the storage.
  const std::pair<INT_PTR, INT_PTR> sizeToCapacity[] = {
      {5, 5}, {6, 9}, {100, 100}, {101, 112}, {20000, 20000}, {20001, 21024}, {3, 21024}};
  for (auto [size, capacity] : sizeToCapacity) {
    a.SetSize(size);
    EXPECT_EQ(a.Capacity(), capacity) << size;
  }
  a.FreeExtra();
  EXPECT_EQ(a.Capacity(), 3);
  a.SetSize(0);  // size 0 frees
  EXPECT_TRUE(a.Capacity() == 0 && a.GetData() == nullptr);

  // A given step is kept (-1 keeps it); the first block holds max(size, step).
  Probe<int> b;
  const std::tuple<INT_PTR, INT_PTR, INT_PTR> sizeStepCapacity[] = {
      {2, 10, 10}, {11, -1, 20}, {25, 3, 25}, {26, -1, 28}};
  for (auto [size, step, capacity] : sizeStepCapacity) {
    b.SetSize(size, step);
    EXPECT_EQ(b.Capacity(), capacity) << size;
  }
  b.RemoveAll();
  EXPECT_TRUE(b.Capacity() == 0 && b.GrowBy() == 3);
}

TEST(CArray, EditingKeepsOrderAndZeroFillsGaps) {
  CArray<int, int> a;
  EXPECT_TRUE(a.Add(1) == 0 && a.Add(2) == 1);
  a.SetAtGrow(3, 3);
  EXPECT_EQ(Items(a), (std::vector<int>{1, 2, 0, 3}));
  a.SetAt(2, 5);
  a[1] = 4;
  a.ElementAt(0) = 0;
  a.InsertAt(1, 7, 2);
  a.InsertAt(8, 5);  // past the end: the gap is zero
  EXPECT_EQ(Items(a), (std::vector<int>{0, 7, 7, 4, 5, 3, 0, 0, 5}));
  a.RemoveAt(1, 3);
  a.RemoveAt(5);
  a.RemoveAt(0, 0);
  EXPECT_EQ(Items(a), (std::vector<int>{0, 5, 3, 0, 0}));

  CArray<int, int> b;
  for (int k : {8, 9}) b.Add(k);
  a.InsertAt(1, &b);
  EXPECT_EQ(Items(a), (std::vector<int>{0, 8, 9, 5, 3, 0, 0}));
  a.InsertAt(2, &a);  // itself: a copy is inserted
  EXPECT_EQ(Items(a), (std::vector<int>{0, 8, 0, 8, 9, 5, 3, 0, 0, 9, 5, 3, 0, 0}));
  EXPECT_TRUE(b.Append(a) == 2 && b.GetSize() == 16);
  b.Copy(a);
  EXPECT_EQ(Items(b), Items(a));
}

TEST(CArray, OutOfRangeAccessThrowsInvalidArgByPointer) {
  CArray<int, int> a;
  a.SetSize(3);
  const std::function<void()> bad[] = {
      [&] { a.GetAt(3); },          [&] { a.GetAt(-1); },        [&] { a.SetAt(3, 0); },
      [&] { a[7] = 1; },            [&] { a.ElementAt(-5); },    [&] { a.RemoveAt(2, 2); },
      [&] { a.RemoveAt(-1); },      [&] { a.InsertAt(-1, 0); },  [&] { a.InsertAt(0, 0, 0); },
      [&] { a.SetAtGrow(-1, 0); },  [&] { a.Append(a); },        [&] { a.SetSize(-1); }};
  for (std::size_t k = 0; k < std::size(bad); ++k) EXPECT_EQ(CauseOf<CInvalidArgException>(bad[k]), 0) << k;
  EXPECT_EQ(a.GetSize(), 3);
}

TEST(CArray, ElementsAreOwnedOneByOneEvenWhenAddedFromTheArrayItself) {
  CArray<std::string, const std::string&> s;
  s.Add(std::string(40, 'x'));
  for (int k = 0; k < 20; ++k) s.Add(s[0]);  // a reference into the storage being reallocated
  s.InsertAt(0, s[3], 5);
  for (INT_PTR k = 0; k < s.GetSize(); ++k) EXPECT_EQ(s[k], std::string(40, 'x'));

  ASSERT_EQ(Tracked::live, 0);
  {
    CArray<Tracked, Tracked> a;
    a.SetSize(3);
    EXPECT_EQ(a[0].value, -1);  // default-constructed
    for (int k = 0; k < 100; ++k) a.Add(Tracked(k));
    a.RemoveAt(0, 50);
    EXPECT_TRUE(Tracked::live == 53 && a[0].value == 47);
    a.InsertAt(10, Tracked(5), 4);
    a.FreeExtra();
    CArray<Tracked, Tracked> b(a);
    b.SetSize(10);
    EXPECT_EQ(Tracked::live, 67);
    CArray<Tracked, Tracked> c(std::move(b));
    EXPECT_TRUE(b.GetSize() == 0 && c.GetSize() == 10);
    a = c;
    EXPECT_EQ(Tracked::live, 20);
  }
  EXPECT_EQ(Tracked::live, 0);
}

TEST(CArray, SerializeWritesTheCountThenEachElementInItsOwnForm) {
  TempFile tmp;
  CArray<double, double> d, d2;
  for (double v : {1.0, -0.0, std::bit_cast<double>(std::uint64_t(0x7FF4000000000123))}) d.Add(v);
  CArray<Point, const Point&> points, points2;
  points.SetSize(5000);  // more than one loading step
  for (int k = 0; k < 5000; ++k) points[k].x = k, points[k].y = -k;
  {
    ArchiveOn out(tmp, CArchive::store);
    d.Serialize(out.ar);
    points.Serialize(out.ar);
  }
  const Bytes bytes = tmp.Bytes();
  const Bytes expected = {3, 0, 0, 0, 0, 0, 0, 0, 0xF0, 0x3F, 0, 0, 0, 0, 0, 0, 0, 0x80,  // count, 1, -0
                          0x23, 0x01, 0, 0, 0, 0, 0xF4, 0x7F, 0x88, 0x13};                 // NaN, 5000 points
  ASSERT_EQ(bytes.size(), expected.size() + 5000 * 16);
  EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + expected.size()), expected);

  d2.Add(5.0);  // replaced by the loaded elements
  ArchiveOn in(tmp, CArchive::load);
  d2.Serialize(in.ar);
  points2.Serialize(in.ar);
  ASSERT_TRUE(d2.GetSize() == 3 && points2.GetSize() == 5000);
  EXPECT_EQ(std::memcmp(d2.GetData(), d.GetData(), 3 * sizeof(double)), 0);
  EXPECT_TRUE(points2[4999].x == 4999.0 && points2[4999].y == -4999.0);
}

TEST(CArray, CorruptCountEndsInEndOfFileNotInAHugeAllocation) {
  TempFile tmp;
  tmp.Put({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 1, 0, 1, 2, 3});  // 2^48 doubles
  ArchiveOn in(tmp, CArchive::load);
  CArray<double, double> a;
  EXPECT_EQ(CauseOf<CArchiveException>([&] { a.Serialize(in.ar); }), CArchiveException::endOfFile);
}
