#include <znmt64/MatSq.h>
#include <znmt64/Polinom.h>
#include <znmt64/SMat.h>

#include <cmath>

// GetRotation is defined with the rotations (frames/), which own the axis–angle extraction.

namespace {
// Stores v at flat position k when the block has it. The fixed placements below (SetDiag's 4
// and 7, the 2×2 rotation block) are meant for matrices large enough to hold them; on a smaller
// one the places past the block are skipped.
void PutIfInside(Mat& m, long k, double v) {
  if (k >= 0 && k < m.m_nSize) m.m_pData[k] = v;
}
}  // namespace

MatSq::MatSq(double a, double b, double c) : Mat(3, 3) { SetDiag(a, b, c); }

MatSq::~MatSq() = default;

void MatSq::SetUnitary() {
  SetAll(0.0);
  for (int k = 0; k < m_nRows; ++k) PutIfInside(*this, static_cast<long>(k) * m_nCols + k, 1.0);
}

void MatSq::SetDiag(double a, double b, double c) {
  PutIfInside(*this, 0, a);
  PutIfInside(*this, 4, b);
  PutIfInside(*this, 7, c);
}

double MatSq::Trace() const {
  double t = 0.0;
  for (int k = 0; k < m_nRows; ++k) t += m_pData[k * m_nCols + k];
  return t;
}

void MatSq::CreateRotationMatr(double a) {
  const double c = std::cos(a), s = std::sin(a);
  PutIfInside(*this, 0, c);
  PutIfInside(*this, 1, -s);
  PutIfInside(*this, m_nCols, s);
  PutIfInside(*this, m_nCols + 1, c);
}

void MatSq::FindTransformToCoordSystem(const SMat& a, const SMat& b, const SMat& c) {
  // A row of a 4×4 matrix has a fourth element that no SMat supplies: it keeps its value.
  const SMat* axes[3] = {&a, &b, &c};
  for (int r = 0; r < 3 && r < m_nRows; ++r)
    for (int k = 0; k < 3 && k < m_nCols; ++k) m_pData[r * m_nCols + k] = axes[r]->GetElem(k);
}

void MatSq::Minor(int r, int c, MatSq& out) const {
  long k = 0;
  for (int i = 0; i < m_nRows; ++i) {
    if (i == r) continue;
    for (int j = 0; j < m_nCols; ++j)
      if (j != c) PutIfInside(out, k++, m_pData[i * m_nCols + j]);
  }
}

double MatSq::A(int r, int c) const {
  const int n = m_nRows - 1;
  // The minors of the 3×3 and 4×4 matrices the library works with stay on the stack (a Mat never
  // frees attached storage).
  double local[9];
  MatSq minor;
  if (n * n <= 9) {
    minor.m_nRows = minor.m_nCols = n;
    minor.m_nSize = n * n;
    minor.AttachStorage(local);
  } else {
    minor.SetSize(n);
  }
  Minor(r, c, minor);
  const double d = minor.Det();
  return (r + c) % 2 != 0 ? -d : d;
}

// The Copy arguments are destination row and column, then source rows and columns, all from 1.
void MatSq::SetLinPart(const Mat& L) { Copy(1, 1, 1, m_nCols - 1, 1, m_nRows - 1, L); }

void MatSq::GetLinPart(MatSq& L) const { L.Copy(1, 1, 1, L.m_nCols, 1, L.m_nRows, *this); }

void MatSq::SetTranslation(const Mat& t) { Copy(1, m_nCols, 1, m_nRows - 1, 1, 1, t); }

void MatSq::GetTranslation(Mat& t) const {
  // The whole first column, placed from t's (n, n) on; Copy skips what falls outside t, so a t
  // smaller than n×n receives nothing.
  t.Copy(m_nCols, m_nCols, 1, -1, 1, 1, *this);
}

void MatSq::SetAffinne(const Mat& L, const Mat& t) {
  SetAll(0.0);
  SetLinPart(L);
  SetTranslation(t);
  PutIfInside(*this, static_cast<long>(m_nRows - 1) * m_nCols + (m_nRows - 1), 1.0);
}

void MatSq::GetCharPolinom(Polinom& p) const {
  if (m_nRows != 3) return;
  const auto a = [this](int i, int j) { return GetElem(i, j); };
  p.SetDegree(3);
  p.SetCoef(0, -Det());
  // The sum of the principal 2×2 minors.
  p.SetCoef(1, a(0, 0) * a(1, 1) + a(2, 2) * a(1, 1) + a(2, 2) * a(0, 0) -
                   (a(2, 0) * a(0, 2) + a(2, 1) * a(1, 2) + a(1, 0) * a(0, 1)));
  p.SetCoef(2, -Tr());
  p.SetCoef(3, 1.0);
}
