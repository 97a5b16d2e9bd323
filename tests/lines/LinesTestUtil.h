// Helpers of the tests of lines, planes, segments and point arrays.
#pragma once
#include <znmt64/CLineal.h>

#include <gtest/gtest.h>

inline void ExpectVec(const SMat& v, double x, double y, double z, double tol = 1e-15) {
  EXPECT_NEAR(v.x, x, tol);
  EXPECT_NEAR(v.y, y, tol);
  EXPECT_NEAR(v.z, z, tol);
}

// The line through (px, py, pz) along (dx, dy, dz) normalised.
inline CLineal Line(double px, double py, double pz, double dx, double dy, double dz) {
  CLineal l(dx, dy, dz);
  l.SetOrigin(px, py, pz);
  return l;
}
