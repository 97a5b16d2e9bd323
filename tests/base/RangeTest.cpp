#include <znbl64/Range.h>

#include <gtest/gtest.h>

#include <numbers>

TEST(Range, R1EmptinessAndIntersect) {
  RangeR1 r;
  EXPECT_TRUE(r.IsEmpty());
  r.Extend(2.0);  // a single point is not empty
  EXPECT_FALSE(r.IsEmpty());
  r.Extend(-1.0);
  EXPECT_EQ(r.GetLength(), 3.0);

  EXPECT_TRUE(r.Intersect(RangeR1(2.0, 5.0)) && r.GetLength() == 0.0);  // touching ranges share a point
  RangeR1 b(0.0, 1.0);
  EXPECT_FALSE(b.Intersect(RangeR1(3.0, 4.0)));
  EXPECT_TRUE(b.min == 3.0 && b.max == 1.0);  // crossed bounds: the gap from 1 to 3
  RangeR12D box(RangeR1(0.0, 1.0), RangeR1(0.0, 1.0));
  EXPECT_FALSE(box.Intersect(RangeR12D(RangeR1(5.0, 6.0), RangeR1(0.5, 2.0))));
  EXPECT_EQ(box.j.min, 0.5);  // j is cut although i came out empty
}

TEST(Range, S1ArcsAcrossZero) {
  constexpr double kTurn = 2.0 * std::numbers::pi;
  const RangeS1 across(5.5, 0.5);
  EXPECT_NEAR(across.GetLength(), kTurn - 5.0, 1e-15);
  EXPECT_TRUE(across.Contains(0.4 - kTurn) && across.Contains(5.45, 0.1));
  EXPECT_FALSE(across.Contains(1.0) || across.Contains(5.45));
  EXPECT_NEAR(RangeS1(-1.0, 1.0).GetMin(), kTurn - 1.0, 1e-15);
  EXPECT_TRUE(RangeS1(1.0, 1.0 + 3.0 * kTurn).IsFull());
}

TEST(Range, MultiMergesAndCuts) {
  RangeMulti m;
  m.Add(RangeR1(5.0, 6.0));
  m.Add(RangeR1(0.0, 1.0));
  m.Add(RangeR1(3.0, 2.0));  // empty: ignored
  m.Add(RangeR1(8.0, 9.0));
  m.Add(RangeR1(1.0, 5.0));  // touches the first and the second
  ASSERT_EQ(m.GetCount(), 2);
  EXPECT_TRUE(m.GetAt(0).max == 6.0 && m.GetLength() == 7.0 && !m.Contains(7.0));
  EXPECT_TRUE(m.Intersect(RangeR1(5.0, 8.5)));
  ASSERT_EQ(m.GetCount(), 2);
  EXPECT_TRUE(m.GetAt(0).min == 5.0 && m.GetAt(1).max == 8.5);
  EXPECT_FALSE(m.Intersect(RangeR1(10.0, 11.0)));
}
