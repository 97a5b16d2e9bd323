// Planar points, oriented lines and segments.
#pragma once
#include <znmt64/Config.h>

#include <algorithm>
#include <cmath>

// A point or a vector of the plane; one type serves for both, as SMat does in space.
class ZNAG64_API C2DPoint {
 public:
  double x;
  double y;

  C2DPoint() : x(0.0), y(0.0) {}
  C2DPoint(double px, double py) : x(px), y(py) {}

  C2DPoint& operator+=(const C2DPoint& o) {
    x += o.x;
    y += o.y;
    return *this;
  }
  C2DPoint& operator-=(const C2DPoint& o) {
    x -= o.x;
    y -= o.y;
    return *this;
  }
  C2DPoint& operator*=(double k) {
    x *= k;
    y *= k;
    return *this;
  }
  friend C2DPoint operator+(C2DPoint a, const C2DPoint& b) { return a += b; }
  friend C2DPoint operator-(C2DPoint a, const C2DPoint& b) { return a -= b; }
  friend C2DPoint operator*(C2DPoint a, double k) { return a *= k; }
  friend bool operator==(const C2DPoint&, const C2DPoint&) = default;

  double Dot(const C2DPoint& o) const { return x * o.x + y * o.y; }
  // The z component of the spatial cross product: positive when o turns counter-clockwise
  // from this vector, and twice the signed area of the triangle they span.
  double Cross(const C2DPoint& o) const { return x * o.y - y * o.x; }
  double Length() const { return std::sqrt(x * x + y * y); }
  double Dist(const C2DPoint& o) const { return (o - *this).Length(); }

  // Counter-clockwise about the origin; angle in radians.
  void Rotate(double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const double rx = c * x - s * y;
    y = s * x + c * y;
    x = rx;
  }

  // Makes the vector unit. A vector not longer than tol (or not finite) is left as it is and
  // false is returned: callers take false as "no direction".
  bool Normalize(double tol = 1e-10) {
    const double len = Length();
    if (!(len > tol) || !std::isfinite(len)) return false;
    x /= len;
    y /= len;
    return true;
  }
};

// Oriented line: a point and a direction. The direction is used as it stands; distances and
// parameters are true lengths only once it is unit (Normalize it after setting it).
class ZNAG64_API Lineal2D {
 public:
  C2DPoint origin;
  C2DPoint dir;

  Lineal2D() : origin(), dir(1.0, 0.0) {}
  Lineal2D(const C2DPoint& p, const C2DPoint& d) : origin(p), dir(d) {}

  C2DPoint GetPoint(double t) const { return origin + dir * t; }
  // Parameter of the foot of p on the line.
  double GetParam(const C2DPoint& p) const { return dir.Dot(p - origin); }
  // Positive on the left of the direction: inside a counter-clockwise contour.
  double SignedDist(const C2DPoint& p) const { return dir.Cross(p - origin); }
};

// Segment from its start point origin to origin + length·dir, dir unit.
class ZNAG64_API Segment2D : public Lineal2D {
 public:
  double length;

  // The unit segment along x from the origin, as the 3D segment starts.
  Segment2D() : Lineal2D(), length(1.0) {}
  Segment2D(const C2DPoint& p, const C2DPoint& q) : Lineal2D(p, C2DPoint()), length(0.0) { SetQ(q); }

  C2DPoint GetQ() const { return GetPoint(length); }

  // Makes q the end point. Shorter than 1e-10: false, and dir keeps the raw difference q - origin
  // (zero for q == origin), as the 3D segment's SetQ does.
  bool SetQ(const C2DPoint& q) {
    dir = q - origin;
    length = dir.Length();
    if (length < 1e-10) return false;
    dir.x /= length;
    dir.y /= length;
    return true;
  }

  // Distance from p to the nearest point of the segment; *pT receives that point's parameter,
  // in [0, length].
  double Dist(const C2DPoint& p, double* pT = nullptr) const {
    // min before max: a length set negative by hand clamps to 0 instead of misordering the bounds.
    const double t = std::max(0.0, std::min(GetParam(p), length));
    if (pT) *pT = t;
    return GetPoint(t).Dist(p);
  }
};
