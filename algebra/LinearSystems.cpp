// Square linear systems: Crout's LU decomposition with implicit partial pivoting (rows scaled by
// their largest element), forward and back substitution, Cramer's rule for two equations, and the
// 1-based vectors and row pointers these routines work with.
#include <znmt64/Mat.h>
#include <znmt64/NRCUtil.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdint>
#include <cstdlib>
#include <cstring>

CNRCUtil::~CNRCUtil() = default;

void nrerror(const char* text) {
  std::fprintf(stderr, "Numerical Recipes run-time error...\n");
  std::fprintf(stderr, "%s\n", text);
  std::fprintf(stderr, "...now exiting to system...\n");
  std::exit(1);
}

// The shift by nl makes v[nl] the block's first element: the routines count from 1.
double* dvector(int nl, int nh) { return nr_malloc<double>(NRCount(2L + nh - nl)) - nl; }
int* ivector(int nl, int nh) { return nr_malloc<int>(NRCount(2L + nh - nl)) - nl; }
void free_dvector(double* v, int nl) { std::free(v + nl); }
void free_ivector(int* v, int nl) { std::free(v + nl); }

double* GetVec1(Mat& m) { return m.m_pData != nullptr ? m.m_pData - 1 : nullptr; }

void FillRowPtrs(double** a, Mat& m, int rows) {
  for (int r = 1; r <= rows; ++r)
    a[r] = m.m_pData != nullptr ? m.m_pData + static_cast<long>(r - 1) * m.m_nCols - 1 : nullptr;
}

// Entry 0 is a spare slot rather than the array being returned shifted: the same 1-based view,
// and the array is freed from where it starts.
double** GetRowPtrs(Mat& m) {
  double** a = nr_malloc<double*>(NRCount(m.NRows() + 1L));
  FillRowPtrs(a, m, m.NRows());
  return a;
}

void free_rowptrs(double** a) { std::free(a); }

void lubksb(double** a, int n, int* indx, double* b) {
  int ii = 0;
  for (int i = 1; i <= n; ++i) {
    const int ip = indx[i];
    double sum = b[ip];
    b[ip] = b[i];
    if (ii != 0)
      for (int j = ii; j <= i - 1; ++j) sum -= a[i][j] * b[j];
    else if (sum != 0.0)
      ii = i;  // leading zeros of the right-hand side need no work
    b[i] = sum;
  }
  for (int i = n; i >= 1; --i) {
    double sum = b[i];
    for (int j = i + 1; j <= n; ++j) sum -= a[i][j] * b[j];
    b[i] = sum / a[i][i];
  }
}

// ---- LU decomposition ------------------------------------------------------------------------
//
// The factors must be those of the textbook Crout loop to the last bit: element (i, j) starts from
// its own value, loses the products a(i, k)·a(k, j) for k = 1 … min(i, j) − 1 one at a time in
// increasing k, and below the diagonal is then multiplied by the reciprocal of the pivot. Any
// schedule that keeps that sequence for every element gives the same bits, so the work is done
// right-looking and recursively: factor the left half of the columns, solve for the top right
// block, subtract the product of the two from the bottom right block, factor that. Nearly all the
// work lands in the block subtraction, which runs over cache-sized packed blocks with products
// subtracted one k at a time across vectors of columns (multiply, then subtract: never fused).
//
// Rows are exchanged whole, as the loop does. That is sound in any schedule because every row at
// or below the current pivot has received the same updates in each column so far, each with its
// own multipliers, which travel with it.

