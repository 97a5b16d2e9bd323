// Arithmetic, norms, comparisons and special products of Mat. Most operations see the matrix as a
// flat sequence of m_nSize values and do not compare shapes; those that use the grid say so.
#include <znbl64/ZMath.h>
#include <znmt64/Mat.h>
#include <znmt64/NRCUtil.h>
#include <znmt64/SMat.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>

namespace {

// A factor of a product: its elements, row stride and the count its block holds.
struct Factor {
  const double* p;
  long stride;
  long held;
};

Factor FactorOf(const Mat& m) { return {m.GetStore(), std::max(m.m_nCols, 0), m.HeldSize()}; }

// A product of order N made aside, then the first outHeld of its elements copied out. A whole
// result is copied with a count known here: a copy of unknown length becomes a string move, which
// cannot take the values just stored and costs more than the product.
template <int N>
void ProductOfOrder(const double* a, long sa, const double* b, long sb, double* out, long outHeld) {
  double r[N * N];
#pragma GCC unroll 4
  for (int i = 0; i < N; ++i)
#pragma GCC unroll 4
    for (int j = 0; j < N; ++j) {
      double s = 0.0;
#pragma GCC unroll 4
      for (int k = 0; k < N; ++k) s += a[i * sa + k] * b[k * sb + j];
      r[i * N + j] = s;
    }
  if (outHeld >= N * N) {
#pragma GCC unroll 16
    for (int k = 0; k < N * N; ++k) out[k] = r[k];
  } else {
    std::copy_n(r, std::max(outHeld, 0L), out);
  }
}

// The 3×3 and 4×4 products that make up most of the library's work, when the blocks hold every
// factor element: the general loop's sums, unrolled. The result is made aside before out is
// written, so out may be a factor's own block. False when the general loop is needed.
bool SmallProduct(const Factor& A, long rows, const Factor& B, long cols, long inner, double* out, long outHeld) {
  const long n = inner;
  if (rows != n || cols != n || (n != 3 && n != 4)) return false;
  if (A.held < (n - 1) * A.stride + n || B.held < (n - 1) * B.stride + n) return false;
  if (n == 3)
    ProductOfOrder<3>(A.p, A.stride, B.p, B.stride, out, outHeld);
  else
    ProductOfOrder<4>(A.p, A.stride, B.p, B.stride, out, outHeld);
  return true;
}

// out(i, j) = Σ over k < inner of A(i, k)·B(k, j), for i < rows and j < cols, out with row stride
// cols. The inner count is not compared with A's stride: where they differ A is read across its
// row ends, as callers of the products expect. Terms whose factor lies outside its block are left
// out of the sum, and elements outside out's first outHeld are not written.
void Product(Factor A, long rows, Factor B, long cols, long inner, double* out, long outHeld) {
  if (SmallProduct(A, rows, B, cols, inner, out, outHeld)) return;
  // The count of B's column j shrinks with j; when its last column is whole, all are, and the
  // division per element is spared.
  const auto heldOfB = [&](long j) { return B.stride > 0 ? std::max(0L, (B.held - j + B.stride - 1) / B.stride) : 0L; };
  const bool wholeB = cols > 0 && heldOfB(cols - 1) >= inner;
  for (long i = 0; i < rows; ++i) {
    const long kA = std::min(inner, A.held - i * A.stride);
    const long jEnd = std::min(cols, outHeld - i * cols);
    for (long j = 0; j < jEnd; ++j) {
      const long kB = wholeB ? inner : heldOfB(j);
      const long kEnd = std::min(kA, kB);
      double s = 0.0;
      for (long k = 0; k < kEnd; ++k) s += A.p[i * A.stride + k] * B.p[k * B.stride + j];
      out[i * cols + j] = s;
    }
  }
}

// m = A·B computed aside and copied back into m's block, whose shape stays: MultLeft, MultRight.
void ProductInPlace(Mat& m, Factor A, long rows, Factor B, long cols, long inner) {
  const std::size_t n = NRCount(rows * cols);
  NRBlock buf(n);
  Product(A, rows, B, cols, inner, buf.data(), static_cast<long>(n));
  std::copy_n(buf.data(), std::min<std::size_t>(n, m.HeldSize()), m.m_pData);
}

double SumOfSquares(const double* p, long n) { return std::inner_product(p, p + n, p, 0.0); }

// An LU-decomposed n×n copy of a matrix's first n·n flat elements, with its pivot rows and sign;
// on the stack up to the stack order.
struct LUCopy {
  LUCopy(const Mat& m, int n) : block(NRCount(long(n) * n)), lu(n, n, block.data()), indx(NRCount(n + 1L)) {
    CopyHeld(m, block.data(), NRCount(long(n) * n));
    ok = lu.LUDecompose(indx.data(), d);
  }
  NRBlock block;
  MatView lu;
  NRVec1<int> indx;
  double d = 1.0;
  bool ok = false;
};

// Both operators report themselves as the addition: callers match that text.
template <class Op>
Mat Combine(const Mat& a, const Mat& b, Op op) {
  if (a.NRows() != b.NRows() || a.NCols() != b.NCols())
    throw new CMatrExeption("Mat::operator+(): different matrix dimentions");
  Mat r(a.NRows(), a.NCols());
  const int n = std::min({r.HeldSize(), a.HeldSize(), b.HeldSize()});
  std::transform(a.m_pData, a.m_pData + n, b.m_pData, r.m_pData, op);
  return r;
}

}  // namespace

