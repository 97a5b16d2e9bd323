#include <znag64/SolverBase.h>

// Out of line so that the class's virtual table and type information live in this module only.
SolverBase::SolverBase() = default;
SolverBase::~SolverBase() = default;
