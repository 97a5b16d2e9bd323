#include <znmt64/CScalarSolver.h>
#include <znmt64/Mat.h>

#include "Demo.h"

#include <cmath>

namespace {
double Sample(double x) { return (x + 1) * (x - 1) * (x - 2); }

// The extremum search reads its function through an override, as the library's own derived
// solvers do; roots and the integral use the plain function attached below.
struct SampleSolver : CScalarSolver {
  double GetExtremFuncVal(double x) const override { return Sample(x); }
};

void Print(const char* what, const CArray<double, double>& values) {
  std::printf("%s:", what);
  for (INT_PTR k = 0; k < values.GetSize(); ++k) std::printf(" %.8f", values[k]);
  std::printf("\n");
}
}  // namespace

void DemoSolver() {
  Section("Scalar solver: roots, extremums and an integral");
  SampleSolver solver;
  solver.AttachFunct(Sample, false);
  const RangeR1 range(-2.0, 3.0);
  std::printf("f(x) = (x + 1)(x - 1)(x - 2) on [%g, %g]\n", range.GetMin(), range.GetMax());

  double root = 0.0;
  if (solver.FindRootBrentMethod(RangeR1(0.0, 1.5), root))
    std::printf("Brent's method on [0, 1.5]: %.10f\n", root);

  CArray<double, double> values;
  try {
    solver.FindRoots(range, values, 0.1);
    Print("roots, scanned in steps of 0.1", values);
    solver.GetExtremums(range, values, 0.1);
    Print("extremum candidates, the ends included", values);
  } catch (CMatrExeption* e) {  // a refinement that failed inside a bracket
    std::printf("scan failed, code %u\n", e->m_nCode);
    e->Delete();
  }
  std::printf("maximum on [-1, 1] at %.6f, minimum on [1, 2] at %.6f (exactly %.6f and %.6f)\n",
              solver.GetExtrem(-1.0, 1.0, false, false), solver.GetExtrem(1.0, 2.0, false, true),
              (2 - std::sqrt(7.0)) / 3, (2 + std::sqrt(7.0)) / 3);
  std::printf("integral over [-2, 3] by Simpson's rule: %.10f (exactly 5/12 = %.10f)\n",
              solver.Integral(range.GetMin(), range.GetMax()), 5.0 / 12);
}
