// A long session: a million mixed queries must leave the heap as they found it after warm-up.
#include <gtest/gtest.h>

#include <malloc.h>

#include <cstdint>

#include "QueryMix.h"

namespace {

// Bytes the allocator has handed out and not got back.
std::size_t HeapInUse() { return mallinfo2().uordblks; }

}  // namespace

TEST(LongRun, AMillionMixedQueriesKeepTheHeapFlat) {
  // The sanitizers' allocators do not report through mallinfo2, and their speed would make this a
  // long test: there it runs a short session (leaks are then the leak checker's to find).
  const long total = kUnderSanitizer ? 20'000 : 1'000'000;
  QueryMix mix(7);
  mix.Run(0, 10 * QueryMix::kKinds);  // warm-up: allocator pools, the 2D module's statics
  const std::size_t before = HeapInUse();
  std::uint64_t h = 0;
  for (long i = 0; i < total; i += 1000) {
    h ^= mix.Run(i, 1000);
    if (!kUnderSanitizer) {
      // Checked along the way, so that growth shows where it starts and not only at the end.
      ASSERT_LE(HeapInUse(), before + 64 * 1024) << "after " << i + 1000 << " queries";
    }
  }
  EXPECT_NE(h, 0u);
  if (!kUnderSanitizer) {
    EXPECT_LE(HeapInUse(), before + 64 * 1024);
  }
}
