// A long session: a million mixed queries must leave the heap as they found it after warm-up.
#include <gtest/gtest.h>

#include <malloc.h>

#include <cstdint>

#include "QueryMix.h"

TEST(LongRun, AMillionMixedQueriesKeepTheHeapFlat) {
  // The sanitizers' allocators do not report through mallinfo2: there a short session runs, and
  // leaks are the leak checker's to find.
  const long total = kUnderSanitizer ? 20'000 : 1'000'000;
  QueryMix mix(7);
  mix.Run(0, 10 * QueryMix::kKinds);  // warm-up: allocator pools, the 2D module's statics
  const std::size_t before = mallinfo2().uordblks;
  std::uint64_t h = 0;
  long done = 0;
  for (long i = 0; done < total; ++i) {
    if (QueryMix::IsHeavy(i) && (i / QueryMix::kKinds) % 50 != 0) continue;  // one round in fifty
    h = h * 31 + mix.Run(i);
    // Checked along the way, so that growth shows where it starts.
    if (++done % 10'000 == 0 && !kUnderSanitizer) {
      ASSERT_LE(mallinfo2().uordblks, before + 64 * 1024) << "after " << done << " queries";
    }
  }
  EXPECT_NE(h, 0u);
}
