// The library's queries from several threads at once, each on objects of its own. No member takes
// a lock, so this is clean only as long as nothing but Triangle3D::GetPointLocation2 touches shared
// state: run under ThreadSanitizer (the tsan preset), a shared cache or counter shows as a race,
// and in any build each thread's results must be those of one thread alone.
#include <gtest/gtest.h>

#include <cstdint>
#include <thread>
#include <vector>

#include "QueryMix.h"

TEST(Threads, ConcurrentQueriesOnDistinctObjectsGiveTheResultsOfOneThread) {
  constexpr int kThreads = 4;
  const long count = kUnderSanitizer ? 20L * QueryMix::kKinds : 400L * QueryMix::kKinds;
  const std::uint64_t alone = QueryMix(1).Run(0, count);

  std::vector<std::uint64_t> got(kThreads, 0);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t)
    threads.emplace_back([&got, t, count] {
      QueryMix mix(1);  // the same inputs in every thread, on distinct objects and files
      got[t] = mix.Run(0, count);
    });
  for (std::thread& th : threads) th.join();
  for (int t = 0; t < kThreads; ++t) EXPECT_EQ(got[t], alone) << "thread " << t;
}

TEST(Threads, EveryKindOfQueryRunsAtOnceWithTheOthers) {
  // Each thread on a different kind at every moment, so that unlike queries overlap too.
  constexpr int kThreads = 3;
  const long rounds = kUnderSanitizer ? 10 : 200;
  std::vector<std::uint64_t> alone(kThreads), got(kThreads);
  for (int t = 0; t < kThreads; ++t) {
    QueryMix mix(t + 2);
    std::uint64_t h = 0;
    for (long r = 0; r < rounds; ++r) h = h * 31 + mix.Run(r * QueryMix::kKinds + t * 5, QueryMix::kKinds);
    alone[t] = h;
  }
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t)
    threads.emplace_back([&got, t, rounds] {
      QueryMix mix(t + 2);
      std::uint64_t h = 0;
      for (long r = 0; r < rounds; ++r) h = h * 31 + mix.Run(r * QueryMix::kKinds + t * 5, QueryMix::kKinds);
      got[t] = h;
    });
  for (std::thread& th : threads) th.join();
  EXPECT_EQ(got, alone);
}
