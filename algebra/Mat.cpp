#include <znmt64/Mat.h>

#include <algorithm>
#include <cmath>
#include <cstring>

IMPLEMENT_DYNAMIC(CMatrExeption, CException)
IMPLEMENT_DYNAMIC(Mat, CObject)

// ---- CMatrExeption ---------------------------------------------------------------------------

CMatrExeption::CMatrExeption(const char* msg) : CException(TRUE), m_szMessage{}, m_nCode(0) {
  // A bounded copy into the 50-byte buffer; a longer message keeps its first 49 characters.
  if (msg != nullptr) std::strncpy(m_szMessage, msg, sizeof(m_szMessage) - 1);
}

CMatrExeption::CMatrExeption(unsigned int code) : CException(TRUE), m_szMessage{}, m_nCode(code) {}

BOOL CMatrExeption::GetErrorMessage(LPTSTR lpszError, UINT nMaxError, UINT* pnHelpContext) const {
  return AfxCopyErrorMessage(m_szMessage, lpszError, nMaxError, pnHelpContext);
}

// ---- storage ---------------------------------------------------------------------------------
// Blocks are zeroed when allocated: a port must not hand out unset values, and a re-shaped
// block's new tail is then deterministic.

double* Mat::Allocate(int n) {
  delete[] m_pOwnedBlock;
  m_pOwnedBlock = new double[n > 0 ? n : 0]();
  m_pData = m_pOwnedBlock;
  return m_pData;
}

void Mat::Release() {
  if (m_pData == m_pOwnedBlock) {
    delete[] m_pOwnedBlock;
    m_pOwnedBlock = nullptr;
  }
  m_pData = nullptr;
}

Mat::Mat(int rows, int cols) : m_nRows(rows), m_nCols(cols), m_nSize(rows * cols) { Allocate(m_nSize); }

Mat::Mat(int rows, int cols, bool alloc) : m_nRows(rows), m_nCols(cols), m_nSize(rows * cols) {
  if (alloc) Allocate(m_nSize);
}

Mat::Mat(const Mat& src) : CObject() { Mat::Replicate(src); }

Mat::~Mat() { delete[] m_pOwnedBlock; }

void Mat::Serialize(CArchive&) {}
void Mat::AssertValid() const {}
void Mat::Dump(CDumpContext&) const {}

void Mat::SetDimensions(int rows, int cols) {
  if (rows == m_nRows && cols == m_nCols) return;
  m_nRows = rows;
  m_nCols = cols;
  const int n = rows * cols;
  if (m_pData != nullptr && n > m_nSize) Release();
  // A shrinking re-shape keeps the larger block but forgets its capacity: growing back later
  // reallocates. Callers see the first n old values survive a shrink.
  m_nSize = n;
  if (m_pData == nullptr) Allocate(n);
}

void Mat::Replicate(const Mat& src) {
  if (&src == this) return;
  if (m_pData != nullptr && m_nSize != src.m_nSize) Release();
  if (m_pData == nullptr) Allocate(src.m_nSize);
  m_nRows = src.m_nRows;
  m_nCols = src.m_nCols;
  m_nSize = src.m_nSize;
  if (src.m_pData != nullptr && m_nSize > 0) std::memcpy(m_pData, src.m_pData, sizeof(double) * m_nSize);
}

void Mat::Attach(Mat& other) {
  m_nRows = other.m_nRows;
  m_nCols = other.m_nCols;
  m_pData = other.m_pData;
}

void Mat::operator=(const Mat& src) {
  if (&src == this) return;
  // A matrix that already has a shape keeps it: callers rely on assignment being an element copy
  // into the existing block, with no check that the shapes agree.
  if (m_pData == nullptr || m_nCols == 0 || m_nRows == 0) {
    m_nRows = src.m_nRows;
    m_nCols = src.m_nCols;
    m_nSize = src.m_nSize;
    Allocate(m_nSize);
  }
  // Of the m_nSize elements only those the source really has are copied; the rest keep their
  // values instead of being read from past the end of the source's block.
  const int n = src.m_pData != nullptr ? std::min(m_nSize, src.m_nSize) : 0;
  if (n > 0) std::memcpy(m_pData, src.m_pData, sizeof(double) * n);
}

void Mat::Initze(const double* p) {
  if (HeldSize() > 0) std::memcpy(m_pData, p, sizeof(double) * m_nSize);
}

void Mat::GetDataCopy(double* p) const {
  if (HeldSize() > 0) std::memcpy(p, m_pData, sizeof(double) * m_nSize);
}

void Mat::SetAll(double v) { std::fill_n(m_pData, HeldSize(), v); }

void Mat::SetToIdentity() {
  SetAll(0.0);
  // Ones go to (k, k) for every column k; on a wide matrix those past the block are dropped.
  for (int k = 0; k < m_nCols; ++k) {
    const long idx = static_cast<long>(k) * m_nCols + k;
    if (idx < HeldSize()) m_pData[idx] = 1.0;
  }
}

