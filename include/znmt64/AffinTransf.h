// AffinTransf: an affine map kept as a square linear part and a separate translation.
// The family's other classes, Tensor3 and the stereographic point C, come with this header.
#pragma once
#include <znmt64/Config.h>

#include <znmt64/C.h>
#include <znmt64/MatSq.h>
#include <znmt64/SMat.h>
#include <znmt64/Tensor3.h>

class ZNMT64_API AffinTransf {
 public:
  AffinTransf() = default;
  explicit AffinTransf(int n) : m_mL(n) {}
  // The linear part stays empty: see AffinTransf.cpp.
  explicit AffinTransf(const Mat& m);
  AffinTransf(const AffinTransf& a) { Copy(a); }
  virtual ~AffinTransf();

  // The linear part is copied as MatSq::operator=(const MatSq&) copies: into its existing shape
  // when it has one.
  void operator=(const AffinTransf& a) { Copy(a); }
  void Copy(const AffinTransf& a);

  // Inverts the linear part and negates the translation, without turning the translation by the
  // inverse: the result is the inverse map only for an identity linear part or a zero
  // translation. Callers rely on it as it is.
  void Invert();
  // P, already (n+1)×(n+1) for a linear part of order n, becomes [L t; 0 1]; the translation
  // goes to rows 1 … 3 of column n+1.
  void ToProjective(MatSq& P) const;

  SMat m_vT;  // translation
  MatSq m_mL; // linear part
};
