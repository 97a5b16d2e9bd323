#include <znmt64/platform/CArray.h>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <string>
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

template <class F>
bool ThrowsInvalidArg(F&& f) {
  try {
    f();
  } catch (CInvalidArgException* e) {
    e->Delete();
    return true;
  }
  return false;
}

template <class T, class A>
std::vector<T> Items(const CArray<T, A>& a) {
  return std::vector<T>(a.GetData(), a.GetData() + a.GetSize());
}
}  // namespace

TEST(CArray, StartsEmpty) {
  CArray<double, double> a;
  EXPECT_TRUE(a.IsEmpty());
  EXPECT_EQ(a.GetSize(), 0);
  EXPECT_EQ(a.GetCount(), 0);
  EXPECT_EQ(a.GetUpperBound(), -1);
  EXPECT_EQ(a.GetData(), nullptr);
}

TEST(CArray, SetSizeAllocatesExactlyThenGrowsByTheHeuristic) {
  Probe<int> a;
  a.SetSize(5);
  EXPECT_EQ(a.Capacity(), 5);
  for (int k = 0; k < 5; ++k) EXPECT_EQ(a[k], 0);  // new elements are zero
  a.Add(1);  // size 5 / 8 = 0: the step is at least 4
  EXPECT_EQ(a.GetSize(), 6);
  EXPECT_EQ(a.Capacity(), 9);
  a.SetSize(100);  // beyond capacity + step: exactly the new size, no slush
  EXPECT_EQ(a.Capacity(), 100);
  a.Add(1);  // 100 / 8 = 12
  EXPECT_EQ(a.Capacity(), 112);
  a.SetSize(20000);
  a.Add(1);  // 20000 / 8 = 2500, at most 1024
  EXPECT_EQ(a.Capacity(), 21024);
  a.SetSize(3);  // shrinking keeps the storage
  EXPECT_EQ(a.Capacity(), 21024);
  a.FreeExtra();
  EXPECT_EQ(a.Capacity(), 3);
  a.SetSize(0);  // size 0 frees
  EXPECT_EQ(a.Capacity(), 0);
  EXPECT_EQ(a.GetData(), nullptr);
}

TEST(CArray, ExplicitGrowthStepIsKeptUntilChanged) {
  Probe<int> a;
  a.SetSize(2, 10);  // the first block holds max(size, step)
  EXPECT_EQ(a.Capacity(), 10);
  EXPECT_EQ(a.GrowBy(), 10);
  a.SetSize(11);  // -1 keeps the step
  EXPECT_EQ(a.Capacity(), 20);
  a.SetSize(25, 3);
  EXPECT_EQ(a.Capacity(), 25);
  a.SetSize(26);
  EXPECT_EQ(a.Capacity(), 28);
  a.RemoveAll();
  EXPECT_EQ(a.Capacity(), 0);
  EXPECT_EQ(a.GrowBy(), 3);
  EXPECT_TRUE(ThrowsInvalidArg([&] { a.SetSize(-1); }));
}

TEST(CArray, AddSetAtGrowAndAccess) {
  CArray<double, double> a;
  EXPECT_EQ(a.Add(1.5), 0);
  EXPECT_EQ(a.Add(2.5), 1);
  a.SetAtGrow(4, 9.0);
  EXPECT_EQ(Items(a), (std::vector<double>{1.5, 2.5, 0.0, 0.0, 9.0}));
  a.SetAt(2, 3.0);
  a[3] = 4.0;
  a.ElementAt(0) = 1.0;
  const auto& c = a;
  EXPECT_EQ(c[3], 4.0);
  EXPECT_EQ(c.GetAt(2), 3.0);
  EXPECT_EQ(a.GetUpperBound(), 4);
  EXPECT_EQ(Items(a), (std::vector<double>{1.0, 2.5, 3.0, 4.0, 9.0}));
}

