// Square linear systems: Crout's LU decomposition with implicit partial pivoting (rows scaled by
// their largest element), forward and back substitution, Cramer's rule for two equations, and the
// 1-based vectors and row pointers these routines work with.
#include <znmt64/Mat.h>
#include <znmt64/NRCUtil.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

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

bool Mat::LUDecompose(int* indx, double& d) {
  d = 1.0;
  const int n = m_nCols;
  if (n <= 0) return true;
  // The decomposition works on the top n×n block with this matrix's row stride. A matrix that does
  // not hold that block (fewer rows than columns, no block) is left alone and reported singular.
  if (m_nRows < n || HeldSize() < static_cast<long>(n) * n) return false;

  NRVec1<double*> rows(n + 1);
  NRVec1<double> vv(n + 1);  // 1 / the largest magnitude of each row
  double** a = rows.data();
  FillRowPtrs(a, *this, n);

  for (int i = 1; i <= n; ++i) {
    double big = 0.0;
    for (int j = 1; j <= n; ++j) big = std::max(big, std::fabs(a[i][j]));
    if (big == 0.0) {
      // Nothing has been changed yet; the work storage goes with this scope.
      Error("Singular matrix in routine ludcmp\n");
      return false;
    }
    vv[i] = 1.0 / big;
  }

  for (int j = 1; j <= n; ++j) {
    for (int i = 1; i < j; ++i) {
      double sum = a[i][j];
      for (int k = 1; k < i; ++k) sum -= a[i][k] * a[k][j];
      a[i][j] = sum;
    }
    double big = 0.0;
    int imax = j;  // stays when no candidate compares (a column of NaN)
    for (int i = j; i <= n; ++i) {
      double sum = a[i][j];
      for (int k = 1; k < j; ++k) sum -= a[i][k] * a[k][j];
      a[i][j] = sum;
      // Greater-or-equal: among equal candidates the last row is the pivot. Results depend on it.
      const double dum = vv[i] * std::fabs(sum);
      if (dum >= big) {
        big = dum;
        imax = i;
      }
    }
    if (j != imax) {
      std::swap_ranges(a[imax] + 1, a[imax] + n + 1, a[j] + 1);
      d = -d;
      vv[imax] = vv[j];
    }
    indx[j] = imax;
    // A singular matrix still decomposes: callers see huge values rather than a division by zero.
    if (a[j][j] == 0.0) a[j][j] = 1e-20;
    if (j != n) {
      const double dum = 1.0 / a[j][j];
      for (int i = j + 1; i <= n; ++i) a[i][j] *= dum;
    }
  }
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
