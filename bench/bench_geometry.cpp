// Pair 5: geometric queries per second. Ours against the nearest thing CGAL's
// Simple_cartesian<double> kernel and Open CASCADE's foundation classes offer; rows without an
// Open CASCADE equivalent in its foundation libraries have none.
//
//   segment-segment distance: CSegment::DistSegm; CGAL's squared_distance(Segment_3, Segment_3)
//     and its square root.
//   line-line squared distance: CLineal::SquareDist; CGAL's squared_distance(Line_3, Line_3),
//     Open CASCADE's gp_Lin::SquareDistance.
//   point against a plane: CPlane::GetPointLocation; CGAL's Plane_3::oriented_side, Open CASCADE's
//     gp_Pln::Distance within the tolerance, else the side along its normal.
//   point in a triangle: Triangle3D::GetPointLocation; CGAL's squared_distance(Point_3,
//     Triangle_3) within the tolerance (has_on tests exact coplanarity, which rounded points
//     never pass).
//   circle and plane: CCircle::IntersectPlane; with CGAL, the planes' common line
//     (intersection(Plane_3, Plane_3)) cut by the circle.
#include <znmt64/CCircle.h>
#include <znmt64/CLineal.h>
#include <znmt64/CPlane.h>
#include <znmt64/CSegment.h>
#include <znmt64/Triangle3D.h>

#include <CGAL/Simple_cartesian.h>
#include <CGAL/intersections.h>
#include <CGAL/squared_distance_3.h>
#include <gp_Lin.hxx>
#include <gp_Pln.hxx>
#include <gp_Vec.hxx>

#include <cmath>
#include <vector>

#include "BenchUtil.h"

namespace {

using K = CGAL::Simple_cartesian<double>;
constexpr double kTol = 1e-10;

K::Point_3 P(const SMat& v) { return {v.x, v.y, v.z}; }
K::Vector_3 V(const SMat& v) { return {v.x, v.y, v.z}; }
gp_Pnt G(const SMat& v) { return {v.x, v.y, v.z}; }
gp_Dir D(const SMat& v) { return {v.x, v.y, v.z}; }

struct Inputs {
  std::vector<SMat> p, q, u, w, x;  // points and unit directions, the same for every library
  std::vector<double> r;

