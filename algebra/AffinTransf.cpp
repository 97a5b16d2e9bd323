#include <znmt64/AffinTransf.h>

AffinTransf::AffinTransf(const Mat& m) {
  // MatSq::operator=(const Mat&) copies only the overlap with the empty linear part, so m is not
  // taken: callers give the linear part afterwards with Copy or through m_mL.
  m_mL = m;
}

AffinTransf::~AffinTransf() = default;

void AffinTransf::Copy(const AffinTransf& a) {
  if (&a == this) return;
  m_mL = a.m_mL;
  m_vT = a.m_vT;
}

void AffinTransf::Invert() {
  m_mL.Invert();
  m_vT.SwapDirection();
}

void AffinTransf::ToProjective(MatSq& P) const {
  P.SetToIdentity();
  P.Copy(1, 1, 1, -1, 1, -1, m_mL);
  const int n = m_mL.NRows();
  for (int i = 0; i < 3 && i < P.NRows() && n < P.NCols(); ++i) P.m_pData[i * P.NCols() + n] = m_vT.GetElem(i);
}
