// Inputs the fuzzers found, kept so that they stay answered as documented.
#include <znmt64/CMatWriter.h>

#include <gtest/gtest.h>

#include <climits>
#include <type_traits>

// Record types come from outside (a type read from a file, a caller's int): values beyond the four
// kinds must be representable, and GetStorageSize answers them with 0. With an unfixed enum a 4
// was already undefined behaviour when converted.
TEST(CMatWriterRegression, TypesOutsideTheEnumerationHaveNoSize) {
  static_assert(std::is_same_v<std::underlying_type_t<CMatWriter::EObjectType>, int>);
  for (const int t : {4, 5, 255, -1, INT_MAX, INT_MIN})
    EXPECT_EQ(CMatWriter::GetStorageSize(static_cast<CMatWriter::EObjectType>(t)), 0u) << t;
}
