#include <znbl64/ZMath.h>

#include <cmath>

double zModulod(double value, double modulus, double tolerance) {
  const double m = std::fabs(modulus);
  if (m == 0.0) return value;
  double r = std::fmod(value, m);
  if (r < 0.0) r += m;
  if (r <= tolerance || m - r <= tolerance) return 0.0;
  return r;
}