// ---- element-wise and scalar -----------------------------------------------------------------

void Mat::operator+=(double v) {
  std::for_each(m_pData, m_pData + HeldSize(), [v](double& x) { x += v; });
}

void Mat::operator*=(double v) {
  std::for_each(m_pData, m_pData + HeldSize(), [v](double& x) { x *= v; });
}

void Mat::operator+=(const Mat& b) {
  const int n = std::min(HeldSize(), b.HeldSize());
  std::transform(m_pData, m_pData + n, b.m_pData, m_pData, std::plus<>());
}

void Mat::operator-=(const Mat& b) {
  const int n = std::min(HeldSize(), b.HeldSize());
  std::transform(m_pData, m_pData + n, b.m_pData, m_pData, std::minus<>());
}

double Mat::Prod(const Mat& b) const {
  const int n = std::min(HeldSize(), b.HeldSize());
  return std::inner_product(m_pData, m_pData + n, b.m_pData, 0.0);
}

double Mat::SquareNorm() const { return SumOfSquares(m_pData, HeldSize()); }

double Mat::Norm() const { return std::sqrt(SquareNorm()); }

double Mat::NormInf() const {
  double m = 0.0;
  for (int k = 0; k < HeldSize(); ++k) m = std::max(m, std::fabs(m_pData[k]));
  return m;
}

bool Mat::Normalize(double eps) {
  const double n = Norm();
  if (eps >= n) return false;
  std::for_each(m_pData, m_pData + HeldSize(), [n](double& x) { x /= n; });
  return true;
}

bool Mat::IsOrtho(const Mat& b, double eps) const { return std::fabs(Prod(b)) <= eps; }

bool Mat::IsUnitary(double eps) const {
  return std::fabs(Prod(*this) - 1.0) <= eps || std::fabs(Norm() - 1.0) <= eps;
}

// ---- new matrices ----------------------------------------------------------------------------

Mat Mat::operator+(const Mat& b) const { return Combine(*this, b, std::plus<>()); }

Mat Mat::operator-(const Mat& b) const { return Combine(*this, b, std::minus<>()); }

Mat operator-(const Mat& a) {
  Mat r(a);
  r *= -1.0;
  return r;
}

Mat operator*(double s, const Mat& a) {
  Mat r(a);
  r *= s;
  return r;
}

Mat Mat::operator*(const Mat& b) const {
  Mat r(m_nRows, b.m_nCols);
  Product(FactorOf(*this), m_nRows, FactorOf(b), b.m_nCols, b.m_nRows, r.m_pData, r.HeldSize());
  return r;
}

Mat Mat::operator*(const SMat& v) const {
  const double xyz[3] = {v.x, v.y, v.z};  // the 3×1 matrix SMat::ToMat(…, true) makes
  const Factor col{xyz, 1, 3};
  Mat r(m_nRows, 1);
  Product(FactorOf(*this), m_nRows, col, 1, 3, r.m_pData, r.HeldSize());
  return r;
}

void Mat::operator*=(const Mat& b) {
  const std::size_t n = NRCount(long(m_nRows) * b.m_nCols);
  NRBlock buf(n);
  Product(FactorOf(*this), m_nRows, FactorOf(b), b.m_nCols, b.m_nRows, buf.data(), static_cast<long>(n));
  const MatView product(m_nRows, b.m_nCols, buf.data());
  Replicate(product);
}

