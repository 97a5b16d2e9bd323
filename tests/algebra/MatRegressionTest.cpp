// Inputs the fuzzers found, kept so that they stay answered as documented.
#include <znmt64/Mat.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

// Shapes are not validated, so a matrix may carry one negative dimension; Load then took the
// negative element count to its reordering copy and threw std::length_error out of a routine that
// never throws. It reads what the block holds (nothing) and succeeds, as for an empty matrix.
TEST(MatRegression, LoadIntoANegativeShapeReadsNothing) {
  const char* dir = std::getenv("ZNMT64_TEST_TMP");
  const std::string path = std::string(dir != nullptr ? dir : "/tmp") + "/mat-regression-negative";
  const double six[6] = {1, 2, 3, 4, 5, 6};
  std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(six), sizeof six);

  Mat m(31, -3);
  EXPECT_TRUE(m.Load(path.c_str()) == 1 && m.NRows() == 31 && m.NCols() == -3);
  // Two negative dimensions make a positive size: the block is read, and nothing reordered.
  Mat both(-1, -3);
  ASSERT_EQ(both.HeldSize(), 3);
  EXPECT_TRUE(both.Load(path.c_str()) == 1 && both[0] == 1.0 && both[2] == 3.0);
  std::remove(path.c_str());
}
