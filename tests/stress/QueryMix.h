// The mix of queries a long CAD session makes, on objects of its own: the thread test runs one mix
// per thread at once, the long-run test one mix for a million queries.
#pragma once
#include <cstdint>
#include <string>

class QueryMix {
 public:
  explicit QueryMix(int seed);  // two mixes of one seed give the same results
  ~QueryMix();
  QueryMix(const QueryMix&) = delete;
  QueryMix& operator=(const QueryMix&) = delete;

  // A hash of everything query i produced (the kinds take turns), or of queries first … first + count − 1.
  std::uint64_t Run(long i);
  std::uint64_t Run(long first, long count);

  static constexpr int kKinds = 14;
  // The solver, XML and file queries cost a hundred times the others; a session asks them rarely.
  static bool IsHeavy(long i) { return i % kKinds == 8 || i % kKinds == 10 || i % kKinds == 13; }

 private:
  double Value(long i, int k) const;
  int m_seed;
  std::string m_file;  // this mix's own scratch file
};

// The sanitizers' allocators and speed make the long runs pointless.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kUnderSanitizer = true;
#elif defined(__has_feature)
constexpr bool kUnderSanitizer = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
constexpr bool kUnderSanitizer = false;
#endif