// ---- products into an existing matrix --------------------------------------------------------

void Mat::Mult(const Mat& a, const Mat& b) {
  const int ah = a.HeldSize(), bh = b.HeldSize();
  // The shape changes but the block stays as it is: callers size it for the result first, and
  // without a block nothing is written.
  const int rows = a.m_nRows, cols = b.m_nCols;
  const Factor whole[2] = {{a.m_pData, std::max(a.m_nCols, 0), ah}, {b.m_pData, std::max(b.m_nCols, 0), bh}};
  if (SmallProduct(whole[0], rows, whole[1], cols, b.m_nRows, m_pData, HeldSize())) {
    m_nRows = rows;
    m_nCols = cols;
    return;
  }
  // Copies first, so that this matrix may be a or b.
  NRBlock ca(NRCount(ah)), cb(NRCount(bh));
  std::copy_n(a.m_pData, ah, ca.data());
  std::copy_n(b.m_pData, bh, cb.data());
  const Factor A{ca.data(), std::max(a.m_nCols, 0), ah}, B{cb.data(), std::max(b.m_nCols, 0), bh};
  const long inner = b.m_nRows;
  m_nRows = rows;
  m_nCols = cols;
  Product(A, m_nRows, B, m_nCols, inner, m_pData, HeldSize());
}

void Mat::MultLeft(const Mat& a) { ProductInPlace(*this, FactorOf(a), a.m_nRows, FactorOf(*this), m_nCols, m_nRows); }

void Mat::MultRight(const Mat& b) { ProductInPlace(*this, FactorOf(*this), m_nRows, FactorOf(b), b.m_nCols, m_nCols); }

// ---- structure -------------------------------------------------------------------------------

void Mat::Transpose() {
  if (m_pData == nullptr) return;
  if (m_nRows != 1 || m_nCols != 1) {
    const long n = HeldSize();
    NRBlock t(NRCount(n));
    std::copy_n(m_pData, n, t.data());  // positions outside the shape keep their values
    for (long i = 0; i < m_nRows; ++i)
      for (long j = 0; j < m_nCols; ++j) {
        const long from = i * m_nCols + j, to = j * m_nRows + i;
        if (from < n && to < n) t[to] = m_pData[from];
      }
    std::copy_n(t.data(), n, m_pData);
  }
  std::swap(m_nRows, m_nCols);
}

double Mat::Tr() const {
  // Three elements whatever the size: for a 4×4 transform the trace of its rotation part is meant.
  const long s = m_nCols + 1L;
  const auto at = [this](long k) { return k >= 0 && k < HeldSize() ? m_pData[k] : 0.0; };
  return at(0) + at(s) + at(2 * s);
}

bool Mat::IsIdentity(double eps) const {
  if (!IsSquare()) return false;
  for (long i = 0; i < m_nRows; ++i)
    for (long j = 0; j < m_nCols; ++j) {
      const long k = i * m_nCols + j;
      const double v = k < HeldSize() ? m_pData[k] : 0.0;
      if (!(std::fabs(v - (i == j ? 1.0 : 0.0)) <= eps)) return false;
    }
  return true;
}

double Mat::Det() const {
  const int n = m_nCols;  // the column count alone decides, whatever the row count
  if (n >= 1 && n <= 3) {
    // Read in place when the block holds the elements; a copy only pads a short block with zeros.
    double buf[9];
    const double* e = m_pData;
    if (HeldSize() < n * n) {
      CopyHeld(*this, buf, NRCount(long(n) * n));
      e = buf;
    }
    if (n == 1) return e[0];
    if (n == 2) return e[0] * e[3] - e[2] * e[1];
    return e[0] * e[4] * e[8] + e[1] * e[5] * e[6] + e[3] * e[2] * e[7] - e[2] * e[4] * e[6] - e[1] * e[3] * e[8] -
           e[0] * e[5] * e[7];
  }
  // The decomposition's result is not examined: after a zero row the sign stays 1.0 and the
  // undecomposed diagonal, with its zero, is multiplied.
  LUCopy c(*this, std::max(n, 0));
  double d = c.d;
  for (int k = 1; k <= n; ++k) d *= c.lu(k, k);
  return d;
}