namespace {

// Storage of the decomposition, indexed from 0: a(i, j) = a[i * n + j].
struct LUState {
  double* a;
  long n;
  double* vv;  // 1 / the largest magnitude of each row, indexed by current row position
  int* indx;   // 1-based, as the caller sees it
  double d;
  double* pack;  // scratch for the block subtraction
};

// Blocking of the subtraction C -= A·B: B is packed KC × NC, A MC × KC, in strips a register tile
// wide. Sized for a level-2 cache of a megabyte or more; halving or doubling any of them moved the
// n = 1024 benchmark by less than its noise.
constexpr long kKC = 256;
constexpr long kMC = 96;
constexpr long kNC = 1024;
constexpr long kMaxMR = 16;
constexpr long kMaxNR = 32;
constexpr long kPackDoubles = kKC * (kNC + kMaxNR) + kKC * (kMC + kMaxMR) + 8;  // + alignment slack

// Column blocks narrower than this are factored column by column.
constexpr long kFactorBase = 16;
// Triangular blocks of at most this many rows are solved row by row.
constexpr long kTriBase = 16;

template <class V>
[[gnu::always_inline]] inline void LoadV(V& v, const double* p) {
  std::memcpy(&v, p, sizeof v);
}
template <class V>
[[gnu::always_inline]] inline void StoreV(double* p, const V& v) {
  std::memcpy(p, &v, sizeof v);
}

// y[0 … len) -= s·x[0 … len), element by element.
template <class V>
[[gnu::always_inline]] inline void SubScaled(double* y, const double* x, double s, long len) {
  constexpr long W = sizeof(V) / sizeof(double);
  long j = 0;
  for (; j + W <= len; j += W) {
    V vy, vx;
    LoadV(vy, y + j);
    LoadV(vx, x + j);
    vy = vy - s * vx;
    StoreV(y + j, vy);
  }
  for (; j < len; ++j) y[j] = y[j] - s * x[j];
}

// Columns [c0, c1) one at a time, as the textbook loop finishes them: pivot, exchange, scale,
// then the step's products subtracted from the rest of these columns. One pass down the rows does
// a step's scaling and subtraction and already looks for the next column's pivot, whose candidates
// are final once the step has passed their row.
template <class V>
[[gnu::always_inline]] inline void FactorColumnsT(LUState& s, long c0, long c1) {
  double* const a = s.a;
  const long n = s.n;
  double big = 0.0;
  long imax = c0;  // stays when no candidate compares (a column of NaN)
  const auto consider = [&](long i, double v) {
    // Greater-or-equal: among equal candidates the last row is the pivot. Results depend on it.
    const double dum = s.vv[i] * std::fabs(v);
    const bool take = dum >= big;  // selects rather than branches: candidates come in no order
    big = take ? dum : big;
    imax = take ? i : imax;
  };
  for (long i = c0; i < n; ++i) consider(i, a[i * n + c0]);
  for (long j = c0; j < c1; ++j) {
    if (imax != j) {
      std::swap_ranges(a + imax * n, a + imax * n + n, a + j * n);
      s.d = -s.d;
      s.vv[imax] = s.vv[j];
    }
    s.indx[j + 1] = static_cast<int>(imax + 1);
    // A singular matrix still decomposes: callers see huge values rather than a division by zero.
    double* const pivotRow = a + j * n;
    if (pivotRow[j] == 0.0) pivotRow[j] = 1e-20;
    if (j == n - 1) break;
    const double dum = 1.0 / pivotRow[j];
    const bool next = j + 1 < c1;
    big = 0.0;
    imax = j + 1;
    for (long i = j + 1; i < n; ++i) {
      double* const row = a + i * n;
      const double l = row[j] *= dum;
      SubScaled<V>(row + j + 1, pivotRow + j + 1, l, c1 - j - 1);
      if (next) consider(i, row[j + 1]);
    }
  }
}

// The register tile: C (MR × NR, row stride ldc) -= Σ over k of A(:, k)·B(k, :), one k at a time.
// Ap holds A column by column (MR values per k), Bp holds B row by row (NR values per k).
template <class V, int MR, int NV>
[[gnu::always_inline]] inline void Tile(long kc, const double* Ap, const double* Bp, double* C, long ldc) {
  constexpr int W = sizeof(V) / sizeof(double);
  constexpr int NR = W * NV;
  V c[MR][NV];
#pragma GCC unroll 16
  for (int r = 0; r < MR; ++r)
#pragma GCC unroll 8
    for (int v = 0; v < NV; ++v) LoadV(c[r][v], C + r * ldc + v * W);
  for (long k = 0; k < kc; ++k) {
    V b[NV];
#pragma GCC unroll 8
    for (int v = 0; v < NV; ++v) LoadV(b[v], Bp + k * NR + v * W);
#pragma GCC unroll 16
    for (int r = 0; r < MR; ++r) {
      const double s = Ap[k * MR + r];
#pragma GCC unroll 8
      for (int v = 0; v < NV; ++v) c[r][v] = c[r][v] - s * b[v];
    }
  }
#pragma GCC unroll 16
  for (int r = 0; r < MR; ++r)
#pragma GCC unroll 8
    for (int v = 0; v < NV; ++v) StoreV(C + r * ldc + v * W, c[r][v]);
}

// a(i, j) -= Σ over k in [k0, k1) of a(i, k)·a(k, j) for i in [i0, i1), j in [j0, j1), k ascending
// and each product subtracted in turn. The blocks do not overlap: the left factor's columns
// [k0, k1) lie left of the target's, the right factor's rows [k0, k1) above the target's.
template <class V, int MR, int NV>
[[gnu::always_inline]] inline void SubtractProductT(double* a, long lda, long i0, long i1, long j0, long j1, long k0,
                                                    long k1, double* pack) {
  constexpr long NR = static_cast<long>(sizeof(V) / sizeof(double)) * NV;
  static_assert(MR <= kMaxMR && NR <= kMaxNR);
  double* const Bp = pack;
  double* const Ap = pack + kKC * (kNC + kMaxNR);
  for (long kb = k0; kb < k1; kb += kKC) {
    const long kc = std::min(kKC, k1 - kb);
    for (long jb = j0; jb < j1; jb += kNC) {
      const long nc = std::min(kNC, j1 - jb);
      // B in strips of NR columns, k-major within a strip; columns past the block are zeros.
      for (long js = 0; js < nc; js += NR) {
        double* strip = Bp + js * kc;
        const long w = std::min(NR, nc - js);
        for (long k = 0; k < kc; ++k) {
          const double* from = a + (kb + k) * lda + jb + js;
          double* to = strip + k * NR;
          std::copy_n(from, w, to);
          std::fill(to + w, to + NR, 0.0);
        }
      }
      for (long ib = i0; ib < i1; ib += kMC) {
        const long mc = std::min(kMC, i1 - ib);
        // A in strips of MR rows, k-major within a strip; rows past the block are zeros.
        for (long is = 0; is < mc; is += MR) {
          double* strip = Ap + is * kc;
          const long h = std::min<long>(MR, mc - is);
          for (long r = 0; r < h; ++r) {
            const double* from = a + (ib + is + r) * lda + kb;
            for (long k = 0; k < kc; ++k) strip[k * MR + r] = from[k];
          }
          for (long r = h; r < MR; ++r)
            for (long k = 0; k < kc; ++k) strip[k * MR + r] = 0.0;
        }
        for (long js = 0; js < nc; js += NR) {
          const long w = std::min(NR, nc - js);
          for (long is = 0; is < mc; is += MR) {
            const long h = std::min<long>(MR, mc - is);
            double* C = a + (ib + is) * lda + jb + js;
            if (h == MR && w == NR) {
              Tile<V, MR, NV>(kc, Ap + is * kc, Bp + js * kc, C, lda);
              continue;
            }
            // An edge tile works on a copy; the lanes outside the block are thrown away.
            double t[MR * NR] = {};
            for (long r = 0; r < h; ++r) std::copy_n(C + r * lda, w, t + r * NR);
            Tile<V, MR, NV>(kc, Ap + is * kc, Bp + js * kc, t, NR);
            for (long r = 0; r < h; ++r) std::copy_n(t + r * NR, w, C + r * lda);
          }
        }
      }
    }
  }
}

// The unit lower triangle of rows [r0, r1) applied backwards to columns [c0, c1) of those rows:
// a(i, j) -= Σ over k in [r0, i) of a(i, k)·a(k, j), k ascending, one row after another. Columns
// are taken in chunks that stay in the first-level cache.
template <class V>
[[gnu::always_inline]] inline void SolveUnitLowerT(double* a, long lda, long r0, long r1, long c0, long c1) {
  constexpr long kChunk = 256;
  for (long cb = c0; cb < c1; cb += kChunk) {
    const long len = std::min(kChunk, c1 - cb);
    for (long i = r0 + 1; i < r1; ++i)
      for (long k = r0; k < i; ++k) SubScaled<V>(a + i * lda + cb, a + k * lda + cb, a[i * lda + k], len);
  }
}

using SubtractProductFn = void (*)(double*, long, long, long, long, long, long, long, double*);
using SolveUnitLowerFn = void (*)(double*, long, long, long, long, long);
using FactorColumnsFn = void (*)(LUState&, long, long);

struct LUKernels {
  SubtractProductFn subtractProduct;
  SolveUnitLowerFn solveUnitLower;
  FactorColumnsFn factorColumns;
};

// The library is built for baseline x86-64; the wider vectors are chosen when the processor has
// them. Multiplications and subtractions are the same IEEE operations at every width, so the
// choice changes the speed only.
using V2 = double __attribute__((vector_size(16)));
using V4 = double __attribute__((vector_size(32)));
using V8 = double __attribute__((vector_size(64)));

#if defined(__x86_64__)
__attribute__((target("avx512f"))) void SubtractProduct512(double* a, long lda, long i0, long i1, long j0, long j1,
                                                           long k0, long k1, double* pack) {
  SubtractProductT<V8, 8, 2>(a, lda, i0, i1, j0, j1, k0, k1, pack);
}
__attribute__((target("avx512f"))) void SolveUnitLower512(double* a, long lda, long r0, long r1, long c0, long c1) {
  SolveUnitLowerT<V8>(a, lda, r0, r1, c0, c1);
}
__attribute__((target("avx512f"))) void FactorColumns512(LUState& s, long c0, long c1) {
  FactorColumnsT<V8>(s, c0, c1);
}
__attribute__((target("avx2"))) void SubtractProduct256(double* a, long lda, long i0, long i1, long j0, long j1,
                                                        long k0, long k1, double* pack) {
  SubtractProductT<V4, 4, 3>(a, lda, i0, i1, j0, j1, k0, k1, pack);
}
__attribute__((target("avx2"))) void SolveUnitLower256(double* a, long lda, long r0, long r1, long c0, long c1) {
  SolveUnitLowerT<V4>(a, lda, r0, r1, c0, c1);
}
__attribute__((target("avx2"))) void FactorColumns256(LUState& s, long c0, long c1) { FactorColumnsT<V4>(s, c0, c1); }
#endif
void SubtractProduct128(double* a, long lda, long i0, long i1, long j0, long j1, long k0, long k1, double* pack) {
  SubtractProductT<V2, 4, 2>(a, lda, i0, i1, j0, j1, k0, k1, pack);
}
void SolveUnitLower128(double* a, long lda, long r0, long r1, long c0, long c1) {
  SolveUnitLowerT<V2>(a, lda, r0, r1, c0, c1);
}
void FactorColumns128(LUState& s, long c0, long c1) { FactorColumnsT<V2>(s, c0, c1); }

LUKernels SelectKernels() {
#if defined(__x86_64__)
  __builtin_cpu_init();
  if (__builtin_cpu_supports("avx512f")) return {SubtractProduct512, SolveUnitLower512, FactorColumns512};
  if (__builtin_cpu_supports("avx2")) return {SubtractProduct256, SolveUnitLower256, FactorColumns256};
#endif
  return {SubtractProduct128, SolveUnitLower128, FactorColumns128};
}

const LUKernels& Kernels() {
  static const LUKernels k = SelectKernels();
  return k;
}

// Rows [r0, r1) of columns [c0, c1) through the unit lower triangle of those rows.
void SolveUnitLower(LUState& s, long r0, long r1, long c0, long c1) {
  if (r1 - r0 <= kTriBase) {
    Kernels().solveUnitLower(s.a, s.n, r0, r1, c0, c1);
    return;
  }
  const long mid = r0 + (r1 - r0) / 2;
  SolveUnitLower(s, r0, mid, c0, c1);
  Kernels().subtractProduct(s.a, s.n, mid, r1, c0, c1, r0, mid, s.pack);
  SolveUnitLower(s, mid, r1, c0, c1);
}

// Columns [c0, c1), every row from c0 down; the products of the columns left of c0 have been
// subtracted already.
void Factor(LUState& s, long c0, long c1) {
  if (c1 - c0 <= kFactorBase) {
    Kernels().factorColumns(s, c0, c1);
    return;
  }
  // The split keeps the left part a multiple of the column-by-column width.
  const long mid = c0 + std::max(kFactorBase, (c1 - c0) / 2 / kFactorBase * kFactorBase);
  Factor(s, c0, mid);
  SolveUnitLower(s, c0, mid, mid, c1);
  Kernels().subtractProduct(s.a, s.n, mid, s.n, mid, c1, c0, mid, s.pack);
  Factor(s, mid, c1);
}

}  // namespace

