#include <znmt64/CircleSolver.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979;
constexpr double kTwoPi = 6.28318530717958;

// An angle of the search range [pi, 3pi], or any other, brought into [0, 2pi).
double Reduce(double t) {
  t = std::fmod(t, kTwoPi);
  return t < 0.0 ? t + kTwoPi : t;
}

// For the cubic over the unit interval with the rise df and the end slopes g0, g1 of one sign:
// where in (0, 1) its slope, a parabola, turns furthest the other way, when it gets there. The
// cubic then has a maximum and a minimum inside, on either side of that point.
bool HermiteTurn(double df, double g0, double g1, double& s) {
  const double A = 3.0 * (g0 + g1) - 6.0 * df;  // p'(s) = A s^2 + B s + g0
  const double B = 6.0 * df - 4.0 * g0 - 2.0 * g1;
  if (A == 0.0) return false;
  s = -B / (2.0 * A);
  if (!(0.0 < s && s < 1.0)) return false;
  const double turn = g0 - B * B / (4.0 * A);
  return g0 > 0.0 ? turn < 0.0 : turn > 0.0;
}

// How far apart two angles lie on the circle, in [0, pi].
double Separation(double a, double b) {
  const double d = Reduce(a - b);
  return std::min(d, kTwoPi - d);
}

}  // namespace

CircleSolver::CircleSolver(const CCircle& moving)
    : m_frame(static_cast<unsigned char>(0)), m_r(std::fabs(moving.radius)) {
  dEps = 1e-15;
  dTol = 0.0;
  m_bMoving = m_r < 1e-10 || moving.dir.Norm() > 1e-10;
  // X from the coordinate axis least along the circle's axis: never near it, and unlike the
  // frame's default perpendicular it costs no temporary matrix.
  unsigned char k = 0;
  moving.dir.GetMinAbsCoord(&k);
  SMat ref;
  ref[k] = 1.0;
  moving.GetFrame(m_frame, &ref);
}

void CircleSolver::SetCircle(const CCircle& o, bool disk) {
  m_eTarget = disk ? eTargetDisk : eTargetCircle;
  m_other = o;
  m_other.radius = std::fabs(o.radius);
  // A point needs no axis.
  m_bTarget = m_other.dir.Normalize(1e-10) || m_other.radius < 1e-10;
}

void CircleSolver::SetLine(const CLineal& line) {
  m_eTarget = eTargetLine;
  m_line.Copy(line);
  m_bTarget = m_line.Normalize();
}

void CircleSolver::SetSegment(const CSegment& s) {
  m_eTarget = eTargetSegment;
  m_seg.Copy(s);
  if (!(m_seg.length >= 1e-10)) {
    m_seg.length = 0.0;
    m_bTarget = true;
  } else {
    m_bTarget = m_seg.Normalize();
  }
}

void CircleSolver::GetPoint(double t, SMat& p) const {
  p.Set(m_r * std::cos(t), m_r * std::sin(t), 0.0);
  m_frame.ToGlobal(p);
}

double CircleSolver::DistTarget(const SMat& p, SMat& q) const {
  switch (m_eTarget) {
    case eTargetCircle:
      return m_other.FindNearestPoint(p, q);
    case eTargetDisk:
      return m_other.FindNearestDiscPoint(p, q);
    case eTargetLine:
      return m_line.Dist(p, &q);
    case eTargetSegment: {
      double d = 1e307;
      m_seg.FindNearestPoint(p, &q, &d);
      return d;
    }
    default:
      q = p;
      return 1e307;
  }
}

double CircleSolver::Eval(double t, SMat& p, SMat& q, double* slope) const {
  GetPoint(t, p);
  const double d = DistTarget(p, q);
  if (slope != nullptr) {
    SMat tangent(-m_r * std::sin(t), m_r * std::cos(t), 0.0);
    m_frame.ToGlobalVector(tangent);
    *slope = 2.0 * (p - q).Prod(tangent);
  }
  return d;
}

double CircleSolver::GetExtremFuncVal(double t) const {
  if (!IsValid()) return 1e307;
  SMat p;
  SMat q;
  const double d = Eval(t, p, q, nullptr);
  return d * d;
}

double CircleSolver::GetSolverBrentMethodFunctValue(double t) {
  if (!IsValid()) return 0.0;
  SMat p;
  SMat q;
  double slope = 0.0;
  Eval(t, p, q, &slope);
  return slope;
}

