// Bar: the barycentric weights of a point with respect to the corners 0, 1 and 2 of a triangle.
//
// Only weights: the class knows nothing of where the corners are (Triangle3D::GetPointBaricentr
// turns weights into a point). Nothing is enforced: the weights need not sum to 1, and a negative
// weight is a point outside the triangle.
#pragma once
#include <znmt64/Config.h>

#include <znbl64/ZMath.h>

#include <cmath>

class ZNMT64_API Bar {
 public:
  Bar() { Reset(); }
  Bar(const Bar& b) { Copy(b); }
  Bar& operator=(const Bar& b) {
    Copy(b);
    return *this;
  }
  virtual ~Bar();

  void Copy(const Bar& b) {
    for (int i = 0; i < 3; ++i) w[i] = b.w[i];
  }
  void Reset() { w[0] = w[1] = w[2] = 0.0; }

  // The weights of corner c, taken modulo 3: SetCorner(3) is corner 0, which lets callers walk
  // past the last corner without wrapping the index themselves.
  void SetCorner(unsigned char c) {
    const int i = CZGroup::Factorize(3, c);
    Reset();
    w[i] = 1.0;
  }
  // (1 - t)·a + t·b weight by weight: t = 0 gives a, t = 1 gives b. a or b may be this.
  void Combine(const Bar& a, const Bar& b, double t) {
    for (int i = 0; i < 3; ++i) w[i] = (1.0 - t) * a.w[i] + t * b.w[i];
  }
  // Point k of n equally spaced points per side, walking the border from corner 0 through 1 and
  // 2: k = 0 is corner 0, k = n corner 1, k = 3n corner 0 again. n < 1 leaves the weights as they
  // are.
  void SetEdgeVert(int k, int n);

  // The first corner (0, 1, 2) whose weight is within tol of 1, or -1. The other weights are not
  // looked at, so (1, 1, 0) answers 0.
  int GetCorner(double tol) const {
    for (int i = 0; i < 3; ++i)
      if (std::fabs(w[i] - 1.0) < tol) return i;
    return -1;
  }
  // Outside the closed triangle by more than tol: some weight below -tol.
  bool IsOutsideClosed(double tol) const { return w[0] < -tol || w[1] < -tol || w[2] < -tol; }
  // Strictly inside, farther than tol from every side: every weight above tol.
  bool IsInsideOpen(double tol) const { return w[0] > tol && w[1] > tol && w[2] > tol; }

  double w[3];
};