bool Mat::LUDecompose(int* indx, double& d) {
  d = 1.0;
  const int n = m_nCols;
  if (n <= 0) return true;
  // The decomposition works on the top n×n block with this matrix's row stride. A matrix that does
  // not hold that block (fewer rows than columns, no block) is left alone and reported singular.
  if (m_nRows < n || HeldSize() < static_cast<long>(n) * n) return false;

  NRVec1<double> vv(n);
  for (long i = 0; i < n; ++i) {
    const double* row = m_pData + i * n;
    double big = 0.0;
    for (long j = 0; j < n; ++j) big = std::max(big, std::fabs(row[j]));
    if (big == 0.0) {
      // Nothing has been changed yet; the work storage goes with this scope.
      Error("Singular matrix in routine ludcmp\n");
      return false;
    }
    vv[i] = 1.0 / big;
  }

  // Only a matrix that is split into blocks needs the packing scratch; 64-byte aligned within it.
  NRWork<double, 1> pack(n > kFactorBase ? kPackDoubles : 1);
  double* packAt = pack.data();
  packAt += (64 - reinterpret_cast<std::uintptr_t>(packAt) % 64) % 64 / sizeof(double);
  LUState s{m_pData, n, vv.data(), indx, 1.0, packAt};
  Factor(s, 0, n);
  d = s.d;
  return true;
}

