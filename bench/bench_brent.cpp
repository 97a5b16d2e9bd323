// Pair 6: one root by Brent's method. CScalarSolver::FindRootBrentMethod against GSL's Brent
// solver and Boost.Math's TOMS 748, on the same brackets and to the same tolerance: each stops once
// the bracket is narrower than 4e-8 relative to the root, which is where ours stops with its
// default relative precision of 1e-8 (|c - b| / 2 <= 2·1e-8·|b|). Each row reports the time of one
// solve and the function evaluations it took ("evals").
#include <znmt64/CScalarSolver.h>

#include <boost/math/tools/toms748_solve.hpp>
#include <gsl/gsl_errno.h>
#include <gsl/gsl_roots.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <stdexcept>

#include "BenchUtil.h"

namespace {

constexpr double kRelWidth = 4e-8;

long g_evals = 0;

double Sqrt2(double x) { return ++g_evals, x * x - 2.0; }
double CosFixedPoint(double x) { return ++g_evals, std::cos(x) - x; }
double Ln2(double x) { return ++g_evals, std::exp(x) - 2.0; }
double Wallis(double x) { return ++g_evals, x * x * x - 2.0 * x - 5.0; }
double RootAtEnd(double x) { return ++g_evals, x * x - 4.0; }  // exactly 0 at the right end

struct Problem {
  const char* name;
  double (*f)(double);
  double lo, hi;
};
constexpr Problem kProblems[] = {
    {"x2-2", Sqrt2, 0.0, 2.0},           {"cos-x", CosFixedPoint, 0.0, 1.0}, {"exp-2", Ln2, 0.0, 1.0},
    {"x3-2x-5", Wallis, 2.0, 3.0},       {"root-at-end", RootAtEnd, 0.0, 2.0},
};

template <class Solve>
void Run(benchmark::State& s, Solve&& solve) {
  const Problem& p = kProblems[s.range(0)];
  g_evals = 0;
  benchmark::DoNotOptimize(solve(p));
  const long evals = g_evals;
  for (auto _ : s) benchmark::DoNotOptimize(solve(p));
  s.counters["evals"] = static_cast<double>(evals);
  s.counters["sec_per_op"] = bench::PerOp();
  s.SetLabel(p.name);
}

void Brent_znmt64(benchmark::State& s) {
  CScalarSolver solver;
  Run(s, [&](const Problem& p) {
    solver.AttachFunct(p.f, false);
    double root = 0.0;
    if (!solver.FindRootBrentMethod(RangeR1(p.lo, p.hi), root)) throw std::runtime_error("no root");
    return root;
  });
}

void Brent_gsl(benchmark::State& s) {
  gsl_set_error_handler_off();
  gsl_root_fsolver* solver = gsl_root_fsolver_alloc(gsl_root_fsolver_brent);
  Run(s, [&](const Problem& p) {
    gsl_function fn{[](double x, void* q) { return static_cast<const Problem*>(q)->f(x); },
                    const_cast<Problem*>(&p)};
    gsl_root_fsolver_set(solver, &fn, p.lo, p.hi);
    int status = GSL_CONTINUE;
    for (int iter = 0; status == GSL_CONTINUE && iter < 100; ++iter) {
      gsl_root_fsolver_iterate(solver);
      status = gsl_root_test_interval(gsl_root_fsolver_x_lower(solver), gsl_root_fsolver_x_upper(solver), 0.0,
                                      kRelWidth);
    }
    if (status != GSL_SUCCESS) throw std::runtime_error("no root");
    return gsl_root_fsolver_root(solver);
  });
  gsl_root_fsolver_free(solver);
}

void Toms748_boost(benchmark::State& s) {
  Run(s, [&](const Problem& p) {
    std::uintmax_t iters = 100;
    const auto tol = [](double a, double b) {
      return std::fabs(a - b) <= kRelWidth * std::min(std::fabs(a), std::fabs(b));
    };
    const std::pair<double, double> r = boost::math::tools::toms748_solve(p.f, p.lo, p.hi, tol, iters);
    return 0.5 * (r.first + r.second);
  });
}

void Problems(benchmark::internal::Benchmark* b) { b->DenseRange(0, std::size(kProblems) - 1); }

}  // namespace

BENCHMARK(Brent_znmt64)->Name("brent/solve/znmt64")->Apply(Problems);
BENCHMARK(Brent_gsl)->Name("brent/solve/gsl")->Apply(Problems);
BENCHMARK(Toms748_boost)->Name("brent/solve/boost_toms748")->Apply(Problems);