void Mat::Swap(short i, short j) { std::swap(m_pData[i], m_pData[j]); }

// ---- rows, columns, blocks -------------------------------------------------------------------

void Mat::SetRow(int r0, const Mat& src) {
  if (HeldSize() > 0) std::copy_n(src.m_pData, m_nCols, m_pData + r0 * m_nCols);
}

void Mat::SetRow(int r1, const double* p) {
  if (HeldSize() > 0) std::copy_n(p, m_nCols, m_pData + (r1 - 1) * m_nCols);
}

void Mat::GetRow(int r1, Mat& dst) const {
  const int n = std::min(dst.GetStorage(), m_nCols);
  if (n > 0) std::copy_n(m_pData + (r1 - 1) * m_nCols, n, dst.m_pData);
}

void Mat::SetColumn(int c1, const SMat& v) {
  // An SMat is three consecutive doubles; rows past the third have no component to take.
  const double* p = reinterpret_cast<const double*>(&v);
  for (int i = 0; i < m_nRows && i < 3 && HeldSize() > 0; ++i) m_pData[i * m_nCols + c1 - 1] = p[i];
}

void Mat::SetColumn(int c1, const Mat& src) {
  for (int i = 0; i < m_nRows && HeldSize() > 0; ++i) m_pData[i * m_nCols + c1 - 1] = src.m_pData[i * src.m_nCols];
}

void Mat::SetColumn(int c1, double* p) {
  for (int i = 0; i < m_nRows && HeldSize() > 0; ++i) m_pData[i * m_nCols + c1 - 1] = p[i];
}

void Mat::GetColumn(int c1, Mat& dst) const {
  // The destination index does not advance with the row: only the last row's value remains at
  // flat position c1 * dst.m_nCols. Kept as it is; whole columns come from SelectCol.
  const long at = static_cast<long>(c1) * dst.m_nCols;
  if (at < 0 || at >= dst.HeldSize()) return;
  for (int i = 0; i < m_nRows; ++i) dst.m_pData[at] = m_pData[i * m_nCols + c1 - 1];
}

void Mat::SelectCol(const Mat& src, int c) {
  if (m_pData == nullptr) {
    m_nRows = src.NRows();
    m_nCols = 1;
    m_nSize = m_nRows;
    Allocate(m_nSize);
  }
  const int n = std::min(src.m_nRows, m_nSize);
  for (int i = 0; i < n; ++i) m_pData[i] = src.m_pData[i * src.m_nCols + c - 1];
}

void Mat::SelectCol(Mat& src, int a, int b, int c) {
  if (m_pData == nullptr) {
    m_nRows = src.NRows();
    m_nCols = 3;
    m_nSize = m_nRows * 3;
    Allocate(m_nSize);
  }
  // The source is read with a fixed row stride of 4: this serves homogeneous point lists.
  const int cols[3] = {a, b, c};
  for (int i = 0; i < src.m_nRows; ++i)
    for (int k = 0; k < 3; ++k) {
      const long from = 4L * i + cols[k] - 1, to = 3L * i + k;
      if (from >= 0 && from < src.HeldSize() && to < m_nSize) m_pData[to] = src.m_pData[from];
    }
}

void Mat::SelectCol(Mat& src, int a, int b, int c, int d) {
  if (m_pData == nullptr) {
    m_nRows = src.NRows();
    m_nCols = 4;
    m_nSize = m_nRows * 4;
    Allocate(m_nSize);
  }
  const int cols[4] = {a, b, c, d};
  for (int i = 0; i < src.m_nRows; ++i)
    for (int k = 0; k < 4; ++k) {
      const long to = 4L * i + k;
      if (to < m_nSize) m_pData[to] = src.m_pData[i * src.m_nCols + cols[k] - 1];
    }
}

void Mat::Cols(Mat& src, int c1, int c2) {
  if (m_pData == nullptr) {
    m_nRows = src.NRows();
    m_nCols = c2 - c1 + 1;
    m_nSize = m_nRows * m_nCols;
    Allocate(m_nSize);
  }
  // An existing block keeps its shape; the columns are laid out with its own row stride.
  for (int i = 0; i < src.m_nRows && i < m_nRows; ++i)
    for (int j = c1; j <= c2 && j - c1 < m_nCols; ++j)
      m_pData[i * m_nCols + (j - c1)] = src.m_pData[i * src.m_nCols + j - 1];
}

void Mat::Cols(int at, Mat& src, int c1, int c2) {
  if (m_pData == nullptr) {
    m_nRows = src.m_nRows;
    m_nCols = src.m_nCols;
    m_nSize = src.m_nSize;
    Allocate(m_nSize);
  }
  for (int i = 0; i < m_nRows; ++i)
    for (int j = c1; j <= c2; ++j) m_pData[i * m_nCols + at - 1 + (j - c1)] = src.m_pData[i * src.m_nCols + j - 1];
}

