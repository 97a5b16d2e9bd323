// LUDecompose and lubksb solve every well-conditioned system to a small residual.
#include <znmt64/Mat.h>
#include <znmt64/NRCUtil.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <vector>

#include "Generators.h"

RC_GTEST_PROP(LinearSystemProperty, LUDecompositionSolvesWithSmallResiduals, ()) {
  const int n = *rc::gen::inRange(1, 25);
  // Entries in [-1, 1] and ±(n + 1) added to one entry per row, so the condition number stays small;
  // that entry sits off the diagonal by a shift, so pivoting is exercised.
  Mat a(n, n);
  for (int k = 0; k < n * n; ++k) a[k] = *prop::Coordinate(1.0);
  const int shift = *rc::gen::inRange(0, n);
  for (int i = 0; i < n; ++i) a(i + 1, (i + shift) % n + 1) += (n + 1) * (*rc::gen::arbitrary<bool>() ? 1.0 : -1.0);
  std::vector<double> b(n + 1);
  double scale = 0.0;
  for (int i = 1; i <= n; ++i) b[i] = *prop::Coordinate(100.0);
  for (int i = 1; i <= n; ++i) scale = std::max(scale, std::fabs(b[i]));

  Mat lu(a);
  std::vector<int> indx(n + 1);
  double d = 0.0;
  RC_ASSERT(lu.LUDecompose(indx.data(), d));
  RC_ASSERT(std::fabs(d) == 1.0);
  std::vector<double> x = b;
  double** rows = GetRowPtrs(lu);
  lubksb(rows, n, indx.data(), x.data());
  free_rowptrs(rows);
  for (int i = 1; i <= n; ++i) {
    double r = -b[i];
    for (int j = 1; j <= n; ++j) r += a(i, j) * x[j];
    RC_ASSERT(std::fabs(r) <= 1e-12 * (1.0 + scale) * n);
  }
}
