// Pair 3: 3×3 and 4×4 matrices. Mat against Eigen's MatrixXd (dynamic size: a heap block per
// matrix, as ours has, the fair peer) and Matrix3d / Matrix4d (fixed size, on the stack: the
// limit). Each row also reports the heap blocks one operation requests ("allocs").
#include <znmt64/Mat.h>

#include <Eigen/Dense>

#include <vector>

#include "BenchUtil.h"

namespace {

constexpr std::size_t kCount = 256;

template <int N>
struct Inputs {
  using Fixed = Eigen::Matrix<double, N, N>;
  using FixedVec = Eigen::Matrix<double, N, 1>;
  std::vector<Mat> a, b, rhs;
  std::vector<Eigen::MatrixXd> ea, eb;
  std::vector<Eigen::VectorXd> erhs;
  std::vector<Fixed, Eigen::aligned_allocator<Fixed>> fa, fb;
  std::vector<FixedVec, Eigen::aligned_allocator<FixedVec>> frhs;

  // Diagonally dominant, so every inverse and solution exists, with pivoting still at work.
  Inputs() {
    const std::vector<double> u = bench::Uniform(kCount * (2 * N * N + N), -1.0, 1.0, 10 + N);
    const double* p = u.data();
    for (std::size_t i = 0; i < kCount; ++i) {
      Mat ma(N, N), mb(N, N), mr(N, 1);
      for (int k = 0; k < N * N; ++k) ma[k] = *p++ + (k % (N + 1) == 0 ? N : 0.0);
      for (int k = 0; k < N * N; ++k) mb[k] = *p++;
      for (int k = 0; k < N; ++k) mr[k] = *p++;
      a.push_back(ma);
      b.push_back(mb);
      rhs.push_back(mr);
      ea.push_back(ToEigen(ma));
      eb.push_back(ToEigen(mb));
      erhs.push_back(ToEigen(mr));
      fa.push_back(ToEigen(ma));
      fb.push_back(ToEigen(mb));
      frhs.push_back(ToEigen(mr));
    }
  }
  static Eigen::MatrixXd ToEigen(const Mat& m) {
    Eigen::MatrixXd e(m.NRows(), m.NCols());
    for (int r = 0; r < m.NRows(); ++r)
      for (int c = 0; c < m.NCols(); ++c) e(r, c) = m.GetElem(r, c);
    return e;
  }
};

template <int N>
Inputs<N>& In() {
  static Inputs<N> in;
  return in;
}

using benchmark::DoNotOptimize;
using bench::RunBatch;

// ---- product into a new matrix: the result's block is allocated ----------------------------------
template <int N>
void Product_znmt64(benchmark::State& s) {
  Inputs<N>& in = In<N>();
  RunBatch(s, kCount, [&](std::size_t i) {
    Mat c = in.a[i] * in.b[i];
    DoNotOptimize(c.m_pData[0]);
  });
}
template <int N>
void Product_eigenDyn(benchmark::State& s) {
  Inputs<N>& in = In<N>();
  RunBatch(s, kCount, [&](std::size_t i) {
    Eigen::MatrixXd c = in.ea[i] * in.eb[i];
    DoNotOptimize(c.data()[0]);
  });
}
template <int N>
void Product_eigenFixed(benchmark::State& s) {
  Inputs<N>& in = In<N>();
  RunBatch(s, kCount, [&](std::size_t i) {
    typename Inputs<N>::Fixed c = in.fa[i] * in.fb[i];
    DoNotOptimize(c);
  });
}

// ---- product into an existing matrix ------------------------------------------------------------
template <int N>
void ProductInto_znmt64(benchmark::State& s) {
  Inputs<N>& in = In<N>();
  Mat c(N, N);
  RunBatch(s, kCount, [&](std::size_t i) {
    c.Mult(in.a[i], in.b[i]);
    DoNotOptimize(c.m_pData[0]);
  });
}
template <int N>
void ProductInto_eigenDyn(benchmark::State& s) {
  Inputs<N>& in = In<N>();
  Eigen::MatrixXd c(N, N);
  RunBatch(s, kCount, [&](std::size_t i) {
    c.noalias() = in.ea[i] * in.eb[i];
    DoNotOptimize(c.data()[0]);
  });
}
template <int N>
void ProductInto_eigenFixed(benchmark::State& s) {
  Inputs<N>& in = In<N>();
  typename Inputs<N>::Fixed c;
  RunBatch(s, kCount, [&](std::size_t i) {
    c.noalias() = in.fa[i] * in.fb[i];
    DoNotOptimize(c);
  });
}

// ---- determinant --------------------------------------------------------------------------------
template <int N>
void Det_znmt64(benchmark::State& s) {
  Inputs<N>& in = In<N>();
  RunBatch(s, kCount, [&](std::size_t i) { DoNotOptimize(in.a[i].Det()); });
}
template <int N>
void Det_eigenDyn(benchmark::State& s) {
  Inputs<N>& in = In<N>();
  RunBatch(s, kCount, [&](std::size_t i) { DoNotOptimize(in.ea[i].determinant()); });
}
template <int N>
void Det_eigenFixed(benchmark::State& s) {
  Inputs<N>& in = In<N>();
  RunBatch(s, kCount, [&](std::size_t i) { DoNotOptimize(in.fa[i].determinant()); });
}

// ---- inverse ------------------------------------------------------------------------------------
// Into a result matrix that exists already, for all three.
template <int N>
void Inverse_znmt64(benchmark::State& s) {
  Inputs<N>& in = In<N>();
  Mat inv(N, N);
  RunBatch(s, kCount, [&](std::size_t i) {
    DoNotOptimize(in.a[i].GetInverse(inv));
    DoNotOptimize(inv.m_pData[0]);
  });
}
template <int N>
void Inverse_eigenDyn(benchmark::State& s) {
  Inputs<N>& in = In<N>();
  Eigen::MatrixXd inv(N, N);
  RunBatch(s, kCount, [&](std::size_t i) {
    inv = in.ea[i].inverse();
    DoNotOptimize(inv.data()[0]);
  });
}
template <int N>
void Inverse_eigenFixed(benchmark::State& s) {
  Inputs<N>& in = In<N>();
  typename Inputs<N>::Fixed inv;
  RunBatch(s, kCount, [&](std::size_t i) {
    inv = in.fa[i].inverse();
    DoNotOptimize(inv);
  });
}

// ---- solve --------------------------------------------------------------------------------------
// Ours solves in place, so the matrix and the right-hand side are copied into existing work
// matrices first; Eigen's partial-pivoting LU copies the matrix itself.
template <int N>
void Solve_znmt64(benchmark::State& s) {
  Inputs<N>& in = In<N>();
  Mat w(N, N), x(N, 1);
  RunBatch(s, kCount, [&](std::size_t i) {
    w = in.a[i];
    x = in.rhs[i];
    w.Solve(x);
    DoNotOptimize(x.m_pData[0]);
  });
}
template <int N>
void Solve_eigenDyn(benchmark::State& s) {
  Inputs<N>& in = In<N>();
  Eigen::VectorXd x(N);
  RunBatch(s, kCount, [&](std::size_t i) {
    x = in.ea[i].partialPivLu().solve(in.erhs[i]);
    DoNotOptimize(x.data()[0]);
  });
}
template <int N>
void Solve_eigenFixed(benchmark::State& s) {
  Inputs<N>& in = In<N>();
  typename Inputs<N>::FixedVec x;
  RunBatch(s, kCount, [&](std::size_t i) {
    x = in.fa[i].partialPivLu().solve(in.frhs[i]);
    DoNotOptimize(x);
  });
}

#define ZN_SMALL(op, name)                                               \
  BENCHMARK(op##_znmt64<3>)->Name("mat3/" name "/znmt64");               \
  BENCHMARK(op##_eigenDyn<3>)->Name("mat3/" name "/eigen_dyn");          \
  BENCHMARK(op##_eigenFixed<3>)->Name("mat3/" name "/eigen_fixed");      \
  BENCHMARK(op##_znmt64<4>)->Name("mat4/" name "/znmt64");               \
  BENCHMARK(op##_eigenDyn<4>)->Name("mat4/" name "/eigen_dyn");          \
  BENCHMARK(op##_eigenFixed<4>)->Name("mat4/" name "/eigen_fixed")

ZN_SMALL(Product, "product");
ZN_SMALL(ProductInto, "product_into");
ZN_SMALL(Det, "det");
ZN_SMALL(Inverse, "inverse");
ZN_SMALL(Solve, "solve");

}  // namespace
