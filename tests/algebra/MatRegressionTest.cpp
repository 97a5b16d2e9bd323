// Inputs the fuzzers found, kept so that they stay answered as documented.
#include <znmt64/Mat.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

std::string TempPath(const char* name) {
  const char* dir = std::getenv("ZNMT64_TEST_TMP");
  return std::string(dir != nullptr ? dir : "/tmp") + "/" + name;
}

}  // namespace

// Shapes are not validated, so a matrix may carry one negative dimension; Load then took the
// negative element count to its reordering copy and threw std::length_error out of a routine that
// never throws. It reads what the block holds (nothing) and succeeds, as for an empty matrix.
TEST(MatRegression, LoadIntoANegativeShapeReadsNothing) {
  const std::string path = TempPath("mat-regression-negative");
  std::FILE* f = std::fopen(path.c_str(), "wb");
  ASSERT_NE(f, nullptr);
  const double six[6] = {1, 2, 3, 4, 5, 6};
  std::fwrite(six, sizeof(double), 6, f);
  std::fclose(f);

  Mat m(31, -3);
  EXPECT_EQ(m.Load(path.c_str()), 1);
  EXPECT_EQ(m.NRows(), 31);
  EXPECT_EQ(m.NCols(), -3);

  // Two negative dimensions make a positive size: the block is read, and nothing reordered.
  Mat both(-1, -3);
  ASSERT_EQ(both.HeldSize(), 3);
  EXPECT_EQ(both.Load(path.c_str()), 1);
  EXPECT_EQ(both[0], 1.0);
  EXPECT_EQ(both[2], 3.0);
  std::remove(path.c_str());
}
