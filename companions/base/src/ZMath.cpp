#include <znbl64/ZMath.h>

#include <climits>
#include <cmath>

namespace {

// Converts an already integral double to int without the undefined out-of-range conversion.
int SaturateToInt(double v) {
  if (std::isnan(v)) return 0;
  if (v >= static_cast<double>(INT_MAX)) return INT_MAX;
  if (v <= static_cast<double>(INT_MIN)) return INT_MIN;
  return static_cast<int>(v);
}

}  // namespace

double zModulod(double value, double modulus, double tolerance) {
  const double m = std::fabs(modulus);
  if (m == 0.0) return std::fabs(value) <= tolerance ? 0.0 : value;
  double r = std::fmod(value, m);  // exact, with the sign of value
  // A remainder a few ulps below zero rounds up to m itself here; the test against m - r below
  // then takes value for the multiple it is.
  if (r < 0.0) r += m;
  if (r <= tolerance || m - r <= tolerance) return 0.0;
  return r;
}

int zRound(double value) { return SaturateToInt(std::round(value)); }

int zCeilN(double length, double step) {
  if (!(step > 0.0) || !(length > 0.0)) return 0;
  // The quotient of two decimal-looking values is off by an ulp either way; see the header.
  return SaturateToInt(std::ceil(length / step - 1e-10));
}