TEST(CArray, OutOfRangeAccessThrowsInvalidArg) {
  CArray<int, int> a;
  a.SetSize(3);
  EXPECT_TRUE(ThrowsInvalidArg([&] { a.GetAt(3); }));
  EXPECT_TRUE(ThrowsInvalidArg([&] { a.GetAt(-1); }));
  EXPECT_TRUE(ThrowsInvalidArg([&] { a.SetAt(3, 0); }));
  EXPECT_TRUE(ThrowsInvalidArg([&] { a[7] = 1; }));
  EXPECT_TRUE(ThrowsInvalidArg([&] { a.ElementAt(-5); }));
  EXPECT_TRUE(ThrowsInvalidArg([&] { a.RemoveAt(2, 2); }));
  EXPECT_TRUE(ThrowsInvalidArg([&] { a.RemoveAt(-1); }));
  EXPECT_TRUE(ThrowsInvalidArg([&] { a.InsertAt(-1, 0); }));
  EXPECT_TRUE(ThrowsInvalidArg([&] { a.InsertAt(0, 0, 0); }));
  EXPECT_TRUE(ThrowsInvalidArg([&] { a.SetAtGrow(-1, 0); }));
  EXPECT_TRUE(ThrowsInvalidArg([&] { a.Append(a); }));
  EXPECT_EQ(a.GetSize(), 3);
}

TEST(CArray, InsertAtShiftsOrPadsAndRemoveAtCloses) {
  CArray<int, int> a;
  for (int k : {1, 2, 3}) a.Add(k);
  a.InsertAt(1, 7, 2);
  EXPECT_EQ(Items(a), (std::vector<int>{1, 7, 7, 2, 3}));
  a.InsertAt(0, 0);
  EXPECT_EQ(Items(a), (std::vector<int>{0, 1, 7, 7, 2, 3}));
  a.InsertAt(8, 5);  // past the end: the gap is zero
  EXPECT_EQ(Items(a), (std::vector<int>{0, 1, 7, 7, 2, 3, 0, 0, 5}));
  a.RemoveAt(1, 3);
  EXPECT_EQ(Items(a), (std::vector<int>{0, 2, 3, 0, 0, 5}));
  a.RemoveAt(5);
  a.RemoveAt(0, 0);
  EXPECT_EQ(Items(a), (std::vector<int>{0, 2, 3, 0, 0}));

  CArray<int, int> b;
  b.Add(8);
  b.Add(9);
  a.InsertAt(1, &b);
  EXPECT_EQ(Items(a), (std::vector<int>{0, 8, 9, 2, 3, 0, 0}));
  a.InsertAt(2, &a);  // itself: a copy is inserted
  EXPECT_EQ(Items(a), (std::vector<int>{0, 8, 0, 8, 9, 2, 3, 0, 0, 9, 2, 3, 0, 0}));
  EXPECT_EQ(b.Append(a), 2);
  EXPECT_EQ(b.GetSize(), 16);
  b.Copy(a);
  EXPECT_EQ(Items(b), Items(a));
}

TEST(CArray, ElementsOfTheArrayItselfCanBeAddedWhileItGrows) {
  CArray<std::string, const std::string&> a;
  a.Add(std::string(40, 'x'));
  for (int k = 0; k < 20; ++k) a.Add(a[0]);  // a reference into the storage being reallocated
  a.InsertAt(0, a[3], 5);
  for (INT_PTR k = 0; k < a.GetSize(); ++k) EXPECT_EQ(a[k], std::string(40, 'x'));
}

TEST(CArray, ClassElementsAreConstructedAndDestroyedOneByOne) {
  ASSERT_EQ(Tracked::live, 0);
  {
    CArray<Tracked, Tracked> a;
    a.SetSize(3);
    EXPECT_EQ(Tracked::live, 3);
    EXPECT_EQ(a[0].value, -1);  // default-constructed
    for (int k = 0; k < 100; ++k) a.Add(Tracked(k));
    EXPECT_EQ(Tracked::live, 103);
    a.RemoveAt(0, 50);
    EXPECT_EQ(Tracked::live, 53);
    EXPECT_EQ(a[0].value, 47);
    a.InsertAt(10, Tracked(5), 4);
    EXPECT_EQ(Tracked::live, 57);
    a.FreeExtra();
    EXPECT_EQ(Tracked::live, 57);
    CArray<Tracked, Tracked> b(a);
    EXPECT_EQ(Tracked::live, 114);
    b.SetSize(10);
    EXPECT_EQ(Tracked::live, 67);
    CArray<Tracked, Tracked> c(std::move(b));
    EXPECT_EQ(b.GetSize(), 0);
    EXPECT_EQ(c.GetSize(), 10);
    a = c;
    EXPECT_EQ(Tracked::live, 20);
  }
  EXPECT_EQ(Tracked::live, 0);
}

