#include <znmt64/CScalarSolver.h>

#include <znbl64/ZMath.h>
#include <znmt64/Mat.h>

#include <algorithm>
#include <cmath>

CScalarSolver::CScalarSolver() { Construct(); }

CScalarSolver::CScalarSolver(double (*fn)(double)) {
  Construct();
  dEps = 1e-7;
  dStep = dEps;
  pFunct = fn;
}

void CScalarSolver::Construct() {
  nMode = 0;
  dEps = 1e-8;
  dTol = 1e-10;
  dStep = 1e-7;
  nBlock = 0;
  bClampStep = true;
  pFunct = nullptr;
  nSource = 0;
}

void CScalarSolver::operator=(const CScalarSolver& src) {
  dEps = src.dEps;
  dTol = src.dTol;
  dStep = src.dStep;
  nMode = src.nMode;
}

bool CScalarSolver::operator==(const CScalarSolver& o) const {
  return std::fabs(dEps - o.dEps) <= 1e-10 && std::fabs(dTol - o.dTol) <= 1e-10 &&
         std::fabs(dStep - o.dStep) <= 1e-10 && nMode == o.nMode;
}

void CScalarSolver::Pop() { m_stack.Pop(*this); }
bool CScalarSolver::Discard() { return m_stack.Discard(*this); }
void CScalarSolver::Push() { m_stack.Push(*this); }
int CScalarSolver::GetStackCount() const { return m_stack.count; }
int CScalarSolver::GetStackSize() const { return m_stack.capacity; }
void CScalarSolver::AttachStack(int n) { m_stack.AttachStack(*this, n); }
bool CScalarSolver::PopDifferent() { return m_stack.PopDifferent(*this); }
void CScalarSolver::SetInitialStackSize(short n) { m_stack.initialSize = n; }
void CScalarSolver::ResetStack() { m_stack.ResetStack(); }
CScalarSolver* CScalarSolver::GetState(int i) const { return m_stack.GetState(i); }

double CScalarSolver::GetExtremFuncVal(double) const { return -1e307; }

double CScalarSolver::GetIntegratedFuncVal(double x) const {
  // A missing integrand gives the "nothing" value, as a missing root function does, instead of a
  // call through null.
  return pFunct ? pFunct(x) : 1e307;
}

double CScalarSolver::GetSolverBrentMethodFunctValue(double x) {
  switch (nSource) {
    case 0:
      return 0.0;
    case 1:
      return pFunct ? pFunct(x) : 1e307;
    default:
      return pDelegate ? pDelegate->GetValue(x) : 1e307;
  }
}

double CScalarSolver::GetDerivativeExtr(double x) const {
  return (GetExtremFuncVal(x + dStep) - GetExtremFuncVal(x)) / dStep;
}

void CScalarSolver::AttachFunct(double (*fn)(double), bool bOnlyIntegrand) {
  pFunct = fn;
  if (!bOnlyIntegrand) nSource = 1;
}

void CScalarSolver::AttachDelegate(IDelegateIntern* d) {
  pDelegate = d;
  nSource = 2;
}

namespace {
bool SameStrictSign(double u, double v) { return (u > 0.0 && v > 0.0) || (u < 0.0 && v < 0.0); }
}  // namespace

