// Closed real intervals: RangeR1 on the line, RangeS1 on the circle of angles, RangeR12D a box
// over two coordinates, RangeMulti a union of disjoint intervals.
#pragma once
#include <znmt64/Config.h>

#include <vector>

// The closed interval [min, max]. It is empty when min > max (or a bound is NaN); a single point
// min == max is not empty. The bounds are never reordered behind the caller's back: projections
// write them as computed and may leave them crossed on purpose, and Swap uncrosses them.
class ZNBL64_API RangeR1 {
 public:
  // Empty, with the library's "nothing yet" sentinels, so that Extend of a first value gives
  // [x, x].
  RangeR1() = default;
  RangeR1(double lo, double hi) : min(lo), max(hi) {}

  double GetMin() const { return min; }
  double GetMax() const { return max; }
  void SetMin(double v) { min = v; }
  void SetMax(double v) { max = v; }
  void Set(double lo, double hi) {
    min = lo;
    max = hi;
  }
  // max - min, negative for an empty range: a scan that refuses lengths below a tolerance thus
  // refuses empty ranges too.
  double GetLength() const { return max - min; }
  bool IsEmpty() const { return !(min <= max); }
  bool Contains(double x, double tol = 0.0) const { return x >= min - tol && x <= max + tol; }
  void Swap() {
    const double t = min;
    min = max;
    max = t;
  }
  // Grows the range to take in x.
  void Extend(double x) {
    if (x < min) min = x;
    if (x > max) max = x;
  }
  // This range becomes its common part with o; true when that part is not empty. Disjoint ranges
  // leave the crossed bounds [max(mins), min(maxes)], so the gap between them stays readable.
  bool Intersect(const RangeR1& o) {
    if (o.min > min) min = o.min;
    if (o.max < max) max = o.max;
    return !IsEmpty();
  }

  double min = 1e307;
  double max = -1e307;
};

// An arc of angles in radians, counterclockwise from min to max, with min in [0, 2*pi) and
// max in [min, min + 2*pi]: an arc across angle 0 keeps max above 2*pi instead of wrapping.
class ZNBL64_API RangeS1 {
 public:
  RangeS1() = default;  // the single angle 0
  // The arc from angle a counterclockwise to angle b. b below a goes round through 0
  // ((5.5, 0.5) is an arc of 2*pi - 5 across angle 0); an arc of a full turn or more is the whole
  // circle.
  RangeS1(double a, double b);

  double GetMin() const { return min; }
  double GetMax() const { return max; }
  double GetLength() const { return max - min; }
  bool IsFull() const;
  // Whether angle x (any turn) lies on the arc, with tol in radians at either end.
  bool Contains(double x, double tol = 0.0) const;

  double min = 0.0;
  double max = 0.0;
};

// A box over two coordinates of a point: i ranges over the first, j over the second.
class ZNBL64_API RangeR12D {
 public:
  RangeR12D() = default;
  RangeR12D(const RangeR1& ri, const RangeR1& rj) : i(ri), j(rj) {}

  bool IsEmpty() const { return i.IsEmpty() || j.IsEmpty(); }
  bool Contains(double x, double y, double tol = 0.0) const {
    return i.Contains(x, tol) && j.Contains(y, tol);
  }
  // Both ranges are intersected, even when the first comes out empty.
  bool Intersect(const RangeR12D& o) {
    const bool bi = i.Intersect(o.i);
    const bool bj = j.Intersect(o.j);
    return bi && bj;
  }

  RangeR1 i;
  RangeR1 j;
};

// A union of closed intervals, kept sorted by min, disjoint and not touching: adding a range
// merges it with every range it overlaps or touches. Empty ranges are never stored.
class ZNBL64_API RangeMulti {
 public:
  int GetCount() const { return static_cast<int>(ranges.size()); }
  const RangeR1& GetAt(int k) const { return ranges[static_cast<std::size_t>(k)]; }
  bool IsEmpty() const { return ranges.empty(); }
  void RemoveAll() { ranges.clear(); }

  void Add(const RangeR1& r);
  // Sum of the lengths of the parts.
  double GetLength() const;
  bool Contains(double x, double tol = 0.0) const;
  // Keeps only the common part with r; true when something is left.
  bool Intersect(const RangeR1& r);

  std::vector<RangeR1> ranges;
};