double CircleSolver::AxisDist(const SMat& p) const {
  SMat v = p - m_frame.origin;
  v -= v.Prod(m_frame.axes[2]) * m_frame.axes[2];
  return v.Norm();
}

bool CircleSolver::ClosedForm(SMat& p, int& count) const {
  if (m_r < 1e-10) {
    p = m_frame.origin;
    count = 1;
    return true;
  }
  bool symmetric = false;
  switch (m_eTarget) {
    case eTargetCircle:
    case eTargetDisk:
      symmetric = AxisDist(m_other.origin) < 1e-10 && (m_other.radius < 1e-10 || AlongAxis(m_other.dir));
      break;
    case eTargetLine:
      symmetric = AxisDist(m_line.origin) < 1e-10 && AlongAxis(m_line.dir);
      break;
    case eTargetSegment:
      symmetric = AxisDist(m_seg.origin) < 1e-10 && (m_seg.length < 1e-10 || AlongAxis(m_seg.dir));
      break;
    default:
      break;
  }
  if (symmetric) {
    GetPoint(0.0, p);
    count = 2;
    return true;
  }
  const bool round = m_eTarget == eTargetCircle || m_eTarget == eTargetDisk;
  if (!round || m_other.radius < 1e-10 || !AlongAxis(m_other.dir)) return false;

  // Parallel planes: the height between them is the same for every pair of points, so the pair
  // nearest in this circle's plane is the nearest one. u points from this centre to the other's
  // shadow; the shadow lies more than 1e-10 off the centre, or the target would be coaxial.
  const SMat& c = m_frame.origin;
  SMat u = m_other.origin - c;
  u -= u.Prod(m_frame.axes[2]) * m_frame.axes[2];
  const double D = u.Norm();
  u /= D;
  const double rB = m_other.radius;
  // The point c + r·u comes nearest to the other centre, at |D - r|; c - r·u is farthest, at D + r.
  const double nearest = std::fabs(D - m_r);
  if (rB <= nearest) {
    p = c + m_r * u;
    count = 1;
    return true;
  }
  if (m_eTarget == eTargetDisk) {
    // Part of the circle, at least c + r·u, lies over the disc: all of it at the planes' height.
    p = c + m_r * u;
    count = rB - nearest <= 1e-10 ? 1 : 2;
    return true;
  }
  if (rB >= D + m_r) {
    p = c - m_r * u;
    count = 1;
    return true;
  }
  // The circles cross in the plane, where the other centre is rB away: by the law of cosines in
  // the triangle of the two centres and the crossing.
  const double cosA = std::clamp((m_r * m_r + D * D - rB * rB) / (2.0 * m_r * D), -1.0, 1.0);
  const double sinA = std::sqrt(1.0 - cosA * cosA);
  SMat v;
  v.CrossProd(m_frame.axes[2], u);
  p = c + m_r * (cosA * u + sinA * v);
  count = m_r * sinA > 1e-10 ? 2 : 1;
  return true;
}