bool Mat::GetInverse(Mat& inv) {
  if (!inv.IsLike(*this)) inv.SetDimensions(m_nRows, m_nCols);
  const int n = std::max(m_nCols, 0);
  LUCopy c(*this, n);
  if (!c.ok) return false;  // inv keeps its shape and contents
  NRVec1<double*> a(n + 1);
  FillRowPtrs(a.data(), c.lu, n);
  NRVec1<double> col(n + 1);
  // Column j as SetColumn(j, …) writes it, limited to what col and inv's block hold.
  const int rows = std::min(inv.m_nRows, n);
  for (int j = 1; j <= n; ++j) {
    std::fill_n(col.data() + 1, n, 0.0);
    col[j] = 1.0;
    lubksb(a.data(), n, c.indx.data(), col.data());
    for (long i = 0; i < rows; ++i) {
      const long k = i * inv.m_nCols + j - 1;
      if (k < inv.HeldSize()) inv.m_pData[k] = col[i + 1];
    }
  }
  return true;
}

bool Mat::Invert() {
  const std::size_t n = NRCount(long(m_nRows) * m_nCols);
  NRBlock buf(n);
  std::fill_n(buf.data(), n, 0.0);
  MatView inv(m_nRows, m_nCols, buf.data());
  if (!GetInverse(inv)) return false;
  Copy(inv);
  return true;
}

void Mat::OrthogonalInverse() {
  const int n = m_nRows;
  if (!IsSquare() || n < 1 || HeldSize() < long(n) * n) return;
  NRVec1<double> tb(NRCount(n));
  MatView t(n, 1, tb.data());
  t.SelectCol(*this, n);
  t(n) = 0.0;
  Transpose();
  t.MultLeft(*this);  // Rᵀ·t: the last row of the transpose meets the zero
  for (int i = 1; i < n; ++i) {
    (*this)(i, n) = -t(i);
    (*this)(n, i) = 0.0;
  }
}

void Mat::FindRotation(double angle, const Mat& axis) {
  double a[3];
  CopyHeld(axis, a, 3);
  const double c = std::cos(angle), s = std::sin(angle), t = 1.0 - c;
  // R = cos·I + (1 − cos)·a·aᵀ + sin·K, term by term as written.
  const double I[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
  const double K[9] = {0, -a[2], a[1], a[2], 0, -a[0], -a[1], a[0], 0};
  double R[9];
  for (int r = 0; r < 3; ++r)
    for (int q = 0; q < 3; ++q) R[3 * r + q] = c * I[3 * r + q] + t * (a[r] * a[q]) + s * K[3 * r + q];
  const MatView rot(3, 3, R);
  Embed(rot);
}

void Mat::GetAnyNonCollinear(Mat& out) const {
  out.Replicate(*this);
  double* p = out.m_pData;
  double* end = p + out.HeldSize();
  const auto big = [](double v) { return std::fabs(v) > 1e-10; };
  double* first = std::find_if(p, end, big);
  if (first == end) return;
  if (std::find_if(first + 1, end, big) != end)
    *first = -*first;
  else if (first != end - 1)
    end[-1] = 1.0;
  else
    p[0] = 1.0;
}

int Mat::FindNonZeroRow() const {
  // Each row is tested as a 1×cols matrix with operator!=(0.0): its squared norm against 1e-10.
  for (int r = 0; r < m_nRows; ++r) {
    const long from = long(r) * m_nCols;
    const long n = std::min<long>(m_nCols, HeldSize() - from);
    if (n > 0 && SumOfSquares(m_pData + from, n) > 1e-10) return r;
  }
  return -1;
}

bool Mat::IsInteger() {
  return std::all_of(m_pData, m_pData + HeldSize(), [](double x) { return zModulod(x, 1.0, 1e-10) == 0.0; });
}

double Mat::Dist(const Mat& b) const { return std::sqrt(SquareDist(b)); }

// ---- comparisons -----------------------------------------------------------------------------

bool Mat::operator==(double len) {
  if (std::fabs(len) < 1e-10) return SquareNorm() < 1e-10;
  return std::fabs(Norm() - len) <= 1e-10;
}

bool Mat::operator!=(double len) {
  if (std::fabs(len) < 1e-10) return SquareNorm() > 1e-10;
  return Norm() != len;  // exact on purpose, see the header
}

bool Mat::operator==(const Mat& b) const { return EqualsTo(b); }

bool Mat::operator!=(const Mat& b) const { return !(b == *this); }
