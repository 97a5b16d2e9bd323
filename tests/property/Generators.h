// Generators shared by the property tests: coordinates, the doubles that break geometry, and frames
// built the way callers build them.
#pragma once
#include <znmt64/CMFrame.h>
#include <znmt64/SMat.h>

#include <rapidcheck.h>

#include <cfloat>
#include <cstdint>
#include <limits>
#include <ostream>

inline std::ostream& operator<<(std::ostream& os, const SMat& v) {
  return os << '(' << v.x << ", " << v.y << ", " << v.z << ')';
}

namespace prop {

// A finite value in [-range, range], on a grid fine enough to reach every scale of interest.
inline rc::Gen<double> Coordinate(double range) {
  constexpr std::int64_t kSteps = std::int64_t{1} << 40;
  return rc::gen::map(rc::gen::inRange<std::int64_t>(-kSteps, kSteps + 1),
                      [range](std::int64_t k) { return range * (static_cast<double>(k) / kSteps); });
}

// Any double, weighted towards NaN, infinities, the 1e306 bound, the 1e307 sentinel, denormals and
// the library's 1e-10 zero.
inline rc::Gen<double> AnyDouble() {
  return rc::gen::weightedOneOf<double>(
      {{3, rc::gen::element(0.0, -0.0, 1.0, -1.0, 1e-10, -1e-10, 1e-11, 1e306, -1e306, 1e307, -1e307, DBL_MAX,
                            std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::infinity(),
                            -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN())},
       {4, Coordinate(10.0)},
       {2, rc::gen::arbitrary<double>()}});
}

inline rc::Gen<SMat> Point(const rc::Gen<double>& coord) {
  return rc::gen::apply([](double x, double y, double z) { return SMat(x, y, z); }, coord, coord, coord);
}

// A direction not shorter than 0.1, so that frames built on it are well defined.
inline rc::Gen<SMat> Direction() {
  return rc::gen::suchThat(Point(Coordinate(1.0)), [](const SMat& v) { return v.Norm() > 0.1; });
}

// A frame as SetAxes builds it from two directions at least ~6 degrees apart, right- or
// left-handed, with its origin within ±1e3.
inline CMFrame ValidFrame() {
  CMFrame f;
  f.origin = *Point(Coordinate(1e3));
  SMat a = *Direction();
  SMat b = *rc::gen::suchThat(Direction(), [&a](const SMat& v) { return SMat().CrossProd(a, v).Norm() > 0.1 * a.Norm() * v.Norm(); });
  const int i = *rc::gen::inRange(0, 3);
  const int j = (i + *rc::gen::inRange(1, 3)) % 3;
  RC_ASSERT(f.SetAxes(i, a, j, b, *rc::gen::arbitrary<bool>()));
  RC_ASSERT(f.IsValid());
  return f;
}

}  // namespace prop
