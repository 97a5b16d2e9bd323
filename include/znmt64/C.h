// C: a point of the plane read as the complex number x + iy (roots of Polinom come as C), with
// the stereographic correspondence between the plane and the unit sphere.
#pragma once
#include <znmt64/Config.h>

#include <cmath>

class ZNMT64_API C {
 public:
  C() = default;
  explicit C(const double* p) : x(p[0]), y(p[1]) {}
  C(const C&) = default;
  C& operator=(const C&) = default;
  virtual ~C();

  bool operator==(const C& o) const { return std::fabs(x - o.x) <= 1e-10 && std::fabs(y - o.y) <= 1e-10; }

  // The two maps are inverse to each other: a point of the unit sphere is projected from the
  // north pole (0, 0, 1) onto the plane z = −1, and back.
  void GetMapRihmanSphere(double out[3]) const;
  // False, and the point unchanged, for the pole itself (z above 1 − 1e-10).
  bool ProjectStereographic(const double p[3]);

  double x = 0.0;  // real part
  double y = 0.0;  // imaginary part
};