bool CScalarSolver::FindRootBrentMethod(const RangeR1& range, double& root) {
  if (nBlock != 0) return false;
  const double xMax = range.GetMax();
  double a = range.GetMin();
  double b = xMax;
  double fa = GetBrentFunctValue(a);
  double fb = GetBrentFunctValue(b, xMax);
  // An end value within dTol wins before the bracket is checked.
  if (std::fabs(fa) < dTol) {
    root = a;
    return true;
  }
  if (std::fabs(fb) < dTol) {
    root = b;
    return true;
  }
  if (SameStrictSign(fa, fb)) return false;

  double c = b;
  double fc = fb;
  double d = b - a;
  double e = d;
  for (int iter = 0; iter < 100; ++iter) {
    if (SameStrictSign(fb, fc)) {
      c = a;
      fc = fa;
      e = d = b - a;
    }
    if (std::fabs(fc) < std::fabs(fb)) {
      a = b;
      b = c;
      c = a;
      fa = fb;
      fb = fc;
      fc = fa;
    }
    // Purely relative: there is no absolute term, so a root at 0 is only reached through fb == 0
    // or by running out of iterations. Callers tune dEps and dTol with this in mind.
    const double tol1 = 2.0 * dEps * std::fabs(b);
    const double xm = 0.5 * (c - b);
    if (std::fabs(xm) <= tol1 || fb == 0.0) {
      root = b;
      return true;
    }
    if (std::fabs(e) >= tol1 && std::fabs(fa) > std::fabs(fb)) {
      const double s = fb / fa;
      double p;
      double q;
      if (a == c) {
        p = 2.0 * xm * s;
        q = 1.0 - s;
      } else {
        q = fa / fc;
        const double r = fb / fc;
        p = s * (2.0 * xm * q * (q - r) - (b - a) * (r - 1.0));
        q = (q - 1.0) * (r - 1.0) * (s - 1.0);
      }
      if (p > 0.0) q = -q;
      p = std::fabs(p);
      if (2.0 * p < std::min(3.0 * xm * q - std::fabs(tol1 * q), std::fabs(e * q))) {
        e = d;
        d = p / q;
      } else {
        d = xm;
        e = d;
      }
    } else {
      d = xm;
      e = d;
    }
    a = b;
    fa = fb;
    b += std::fabs(d) > tol1 ? d : std::copysign(tol1, xm);
    fb = GetBrentFunctValue(b, xMax);
  }
  root = 0.0;
  return false;
}

bool CScalarSolver::FindRoots(RangeR1 range, CArray<double, double>& roots, double step) {
  // Each event restarts the scan from the event point on the rest of the range. The restart is a
  // tail call, written as a loop so that a function with very many roots cannot exhaust the stack.
  for (;;) {
    if (step < 1e-10) return false;
    const double length = range.GetLength();
    if (length < 1e-10) return false;
    const double xMin = range.GetMin();
    const double xMax = range.GetMax();
    const int n = zCeilN(length, step);

    if (n < 2) {
      // Brent's method leaves root alone on equal end signs; starting from xMin keeps the right
      // end check below meaningful then.
      double root = xMin;
      if (FindRootBrentMethod(range, root)) roots.Add(root);
      if (xMax - root > dEps && std::fabs(GetBrentFunctValue(xMax, xMax)) < dTol) roots.Add(xMax);
      return true;
    }

    const double h = length / n;
    const double f0 = GetBrentFunctValue(xMin);
    if (std::fabs(f0) < dTol) {
      roots.Add(xMin);
      range = RangeR1(xMin + h, xMax);
      continue;
    }
    // f0 stays the value at xMin: since the scan stops at its first event this is the previous
    // sample's sign. Two crossings between neighbouring samples go unnoticed.
    bool restart = false;
    double x = xMin;
    for (int i = 0; i < n && !restart; ++i) {
      x += h;
      const double f = GetBrentFunctValue(x, xMax);
      if (std::fabs(f) < dTol) {
        if (i == n - 1) {
          roots.Add(x);
          return true;
        }
        // The restart appends x itself, as its first sample.
        restart = true;
      } else if (f * f0 < 0.0) {
        double root = x;
        if (!FindRootBrentMethod(RangeR1(x - h, x), root)) throw new CMatrExeption(3u);
        roots.Add(root);
        if (i == n - 1) return true;
        restart = true;
      }
    }
    if (!restart) return true;
    range = RangeR1(x, xMax);
  }
}

bool CScalarSolver::GetExtremums(RangeR1 range, CArray<double, double>& extremums, double step) {
  Push();
  nMode = 1;
  dEps *= 1000;
  dTol *= 100000;
  extremums.RemoveAll();
  bool r;
  try {
    r = FindRoots(range, extremums, step);
  } catch (...) {
    // A failed refinement still gives the caller its own tolerances and mode back.
    Pop();
    throw;
  }
  // The end points are always candidates; the comparisons use the scaled dEps.
  if (extremums.IsEmpty() || std::fabs(extremums[0] - range.GetMin()) > dEps)
    extremums.InsertAt(0, range.GetMin());
  if (std::fabs(extremums[extremums.GetUpperBound()] - range.GetMax()) > dEps)
    extremums.Add(range.GetMax());
  Pop();
  return r;
}

