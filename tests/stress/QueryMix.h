// The mix of queries a long CAD session makes, on objects of its own: the thread test runs one mix
// per thread at once, the long-run test runs one for a million queries.
#pragma once
#include <cstdint>
#include <string>

class QueryMix {
 public:
  // seed varies the inputs; two mixes of the same seed give the same results.
  explicit QueryMix(int seed);
  ~QueryMix();
  QueryMix(const QueryMix&) = delete;
  QueryMix& operator=(const QueryMix&) = delete;

  // Runs query number i (the kinds take turns) and returns a hash of everything it produced.
  std::uint64_t Run(long i);
  // Runs queries first … first + count − 1 and combines their hashes.
  std::uint64_t Run(long first, long count);

  static constexpr int kKinds = 14;
  // The solver, XML and file queries cost a hundred times the others; a session asks them rarely.
  static bool IsHeavy(long i) {
    const long kind = i % kKinds;
    return kind == 8 || kind == 10 || kind == 13;
  }

 private:
  double Value(long i, int k) const;
  int m_seed;
  std::string m_file;  // this mix's own scratch file
};

// True when built with AddressSanitizer or ThreadSanitizer, whose allocators and speed make the
// long runs pointless.
constexpr bool kUnderSanitizer =
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
    true;
#else
    false;
#endif
#else
    false;
#endif
