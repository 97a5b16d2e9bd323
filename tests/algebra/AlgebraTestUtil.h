// Helpers of the algebra tests: matrices from literal or random values, and their flat contents.
#pragma once
#include <znmt64/Mat.h>

#include <random>
#include <vector>

using V = std::vector<double>;

// A rows×cols matrix whose flat elements, row by row, are v.
inline Mat Make(int rows, int cols, const V& v) {
  Mat m(rows, cols);
  for (int k = 0; k < static_cast<int>(v.size()); ++k) m[k] = v[k];
  return m;
}

// Uniform in [-1, 1], with `diagonal` added on the diagonal.
inline Mat Random(int rows, int cols, unsigned seed, double diagonal) {
  std::mt19937 gen(seed);
  std::uniform_real_distribution<double> u(-1.0, 1.0);
  Mat m(rows, cols);
  for (int i = 1; i <= rows; ++i)
    for (int j = 1; j <= cols; ++j) m(i, j) = u(gen) + (i == j ? diagonal : 0.0);
  return m;
}

inline V Flat(const Mat& m) { return V(m.m_pData, m.m_pData + m.m_nSize); }
