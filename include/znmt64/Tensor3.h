// Tensor3: a three-index array of doubles whose layers can be lent to a Mat.
//
// Two index orders address the same block, and callers use both:
//   Elem / operator()(i, j, k), from 0:  m_pData[i*d2 + j + k*d1*d2]  — d3 row-major d1×d2 layers
//   put / elem (a, b) from 1, t from 0:  m_pData[(b−1)*d3 + t + (a−1)*d2*d3]  — t runs fastest
#pragma once
#include <znmt64/Config.h>
#include <znmt64/SMat.h>

class Mat;

class ZNMT64_API Tensor3 {
 public:
  Tensor3() = default;
  Tensor3(int d1, int d2, int d3);
  ~Tensor3();
  // A Tensor3 owns its block and is not copied.
  Tensor3(const Tensor3&) = delete;
  Tensor3& operator=(const Tensor3&) = delete;

  void Reset();  // frees the block, all dimensions 0
  // Keeps the block (and its values) when it is large enough, so a later growth reallocates.
  void SetDimensions(int d1, int d2, int d3);

  double& Elem(int i, int j, int k) { return m_pData[i * m_n2 + j + k * m_n1 * m_n2]; }
  double& operator()(int i, int j, int k) { return Elem(i, j, k); }

  void operator=(double v);
  void operator*=(double v);
  void operator+=(Tensor3& t);
  void operator-=(Tensor3& t);

  // m aliases layer k (from 1) without copying: the caller shapes m as d1×d2, for instance with
  // Mat(d1, d2, false), and m never frees the layer.
  void GetCrossection(int k, Mat& m);

  // The components of a vector at (a, b), in the second index order; an SMat has three
  // components, so at most three are moved whatever d3 is.
  void put(int a, int b, SMat v);
  void elem(SMat& out, int a, int b);

  void print() const {}        // diagnostic output: silent in this build
  void error(const char*) {}  // error hook: silent by design

  int m_n1 = 0;
  int m_n2 = 0;
  int m_n3 = 0;
  int m_nSize = 0;
  double* m_pData = nullptr;

 private:
  double* VectorAt(int a, int b) { return m_pData + (b - 1) * m_n3 + (a - 1) * m_n2 * m_n3; }
};