void Mat::Solve(Mat& rhs) {
  // The hook is silent and the routine carries on.
  if (!IsSquare()) Error("Non square matrix passed to Solve()");
  if (m_nRows != rhs.m_nRows)
    Error(
        "Matrix Solver: Number of rows in the matrix != number of\n\t\t\t\telements in right-hand side "
        "vector");

  if (m_nRows == 2) {
    // Cramer's rule on copies: this matrix stays as it is. D is not tested, so a singular system
    // gives infinities or NaN.
    if (rhs.HeldSize() < 2) return;
    const std::size_t n = NRCount(2L * m_nCols);
    NRBlock buf(n);
    MatView copy(2, m_nCols, buf.data());
    const auto detWithColumn = [&](int c0) {
      CopyHeld(*this, buf.data(), n);
      for (long i = 0; i < 2; ++i) {
        const long k = i * m_nCols + c0;
        if (k >= 0 && static_cast<std::size_t>(k) < n) buf[k] = rhs.m_pData[i];
      }
      return copy.Det();
    };
    const double D = Det();
    const double D1 = detWithColumn(0);
    const double D2 = detWithColumn(1);
    rhs(1) = D1 / D;
    rhs(2) = D2 / D;
    return;
  }

  const int n = m_nCols;
  NRVec1<int> indx(NRCount(n + 1L));
  double d;
  // After a failed decomposition (an exactly zero row) the pivot rows are unset and any answer
  // would be meaningless, so rhs is left as it was; likewise when the system is not square or rhs
  // is short. Callers that need to know use GetInverse, which reports the failure.
  if (!LUDecompose(indx.data(), d) || m_nRows != n || rhs.HeldSize() < n) return;
  NRVec1<double*> a(NRCount(n + 1L));
  FillRowPtrs(a.data(), *this, n);
  lubksb(a.data(), n, indx.data(), GetVec1(rhs));
}

bool Mat::GetAnySolution(double rhs, Mat& x) const {
  const int n = std::clamp(m_nCols, 0, HeldSize());
  const double* row = m_pData;
  const double* end = row + n;
  const double* k = std::find_if(row, end, [](double v) { return std::fabs(v) > 1e-10; });
  if (x.HeldSize() > 0) x = 0.0;
  if (k == end) {
    if (x.HeldSize() > 0) x(1) = 1.0;
    return false;
  }
  const long at = k - row;
  if (at < x.HeldSize()) x[at] = rhs / *k;
  return true;
}
