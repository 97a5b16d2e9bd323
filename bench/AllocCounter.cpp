// Counts heap blocks by replacing the C allocator's entry points in this executable: the dynamic
// linker binds every library's calls to these (operator new included, which ends in malloc), and
// each forwards to the C library's own allocator, so blocks are freed by its free as usual.
#include "BenchUtil.h"

#include <atomic>
#include <cerrno>
#include <cstddef>

extern "C" {
void* __libc_malloc(std::size_t n);
void* __libc_calloc(std::size_t count, std::size_t n);
void* __libc_realloc(void* p, std::size_t n);
void* __libc_memalign(std::size_t alignment, std::size_t n);
}

namespace {
// Counted with a plain load and store, not a locked increment: the benchmarks allocate on one
// thread, and a locked instruction in every allocation would slow down exactly the rows that
// allocate.
std::atomic<long> g_allocations{0};
void Count() { g_allocations.store(g_allocations.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed); }
}  // namespace

long bench::HeapAllocations() { return g_allocations.load(std::memory_order_relaxed); }

extern "C" {
void* malloc(std::size_t n) {
  Count();
  return __libc_malloc(n);
}
void* calloc(std::size_t count, std::size_t n) {
  Count();
  return __libc_calloc(count, n);
}
void* realloc(void* p, std::size_t n) {
  Count();
  return __libc_realloc(p, n);
}
void* aligned_alloc(std::size_t alignment, std::size_t n) {
  Count();
  return __libc_memalign(alignment, n);
}
void* memalign(std::size_t alignment, std::size_t n) {
  Count();
  return __libc_memalign(alignment, n);
}
int posix_memalign(void** out, std::size_t alignment, std::size_t n) {
  Count();
  void* p = __libc_memalign(alignment, n);
  if (p == nullptr) return ENOMEM;
  *out = p;
  return 0;
}
}
