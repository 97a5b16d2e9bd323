// Planar circle.
#pragma once
#include <znmt64/Config.h>
#include <znag64/Point2D.h>

class ZNAG64_API Circle2D {
 public:
  C2DPoint center;
  double radius;

  Circle2D() : center(), radius(0.0) {}
  Circle2D(const C2DPoint& c, double r) : center(c), radius(r) {}

  // The circle through a, b and c. Collinear points, coincident ones among them, have no circle:
  // false and the circle is unchanged. Collinear means twice the triangle's area is at most 1e-10
  // times the square of its longest side, a test that does not depend on the scale.
  bool DefineFromThreePoints(const C2DPoint& a, const C2DPoint& b, const C2DPoint& c);
  bool DefineFromThreePoints(const C2DPoint* p) { return DefineFromThreePoints(p[0], p[1], p[2]); }
};
