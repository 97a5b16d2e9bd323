// Common base of the numeric solvers of the suite.
#pragma once
#include <znmt64/Config.h>

// Holds nothing: it gives every solver a virtual destructor, so that a solver is deleted through
// its base correctly, and one type for the suite to pass solvers around by.
class ZNAG64_API SolverBase {
 public:
  SolverBase();
  SolverBase(const SolverBase&) = default;
  SolverBase& operator=(const SolverBase&) = default;
  virtual ~SolverBase();
};
