// The geometric queries on arbitrary doubles: NaN, infinities, 1e306, denormals and exact
// coincidences. A sequence of operations rebuilds lines, planes, segments, circles, a triangle and
// frames from the input and asks them the location, intersection and distance questions (and the
// frame conversions) that callers ask.
//
// Whatever the numbers, a query must return: no crash, no sanitizer report, no exception other
// than SMat::Angle's documented one; every location code within its enumeration; and a distance
// record's best distance never raised.
#include "FuzzInput.h"

#include <znag64/MLine.h>
#include <znag64/Point2D.h>
#include <znag64/Triangle2D.h>
#include <znbl64/Range.h>
#include <znmt64/CCircle.h>
#include <znmt64/CLineal.h>
#include <znmt64/CMFrame.h>
#include <znmt64/CPlane.h>
#include <znmt64/CSegment.h>
#include <znmt64/DistContext.h>
#include <znmt64/Mat.h>
#include <znmt64/MatSq.h>
#include <znmt64/Rotation.h>
#include <znmt64/Triangle3D.h>
#include <znmt64/platform/CArray.h>

namespace {

using fuzz::Check;

bool In(int v, int lo, int hi) { return lo <= v && v <= hi; }

struct Scene {
  SMat p[4];
  CLineal l[2];
  CPlane pl;
  CSegment s[2];
  CCircle c[2];
  Triangle3D t;
  CMFrame f[2];
  DistContext ctx{true, true};
};

void BuildLine(fuzz::Input& in, CLineal& l) {
  if (in.Bool()) {
    l = CLineal(in.Point(), in.Point());
  } else {
    l.origin = in.Point();
    l.dir = in.Point();
  }
}

void BuildSegment(fuzz::Input& in, CSegment& s) {
  if (in.Bool()) {
    const SMat p = in.Point();
    s = CSegment(p, in.Bool() ? in.Point() : p);
  } else {
    BuildLine(in, s);
    s.length = in.Double();
  }
}

void BuildCircle(fuzz::Input& in, CCircle& c) {
  BuildLine(in, c);
  c.radius = in.Double();
  c.bDisk = in.Bool();
}

void BuildFrame(fuzz::Input& in, CMFrame& f) {
  f.origin = in.Point();
  switch (in.Int(0, 3)) {
    case 0:
      f.ResetOrientation();
      break;
    case 1: {
      SMat a = in.Point(), b = in.Point();
      f.SetAxes(in.Int(0, 2), a, in.Int(0, 2), b, in.Bool());
      break;
    }
    case 2:
      f.LookAt(in.Point(), in.Point(), in.Bool());
      break;
    default:
      for (SMat& a : f.axes) a = in.Point();
      break;
  }
}

void Build(fuzz::Input& in, Scene& sc) {
  switch (in.Int(0, 7)) {
    case 0: sc.p[in.Int(0, 3)] = in.Point(); break;
    case 1: BuildLine(in, sc.l[in.Int(0, 1)]); break;
    case 2: BuildLine(in, sc.pl); break;
    case 3: BuildSegment(in, sc.s[in.Int(0, 1)]); break;
    case 4: BuildCircle(in, sc.c[in.Int(0, 1)]); break;
    case 5:
      for (SMat& q : sc.t.m_p) q = in.Bool() ? sc.p[in.Int(0, 3)] : in.Point();
      sc.t.vNormal = in.Bool() ? SMat() : in.Point();
      break;
    case 6: BuildFrame(in, sc.f[in.Int(0, 1)]); break;
    default:
      // Not by copying a fresh record: a copy whose source has no first point shares the source's
      // second slot, which would dangle here.
      sc.ctx.Construct();
      sc.ctx.SetNeed(in.Bool(), in.Bool());
      break;
  }
}

void Lines(fuzz::Input& in, Scene& sc) {
  CLineal& l = sc.l[in.Int(0, 1)];
  const CLineal& o = sc.l[in.Int(0, 1)];
  const SMat& p = sc.p[in.Int(0, 3)];
  const SMat& q = sc.p[in.Int(0, 3)];
  SMat a, b;
  double t[2] = {0.0, 0.0};
  switch (in.Int(0, 9)) {
    case 0:
      Check(In(l.GetPointLocation(p), 3, 4), "CLineal::GetPointLocation");
      Check(In(l.GetPointLocn(p, q), 3, 6), "CLineal::GetPointLocn");
      l.Contains(p, in.Double());
      break;
    case 1: {
      CLineal::ELinePosn posn = CLineal::eLinePosnUnknown;
      l.Dist(o, &a, &b, t, &posn);
      Check(In(posn, 0, 4), "CLineal::SquareDist position");
      Check(In(l.GetLineOrientation(o), 0, 4), "CLineal::GetLineOrientation");
      double d;
      Check(In(l.Intesect(o, a, t, &d), 0, 4), "CLineal::Intesect");
      l.IsCoinside(o);
      l.IsComplanar(o);
      break;
    }
    case 2:
      l.DistConical(p, in.Double(), &a);
      l.DistConical(o, in.Double(), &a, &b, t);
      break;
    case 3: {
      CLineal::ELinePosn posn = in.Bool() ? CLineal::eLinePosnUnknown : static_cast<CLineal::ELinePosn>(in.Int(0, 4));
      l.GetSegmentAtAngle(o, in.Double(), &a, &b, posn);
      Check(In(posn, 0, 4), "CLineal::GetSegmentAtAngle position");
      break;
    }
    case 4:
      l.PassPlane(p, q, sc.p[in.Int(0, 3)]);
      break;
    case 5:
      l.PassPlane(o, p);
      l.PlaneFromEquation(q, in.Double());
      break;
    case 6:
      l.IntersectPlane(o, a, t, in.Double());
      if (&l != &o) l.IntersectPlanes(o, sc.pl);
      break;
    case 7:
      l.GetAngle(p);
      l.IsNormal(&p, &q);
      l.Homothety(in.Double(), a = p);
      l.RotatePoint(a = p, in.Double());
      l.DirectTowards(p);
      l.GetPoint(in.Double(), in.Int(-1, 3), a);
      break;
    case 8: {
      Lineal2D out;
      l.Project(static_cast<unsigned char>(in.Int(0, 4)), static_cast<unsigned char>(in.Int(0, 4)), out);
      l.ProjectToPlane(sc.f[0], out);
      l.ProjectToPlane(a = p);
      break;
    }
    default:
      l.Rotate(in.Double(), in.Int(0, 4));
      l.Rotate(p, in.Double());
      l.Rotate(o, in.Double());
      break;
  }
}

void Planes(fuzz::Input& in, Scene& sc) {
  CPlane& pl = sc.pl;
  const SMat& p = sc.p[in.Int(0, 3)];
  const CSegment& s = sc.s[in.Int(0, 1)];
  SMat a;
  double t = 0.0;
  switch (in.Int(0, 5)) {
    case 0:
      Check(In(pl.GetPointLocation(p, in.Double()), 0, 3), "CPlane::GetPointLocation");
      Check(In(pl.GetLocation(sc.l[in.Int(0, 1)]), 0, 4), "CPlane::GetLocation");
      Check(In(pl.GetSegmentLocation(s), 0, 7), "CPlane::GetSegmentLocation");
      break;
    case 1: {
      const double before = sc.ctx.dDist;
      pl.Dist(s, sc.ctx);
      Check(!(sc.ctx.dDist > before), "CPlane::Dist raised the best distance");
      break;
    }
    case 2: {
      pl.GetSegmentIntersection(s, a, &t, in.Double());
      pl.GetInfLineIntersection(sc.l[0], a, &t);
      CLineal out;
      pl.GetPlaneIntersection(CPlane(sc.l[1]), out);
      break;
    }
    case 3:
      pl.ProjectVector(a = p);
      pl.Mirror(a = p);
      pl.MirrorVector(a = p);
      pl.GetFrame(sc.f[1]);
      break;
    case 4: {
      const auto i = static_cast<unsigned char>(in.Int(0, 3)), j = static_cast<unsigned char>(in.Int(0, 3));
      pl.GetVal(i, j, in.Double(), in.Double());
      RangeR1 out;
      pl.GetValueRange(i, j, RangeR12D(RangeR1(in.Double(), in.Double()), RangeR1(in.Double(), in.Double())), out);
      break;
    }
    default:
      pl.PassPlane(sc.l[0], p);
      break;
  }
}

void Segments(fuzz::Input& in, Scene& sc) {
  CSegment& s = sc.s[in.Int(0, 1)];
  const CSegment& o = sc.s[in.Int(0, 1)];
  const SMat& p = sc.p[in.Int(0, 3)];
  SMat a, b;
  double t[2] = {0.0, 0.0};
  SegmentPoint sp[2];
  switch (in.Int(0, 7)) {
    case 0: {
      const int l1 = s.GetPointLocation(in.Double(), in.Double());
      Check(l1 == 1 || l1 == 2 || l1 == 3 || l1 == 6 || l1 == 7, "CSegment::GetPointLocation");
      const int l2 = s.GetLocation(p, in.Double());
      Check(l2 == 1 || l2 == 2 || l2 == 3 || l2 == 6 || l2 == 7 || l2 == 8, "CSegment::GetLocation");
      Check(In(s.GetLocation(sc.pl), 0, 3), "CSegment::GetLocation(plane)");
      break;
    }
    case 1: {
      double d;
      s.FindNearestPoint(p, &a, &d);
      s.Dist(p, &a, &sp[0]);
      Check(In(sp[0].kind, 0, 8), "SegmentPoint kind");
      sp[1].flag = in.Bool();
      s.Dist(sc.l[0], &a, &b, sp);
      s.DistSegm(o, &a, &b, sp);
      s.SquareDistSegment(o, &a, &b);
      break;
    }
    case 2: {
      CLineal::ELinePosn posn = CLineal::eLinePosnUnknown;
      Check(In(s.GetIntesection(sc.l[1], a, t, &posn), -1, 1), "CSegment::GetIntesection(line)");
      Check(In(posn, 0, 4), "CSegment::GetIntesection position");
      Check(In(s.GetIntesection(o, a, sp), -1, 1), "CSegment::GetIntesection(segment)");
      Check(In(s.GetIntersectionPlane(sc.pl, a), 0, 8), "CSegment::GetIntersectionPlane");
      break;
    }
    case 3: {
      RangeR1 r;
      s.GetCollinearIntersSet(o, &r);
      if (&s != &o) s.IntersectCollinear(o, &r);
      break;
    }
    case 4: {
      CSegment rest;
      s.BreakAtPoint(p, rest);
      break;
    }
    case 5: {
      CMLine ml;
      s.To2D(sc.f[0], ml);
      Segment2D s2;
      s.ProjectToPlane(sc.f[1], s2);
      s.ContainsSegm(o);
      s.IsNormal(&p, &sc.p[0]);
      break;
    }
    case 6:
      if (in.Bool())
        s.ToLocal(sc.f[in.Int(0, 1)]);
      else
        s.ToGlobal(sc.f[in.Int(0, 1)]);
      break;
    default:
      s.ProjectToPlane(p);
      break;
  }
}

void Circles(fuzz::Input& in, Scene& sc) {
  CCircle& c = sc.c[in.Int(0, 1)];
  const CCircle& o = sc.c[in.Int(0, 1)];
  const SMat& p = sc.p[in.Int(0, 3)];
  const SMat& q = sc.p[in.Int(0, 3)];
  SMat a, b;
  SMat pts[2];
  switch (in.Int(0, 7)) {
    case 0:
      Check(In(c.GetPointLocation(p), -1, 1), "CCircle::GetPointLocation");
      Check(In(c.GetLocationWRT(sc.pl), 0, 4), "CCircle::GetLocationWRT");
      Check(In(c.GetCircleLocation(o), 1, 3), "CCircle::GetCircleLocation");
      break;
    case 1:
      // Arc lengths measure angles at the centre: a point there is SMat::Angle's documented throw.
      try {
        c.Dist(p, q);
        c.GetTranslation(p, q);
        c.InsideArc(p, q, sc.p[in.Int(0, 3)]);
      } catch (CMatrExeption* e) {
        e->Delete();
      }
      c.IsOpposite(p, q);
      c.IsAfter(p, q);
      break;
    case 2: {
      const double before = sc.ctx.dDist;
      c.FindNearestPoint(p, a);
      c.FindNearestDiscPoint(p, a);
      c.DistPoint(p, sc.ctx);
      Check(!(sc.ctx.dDist > before), "CCircle::DistPoint raised the best distance");
      c.IsNormal(&p, &q, in.Double());
      c.GetTangent(p, a);
      c.Translate(in.Double(), a = p);
      break;
    }
    case 3: {
      c.GetFrame(sc.f[in.Int(0, 1)], in.Bool() ? &p : nullptr);
      CArray<SMat, SMat> samples;
      samples.SetSize(in.Int(0, 6));
      c.GetSampling(samples, in.Bool() ? &a : nullptr);
      CLineal normals[5];
      c.GetSampling(in.Int(0, 5), nullptr, normals);
      break;
    }
    case 4:
      Check(c.IntersectPlane(sc.pl, pts) <= 3, "CCircle::IntersectPlane count");
      c.IntersectPlane(sc.l[0], a, b);
      Check(In(c.Intersect(o, a, b), 0, 2), "CCircle::Intersect");
      Check(c.IntersectCocentric(o, pts, in.Double()) <= 3, "CCircle::IntersectCocentric");
      c.DistPlane(sc.pl, &a, &b);
      break;
    case 5: {
      const SMat three[3] = {p, q, sc.p[in.Int(0, 3)]};
      c.DefineFromThreePoints(three);
      break;
    }
    case 6: {  // the circle distance solver
      // It costs a hundred closed-form queries: asked one time in eight, so that the others keep
      // their pace.
      if (in.Int(0, 7) != 0) break;
      const double before = sc.ctx.dDist;
      c.DistConical(sc.l[in.Int(0, 1)], in.Double(), &sc.ctx);
      Check(!(sc.ctx.dDist > before), "CCircle::DistConical raised the best distance");
      bool found = false;
      c.FindNearestPoints(sc.l[in.Int(0, 1)], &found, &a, &b, in.Bool());
      c.DistCircles(o, &a, &b);
      c.DistCircle(o, in.Bool() ? &a : nullptr, &b);
      c.DistDisk(o, &a, in.Bool() ? &b : nullptr);
      c.DistDisk(sc.s[in.Int(0, 1)], &a, &b);
      c.IsCloserThan(sc.s[in.Int(0, 1)], in.Double());
      c.IsCloserThan(o, in.Double());
      break;
    }
    default:
      c.GetAnyPoint(a);
      c.GetOppositePoint(p, a);
      break;
  }
}

void Triangles(fuzz::Input& in, Scene& sc) {
  Triangle3D& t = sc.t;
  const SMat& p = sc.p[in.Int(0, 3)];
  const double normal[3] = {in.Double(), in.Double(), in.Double()};
  const double* pn = in.Bool() ? normal : nullptr;
  SMat a;
  switch (in.Int(0, 5)) {
    case 0:
      Check(In(t.GetPtLocation3D(p, pn, in.Double()), 0, 3), "Triangle3D::GetPtLocation3D");
      Check(In(t.GetPointLocation(p, pn, in.Double()), 0, 7), "Triangle3D::GetPointLocation");
      Check(In(t.GetPointLocation3(p, pn, in.Double(), in.Double()), 0, 7), "Triangle3D::GetPointLocation3");
      break;
    case 1: {
      SimplPoint sp(p);
      sp.bSidePosn = in.Bool();
      sp.bInParam2 = in.Bool();
      sp.bInPlane = in.Bool();
      sp.dTol = in.Double();
      sp.dTol2 = in.Double();
      const int l = t.GetPointLocation2(sp, pn);
      Check(In(l, 0, 7) && In(sp.m_eLocn, 0, 7), "Triangle3D::GetPointLocation2");
      const auto i = static_cast<unsigned char>(in.Int(0, 3));
      sp.CalcDistToSide(i, t);
      Check(In(sp.CalcNearestSide(t), 0, 2), "SimplPoint::CalcNearestSide");
      sp.GetNearestSide(i, t, in.Bool());
      sp.IsNearEdge();
      switch (in.Int(0, 3)) {
        case 0: sp.StickToSide(i, t); break;
        case 1: sp.StickToSideModify(i, t); break;
        case 2: sp.StickToCornerModify(t, i); break;
        default: sp.StickGeometry(t, in.Bool() ? normal : nullptr); break;
      }
      Check(In(sp.m_eLocn, 0, 7), "SimplPoint location after snapping");
      break;
    }
    case 2: {
      int ind = -1;
      t.GetDistVertex(p, &ind);
      Check(In(ind, -1, 2), "Triangle3D::GetDistVertex index");  // -1: no corner nearer than 1e307
      t.GetShortestSide();
      t.GetSize();
      try {
        t.GetCornerAngle(in.Int(-1, 3));
      } catch (CMatrExeption* e) {
        e->Delete();
      }
      RangeR1 r;
      t.GetAxisProjection(static_cast<unsigned char>(in.Int(0, 3)), r);
      break;
    }
    case 3: {
      t.GetNormal(a, in.Double());
      CLineal l;
      t.GetNormal(l);
      t.GetFrame(sc.f[in.Int(0, 1)], in.Bool());
      CPlane pl;
      t.GetPlane(pl, pn);
      Triangle2D flat;
      t.To2D(flat);
      t.To2D(sc.f[0], flat);
      break;
    }
    case 4: {
      t.GetPointBaricentr(in.Double(), in.Double(), in.Double(), a);
      Triangle3D other;
      if (in.Bool())
        t.Divide(static_cast<unsigned char>(in.Int(0, 3)), p, other);
      else
        t.Divide(static_cast<unsigned char>(in.Int(0, 3)), in.Double(), 0, other);
      break;
    }
    default:
      if (in.Bool())
        t.ToLocal(sc.f[in.Int(0, 1)]);
      else
        t.ToGlobal(sc.f[in.Int(0, 1)]);
      break;
  }
}

void Frames(fuzz::Input& in, Scene& sc) {
  CMFrame& f = sc.f[in.Int(0, 1)];
  CMFrame& g = sc.f[in.Int(0, 1)];
  SMat p = sc.p[in.Int(0, 3)];
  switch (in.Int(0, 8)) {
    case 0: {
      f.ToLocal(p);
      f.ToGlobal(p);
      f.ToLocalVector(p);
      f.ToGlobalVector(p);
      f.ToFrame(g, p);
      CLineal l = sc.l[0];
      f.ToLocal(l);
      f.ToGlobal(l);
      C2DPoint q;
      double h;
      f.Project(p, q, &h);
      f.To3DEx(q, in.Double(), p);
      break;
    }
    case 1: {
      CMFrame h = g;
      if (in.Bool())
        f.ToGlobal(h, in.Bool());
      else
        f.ToLocal(h, in.Bool());
      break;
    }
    case 2: {
      const CMFrame product = f * g;
      CMFrame h = f;
      h /= g;
      h.Combine(f, g, in.Double());
      h.MultLeft(g);
      (void)product;
      break;
    }
    case 3:
      f.Invert();
      f.MakeValid(in.Int(0, 2));
      f.InitInOrder(static_cast<unsigned char>(in.Int(0, 3)), static_cast<unsigned char>(in.Int(0, 3)),
                    static_cast<unsigned char>(in.Int(0, 3)));
      break;
    case 4: {
      SMat a = in.Point(), b = in.Point();
      f.SetAxes(in.Int(0, 2), a, in.Int(0, 2), b, in.Bool());
      f.Init(in.Int(0, 2), in.Bool());
      f.SetOrientation(a, b, in.Double(), in.Bool());
      f.Align(a);
      f.SetAxisRand(in.Int(0, 2), b, in.Int(-1, 2));
      break;
    }
    case 5:
      f.Rotate(in.Double(), in.Int(-1, 3));
      f.Rotate(p, in.Double());
      f.RotateLoc(p, in.Double());
      f.Rotate(sc.l[1], in.Double());
      f.RotateGlobal(in.Int(0, 2), in.Double());
      f.Mirror(sc.pl);
      break;
    case 6: {
      MatSq m(in.Bool() ? 4 : 3);
      f.ToMatrix(m);
      g.FromMatrix(m);
      double raw[16];
      f.ToMatrix(raw);
      Mat rot;
      SMat pos;
      f.GetTransform(rot, pos);
      break;
    }
    case 7: {
      Rotation r;
      f.GetRotation(r);
      g.Rotate(r);
      break;
    }
    default: {
      bool positive = false;
      for (int k = 0; k < 3; ++k) Check(In(f.FindStdAxis(k, positive), -1, 2), "CMFrame::FindStdAxis");
      Check(In(f.GetStdOrientation(), 0, 6), "CMFrame::GetStdOrientation");
      f.IsValid();
      f.GetOrientation();
      f.Dist(g);
      break;
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input in(data, size);
  Scene sc;
  for (int step = 0; step < 32 && !in.Empty(); ++step) {
    switch (in.Int(0, 6)) {
      case 0: Build(in, sc); break;
      case 1: Lines(in, sc); break;
      case 2: Planes(in, sc); break;
      case 3: Segments(in, sc); break;
      case 4: Circles(in, sc); break;
      case 5: Triangles(in, sc); break;
      default: Frames(in, sc); break;
    }
  }
  return 0;
}
