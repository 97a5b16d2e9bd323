// Pair 1: three-component vectors. SMat against Eigen's Vector3d (fixed size, inlined like ours)
// and Open CASCADE's gp_Vec; the same pairs of vectors for all three.
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
  std::vector<SMat> a, b;
  std::vector<Eigen::Vector3d> ea, eb;
  std::vector<gp_Vec> ga, gb;

  // Every other pair is nearly collinear, so that IsCollinear runs both of its branches.
  Inputs() {
    const std::vector<double> u = bench::Uniform(6 * bench::kBatch, -1.0, 1.0, 1);
    const std::vector<double> s = bench::Uniform(bench::kBatch, 0.5, 2.0, 2);
    for (std::size_t i = 0; i < bench::kBatch; ++i) {
      const double* p = &u[6 * i];
      SMat va(p[0], p[1], p[2]), vb(p[3], p[4], p[5]);
      if (i % 2 == 1) vb = s[i] * va + SMat(1e-13 * p[3], 1e-13 * p[4], 1e-13 * p[5]);
      Add(va, vb);
    }
  }
  void Add(const SMat& va, const SMat& vb) {
    a.push_back(va);
    b.push_back(vb);
    ea.emplace_back(va.x, va.y, va.z);
    eb.emplace_back(vb.x, vb.y, vb.z);
    ga.emplace_back(va.x, va.y, va.z);
    gb.emplace_back(vb.x, vb.y, vb.z);
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
// Eigen: the cross product's norm against the tolerance; Open CASCADE: IsParallel, by angle.
void IsCollinear_znmt64(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) { DoNotOptimize(in.a[i].IsCollinear(in.b[i], kEps)); });
}
void IsCollinear_eigen(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) { DoNotOptimize(in.ea[i].cross(in.eb[i]).norm() <= kEps); });
}
void IsCollinear_occt(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) { DoNotOptimize(in.ga[i].IsParallel(in.gb[i], kAngularTol)); });
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
BENCHMARK(IsCollinear_znmt64)->Name("vec/is_collinear/znmt64");
BENCHMARK(IsCollinear_eigen)->Name("vec/is_collinear/eigen");
BENCHMARK(IsCollinear_occt)->Name("vec/is_collinear/occt");
