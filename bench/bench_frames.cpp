// Pair 2: coordinate frames. CMFrame against Eigen's Isometry3d and Open CASCADE's gp_Trsf, built
// from the same random rigid motions: a point into global and into local coordinates, and the
// composition of two frames.
#include <znmt64/CMFrame.h>

#include <Eigen/Geometry>
#include <gp_Trsf.hxx>
#include <gp_XYZ.hxx>

#include <stdexcept>
#include <vector>

#include "BenchUtil.h"

namespace {

struct Inputs {
  std::vector<CMFrame> f, g;
  std::vector<Eigen::Isometry3d> ef, eg;
  std::vector<gp_Trsf> tf, tg, tfInv;
  std::vector<SMat> p;
  std::vector<Eigen::Vector3d> ep;
  std::vector<gp_XYZ> gpP;

  Inputs() {
    const std::vector<double> u = bench::Uniform(14 * bench::kBatch, -1.0, 1.0, 3);
    for (std::size_t i = 0; i < bench::kBatch; ++i) {
      const double* r = &u[14 * i];
      Add(r, f, ef, tf);
      Add(r + 7, g, eg, tg);
      tfInv.push_back(tf.back().Inverted());
    }
    const std::vector<double> q = bench::Uniform(3 * bench::kBatch, -10.0, 10.0, 4);
    for (std::size_t i = 0; i < bench::kBatch; ++i) {
      p.emplace_back(q[3 * i], q[3 * i + 1], q[3 * i + 2]);
      ep.emplace_back(q[3 * i], q[3 * i + 1], q[3 * i + 2]);
      gpP.emplace_back(q[3 * i], q[3 * i + 1], q[3 * i + 2]);
    }
  }

  // A rotation from a random quaternion (r[0..3]) and a translation (r[4..6]), the same doubles
  // for all three libraries.
  static void Add(const double* r, std::vector<CMFrame>& frames, std::vector<Eigen::Isometry3d>& isos,
                  std::vector<gp_Trsf>& trsfs) {
    const Eigen::Matrix3d R = Eigen::Quaterniond(r[0], r[1], r[2], r[3]).normalized().toRotationMatrix();
    const Eigen::Vector3d t(10 * r[4], 10 * r[5], 10 * r[6]);
    CMFrame fr;
    fr.origin.Set(t.x(), t.y(), t.z());
    for (int k = 0; k < 3; ++k) fr.axes[k].Set(R(0, k), R(1, k), R(2, k));
    if (!fr.IsValid()) throw std::logic_error("invalid random frame");
    frames.push_back(fr);
    Eigen::Isometry3d iso = Eigen::Isometry3d::Identity();
    iso.linear() = R;
    iso.translation() = t;
    isos.push_back(iso);
    gp_Trsf tr;
    tr.SetValues(R(0, 0), R(0, 1), R(0, 2), t.x(), R(1, 0), R(1, 1), R(1, 2), t.y(), R(2, 0), R(2, 1), R(2, 2), t.z());
    trsfs.push_back(tr);
  }
};

const Inputs& In() {
  static const Inputs in;
  return in;
}

using benchmark::DoNotOptimize;
using bench::RunBatch;

// ---- a point into global coordinates ------------------------------------------------------------
void ToGlobal_znmt64(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) {
    SMat q = in.p[i];
    in.f[i].ToGlobal(q);
    DoNotOptimize(q);
  });
}
void ToGlobal_eigen(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) {
    Eigen::Vector3d q = in.ef[i] * in.ep[i];
    DoNotOptimize(q);
  });
}
void ToGlobal_occt(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) {
    gp_XYZ q = in.gpP[i];
    in.tf[i].Transforms(q);
    DoNotOptimize(q);
  });
}

// ---- a point into local coordinates -------------------------------------------------------------
// Eigen: Rᵀ(p − t) from the isometry as it stands, as ours works from the frame; Open CASCADE has
// no such form and gets its inverse transformation computed beforehand, outside the timing.
void ToLocal_znmt64(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) {
    SMat q = in.p[i];
    in.f[i].ToLocal(q);
    DoNotOptimize(q);
  });
}
void ToLocal_eigen(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) {
    Eigen::Vector3d q = in.ef[i].linear().transpose() * (in.ep[i] - in.ef[i].translation());
    DoNotOptimize(q);
  });
}
void ToLocal_occt(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) {
    gp_XYZ q = in.gpP[i];
    in.tfInv[i].Transforms(q);
    DoNotOptimize(q);
  });
}

// ---- composition --------------------------------------------------------------------------------
// Ours also re-orthonormalises the product (MakeValid); the anchors multiply only.
void Compose_znmt64(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) {
    CMFrame c = in.f[i] * in.g[i];
    DoNotOptimize(c);
  });
}
void Compose_eigen(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) {
    Eigen::Isometry3d c = in.ef[i] * in.eg[i];
    DoNotOptimize(c);
  });
}
void Compose_occt(benchmark::State& s) {
  const Inputs& in = In();
  RunBatch(s, bench::kBatch, [&](std::size_t i) {
    gp_Trsf c = in.tf[i].Multiplied(in.tg[i]);
    DoNotOptimize(c);
  });
}

}  // namespace

BENCHMARK(ToGlobal_znmt64)->Name("frame/to_global/znmt64");
BENCHMARK(ToGlobal_eigen)->Name("frame/to_global/eigen");
BENCHMARK(ToGlobal_occt)->Name("frame/to_global/occt");
BENCHMARK(ToLocal_znmt64)->Name("frame/to_local/znmt64");
BENCHMARK(ToLocal_eigen)->Name("frame/to_local/eigen");
BENCHMARK(ToLocal_occt)->Name("frame/to_local/occt");
BENCHMARK(Compose_znmt64)->Name("frame/compose/znmt64");
BENCHMARK(Compose_eigen)->Name("frame/compose/eigen");
BENCHMARK(Compose_occt)->Name("frame/compose/occt");
