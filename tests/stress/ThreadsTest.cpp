// The library's queries from several threads at once, each on objects of its own. No member takes a
// lock, so nothing but Triangle3D::GetPointLocation2 may touch shared state: under ThreadSanitizer
// (the tsan preset) a shared cache or counter shows as a race, and in any build as results that
// differ from those of one thread alone.
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <thread>
#include <vector>

#include "QueryMix.h"

namespace {

constexpr long kRounds = kUnderSanitizer ? 20 : 400;

// Every kind of query, round after round, starting at kind `first`, so that sessions started at
// different kinds run unlike queries at the same moment.
std::uint64_t Session(int seed, int first) {
  QueryMix mix(seed);
  std::uint64_t h = 0;
  for (long r = 0; r < kRounds; ++r) h = h * 31 + mix.Run(r * QueryMix::kKinds + first, QueryMix::kKinds);
  return h;
}

// body(t) for t = 0 … n − 1, all at once on n threads.
std::vector<std::uint64_t> OnThreads(int n, const std::function<std::uint64_t(int)>& body) {
  std::vector<std::uint64_t> got(n, 0);
  std::vector<std::thread> threads;
  for (int t = 0; t < n; ++t) threads.emplace_back([&got, &body, t] { got[t] = body(t); });
  for (std::thread& th : threads) th.join();
  return got;
}

}  // namespace

TEST(Threads, ConcurrentQueriesOnDistinctObjectsGiveTheResultsOfOneThread) {
  const std::uint64_t alone = Session(1, 0);
  EXPECT_EQ(OnThreads(4, [](int) { return Session(1, 0); }), std::vector<std::uint64_t>(4, alone));
}

TEST(Threads, EveryKindOfQueryRunsAtOnceWithTheOthers) {
  const auto session = [](int t) { return Session(t + 2, t * 5); };
  std::vector<std::uint64_t> alone;
  for (int t = 0; t < 3; ++t) alone.push_back(session(t));
  EXPECT_EQ(OnThreads(3, session), alone);
}
