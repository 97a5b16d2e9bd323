// Inputs the fuzzers found, kept so that they stay answered as documented.
#include <znmt64/CCircle.h>
#include <znmt64/CPlane.h>

#include "LinesTestUtil.h"

// A plane left without a normal by a failed PassPlane, or a circle without an axis, took
// SMat::Angle's exception out of GetLocationWRT, which never throws.
TEST(CCircleRegression, LocationAgainstAPlaneWithoutNormalIsUndefined) {
  CPlane flat;
  ASSERT_FALSE(flat.PassPlane(SMat(0, 0, 0), SMat(1, 1, 1), SMat(2, 2, 2)));
  const CCircle unit;
  EXPECT_EQ(unit.GetLocationWRT(flat), CPlane::eLineUndefined);

  CCircle noAxis;
  noAxis.Invalidate();
  EXPECT_EQ(noAxis.GetLocationWRT(CPlane(Line(0, 0, 0, 0, 0, 1))), CPlane::eLineUndefined);

  // A short but usable normal is still measured.
  EXPECT_EQ(unit.GetLocationWRT(CPlane(Line(0, 0, 0, 1, 0, 0))), CPlane::eLineCrossing);
}