  Inputs() {
    const std::size_t n = bench::kBatch;
    const std::vector<double> a = bench::Uniform(15 * n, -1.0, 1.0, 50);
    const std::vector<double> b = bench::Uniform(n, 1.0, 5.0, 51);
    for (std::size_t i = 0; i < n; ++i) {
      const double* c = &a[15 * i];
      p.emplace_back(10 * c[0], 10 * c[1], 10 * c[2]);
      q.emplace_back(10 * c[3], 10 * c[4], 10 * c[5]);
      SMat d1(c[6], c[7], c[8]), d2(c[9], c[10], c[11]);
      d1.Normalize(0.0);
      d2.Normalize(0.0);
      u.push_back(d1);
      w.push_back(d2);
      x.emplace_back(c[12], c[13], c[14]);
      r.push_back(b[i]);
    }
  }
};

const Inputs& In() {
  static const Inputs in;
  return in;
}

using benchmark::DoNotOptimize;
using bench::RunBatch;

// ---- segment against segment ------------------------------------------------------------------
struct Segments {
  std::vector<CSegment> a, b;
  std::vector<K::Segment_3> ca, cb;
  Segments() {
    const Inputs& in = In();
    for (std::size_t i = 0; i < bench::kBatch; ++i) {
      const std::size_t j = (i + 1) % bench::kBatch;
      a.emplace_back(in.p[i], in.q[i]);
      b.emplace_back(in.p[j] + in.x[i], in.q[j]);
      ca.emplace_back(P(in.p[i]), P(in.q[i]));
      cb.emplace_back(P(in.p[j] + in.x[i]), P(in.q[j]));
    }
  }
};
const Segments& Segs() {
  static const Segments s;
  return s;
}
void DistSegm_znmt64(benchmark::State& s) {
  const Segments& g = Segs();
  RunBatch(s, bench::kBatch, [&](std::size_t i) { DoNotOptimize(g.a[i].DistSegm(g.b[i])); });
}
void DistSegm_cgal(benchmark::State& s) {
  const Segments& g = Segs();
  RunBatch(s, bench::kBatch,
           [&](std::size_t i) { DoNotOptimize(std::sqrt(CGAL::squared_distance(g.ca[i], g.cb[i]))); });
}

// ---- line against line ------------------------------------------------------------------------
struct Lines {
  std::vector<CLineal> a, b;
  std::vector<K::Line_3> ca, cb;
  std::vector<gp_Lin> ga, gb;
  Lines() {
    const Inputs& in = In();
    for (std::size_t i = 0; i < bench::kBatch; ++i) {
      CLineal la(in.u[i]), lb(in.w[i]);
      la.origin = in.p[i];
      lb.origin = in.q[i];
      a.push_back(la);
      b.push_back(lb);
      ca.emplace_back(P(in.p[i]), V(in.u[i]));
      cb.emplace_back(P(in.q[i]), V(in.w[i]));
      ga.emplace_back(G(in.p[i]), D(in.u[i]));
      gb.emplace_back(G(in.q[i]), D(in.w[i]));
    }
  }
};
const Lines& Lns() {
  static const Lines l;
  return l;
}
void LineDist_znmt64(benchmark::State& s) {
  const Lines& g = Lns();
  RunBatch(s, bench::kBatch, [&](std::size_t i) { DoNotOptimize(g.a[i].SquareDist(g.b[i])); });
}
void LineDist_cgal(benchmark::State& s) {
  const Lines& g = Lns();
  RunBatch(s, bench::kBatch, [&](std::size_t i) { DoNotOptimize(CGAL::squared_distance(g.ca[i], g.cb[i])); });
}
void LineDist_occt(benchmark::State& s) {
  const Lines& g = Lns();
  RunBatch(s, bench::kBatch, [&](std::size_t i) { DoNotOptimize(g.ga[i].SquareDistance(g.gb[i])); });
}

// ---- point against a plane ----------------------------------------------------------------------
// A quarter of the points lie in the plane (to rounding), so the on-plane band is exercised.
struct Planes {
  std::vector<CPlane> a;
  std::vector<K::Plane_3> ca;
  std::vector<gp_Pln> ga;
  std::vector<SMat> pts;
  Planes() {
    const Inputs& in = In();
    for (std::size_t i = 0; i < bench::kBatch; ++i) {
      CPlane pl;
      pl.origin = in.p[i];
      pl.dir = in.u[i];
      a.push_back(pl);
      ca.emplace_back(P(in.p[i]), V(in.u[i]));
      ga.emplace_back(G(in.p[i]), D(in.u[i]));
      SMat t = in.q[i];
      if (i % 4 == 0) t -= (t - pl.origin).Prod(pl.dir) * pl.dir;
      pts.push_back(t);
    }
  }
};
const Planes& Pls() {
  static const Planes p;
  return p;
}
void PlaneLocation_znmt64(benchmark::State& s) {
  const Planes& g = Pls();
  RunBatch(s, bench::kBatch, [&](std::size_t i) { DoNotOptimize(g.a[i].GetPointLocation(g.pts[i], kTol)); });
}
void PlaneLocation_cgal(benchmark::State& s) {
  const Planes& g = Pls();
  RunBatch(s, bench::kBatch, [&](std::size_t i) { DoNotOptimize(g.ca[i].oriented_side(P(g.pts[i]))); });
}
void PlaneLocation_occt(benchmark::State& s) {
  const Planes& g = Pls();
  RunBatch(s, bench::kBatch, [&](std::size_t i) {
    const gp_Pnt p = G(g.pts[i]);
    int side = 0;
    if (g.ga[i].Distance(p) > kTol)
      side = gp_Vec(g.ga[i].Location(), p).Dot(gp_Vec(g.ga[i].Axis().Direction())) > 0 ? 1 : -1;
    DoNotOptimize(side);
  });
}

// ---- point in a triangle ------------------------------------------------------------------------
// Points are affine combinations of the corners, in the plane to rounding: inside, outside, and
// on the sides.
struct Triangles {
  std::vector<Triangle3D> a;
  std::vector<K::Triangle_3> ca;
  std::vector<SMat> pts;
  Triangles() {
    const Inputs& in = In();
    const std::vector<double> b = bench::Uniform(2 * bench::kBatch, -0.2, 1.0, 52);
    for (std::size_t i = 0; i < bench::kBatch; ++i) {
      const SMat c[3] = {in.p[i], in.q[i], in.p[i] + 5.0 * in.x[i]};
      a.emplace_back(c);
      ca.emplace_back(P(c[0]), P(c[1]), P(c[2]));
      double w1 = b[2 * i], w2 = b[2 * i + 1];
      if (i % 8 == 0) w2 = 1.0 - w1;  // on the side from corner 1 to corner 2
      pts.push_back((1.0 - w1 - w2) * c[0] + w1 * c[1] + w2 * c[2]);
    }
  }
};
const Triangles& Tris() {
  static const Triangles t;
  return t;
}
void TriangleLocation_znmt64(benchmark::State& s) {
  const Triangles& g = Tris();
  RunBatch(s, bench::kBatch, [&](std::size_t i) { DoNotOptimize(g.a[i].GetPointLocation(g.pts[i])); });
}
void TriangleLocation_cgal(benchmark::State& s) {
  const Triangles& g = Tris();
  RunBatch(s, bench::kBatch, [&](std::size_t i) {
    DoNotOptimize(CGAL::squared_distance(P(g.pts[i]), g.ca[i]) <= kTol * kTol);
  });
}

// ---- circle and plane ---------------------------------------------------------------------------
struct Circles {
  std::vector<CCircle> a;
  std::vector<CLineal> planes;
  std::vector<K::Plane_3> cPlane, cQuery;
  std::vector<K::Point_3> cCentre;
  std::vector<double> radius;
  Circles() {
    const Inputs& in = In();
    for (std::size_t i = 0; i < bench::kBatch; ++i) {
      CCircle c(in.r[i]);
      c.origin = in.p[i];
      c.dir = in.u[i];
      a.push_back(c);
      CLineal pl(in.w[i]);
      pl.origin = in.p[i] + 3.0 * in.x[i];  // near the centre: most planes cut the circle
      planes.push_back(pl);
      cPlane.emplace_back(P(c.origin), V(c.dir));
      cQuery.emplace_back(P(pl.origin), V(pl.dir));
      cCentre.push_back(P(c.origin));
      radius.push_back(c.radius);
    }
  }
};
const Circles& Circs() {
  static const Circles c;
  return c;
}
void CirclePlane_znmt64(benchmark::State& s) {
  const Circles& g = Circs();
  RunBatch(s, bench::kBatch, [&](std::size_t i) {
    SMat pts[2];
    DoNotOptimize(g.a[i].IntersectPlane(g.planes[i], pts));
    DoNotOptimize(pts);
  });
}
void CirclePlane_cgal(benchmark::State& s) {
  const Circles& g = Circs();
  RunBatch(s, bench::kBatch, [&](std::size_t i) {
    int count = 0;
    K::Point_3 pts[2];
    const auto cut = CGAL::intersection(g.cPlane[i], g.cQuery[i]);
    if (cut) {
      if (const K::Line_3* l = boost::get<K::Line_3>(&*cut)) {
        const K::Point_3 f = l->projection(g.cCentre[i]);
        const double h2 = g.radius[i] * g.radius[i] - CGAL::squared_distance(g.cCentre[i], f);
        if (h2 >= 0.0) {
          const K::Vector_3 d = l->to_vector();
          const K::Vector_3 step = d * (std::sqrt(h2) / std::sqrt(d.squared_length()));
          pts[0] = f + step;
          pts[1] = f - step;
          count = h2 > 0.0 ? 2 : 1;
        }
      } else {
        count = 3;
      }
    }
    DoNotOptimize(count);
    DoNotOptimize(pts);
  });
}

}  // namespace

BENCHMARK(DistSegm_znmt64)->Name("geo/segment_distance/znmt64");
BENCHMARK(DistSegm_cgal)->Name("geo/segment_distance/cgal");
BENCHMARK(LineDist_znmt64)->Name("geo/line_square_distance/znmt64");
BENCHMARK(LineDist_cgal)->Name("geo/line_square_distance/cgal");
BENCHMARK(LineDist_occt)->Name("geo/line_square_distance/occt");
BENCHMARK(PlaneLocation_znmt64)->Name("geo/plane_point_location/znmt64");
BENCHMARK(PlaneLocation_cgal)->Name("geo/plane_point_location/cgal");
BENCHMARK(PlaneLocation_occt)->Name("geo/plane_point_location/occt");
BENCHMARK(TriangleLocation_znmt64)->Name("geo/triangle_point_location/znmt64");
BENCHMARK(TriangleLocation_cgal)->Name("geo/triangle_point_location/cgal");
BENCHMARK(CirclePlane_znmt64)->Name("geo/circle_plane_intersection/znmt64");
BENCHMARK(CirclePlane_cgal)->Name("geo/circle_plane_intersection/cgal");
