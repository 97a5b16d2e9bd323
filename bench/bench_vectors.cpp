// Pair 1: three-component vectors. SMat against Eigen's Vector3d (fixed size, inlined like ours)
// and Open CASCADE's gp_Vec; the same vectors for all three.
#include <znmt64/SMat.h>

#include <Eigen/Dense>
#include <gp_Vec.hxx>
#include <gp_XYZ.hxx>

#include <cmath>
#include <vector>

#include "BenchUtil.h"

namespace {

constexpr double kEps = 1e-10;
constexpr double kAngularTol = 1e-10;

struct Inputs {
  // a and b independent; c nearly parallel to a (a scaled, plus a perturbation of 1e-13).
  std::vector<SMat> a, b, c;
  std::vector<Eigen::Vector3d> ea, eb, ec;
  std::vector<gp_Vec> ga, gb, gc;

  Inputs() {
    const std::vector<double> u = bench::Uniform(6 * bench::kBatch, -1.0, 1.0, 1);
    const std::vector<double> s = bench::Uniform(bench::kBatch, 0.5, 2.0, 2);
    for (std::size_t i = 0; i < bench::kBatch; ++i) {
      const double* p = &u[6 * i];
      const SMat va(p[0], p[1], p[2]), vb(p[3], p[4], p[5]);
      const SMat vc = s[i] * va + SMat(1e-13 * p[3], 1e-13 * p[4], 1e-13 * p[5]);
      Add(va, a, ea, ga);
      Add(vb, b, eb, gb);
      Add(vc, c, ec, gc);
    }
  }
  static void Add(const SMat& v, std::vector<SMat>& s, std::vector<Eigen::Vector3d>& e, std::vector<gp_Vec>& g) {
    s.push_back(v);
    e.emplace_back(v.x, v.y, v.z);
    g.emplace_back(v.x, v.y, v.z);
  }
};

const Inputs& In() {
  static const Inputs in;
  return in;
}

using benchmark::DoNotOptimize;
using bench::RunBatch;

// ---- dot --------------------------------------------------------------------------------------
void Dot_znmt64(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) { DoNotOptimize(in.a[i].Prod(in.b[i])); });
}
void Dot_eigen(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) { DoNotOptimize(in.ea[i].dot(in.eb[i])); });
}
void Dot_occt(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) { DoNotOptimize(in.ga[i].Dot(in.gb[i])); });
}

// ---- cross ------------------------------------------------------------------------------------
void Cross_znmt64(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) {
    SMat c;
    c.CrossProd(in.a[i], in.b[i]);
    DoNotOptimize(c);
  });
}
void Cross_eigen(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) {
    Eigen::Vector3d c = in.ea[i].cross(in.eb[i]);
    DoNotOptimize(c);
  });
}
void Cross_occt(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) {
    gp_Vec c = in.ga[i].Crossed(in.gb[i]);
    DoNotOptimize(c);
  });
}

// ---- normalize --------------------------------------------------------------------------------
void Normalize_znmt64(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) {
    SMat v = in.a[i];
    DoNotOptimize(v.Normalize(kEps));
    DoNotOptimize(v);
  });
}
void Normalize_eigen(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) {
    Eigen::Vector3d v = in.ea[i];
    v.normalize();
    DoNotOptimize(v);
  });
}
void Normalize_occt(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) {
    gp_Vec v = in.ga[i];
    v.Normalize();
    DoNotOptimize(v);
  });
}

// ---- angle ------------------------------------------------------------------------------------
// Eigen has no angle of its own; atan2(|a x b|, a.b) is its users' robust idiom.
void Angle_znmt64(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) { DoNotOptimize(in.a[i].Angle(in.b[i], kEps)); });
}
void Angle_eigen(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) {
    DoNotOptimize(std::atan2(in.ea[i].cross(in.eb[i]).norm(), in.ea[i].dot(in.eb[i])));
  });
}
void Angle_occt(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) { DoNotOptimize(in.ga[i].Angle(in.gb[i])); });
}

// ---- collinearity -----------------------------------------------------------------------------
// Eigen: the cross product's norm against the tolerance; Open CASCADE: IsParallel, by angle. Ours
// compares component ratios instead when the cross product is below 1e-4, so independent and
// nearly parallel pairs are timed apart.
template <bool kNear>
void IsCollinear_znmt64(benchmark::State& s) {
  const Inputs& in = In();
  const std::vector<SMat>& other = kNear ? in.c : in.b;
  RunBatch(s, bench::kBatch, [&](std::size_t i) { DoNotOptimize(in.a[i].IsCollinear(other[i], kEps)); });
}
template <bool kNear>
void IsCollinear_eigen(benchmark::State& s) {
  const Inputs& in = In();
  const std::vector<Eigen::Vector3d>& other = kNear ? in.ec : in.eb;
  RunBatch(s, bench::kBatch, [&](std::size_t i) { DoNotOptimize(in.ea[i].cross(other[i]).norm() <= kEps); });
}
template <bool kNear>
void IsCollinear_occt(benchmark::State& s) {
  const Inputs& in = In();
  const std::vector<gp_Vec>& other = kNear ? in.gc : in.gb;
  RunBatch(s, bench::kBatch, [&](std::size_t i) { DoNotOptimize(in.ga[i].IsParallel(other[i], kAngularTol)); });
}

}  // namespace

BENCHMARK(Dot_znmt64)->Name("vec/dot/znmt64");
BENCHMARK(Dot_eigen)->Name("vec/dot/eigen");
BENCHMARK(Dot_occt)->Name("vec/dot/occt");
BENCHMARK(Cross_znmt64)->Name("vec/cross/znmt64");
BENCHMARK(Cross_eigen)->Name("vec/cross/eigen");
BENCHMARK(Cross_occt)->Name("vec/cross/occt");
BENCHMARK(Normalize_znmt64)->Name("vec/normalize/znmt64");
BENCHMARK(Normalize_eigen)->Name("vec/normalize/eigen");
BENCHMARK(Normalize_occt)->Name("vec/normalize/occt");
BENCHMARK(Angle_znmt64)->Name("vec/angle/znmt64");
BENCHMARK(Angle_eigen)->Name("vec/angle/eigen");
BENCHMARK(Angle_occt)->Name("vec/angle/occt");
BENCHMARK(IsCollinear_znmt64<false>)->Name("vec/is_collinear/znmt64");
BENCHMARK(IsCollinear_eigen<false>)->Name("vec/is_collinear/eigen");
BENCHMARK(IsCollinear_occt<false>)->Name("vec/is_collinear/occt");
BENCHMARK(IsCollinear_znmt64<true>)->Name("vec/is_collinear_near/znmt64");
BENCHMARK(IsCollinear_eigen<true>)->Name("vec/is_collinear_near/eigen");
BENCHMARK(IsCollinear_occt<true>)->Name("vec/is_collinear_near/occt");
