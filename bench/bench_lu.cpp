// Pair 4: LU decomposition with partial pivoting and one solution, n from 16 to 1024. Ours
// (LUDecompose + lubksb) against Eigen's PartialPivLU and LAPACK's dgetrf + dgetrs on OpenBLAS, one
// thread each, all on the same matrix and right-hand side; also the textbook Crout loop that our
// factors must equal bit for bit, which every run checks before it times ours.
#include <znmt64/Mat.h>
#include <znmt64/NRCUtil.h>

#include <Eigen/Dense>
#include <lapacke.h>

#include <cmath>
#include <cstring>
#include <map>
#include <utility>
#include <vector>

#include "BenchUtil.h"

#include "../tests/support/CroutReference.h"

namespace {

struct Problem {
  int n;
  Mat a, rhs;                 // row-major, ours
  std::vector<double> colA;   // the same matrix column-major, LAPACK's layout
  Eigen::MatrixXd ea;
  Eigen::VectorXd erhs;

  explicit Problem(int size) : n(size), a(size, size), rhs(size, 1), colA(std::size_t(size) * size), ea(size, size) {
    const std::vector<double> u = bench::Uniform(std::size_t(n) * n + n, -1.0, 1.0, 100 + n);
    for (int k = 0; k < n * n; ++k) a[k] = u[k];
    for (int k = 0; k < n; ++k) rhs[k] = u[std::size_t(n) * n + k];
    erhs = Eigen::Map<const Eigen::VectorXd>(rhs.m_pData, n);
    for (int r = 0; r < n; ++r)
      for (int c = 0; c < n; ++c) ea(r, c) = colA[std::size_t(c) * n + r] = a[r * n + c];
  }
};

const Problem& ProblemOf(int n) {
  static std::map<int, Problem> problems;
  auto it = problems.find(n);
  if (it == problems.end()) it = problems.emplace(n, Problem(n)).first;
  return it->second;
}


// Whether LUDecompose gives the reference's factors, pivot rows and sign, bit for bit. Checked
// once per size: the reference takes a second at n = 1024.
bool SameAsReference(int n) {
  static std::map<int, bool> checked;
  if (auto it = checked.find(n); it != checked.end()) return it->second;
  const Problem& p = ProblemOf(n);
  Mat ours = p.a, ref = p.a;
  std::vector<int> io(n + 1, 0), ir(n + 1, 0);
  double dOurs = 0.0, dRef = 0.0;
  const bool ok = ours.LUDecompose(io.data(), dOurs) == CroutReference(ref, ir.data(), dRef) &&
                  std::memcmp(ours.m_pData, ref.m_pData, sizeof(double) * std::size_t(n) * n) == 0 &&
                  io == ir && dOurs == dRef;
  checked.emplace(n, ok);
  return ok;
}

void SetCounters(benchmark::State& s, int n) {
  const double flops = 2.0 / 3.0 * n * double(n) * n;
  s.counters["flops"] = benchmark::Counter(flops, benchmark::Counter::kIsIterationInvariantRate);
  s.counters["sec_per_op"] = bench::PerOp();
}

// One decomposition and one solution per iteration, from a fresh copy of the problem.
template <class Decompose>
void TimeSolve(benchmark::State& s, int n, Decompose decompose) {
  const Problem& p = ProblemOf(n);
  Mat w(n, n), x(n, 1);
  std::vector<int> indx(n + 1);
  std::vector<double*> rows(n + 1);
  double d;
  for (auto _ : s) {
    w = p.a;
    x = p.rhs;
    decompose(w, indx.data(), d);
    FillRowPtrs(rows.data(), w, n);
    lubksb(rows.data(), n, indx.data(), GetVec1(x));
    benchmark::DoNotOptimize(x.m_pData[0]);
  }
  SetCounters(s, n);
}

void LU_znmt64(benchmark::State& s) {
  const int n = static_cast<int>(s.range(0));
  if (!SameAsReference(n)) {
    s.SkipWithError("LUDecompose differs from the textbook Crout loop");
    return;
  }
  TimeSolve(s, n, [](Mat& w, int* indx, double& d) { w.LUDecompose(indx, d); });
  s.counters["bit_identical"] = 1;
}

void LU_reference(benchmark::State& s) {
  TimeSolve(s, static_cast<int>(s.range(0)), CroutReference);
}

void LU_eigen(benchmark::State& s) {
  const int n = static_cast<int>(s.range(0));
  const Problem& p = ProblemOf(n);
  Eigen::PartialPivLU<Eigen::MatrixXd> lu(n);
  Eigen::VectorXd x(n);
  for (auto _ : s) {
    lu.compute(p.ea);
    x = lu.solve(p.erhs);
    benchmark::DoNotOptimize(x.data()[0]);
  }
  SetCounters(s, n);
}

// The _work entry points: column-major data goes straight to LAPACK, without LAPACKE's NaN scan.
void LU_openblas(benchmark::State& s) {
  const int n = static_cast<int>(s.range(0));
  const Problem& p = ProblemOf(n);
  std::vector<double> w(p.colA.size()), x(n);
  std::vector<lapack_int> ipiv(n);
  for (auto _ : s) {
    std::copy(p.colA.begin(), p.colA.end(), w.begin());
    std::copy_n(p.rhs.m_pData, n, x.begin());
    LAPACKE_dgetrf_work(LAPACK_COL_MAJOR, n, n, w.data(), n, ipiv.data());
    LAPACKE_dgetrs_work(LAPACK_COL_MAJOR, 'N', n, 1, w.data(), n, ipiv.data(), x.data(), n);
    benchmark::DoNotOptimize(x[0]);
  }
  SetCounters(s, n);
}

void Sizes(benchmark::internal::Benchmark* b) {
  for (int n : {16, 32, 64, 128, 256, 512, 1024}) b->Arg(n);
  b->Unit(benchmark::kMicrosecond);
}

}  // namespace

BENCHMARK(LU_znmt64)->Name("lu/solve/znmt64")->Apply(Sizes);
BENCHMARK(LU_eigen)->Name("lu/solve/eigen")->Apply(Sizes);
BENCHMARK(LU_openblas)->Name("lu/solve/openblas")->Apply(Sizes);
BENCHMARK(LU_reference)->Name("lu/solve/crout_reference")->Apply(Sizes);
