// Polinom: a polynomial in one variable with real coefficients, held as a 1×(n+1) Mat whose flat
// element k is the coefficient of x^k.
#pragma once
#include <znmt64/Config.h>

#include <znmt64/C.h>
#include <znmt64/Mat.h>

class ZNMT64_API Polinom : public Mat {
 public:
  explicit Polinom(int n);  // the monic x^n
  // The coefficients are m's first row.
  explicit Polinom(const Mat& m);
  Polinom(const Polinom&) = default;
  // Mat's assignment: an element copy into the existing shape.
  Polinom& operator=(const Polinom&) = default;
  ~Polinom() override;

  int GetDegree() const { return m_nCols - 1; }
  // Coefficients survive only where the block is kept (a lower degree keeps it).
  void SetDegree(int n) { SetDimensions(1, n + 1); }
  double GetCoef(int k) const { return GetElem(0, k); }
  double& Coef(int k) { return Element(1, k + 1); }
  void SetCoef(int k, double v) { Set(0, k, v); }

  // Closed-form roots from the coefficients of x^0, x^1 and x^2 only, whatever the degree.
  // Writes up to two roots and returns how many; real roots leave their imaginary parts as the
  // caller set them, so callers pass zeroed C objects. Two real roots come "+" root first.
  int GetRoots(C* roots) const;
};

// Polar keeps only its place in the class family here: the other modules of the suite derive
// their two-vector classes from it. It has no operations of its own in this library.
class ZNMT64_API Polar {
 public:
  virtual ~Polar();
};
