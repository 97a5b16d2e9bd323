// The numerical routines behind Mat::LUDecompose, Mat::Solve, Mat::GetInverse and Mat::Det, in the
// classic 1-based style: vectors v[1 … n] and matrices a[1 … n][1 … n], made over a Mat's own block
// without copying, so that decomposition and solution happen in place.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/Mat.h>
#include <znmt64/platform/CException.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>

// The holder of the numerical routines. It has no data, and its virtual table holds the destructor
// only; the routines themselves are the free functions below.
class ZNMT64_API CNRCUtil {
 public:
  virtual ~CNRCUtil();
};

// Writes "Numerical Recipes run-time error...", text and "...now exiting to system..." to standard
// error, one line each, and ends the process with status 1. Nothing in the library calls it any
// more: the allocators below throw the framework's out-of-memory exception instead.
[[noreturn]] ZNMT64_API void nrerror(const char* text);

// Blocks from the C allocator, shifted so that indices nl … nh are valid, with one spare element
// after nh. Throw CMemoryException by pointer when the allocator fails.
ZNMT64_API double* dvector(int nl, int nh);
ZNMT64_API int* ivector(int nl, int nh);
ZNMT64_API void free_dvector(double* v, int nl);
ZNMT64_API void free_ivector(int* v, int nl);

// Forward and back substitution on a matrix that LUDecompose has left in a[1 … n][1 … n], with its
// pivot rows in indx[1 … n]. b[1 … n] holds the right-hand side on entry and the solution on exit.
// Leading zeros of the right-hand side are skipped.
ZNMT64_API void lubksb(double** a, int n, int* indx, double* b);

// v[k] is m's k-th flat element counted from 1; null when m has no block.
ZNMT64_API double* GetVec1(Mat& m);
// a[r][c] is m's element (r, c) counted from 1, for r = 1 … m.NRows(). The array comes from the C
// allocator and goes back with free_rowptrs.
ZNMT64_API double** GetRowPtrs(Mat& m);
ZNMT64_API void free_rowptrs(double** a);
// Fills a[1 … rows] as GetRowPtrs does, into an array the caller provides (of rows + 1 entries).
ZNMT64_API void FillRowPtrs(double** a, Mat& m, int rows);

// count elements of T from the C allocator (at least one), or CMemoryException by pointer.
template <class T>
T* nr_malloc(std::size_t count) {
  void* p = std::malloc(sizeof(T) * (count > 0 ? count : 1));
  if (p == nullptr) AfxThrowMemoryException();
  return static_cast<T*>(p);
}

// Scratch storage of the numerical routines, indexed from 0: up to N elements live inside the
// object, so the 3×3 and 4×4 transforms that make up most of the library's work allocate nothing;
// larger sizes come from the C allocator. The elements are not initialised.
template <class T, std::size_t N>
class NRWork {
 public:
  explicit NRWork(std::size_t n) : m_p(n <= N ? m_local : nr_malloc<T>(n)) {}
  ~NRWork() {
    if (m_p != m_local) std::free(m_p);
  }
  NRWork(const NRWork&) = delete;
  NRWork& operator=(const NRWork&) = delete;

  T* data() { return m_p; }
  T& operator[](std::size_t i) { return m_p[i]; }

 private:
  T m_local[N];
  T* m_p;
};

// The 1-based routines on the stack up to this order, on the heap beyond. A 16×16 copy is 2 KiB.
inline constexpr int kNRStackOrder = 16;
// A 1-based vector of the stack order (index 0 is not used).
template <class T>
using NRVec1 = NRWork<T, kNRStackOrder + 1>;
// A flat copy of a matrix of the stack order.
using NRBlock = NRWork<double, kNRStackOrder * kNRStackOrder>;

// A Mat over storage it does not own, for scratch copies on the stack. The storage must outlive it.
class MatView : public Mat {
 public:
  MatView(int rows, int cols, double* p) : Mat(rows, cols, false) { AttachStorage(p); }
};

// The first count flat elements of m into to; those m's block does not hold become 0.
inline void CopyHeld(const Mat& m, double* to, std::size_t count) {
  const std::size_t n = std::min<std::size_t>(count, m.HeldSize());
  std::copy_n(m.m_pData, n, to);
  std::fill(to + n, to + count, 0.0);
}

// A non-negative element count from a product of dimensions.
inline std::size_t NRCount(long n) { return n > 0 ? static_cast<std::size_t>(n) : 0; }
