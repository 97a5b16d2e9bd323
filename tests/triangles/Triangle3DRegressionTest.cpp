// Inputs the fuzzers found, kept so that they stay answered as documented.
#include <znmt64/Triangle3D.h>

#include <gtest/gtest.h>

// Two coincident corners took SMat::Angle's exception out of GetCornerAngle; no member of a
// triangle throws, so a corner without an angle gets the invalid marker.
TEST(Triangle3DRegression, CornerOfACollapsedSideHasTheInvalidMarker) {
  const SMat pts[3] = {SMat(0, 0, 0), SMat(0, 0, 0), SMat(1, 0, 0)};
  const Triangle3D t(pts);
  EXPECT_EQ(t.GetCornerAngle(0), -9.42477796076938);
  EXPECT_EQ(t.GetCornerAngle(1), -9.42477796076938);
  EXPECT_EQ(t.GetCornerAngle(2), 0.0);  // both sides there are whole, and along each other

  const SMat tiny[3] = {SMat(0, 0, 0), SMat(5e-11, 0, 0), SMat(0, 1, 0)};
  EXPECT_EQ(Triangle3D(tiny).GetCornerAngle(0), -9.42477796076938);
}
