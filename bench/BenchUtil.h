// Shared pieces of the benchmarks: fixed-seed inputs, the per-operation time counter and the
// allocation count.
//
// Naming: every benchmark is "<group>/<operation>/<library>[/<size>]", library being znmt64 or an
// anchor. report.py pairs rows on everything but the library and divides ours by each anchor.
#pragma once
#include <benchmark/benchmark.h>

#include <cstddef>
#include <random>
#include <vector>

namespace bench {

// Every input comes from this seed, so the libraries see the same numbers run after run.
inline constexpr unsigned kSeed = 20240611u;
// Operations on small objects run over this many inputs per iteration: enough to hide the loop,
// few enough to stay in the first-level cache.
inline constexpr std::size_t kBatch = 1024;

inline std::mt19937_64 Rng(unsigned salt = 0) { return std::mt19937_64(kSeed + salt); }

inline std::vector<double> Uniform(std::size_t n, double lo, double hi, unsigned salt) {
  std::mt19937_64 g = Rng(salt);
  std::uniform_real_distribution<double> u(lo, hi);
  std::vector<double> v(n);
  for (double& x : v) x = u(g);
  return v;
}

// Heap blocks requested through malloc, calloc, realloc and the aligned allocators (operator new
// ends in malloc), counted by the replacements in AllocCounter.cpp.
long HeapAllocations();

// The time of one of count operations per iteration, as the counter "sec_per_op".
inline benchmark::Counter PerOp(double count = 1.0) {
  return benchmark::Counter(count, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// Runs op(i) for i over the batch on every iteration and reports the time of one operation
// ("sec_per_op") and, from an untimed pass, the heap blocks one operation requests ("allocs").
template <class Op>
void RunBatch(benchmark::State& state, std::size_t count, Op&& op) {
  const long before = HeapAllocations();
  for (std::size_t i = 0; i < count; ++i) op(i);
  const long allocs = HeapAllocations() - before;
  for (auto _ : state)
    for (std::size_t i = 0; i < count; ++i) op(i);
  state.counters["sec_per_op"] = PerOp(static_cast<double>(count));
  state.counters["allocs"] = static_cast<double>(allocs) / static_cast<double>(count);
}

}  // namespace bench
