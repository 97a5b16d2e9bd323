#include <znmt64/Polinom.h>

#include <cmath>

Polinom::Polinom(int n) {
  SetDimensions(1, n + 1);
  SetAll(0.0);
  if (n >= 0) SetCoef(n, 1.0);
}

Polinom::Polinom(const Mat& m) {
  SetDegree(m.NCols() - 1);
  Copy(m);
}

Polinom::~Polinom() = default;

int Polinom::GetRoots(C* roots) const {
  // A polynomial of degree below two has no coefficient of x^2 (or x) in its block: it counts as
  // zero, so a linear polynomial gives its root and a constant none.
  const auto coef = [this](int k) { return k < m_nSize ? m_pData[k] : 0.0; };
  const double c0 = coef(0), c1 = coef(1), c2 = coef(2);
  if (std::fabs(c2) >= 1e-10) {
    const double d = c1 * c1 - 4.0 * c2 * c0;
    const double s = std::sqrt(std::fabs(d));
    if (d < -1e-10) {
      roots[0].x = -0.5 * c1 / c2;
      roots[0].y = -0.5 * s / c2;
      roots[1].x = -0.5 * c1 / c2;
      roots[1].y = 0.5 * s / c2;
      return 2;
    }
    if (d < 1e-10) {
      roots[0].x = -0.5 * c1 / c2;
      return 1;
    }
    roots[0].x = 0.5 * (-c1 + s) / c2;
    roots[1].x = 0.5 * (-c1 - s) / c2;
    return 2;
  }
  if (std::fabs(c1) >= 1e-10) {
    roots[0].x = -c0 / c1;
    return 1;
  }
  return 0;
}

Polar::~Polar() = default;
