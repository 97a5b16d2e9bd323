#include <znmt64/Mat.h>
#include <znmt64/Tensor3.h>

#include <algorithm>
#include <functional>

// Blocks come zeroed: nothing reads a tensor before filling it, but no unset value is handed out.
Tensor3::Tensor3(int d1, int d2, int d3)
    : m_n1(d1), m_n2(d2), m_n3(d3), m_nSize(d1 * d2 * d3), m_pData(new double[std::max(m_nSize, 0)]()) {}

Tensor3::~Tensor3() { delete[] m_pData; }

void Tensor3::Reset() {
  delete[] m_pData;
  m_pData = nullptr;
  m_n1 = m_n2 = m_n3 = m_nSize = 0;
}

void Tensor3::SetDimensions(int d1, int d2, int d3) {
  m_n1 = d1;
  m_n2 = d2;
  m_n3 = d3;
  const int n = d1 * d2 * d3;
  if (m_pData != nullptr && n > m_nSize) {
    delete[] m_pData;
    m_pData = nullptr;
  }
  if (m_pData == nullptr) m_pData = new double[std::max(n, 0)]();
  m_nSize = n;
}

void Tensor3::operator=(double v) { std::fill_n(m_pData, m_nSize, v); }

void Tensor3::operator*=(double v) {
  std::transform(m_pData, m_pData + m_nSize, m_pData, [v](double e) { return e * v; });
}

// Element-wise over this tensor's block; elements the other block does not have are left.
void Tensor3::operator+=(Tensor3& t) {
  const int n = std::min(m_nSize, t.m_nSize);
  std::transform(m_pData, m_pData + n, t.m_pData, m_pData, std::plus<>());
}

void Tensor3::operator-=(Tensor3& t) {
  const int n = std::min(m_nSize, t.m_nSize);
  std::transform(m_pData, m_pData + n, t.m_pData, m_pData, std::minus<>());
}

void Tensor3::GetCrossection(int k, Mat& m) { m.AttachStorage(m_pData + (k - 1) * m_n1 * m_n2); }

void Tensor3::put(int a, int b, SMat v) {
  double* p = VectorAt(a, b);
  for (int t = 0; t < m_n3 && t < 3; ++t) p[t] = v[t];
}

void Tensor3::elem(SMat& out, int a, int b) {
  const double* p = VectorAt(a, b);
  for (int t = 0; t < m_n3 && t < 3; ++t) out[t] = p[t];
}