namespace {
// A CObject-derived element with its own Serialize, as the library's array elements may be.
struct Point : CObject {
  double x = 0, y = 0;
  void Serialize(CArchive& ar) override {
    if (ar.IsStoring())
      ar << x << y;
    else
      ar >> x >> y;
  }
};
}  // namespace

TEST(CArray, SerializeWritesTheCountThenTheElements) {
  TempFile tmp;
  CArray<double, double> a;
  a.Add(1.0);
  a.Add(-0.0);
  a.Add(std::bit_cast<double>(std::uint64_t(0x7FF4000000000123)));
  {
    CFile f(tmp.c_str(), CFile::modeCreate | CFile::modeWrite);
    CArchive ar(&f, CArchive::store);
    a.Serialize(ar);
  }
  const std::vector<unsigned char> expected = {3, 0,                                           //
                                               0, 0, 0, 0, 0, 0, 0xF0, 0x3F,                   //
                                               0, 0, 0, 0, 0, 0, 0, 0x80,                      //
                                               0x23, 0x01, 0, 0, 0, 0, 0xF4, 0x7F};
  EXPECT_EQ(tmp.Bytes(), expected);

  CArray<double, double> b;
  b.Add(5.0);
  CFile f(tmp.c_str(), CFile::modeRead);
  CArchive ar(&f, CArchive::load);
  b.Serialize(ar);
  ASSERT_EQ(b.GetSize(), 3);
  for (int k = 0; k < 3; ++k) EXPECT_EQ(std::bit_cast<std::uint64_t>(b[k]), std::bit_cast<std::uint64_t>(a[k]));
}

TEST(CArray, SerializeUsesTheElementsOwnForm) {
  TempFile tmp;
  CArray<CString, const CString&> names;
  names.Add("plane");
  names.Add("");
  CArray<Point, const Point&> points;
  points.SetSize(5000);  // more than one loading step
  for (int k = 0; k < 5000; ++k) points[k].x = k, points[k].y = -k;
  {
    CFile f(tmp.c_str(), CFile::modeCreate | CFile::modeWrite);
    CArchive ar(&f, CArchive::store);
    names.Serialize(ar);
    points.Serialize(ar);
  }
  EXPECT_EQ(tmp.Bytes().size(), 2u + 6 + 1 + 2 + 5000 * 16);
  CFile f(tmp.c_str(), CFile::modeRead);
  CArchive ar(&f, CArchive::load);
  CArray<CString, const CString&> names2;
  CArray<Point, const Point&> points2;
  names2.Serialize(ar);
  points2.Serialize(ar);
  ASSERT_EQ(names2.GetSize(), 2);
  EXPECT_EQ(names2[0], "plane");
  EXPECT_EQ(names2[1], "");
  ASSERT_EQ(points2.GetSize(), 5000);
  EXPECT_EQ(points2[4999].x, 4999.0);
  EXPECT_EQ(points2[4999].y, -4999.0);
}

TEST(CArray, CorruptCountEndsInEndOfFileNotInAHugeAllocation) {
  TempFile tmp;
  tmp.Put({0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 0, 0, 1, 0, 1, 2, 3});  // 2^48 doubles
  CFile f(tmp.c_str(), CFile::modeRead);
  CArchive ar(&f, CArchive::load);
  CArray<double, double> a;
  try {
    a.Serialize(ar);
    FAIL() << "loaded 2^48 elements";
  } catch (CArchiveException* e) {
    EXPECT_EQ(e->m_cause, CArchiveException::endOfFile);
    e->Delete();
  }
}
