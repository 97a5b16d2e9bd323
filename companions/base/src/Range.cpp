#include <znbl64/Range.h>
#include <znbl64/ZMath.h>

#include <algorithm>
#include <numbers>

namespace {
constexpr double kTurn = 2.0 * std::numbers::pi;
}

RangeS1::RangeS1(double a, double b) : min(zModulod(a, kTurn, 0.0)) {
  double d = b - a;
  if (d >= kTurn)
    d = kTurn;
  else if (d < 0.0)
    d = zModulod(d, kTurn, 0.0);
  max = min + d;
}

bool RangeS1::IsFull() const { return GetLength() >= kTurn; }

bool RangeS1::Contains(double x, double tol) const {
  if (IsFull()) return true;
  const double d = zModulod(x - min, kTurn, 0.0);
  // Just below min, d is almost a full turn: that is within tol of the start, not far past the end.
  return d <= GetLength() + tol || d >= kTurn - tol;
}

void RangeMulti::Add(const RangeR1& r) {
  if (r.IsEmpty()) return;
  // The parts are disjoint and sorted by min, hence by max too: the first part r can touch is
  // the first that does not end before r starts.
  auto first = std::lower_bound(ranges.begin(), ranges.end(), r.min,
                                [](const RangeR1& p, double v) { return p.max < v; });
  RangeR1 merged = r;
  auto last = first;
  for (; last != ranges.end() && last->min <= r.max; ++last) {
    merged.min = std::min(merged.min, last->min);
    merged.max = std::max(merged.max, last->max);
  }
  ranges.insert(ranges.erase(first, last), merged);
}

double RangeMulti::GetLength() const {
  double sum = 0.0;
  for (const RangeR1& p : ranges) sum += p.GetLength();
  return sum;
}

bool RangeMulti::Contains(double x, double tol) const {
  return std::any_of(ranges.begin(), ranges.end(), [&](const RangeR1& p) { return p.Contains(x, tol); });
}

bool RangeMulti::Intersect(const RangeR1& r) {
  for (RangeR1& p : ranges) p.Intersect(r);
  std::erase_if(ranges, [](const RangeR1& p) { return p.IsEmpty(); });
  return !ranges.empty();
}
