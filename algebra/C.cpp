#include <znmt64/C.h>

C::~C() = default;

void C::GetMapRihmanSphere(double out[3]) const {
  const double r2 = x * x + y * y;
  const double d = r2 + 4.0;
  out[0] = 4.0 * x / d;
  out[1] = 4.0 * y / d;
  out[2] = (r2 - 4.0) / d;
}

bool C::ProjectStereographic(const double p[3]) {
  if (p[2] > 1.0 - 1e-10) return false;
  const double d = 1.0 - p[2];
  x = 2.0 * p[0] / d;
  y = 2.0 * p[1] / d;
  return true;
}
