// The textbook Crout loop that LUDecompose must reproduce bit for bit, whatever schedule it uses:
// 1-based over row pointers, rows scaled by their largest element, the greater-or-equal pivot
// choice, exact-zero pivots replaced by 1e-20, every product subtracted in turn. Shared by the
// tests and the benchmark, which checks the factors it times.
#pragma once
#include <znmt64/Mat.h>
#include <znmt64/NRCUtil.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

inline bool CroutReference(Mat& m, int* indx, double& d) {
  const int n = m.NCols();
  std::vector<double*> rows(n + 1);
  std::vector<double> vv(n + 1);
  double** a = rows.data();
  FillRowPtrs(a, m, n);
  d = 1.0;
  for (int i = 1; i <= n; ++i) {
    double big = 0.0;
    for (int j = 1; j <= n; ++j) big = std::max(big, std::fabs(a[i][j]));
    if (big == 0.0) return false;
    vv[i] = 1.0 / big;
  }
  for (int j = 1; j <= n; ++j) {
    for (int i = 1; i < j; ++i) {
      double sum = a[i][j];
      for (int k = 1; k < i; ++k) sum -= a[i][k] * a[k][j];
      a[i][j] = sum;
    }
    double big = 0.0;
    int imax = j;
    for (int i = j; i <= n; ++i) {
      double sum = a[i][j];
      for (int k = 1; k < j; ++k) sum -= a[i][k] * a[k][j];
      a[i][j] = sum;
      const double dum = vv[i] * std::fabs(sum);
      if (dum >= big) {
        big = dum;
        imax = i;
      }
    }
    if (j != imax) {
      for (int k = 1; k <= n; ++k) std::swap(a[imax][k], a[j][k]);
      d = -d;
      vv[imax] = vv[j];
    }
    indx[j] = imax;
    if (a[j][j] == 0.0) a[j][j] = 1e-20;
    if (j != n) {
      const double dum = 1.0 / a[j][j];
      for (int i = j + 1; i <= n; ++i) a[i][j] *= dum;
    }
  }
  return true;
}