void Mat::GetMinor(int r1, int r2, int c1, int c2, Mat& dst) const {
  if (r1 < 0 || c1 < 0 || r1 > r2 || c1 > c2 || r2 >= m_nRows || c2 >= m_nCols) return;
  dst.SetDimensions(r2 - r1 + 1, c2 - c1 + 1);
  for (int i = r1; i <= r2; ++i)
    for (int j = c1; j <= c2; ++j) dst.m_pData[(i - r1) * dst.m_nCols + (j - c1)] = m_pData[i * m_nCols + j];
}

void Mat::Copy(int r0, int c0, int sr1, int sr2, int sc1, int sc2, const Mat& src) {
  if (sr2 < 0) sr2 = src.NRows();
  if (sc2 < 0) sc2 = src.NCols();
  // No bounds check by design; element positions that fall outside either block are skipped, so
  // a misplaced copy (as MatSq::GetTranslation makes) writes only what lands inside.
  for (int i = sr1; i <= sr2; ++i)
    for (int j = sc1; j <= sc2; ++j) {
      const long from = static_cast<long>(i - 1) * src.m_nCols + (j - 1);
      const long to = static_cast<long>(r0 - 1 + i - sr1) * m_nCols + (c0 - 1 + j - sc1);
      if (from >= 0 && from < src.HeldSize() && to >= 0 && to < HeldSize()) m_pData[to] = src.m_pData[from];
    }
}

void Mat::Copy(const Mat& src) {
  if (HeldSize() == 0 || src.HeldSize() == 0) return;
  const int rows = std::min(m_nRows, src.m_nRows), cols = std::min(m_nCols, src.m_nCols);
  for (int i = 0; i < rows; ++i)
    for (int j = 0; j < cols; ++j) m_pData[i * m_nCols + j] = src.m_pData[i * src.m_nCols + j];
}

void Mat::Embed(const Mat& src) {
  if (IsSquare())
    SetToIdentity();
  else
    SetAll(0.0);
  // Loops exchanged against Copy: element (inner, outer) lands at outer * stride + inner, which is
  // exact only for a square overlap. Callers embed square blocks.
  const int rows = std::min(m_nRows, src.m_nRows), cols = std::min(m_nCols, src.m_nCols);
  for (int j = 0; j < cols; ++j)
    for (int i = 0; i < rows; ++i) {
      const long to = static_cast<long>(j) * m_nCols + i, from = static_cast<long>(j) * src.m_nCols + i;
      if (to < HeldSize() && from < src.HeldSize()) m_pData[to] = src.m_pData[from];
    }
}

// ---- validity and comparison -----------------------------------------------------------------

bool Mat::IsValidMemoryObject() const {
  constexpr int kMax = 1000000;
  return m_nSize >= 0 && m_nSize <= kMax && m_nRows >= 0 && m_nRows <= kMax && m_nCols >= 0 && m_nCols <= kMax;
}

bool Mat::IsValid() const {
  if (!IsValidMemoryObject()) return false;
  const long n = std::min<long>(static_cast<long>(m_nRows) * m_nCols, m_pData != nullptr ? m_nSize : 0);
  for (long k = 0; k < n; ++k)
    if (!(std::fabs(m_pData[k]) <= 1e306)) return false;  // NaN is not valid either
  return true;
}

bool Mat::IsZero(double eps) const {
  // Only the first three elements: the test serves 3-vectors held in a Mat, whatever the size.
  const int n = m_pData != nullptr ? std::min(3, m_nSize) : 0;
  for (int k = 0; k < n; ++k)
    if (!(std::fabs(m_pData[k]) <= eps)) return false;
  return true;
}

bool Mat::EqualsTo(const Mat& other) const {
  const double* b = other.GetStore();
  if (b == nullptr) return m_pData == nullptr;
  // Dimensions are not compared; elements this matrix has beyond the other's block do not count.
  const int n = m_pData != nullptr ? std::min(m_nSize, other.m_nSize) : 0;
  for (int k = 0; k < n; ++k)
    if (!(std::fabs(m_pData[k] - b[k]) <= 1e-10)) return false;
  return true;
}

double Mat::GetMax(bool max) const {
  double best = max ? -1e307 : 1e307;
  for (int k = 0; k < HeldSize(); ++k) best = max ? std::max(best, m_pData[k]) : std::min(best, m_pData[k]);
  return best;
}

double Mat::SquareDist(const Mat& other) const {
  const int n = std::min(HeldSize(), other.HeldSize());
  double s = 0.0;
  for (int k = 1; k <= n; ++k) {
    const double d = GetElement(k) - other.GetElement(k);
    s += d * d;
  }
  return s;
}

void Mat::Error(const char*) const {}
