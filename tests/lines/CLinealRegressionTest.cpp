// Inputs the fuzzers found, kept so that they stay answered as documented.
#include <znmt64/CLineal.h>

#include <limits>

#include "LinesTestUtil.h"

// A line whose direction was invalidated (or that a failed PassPlane left with a zero normal) took
// SMat::Angle's exception out of DistConical and GetSegmentAtAngle, which never throw.
TEST(CLinealRegression, ConicalDistanceOfALineWithoutDirectionIsUndefined) {
  CLineal none = Line(0, 0, 0, 1, 0, 0);
  none.Invalidate();
  const CLineal skew = Line(0, 1, 0, 0, 1, 1);
  SMat p1(7, 7, 7), p2(8, 8, 8);
  double t[2] = {5, 6};

  EXPECT_EQ(none.DistConical(skew, 1.0, &p1, &p2, t), 1e307);
  EXPECT_EQ(skew.DistConical(none, 1.0, &p1, &p2, t), 1e307);
  EXPECT_TRUE(Near(p1, 7, 7, 7));  // nothing is written for an undefined value
  EXPECT_TRUE(Near(p2, 8, 8, 8));
  EXPECT_EQ(t[0], 5);

  CLineal flat;
  EXPECT_FALSE(flat.PassPlane(SMat(0, 0, 0), SMat(1, 0, 0), SMat(2, 0, 0)));
  CLineal::ELinePosn posn = CLineal::eSkew;  // the caller's own classification is trusted
  EXPECT_TRUE(flat.GetSegmentAtAngle(skew, 1.0, &p1, &p2, posn));

  // A NaN direction is not short: the answer is NaN, not an exception.
  CLineal nan = skew;
  nan.dir.x = std::numeric_limits<double>::quiet_NaN();
  EXPECT_NO_THROW(nan.DistConical(skew, 1.0, &p1, &p2, t));
}

TEST(CLinealRegression, AngleFromALineWithoutDirectionIsUndefined) {
  CLineal none = Line(1, 2, 3, 0, 0, 1);
  none.Invalidate();
  EXPECT_EQ(none.GetAngle(SMat(5, 5, 5)), 1e307);
  EXPECT_EQ(none.GetAngle(SMat(1, 2, 3)), 1e307);
  EXPECT_NEAR(Line(0, 0, 0, 0, 0, 1).GetAngle(SMat(1, 0, 1)), 0.7853981633974483, 1e-15);
}