double CircleSolver::Search(int& count) {
  struct Sample {
    double t;
    double f;      // the objective
    double slope;  // its derivative
    SMat q;        // the target's nearest point
  };
  const auto sample = [this](double t) {
    Sample s;
    SMat p;
    s.t = t;
    const double d = Eval(t, p, s.q, &s.slope);
    s.f = d * d;
    return s;
  };

  // The local minima found, as angle and distance: at most one per interval scanned. Subdivided
  // intervals could in principle give more than there is room for; the worst then goes.
  constexpr int kCap = 2 * kSamples;
  double candT[kCap];
  double candD[kCap];
  int n = 0;
  const auto refine = [&](double lo, double hi) {
    double root = lo;
    if (!FindRootBrentMethod(RangeR1(lo, hi), root)) root = GetExtrem(lo, hi, true, true);
    SMat p;
    SMat q;
    const double d = Eval(root, p, q, nullptr);
    int at = n;
    if (n == kCap) {
      at = 0;
      for (int i = 1; i < n; ++i)
        if (candD[i] > candD[at]) at = i;
      if (d >= candD[at]) return;
    } else {
      ++n;
    }
    candT[at] = root;
    candD[at] = d;
  };

  // Near the target circle's axis the objective changes on the scale of the moving point's
  // distance from that axis, and where the point passes the axis it has a ridge (the nearest point
  // jumps across the circle): no minimum there, but one may lie beside it, closer than a sample
  // step and out of reach of the cubic test below. So an interval over which the nearest point
  // turns by more than 45 degrees about the target's centre is divided kSub ways, down to kDepth
  // levels.
  constexpr int kSub = 8;
  constexpr int kDepth = 4;
  const bool ridges = m_eTarget == eTargetCircle && m_other.radius >= 1e-10;
  const double turnLimit = 0.70710678118654752 * m_other.radius * m_other.radius;
  const auto scan = [&](const auto& self, const Sample& a, const Sample& b, int depth) -> void {
    if (ridges && depth < kDepth && (a.q - m_other.origin).Prod(b.q - m_other.origin) < turnLimit) {
      Sample prev = a;
      for (int i = 1; i <= kSub; ++i) {
        const Sample next = i == kSub ? b : sample(a.t + (b.t - a.t) * i / kSub);
        self(self, prev, next, depth + 1);
        prev = next;
      }
      return;
    }
    // A slope turning from falling to rising holds a local minimum. An exactly zero slope at a
    // sample may open two such intervals; both refine to that sample, which the count below sees
    // as one point.
    if ((a.slope < 0.0 && b.slope >= 0.0) || (a.slope <= 0.0 && b.slope > 0.0)) {
      refine(a.t, b.t);
      return;
    }
    if (!((a.slope > 0.0 && b.slope > 0.0) || (a.slope < 0.0 && b.slope < 0.0))) return;
    // Equal slopes at both ends may still hide a minimum next to a maximum. The cubic through
    // the end values and slopes says where the slope would turn most; a slope of the other sign
    // there confirms it, and otherwise the two halves are looked at again, down to kDepth levels.
    const double h = b.t - a.t;
    double s = 0.0;
    if (!HermiteTurn(b.f - a.f, a.slope * h, b.slope * h, s)) return;
    const Sample m = sample(a.t + s * h);
    if (a.slope > 0.0 && m.slope < 0.0) {
      refine(m.t, b.t);
    } else if (a.slope < 0.0 && m.slope > 0.0) {
      refine(a.t, m.t);
    } else if (depth < kDepth) {
      self(self, a, m, depth + 1);
      self(self, m, b, depth + 1);
    }
  };

  constexpr double h = kTwoPi / kSamples;
  Sample samples[kSamples];
  int bestSample = 0;
  for (int k = 0; k < kSamples; ++k) {
    samples[k] = sample(kPi + k * h);
    if (samples[k].f < samples[bestSample].f) bestSample = k;
  }
  for (int k = 0; k < kSamples; ++k) {
    Sample next = samples[(k + 1) % kSamples];
    next.t = kPi + (k + 1) * h;  // the last interval closes the turn
    scan(scan, samples[k], next, 0);
  }
  if (n == 0) {
    candT[0] = samples[bestSample].t;
    candD[0] = std::sqrt(samples[bestSample].f);
    n = 1;
  }

  int best = 0;
  for (int i = 1; i < n; ++i)
    if (candD[i] < candD[best]) best = i;
  count = 1;
  const double tie = candD[best] + 1e-9 * (1.0 + candD[best]);
  for (int i = 0; i < n; ++i)
    if (candD[i] <= tie && Separation(candT[i], candT[best]) > 1e-6) count = 2;
  return candT[best];
}

double CircleSolver::Solve(SMat* p1, SMat* p2, int* count, double* t) {
  int n = 0;
  if (!IsValid()) {
    if (count != nullptr) *count = 0;
    return 1e307;
  }
  SMat p;
  SMat q;
  double angle = 0.0;
  if (ClosedForm(p, n)) {
    SMat local = p;
    m_frame.ToLocal(local);
    angle = std::atan2(local.y, local.x);
  } else {
    angle = Search(n);
    GetPoint(angle, p);
  }
  const double d = DistTarget(p, q);
  // Only coordinates beyond the valid range can take the arithmetic out of the doubles.
  if (!std::isfinite(d)) {
    if (count != nullptr) *count = 0;
    return 1e307;
  }
  if (p1 != nullptr) *p1 = p;
  if (p2 != nullptr) *p2 = q;
  if (count != nullptr) *count = n;
  if (t != nullptr) *t = Reduce(angle);
  return d;
}
