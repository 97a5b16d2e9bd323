// CScalarSolver: one-variable problems on a real interval. Roots by Brent's method and by a stepped
// scan, extremums as roots of a forward-difference derivative, Simpson integrals, and a small
// closed-form vector system.
//
// The function comes from one of three sources: a plain function (AttachFunct), a delegate
// (AttachDelegate), or a derived class overriding the virtual value operations. The last
// AttachFunct(fn, false) or AttachDelegate decides what Brent's method sees; the integrand is
// always pFunct unless GetIntegratedFuncVal is overridden.
#pragma once
#include <znmt64/Config.h>

#include <znag64/SolverBase.h>
#include <znbl64/Range.h>
#include <znmt64/SMat.h>
#include <znmt64/StateStack.h>
#include <znmt64/platform/CArray.h>

// A function object the solver calls without owning it.
class ZNMT64_API IDelegateIntern {
 public:
  virtual double GetValue(double x) = 0;

 protected:
  ~IDelegateIntern() = default;
};

class ZNMT64_API CScalarSolver : public SolverBase {
 public:
  CScalarSolver();
  // Prepares integration only: Brent's method keeps seeing 0.0 until AttachFunct(fn, false).
  // Panels are ten times wider than with the default constructor (dEps 1e-7).
  explicit CScalarSolver(double (*fn)(double));
  // Takes the stack record as it stands, so the copy shares its source's saved-state array.
  CScalarSolver(const CScalarSolver&) = default;
  ~CScalarSolver() override = default;

  // Copies the tolerances and the mode only: function sources, nBlock, bClampStep and the stack
  // stay. This is what Push and Pop save and restore.
  void operator=(const CScalarSolver& src);
  // Tolerances within 1e-10 of each other and the same mode.
  bool operator==(const CScalarSolver& o) const;

  // ---- saved-state stack ----------------------------------------------------------------------
  virtual void Pop();
  virtual bool Discard();
  virtual void Push();
  virtual int GetStackCount() const;
  virtual int GetStackSize() const;
  virtual void AttachStack(int n);
  virtual bool PopDifferent();
  virtual void SetInitialStackSize(short n);
  void ResetStack();
  CScalarSolver* GetState(int i) const;

  // ---- the function ---------------------------------------------------------------------------
  // The function whose extremums are sought; -1e307 everywhere here.
  virtual double GetExtremFuncVal(double x) const;
  // The integrand: pFunct.
  virtual double GetIntegratedFuncVal(double x) const;
  // The function whose roots are sought, from the source chosen by nSource.
  virtual double GetSolverBrentMethodFunctValue(double x);
  // Forward difference of GetExtremFuncVal with step dStep.
  virtual double GetDerivativeExtr(double x) const;

  // Sets every field to its initial value except pDelegate; the stack is left alone.
  void Construct();
  void AttachFunct(double (*fn)(double), bool bOnlyIntegrand);
  void AttachDelegate(IDelegateIntern* d);

  // What Brent's method works on: the function value, or in derivative mode (nMode 1) the
  // forward difference.
  double GetBrentFunctValue(double x) {
    return nMode == 1 ? GetDerivativeExtr(x) : GetSolverBrentMethodFunctValue(x);
  }
  // The same for a sample of [.., xMax]: in derivative mode with bClampStep, x is pulled back to
  // xMax - dStep so that the forward difference never samples beyond the interval.
  double GetBrentFunctValue(double x, double xMax) {
    if (bClampStep && nMode == 1 && x > xMax - dStep) x = xMax - dStep;
    return GetBrentFunctValue(x);
  }

  // ---- solvers --------------------------------------------------------------------------------
  bool FindRootBrentMethod(const RangeR1& range, double& root);
  // Appends the roots on range in increasing order; roots is not cleared.
  bool FindRoots(RangeR1 range, CArray<double, double>& roots, double step);
  // Replaces extremums with the candidate extremum points: the roots of the derivative and both
  // end points.
  bool GetExtremums(RangeR1 range, CArray<double, double>& extremums, double step);
  double GetExtrem(double x0, double x1, bool bScan, bool bMin) const;
  // Central second difference of GetExtremFuncVal with step dStep.
  double GetDer2Extr(double x) const;
  // Composite Simpson's rule with panels of width dEps * 1e5.
  double Integral(double a, double b) const;
  // The unit vectors x with x orthogonal to n and x.m == d.
  bool SolveLinearSystemUnitary(SMat n, SMat m, double d, SMat& x1, SMat& x2);
  // Inert: returns true and writes nothing.
  bool SolveLinearSystemNormalized(SMat, SMat, double, double, double, SMat&, SMat&);

  StateStack<CScalarSolver> m_stack;
  int nMode;          // 0: roots of the function; 1: roots of its derivative
  double dEps;        // relative precision of Brent's method, interval precision of the scans
  double dTol;        // function values below it count as zero
  double dStep;       // step of the differences
  int nBlock;         // while non-zero FindRootBrentMethod fails at once; set by derived classes
  bool bClampStep;    // keep derivative samples inside the interval
  double (*pFunct)(double);
  IDelegateIntern* pDelegate = nullptr;
  int nSource;        // 0 none, 1 pFunct, otherwise pDelegate
};