double CScalarSolver::GetExtrem(double x0, double x1, bool bScan, bool bMin) const {
  // The derivative is a forward difference: the right end is pulled back so that it samples
  // inside [x0, x1].
  const double b = x1 - dStep;
  double d0 = GetDerivativeExtr(x0);
  const double d1 = GetDerivativeExtr(b);
  double lo = x0;
  double hi = b;

  if ((d0 >= 0.0 && d1 >= 0.0) || (d0 <= 0.0 && d1 <= 0.0)) {
    if (!bScan) {
      if (d0 <= -1e-10) return bMin ? b : x0;
      return bMin ? x0 : b;
    }
    // The end slopes agree, but the function may still turn inside: walk 19 samples from the
    // end that the slope marks as the lower one (b when falling at x0) and stop at the first
    // that improves on its predecessor in the sought sense.
    const bool fromB = d0 < 0.0;
    const double h = fromB ? -(b - x0) / 20 : (b - x0) / 20;
    double x = fromB ? b : x0;
    double prev = GetExtremFuncVal(x);
    bool found = false;
    for (int k = 0; k < 19 && !found; ++k) {
      x += h;
      const double f = GetExtremFuncVal(x);
      found = bMin ? f < prev : f > prev;
      prev = f;
    }
    if (!found) return fromB ? b : x0;
    if (fromB) {
      hi = x;
    } else {
      lo = x;
      d0 = GetDerivativeExtr(x);
    }
  }

  // Falling at lo while a maximum is sought, or rising while a minimum is: a turn between lo and
  // hi is the other kind of extremum, so the sought one is whichever of them is better.
  if (d0 <= -1e-10 && !bMin) return GetExtremFuncVal(lo) >= GetExtremFuncVal(hi) ? lo : hi;
  if (d0 > -1e-10 && bMin) return GetExtremFuncVal(lo) < GetExtremFuncVal(hi) ? lo : hi;

  while (hi - lo > dEps) {
    const double mid = (lo + hi) / 2;
    // Far from 0 the doubles between lo and hi may run out before dEps is reached.
    if (mid <= lo || mid >= hi) break;
    // A minimum lies beyond mid while the function falls there, a maximum while it rises.
    const bool falling = GetDerivativeExtr(mid) < -1e-10;
    if (falling == bMin)
      lo = mid;
    else
      hi = mid;
  }
  return (lo + hi) / 2;
}

double CScalarSolver::GetDer2Extr(double x) const {
  return (GetExtremFuncVal(x - dStep) + GetExtremFuncVal(x + dStep) - 2 * GetExtremFuncVal(x)) /
         (dStep * dStep);
}

double CScalarSolver::Integral(double a, double b) const {
  // n whole panels of width dEps * 1e5, each sampled at both ends and its middle. n is kept as a
  // double so that any quotient truncates without overflow. An interval shorter than one panel
  // gives n = 0 and a step of x/0: the result is then infinite or NaN, unguarded on purpose, as
  // callers expect.
  const double n = std::trunc((b - a) / (dEps * 100000));
  const double h = (b - a) / (2 * n);
  double sum = (h / 3) * (GetIntegratedFuncVal(a) + GetIntegratedFuncVal(b));
  for (double i = 1; i < n; ++i) sum += (2 * h / 3) * GetIntegratedFuncVal(a + 2 * i * h);
  for (double i = 0; i < n; ++i) sum += (4 * h / 3) * GetIntegratedFuncVal(a + (2 * i + 1) * h);
  return sum;
}

bool CScalarSolver::SolveLinearSystemUnitary(SMat n, SMat m, double d, SMat& x1, SMat& x2) {
  n.Normalize(0.0);
  if (std::fabs(d) < 1e-10) {
    // Only the one solution orthogonal to m; x1 is left as it was.
    x2.CrossProdNormalized(n, m);
    x2.SwapDirection();
    return true;
  }
  SMat e = m;
  e.ProjectToPlane(n);
  const double p = e.Prod(m);
  // Callers catch this as a plain text, not as a CMatrExeption.
  if (e.Norm() < 1e-10) throw "SolveLinearSystemUnitary(): \n degenerated system of equations";
  SMat c;
  c.CrossProdNormalized(n, e);
  e *= d / p;
  const double k = e.Norm();
  if (k > 1) return false;
  c *= std::sqrt(1 - k * k);
  x1 = e + c;
  x2 = e - c;
  return true;
}

bool CScalarSolver::SolveLinearSystemNormalized(SMat, SMat, double, double, double, SMat&, SMat&) {
  return true;
}
