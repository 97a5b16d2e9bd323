#include <gtest/gtest.h>
#include <znmt64/CScalarSolver.h>
#include <znmt64/Mat.h>

#include <cmath>
#include <numbers>

namespace {

using std::numbers::pi;

double Line(double x) { return x - 1.0; }
double Cubic(double x) { return x * x * x - 2.0 * x + 1.0; }

struct Sine : CScalarSolver {
  double GetExtremFuncVal(double x) const override { return std::sin(x); }
  double GetSolverBrentMethodFunctValue(double x) override { return std::sin(x); }
};

// The code of the CMatrExeption that f throws, 0 when it throws none.
template <class F>
unsigned ThrownCode(F f) {
  try {
    f();
  } catch (CMatrExeption* e) {
    const unsigned code = e->m_nCode;
    e->Delete();
    return code;
  }
  return 0;
}

TEST(CScalarSolver, BrentEndsFailuresAndExhaustion) {
  CScalarSolver s;
  s.AttachFunct(Line, false);
  double root = 7.0;
  EXPECT_TRUE(s.FindRootBrentMethod(RangeR1(1.0, 3.0), root) && root == 1.0);
  EXPECT_TRUE(s.FindRootBrentMethod(RangeR1(-2.0, 1.0), root) && root == 1.0);
  root = 7.0;
  EXPECT_FALSE(s.FindRootBrentMethod(RangeR1(2.0, 3.0), root));  // equal signs
  s.nBlock = 1;
  EXPECT_TRUE(!s.FindRootBrentMethod(RangeR1(0.0, 3.0), root) && root == 7.0);
  s.nBlock = 0;
  // A jump at 0 never meets the purely relative tolerance.
  s.AttachFunct([](double x) { return x < 0.0 ? -1.0 : 1.0; }, false);
  EXPECT_TRUE(!s.FindRootBrentMethod(RangeR1(-1.0, 2.0), root) && root == 0.0);
}

TEST(CScalarSolver, FunctionSources) {
  CScalarSolver byPointer(Line);  // integrand only: Brent's method sees 0.0
  EXPECT_EQ(byPointer.GetBrentFunctValue(5.0), 0.0);
  byPointer.AttachFunct(nullptr, false);
  EXPECT_EQ(byPointer.GetBrentFunctValue(5.0), 1e307);
  struct Half : IDelegateIntern { double GetValue(double x) override { return x / 2; } } half;
  byPointer.AttachDelegate(&half);
  byPointer.AttachFunct(Line, true);
  EXPECT_EQ(byPointer.GetBrentFunctValue(5.0), 2.5);
  Sine sine;  // overrides instead of sources
  sine.dStep = 1e-3;
  EXPECT_NEAR(sine.GetDer2Extr(pi / 2), -1.0, 1e-6);
}

TEST(CScalarSolver, FindRootsAppendsInIncreasingOrder) {
  Sine s;
  CArray<double, double> roots;
  roots.Add(-1.0);
  EXPECT_TRUE(s.FindRoots(RangeR1(0.5, 10.0), roots, 0.1));
  ASSERT_TRUE(roots.GetSize() == 4 && roots[0] == -1.0);
  for (int k = 1; k <= 3; ++k) EXPECT_NEAR(roots[k], k * pi, 1e-6);

  CScalarSolver line;
  line.AttachFunct(Line, false);
  roots.RemoveAll();
  EXPECT_TRUE(line.FindRoots(RangeR1(0.0, 2.0), roots, 0.5));  // a sample hits the root
  EXPECT_TRUE(line.FindRoots(RangeR1(1.0, 3.0), roots, 0.5));  // the root starts the range
  EXPECT_TRUE(roots.GetSize() == 2 && roots[0] == 1.0 && roots[1] == 1.0);
  EXPECT_FALSE(line.FindRoots(RangeR1(0.0, 2.0), roots, 1e-11));

  // Blocked: a single step still checks the right end; a bracketed refinement throws.
  line.nBlock = 1;
  roots.RemoveAll();
  EXPECT_TRUE(line.FindRoots(RangeR1(0.0, 1.0), roots, 2.0) && roots.GetSize() == 1 && roots[0] == 1.0);
  EXPECT_EQ(ThrownCode([&] { line.FindRoots(RangeR1(0.0, 2.0), roots, 0.3); }), 3u);
}

TEST(CScalarSolver, ExtremumsKeepEndsAndRestoreTolerances) {
  struct Rising : CScalarSolver {
    double GetExtremFuncVal(double x) const override { return x; }
  } rising;
  CArray<double, double> ext;
  ext.Add(42.0);
  EXPECT_TRUE(rising.GetExtremums(RangeR1(0.0, 2.0), ext, 0.1) && ext.GetSize() == 2 && ext[1] == 2.0);
  EXPECT_EQ(ext[0], 0.0);
  Sine s;
  s.dEps = 2e-8;
  EXPECT_TRUE(s.GetExtremums(RangeR1(1.0, 7.0), ext, 0.1));
  ASSERT_TRUE(ext.GetSize() == 4 && ext[0] == 1.0 && ext[3] == 7.0);
  // Within the scaled relative precision, 2 * 1000 * dEps * x.
  EXPECT_NEAR(ext[1], pi / 2, 1e-4);
  EXPECT_NEAR(ext[2], 3 * pi / 2, 2e-4);
  EXPECT_TRUE(s.dEps == 2e-8 && s.dTol == 1e-10 && s.nMode == 0 && s.GetStackCount() == 0);
  s.nBlock = 1;  // a failed refinement gives the solver back as it was
  EXPECT_EQ(ThrownCode([&] { s.GetExtremums(RangeR1(1.0, 7.0), ext, 0.1); }), 3u);
  EXPECT_TRUE(s.dEps == 2e-8 && s.nMode == 0 && s.GetStackCount() == 0);
}

TEST(CScalarSolver, GetExtremWithAndWithoutScan) {
  Sine s;  // both end slopes rise on [0.1, 0.1 + 2pi]
  const double x1 = 0.1 + 2 * pi;
  EXPECT_EQ(s.GetExtrem(0.1, x1, false, true), 0.1);
  EXPECT_EQ(s.GetExtrem(0.1, x1, false, false), x1 - s.dStep);
  EXPECT_NEAR(s.GetExtrem(0.1, x1, true, false), pi / 2, 1e-6);
  EXPECT_NEAR(s.GetExtrem(0.1, x1, true, true), 3 * pi / 2, 1e-6);
  EXPECT_NEAR(s.GetExtrem(3.0, 6.0, false, true), 3 * pi / 2, 1e-6);
  EXPECT_EQ(s.GetExtrem(3.0, 6.0, false, false), 3.0);  // the higher end
}

TEST(CScalarSolver, SimpsonIsExactOnCubics) {
  CScalarSolver fine;  // panels of 1e-3
  fine.AttachFunct(Cubic, true);
  EXPECT_NEAR(fine.Integral(0.0, 0.005), 0.005 - 0.000025 + std::pow(0.005, 4) / 4, 1e-15);
  CScalarSolver coarse(Cubic);  // panels of 1e-2
  EXPECT_NEAR(coarse.Integral(-1.0, 1.0), 2.0, 1e-12);
  EXPECT_TRUE(std::isinf(coarse.Integral(0.0, 0.005)));
  EXPECT_TRUE(std::isnan(coarse.Integral(1.0, 1.0)));
}

TEST(CScalarSolver, UnitarySystem) {
  CScalarSolver s;
  const SMat n(0, 0, 2);
  SMat x1(9, 9, 9), x2;
  EXPECT_TRUE(s.SolveLinearSystemUnitary(n, SMat(1, 0, 0), 0.0, x1, x2) && x1.Is(9, 9, 9) && x2.Is(0, -1, 0));
  EXPECT_TRUE(s.SolveLinearSystemUnitary(n, SMat(2, 0, 5), 1.0, x1, x2));
  EXPECT_TRUE(x1.Is(0.5, std::sqrt(0.75), 0) && x2.Is(0.5, -std::sqrt(0.75), 0));
  EXPECT_FALSE(s.SolveLinearSystemUnitary(n, SMat(1, 0, 0), 2.0, x1, x2));
  EXPECT_TRUE(s.SolveLinearSystemNormalized(n, n, 1, 2, 3, x1, x2));
  EXPECT_TRUE(x2.Is(0.5, -std::sqrt(0.75), 0));  // left by both
  try {
    s.SolveLinearSystemUnitary(n, SMat(0, 0, 3), 1.0, x1, x2);
    ADD_FAILURE() << "no throw";
  } catch (const char* text) {
    EXPECT_STREQ(text, "SolveLinearSystemUnitary(): \n degenerated system of equations");
  }
}

TEST(CScalarSolver, ValueSemanticsAndSharedStack) {
  CScalarSolver a;
  a.AttachFunct(Line, false);
  CScalarSolver b;
  b.dEps = 1e-3;
  b.nMode = b.nBlock = 1;
  a = b;
  EXPECT_TRUE(a.dEps == 1e-3 && a.nMode == 1 && a.nBlock == 0 && a.nSource == 1);
  a.dTol += 5e-11;
  EXPECT_TRUE(a == b);
  a.dTol += 2e-10;
  EXPECT_FALSE(a == b);

  auto* source = new CScalarSolver;
  source->Push();
  source->dEps = 0.5;
  CScalarSolver copy(*source);
  EXPECT_EQ(copy.GetState(0), source->GetState(0));  // one array, two owners
  delete source;
  copy.Push();  // grows into an array of its own
  copy.Pop();
  copy.Pop();
  EXPECT_TRUE(copy.dEps == 1e-8 && copy.GetStackCount() == 0 && copy.GetStackSize() == 2);
}

}  // namespace
