#include <znmt64/CLineal.h>
#include <znmt64/CPlane.h>

#include <znag64/AnGeoState.h>
#include <znag64/Point2D.h>
#include <znbl64/PCExBase.h>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>

namespace {
constexpr double kPi = std::numbers::pi;

void ExpectVec(const SMat& v, double x, double y, double z, double tol = 1e-15) {
  EXPECT_NEAR(v.x, x, tol);
  EXPECT_NEAR(v.y, y, tol);
  EXPECT_NEAR(v.z, z, tol);
}

CLineal Line(double px, double py, double pz, double dx, double dy, double dz) {
  CLineal l(dx, dy, dz);
  l.SetOrigin(px, py, pz);
  return l;
}
}  // namespace

TEST(CLineal, ConstructionTagsAndArithmetic) {
  const SMat c(0.0, 3.0, 4.0);
  SMat m(0.0, 3.0, 4.0);
  ExpectVec(CLineal(c).dir, 0.0, 3.0, 4.0);  // a const direction is taken as it stands
  ExpectVec(CLineal(m).dir, 0.0, 0.6, 0.8);
  EXPECT_FALSE(CLineal(1e-11, 0.0, 0.0).IsValid());  // too short to normalise

  CLineal src = Line(1, 2, 3, 0, 0, 1);
  src.tag = 5;
  const CLineal copied(src);
  EXPECT_EQ(copied.tag, -1);
  CLineal assigned;
  assigned = src;
  EXPECT_EQ(assigned.tag, 5);
  CLineal viaCopy;
  viaCopy.Copy(src);
  EXPECT_EQ(viaCopy.tag, 5);
  EXPECT_TRUE(copied == src);  // the tag is not compared

  // operator- subtracts the origins but adds the directions.
  const CLineal diff = Line(5, 5, 5, 1, 0, 0) - Line(1, 2, 3, 0, 1, 0);
  ExpectVec(diff.origin, 4.0, 3.0, 2.0);
  ExpectVec(diff.dir, std::sqrt(0.5), std::sqrt(0.5), 0.0);
  const CLineal sum = Line(5, 5, 5, 1, 0, 0) + Line(1, 2, 3, 0, 1, 0);
  ExpectVec(sum.origin, 6.0, 7.0, 8.0);

  CLineal scaled = Line(1, 0, 0, 1, 0, 0);
  scaled *= 2.0;
  ExpectVec(scaled.dir, 2.0, 0.0, 0.0);  // not renormalised
  EXPECT_FALSE(scaled.IsValid());
}

TEST(CLineal, PointQueries) {
  const CLineal l = Line(1, 2, 3, 1, 1, 0);
  SMat out(9, 9, 9);
  ASSERT_TRUE(l.GetPoint(5.0, 0, out));
  ExpectVec(out, 5.0, 6.0, 3.0, 1e-14);
  EXPECT_FALSE(l.GetPoint(5.0, 2, out));  // the line never leaves z = 3
  ExpectVec(out, 5.0, 6.0, 3.0, 1e-14);

  const CLineal x = Line(0, 0, 0, 1, 0, 0);
  SMat foot;
  EXPECT_DOUBLE_EQ(x.FindPtToLineProjection(SMat(3, 4, 0), &foot), 3.0);
  ExpectVec(foot, 3.0, 0.0, 0.0);
  EXPECT_DOUBLE_EQ(x.SquareDist(SMat(3, 4, 0)), 16.0);
  EXPECT_DOUBLE_EQ(x.Dist(SMat(3, 4, 0)), 4.0);
  EXPECT_EQ(x.GetPointLocation(SMat(7, 0, 0)), CLineal::eOnLine);
  EXPECT_EQ(x.GetPointLocation(SMat(7, 1e-9, 0)), CLineal::eOffLine);
  EXPECT_EQ(x.GetPointLocn(SMat(0, 1, 0), SMat(0, 0, 1)), CLineal::ePositiveSide);
  EXPECT_EQ(x.GetPointLocn(SMat(0, -1, 0), SMat(0, 0, 1)), CLineal::eNegativeSide);
  EXPECT_EQ(x.GetPointLocn(SMat(4, 0, 0), SMat(0, 0, 1)), CLineal::eOnLine);
  EXPECT_EQ(x.GetAngle(SMat(0, 0, 0)), 1e307);
  EXPECT_NEAR(x.GetAngle(SMat(1, 1, 0)), kPi / 4, 1e-15);

  // The product of IsNormal is signed and its tolerance ignored: backwards counts as normal.
  const SMat p1(2, 0, 0);
  const SMat back(-3, 0, 0);
  const SMat ahead(7, 0, 0);
  const SMat off(2, 1, 0);
  EXPECT_TRUE(x.IsNormal(&p1, &back, 0.0));
  EXPECT_FALSE(x.IsNormal(&p1, &ahead, 100.0));
  EXPECT_FALSE(x.IsNormal(&off, &back));
  EXPECT_TRUE(x.IsNormal(nullptr, &back));

  SMat p(3, 2, 0);
  x.Homothety(0.5, p);
  ExpectVec(p, 3.0, 1.0, 0.0);
  x.RotatePoint(p, kPi / 2);
  ExpectVec(p, 3.0, 0.0, 1.0);

  CLineal d = x;
  EXPECT_FALSE(d.DirectTowards(SMat(5e-11, 0, 0)));
  ExpectVec(d.dir, 5e-11, 0.0, 0.0, 0.0);  // the raw difference stays
  EXPECT_TRUE(d.DirectTowards(SMat(1e-10, 0, 0)));
  ExpectVec(d.dir, 1e-10, 0.0, 0.0, 0.0);  // exactly 1e-10: true but not scaled
  EXPECT_TRUE(d.DirectTowards(SMat(0, 0, -4)));
  ExpectVec(d.dir, 0.0, 0.0, -1.0);
}

TEST(CLineal, LinePositionThresholds) {
  const CLineal x = Line(0, 0, 0, 1, 0, 0);
  // Parallel: squared distance against 1e-10, so 2e-6 apart is still coincident.
  const CLineal near = Line(3, 2e-6, 0, 1, 0, 0);
  SMat p1(9, 9, 9);
  SMat p2;
  double t[2] = {-7.0, -7.0};
  CLineal::ELinePosn posn = CLineal::eLinePosnUnknown;
  EXPECT_NEAR(x.SquareDist(near, &p1, &p2, t, &posn), 4e-12, 1e-25);
  EXPECT_EQ(posn, CLineal::eCoincident);
  ExpectVec(p1, 0.0, 0.0, 0.0);
  ExpectVec(p2, 0.0, 2e-6, 0.0);
  EXPECT_EQ(t[0], -7.0);  // parallel lines leave the parameters
  EXPECT_EQ(t[1], -7.0);
  x.SquareDist(Line(3, 2e-5, 0, -1, 0, 0), nullptr, nullptr, nullptr, &posn);
  EXPECT_EQ(posn, CLineal::eParallel);

  // Skew: 5e-6 apart is intersecting by the squared test and skew by the plain one.
  const CLineal skew = Line(3, -1, 5e-6, 0, 1, 0);
  EXPECT_EQ(x.GetLineOrientation(skew), CLineal::eIntersecting);
  SMat at;
  double dist = 0.0;
  EXPECT_EQ(x.Intesect(skew, at, t, &dist), CLineal::eSkew);
  EXPECT_NEAR(dist, 5e-6, 1e-18);
  ExpectVec(at, 3.0, 0.0, 0.0);
  EXPECT_DOUBLE_EQ(t[0], 3.0);
  EXPECT_DOUBLE_EQ(t[1], 1.0);
  // Either side of the squared threshold: 0.99e-5 and 1.01e-5 apart.
  EXPECT_EQ(x.GetLineOrientation(Line(0, 0, 0.99e-5, 0, 1, 0)), CLineal::eIntersecting);
  EXPECT_EQ(x.GetLineOrientation(Line(0, 0, 1.01e-5, 0, 1, 0)), CLineal::eSkew);

  SMat untouched(9, 9, 9);
  EXPECT_EQ(x.Intesect(Line(5, 0, 0, -1, 0, 0), untouched), CLineal::eCoincident);
  EXPECT_EQ(x.Intesect(Line(5, 1, 0, 1, 0, 0), untouched), CLineal::eParallel);
  ExpectVec(untouched, 9.0, 9.0, 9.0);
  EXPECT_TRUE(x.IsCoinside(Line(5, 0, 0, -1, 0, 0)));
  EXPECT_TRUE(x.IsComplanar(Line(5, 1, 0, 0, 1, 0)));
  EXPECT_FALSE(x.IsComplanar(skew));
}

TEST(CLineal, ConicalDistancesAndSentinels) {
  const CLineal x = Line(0, 0, 0, 1, 0, 0);
  SMat out;
  EXPECT_EQ(x.DistConical(SMat(0, 1, 0), 0.5e-10, &out), 0.0);
  ExpectVec(out, 0.0, 1.0, 0.0);
  EXPECT_EQ(x.DistConical(SMat(0, 1, 0), kPi, &out), 0.0);
  EXPECT_DOUBLE_EQ(x.DistConical(SMat(2, 1, 0), kPi / 2, &out), 1.0);
  ExpectVec(out, 2.0, 0.0, 0.0);  // a right angle: the foot itself
  EXPECT_NEAR(x.DistConical(SMat(2, 1, 0), kPi / 4, &out), std::sqrt(2.0), 1e-15);
  ExpectVec(out, 1.0, 0.0, 0.0, 1e-15);  // the apex, 1 / tan(pi/4) back from the foot

  // Between lines: perpendicular and parallel lines have no answer, too small an angle none either.
  EXPECT_EQ(x.DistConical(Line(0, 0, 1, 0, 1, 0), 1.0), 1e307);
  EXPECT_EQ(x.DistConical(Line(0, 1, 0, 1, 0, 0), 1.0), 1e307);
  EXPECT_EQ(x.DistConical(Line(0, 1, 0, -1, 0, 0), 1.0), -1.0);  // anti-parallel passes the 1e307 test
  const CLineal l60 = Line(0, 0, 1, std::cos(kPi / 3), std::sin(kPi / 3), 0);
  EXPECT_EQ(x.DistConical(l60, kPi / 6 - 1e-9), -1.0);

  // phi = a = pi/3, d = 1: h = 0.5 / (sin(pi/3)·sqrt(3/4 - 1/4)) = sqrt(2/3), h2 = h / 2.
  SMat q1;
  SMat q2;
  double t[2];
  const double r = x.DistConical(l60, kPi / 3, &q1, &q2, t);
  const double h = std::sqrt(2.0 / 3.0);
  ExpectVec(q1, h, 0.0, 0.0, 1e-14);
  ExpectVec(q2, h / 4, h * std::sqrt(3.0) / 4, 1.0, 1e-14);
  EXPECT_NEAR(t[0], h, 1e-14);
  EXPECT_NEAR(t[1], h / 2, 1e-14);
  EXPECT_NEAR(r, q1.Dist(q2), 1e-15);

  CLineal::ELinePosn posn = CLineal::eLinePosnUnknown;
  SMat at;
  EXPECT_TRUE(x.GetSegmentAtAngle(l60, kPi / 3, &at, nullptr, posn));
  EXPECT_EQ(posn, CLineal::eSkew);
  ExpectVec(at, h, 0.0, 0.0, 1e-14);
  posn = CLineal::eLinePosnUnknown;
  EXPECT_FALSE(x.GetSegmentAtAngle(Line(0, 0, 0, 0, 1, 0), 1.0, &at, nullptr, posn));
  EXPECT_EQ(posn, CLineal::eIntersecting);
}

TEST(CLineal, PlaneReading) {
  CLineal l;
  EXPECT_TRUE(l.IntersectPlanes(Line(0, 0, 2, 0, 0, 1), Line(3, 0, 0, 1, 0, 0)));
  ExpectVec(l.origin, 3.0, 0.0, 2.0);
  ExpectVec(l.dir, 0.0, 1.0, 0.0);
  const CLineal keep = l;
  EXPECT_FALSE(l.IntersectPlanes(Line(0, 0, 0, 0, 0, 1), Line(0, 0, 0, 0, 0, -1)));
  EXPECT_TRUE(l == keep);  // anti-parallel normals: nothing written
  // Normals of the same sense get past the first test: a non-finite origin and a zero direction.
  EXPECT_FALSE(l.IntersectPlanes(Line(0, 0, 0, 0, 0, 1), Line(0, 0, 1, 0, 0, 1)));
  EXPECT_FALSE(std::isfinite(l.origin.z));
  ExpectVec(l.dir, 0.0, 0.0, 0.0);

  CLineal pl;
  EXPECT_TRUE(pl.PlaneFromEquation(SMat(0, 0, 2), 4.0));
  ExpectVec(pl.origin, 0.0, 0.0, 2.0);
  ExpectVec(pl.dir, 0.0, 0.0, 1.0);
  PlaneEqn e;
  pl.GetPlaneEquation(e);
  EXPECT_EQ(e.c, 1.0);
  EXPECT_EQ(e.d, -2.0);
  EXPECT_FALSE(pl.PlaneFromEquation(SMat(1e-11, 0, 0), 1.0));
  ExpectVec(pl.origin, 0.0, 0.0, 2.0);
  EXPECT_TRUE(pl.PlaneFromEquation(PlaneEqn(0, 2, 0, 6)));  // 2y + 6 = 0
  EXPECT_NEAR(pl.origin.y, -3.0, 1e-15);
  EXPECT_TRUE(pl.PlaneIncident(SMat(5, -3, 7)));

  CLineal tri;
  EXPECT_TRUE(tri.PassPlane(SMat(1, 0, 0), SMat(1, 1, 0), SMat(1, 0, 1)));
  ExpectVec(tri.dir, 1.0, 0.0, 0.0);
  EXPECT_FALSE(tri.PassPlane(SMat(0, 0, 0), SMat(1, 1, 1), SMat(2, 2, 2)));
  ExpectVec(tri.dir, 0.0, 0.0, 0.0);
  EXPECT_TRUE(tri.PassPlane(Line(0, 0, 5, 1, 0, 0), SMat(0, 1, 5)));
  ExpectVec(tri.origin, 0.0, 0.0, 5.0);
  ExpectVec(tri.dir, 0.0, 0.0, 1.0);

  // A line parallel to the plane z = 0 and off it still counts as incident when its offset from
  // the plane's point is normal to the line.
  const CLineal floor = Line(0, 0, 0, 0, 0, 1);
  EXPECT_TRUE(Line(3, 0, 0, 0, 1, 0).IsIncident(floor));
  EXPECT_TRUE(Line(0, 0, 1, 1, 0, 0).IsIncident(floor));
  EXPECT_FALSE(Line(1, 0, 1, 1, 0, 0).IsIncident(floor));
  EXPECT_FALSE(Line(0, 0, 0, 0, 0, 1).IsIncident(floor));

  SMat p(4, 5, 6);
  EXPECT_DOUBLE_EQ(floor.ProjectToPlane(p), 6.0);
  ExpectVec(p, 4.0, 5.0, 0.0);
  SMat hit;
  double t = 0.0;
  EXPECT_TRUE(Line(1, 1, 4, 0, 0, -1).IntersectPlane(floor, hit, &t));
  ExpectVec(hit, 1.0, 1.0, 0.0);
  EXPECT_EQ(t, 4.0);
  EXPECT_FALSE(Line(1, 1, 4, 1, 0, 0).IntersectPlane(floor, hit));
}

TEST(CLineal, ProjectionsAndRotations) {
  const CLineal l = Line(1, 2, 3, 0, 3, 4);
  Lineal2D out;
  EXPECT_TRUE(l.Project(1, 2, out));
  EXPECT_EQ(out.origin, C2DPoint(2, 3));
  EXPECT_NEAR(out.dir.x, 0.6, 1e-15);
  EXPECT_FALSE(Line(0, 0, 0, 0, 0, 1).Project(0, 1, out));  // no direction left in xy
  EXPECT_FALSE(l.Project(0, 3, out));

  CLineal r = Line(1, 0, 0, 1, 0, 0);
  r.Rotate(kPi / 2, 3);
  ExpectVec(r.origin, 0.0, 1.0, 0.0, 1e-15);
  ExpectVec(r.dir, 0.0, 1.0, 0.0, 1e-15);
  r.Rotate(Line(0, 0, 1, 1, 0, 0), kPi);  // about the x axis raised to z = 1
  ExpectVec(r.origin, 0.0, -1.0, 2.0, 1e-15);
  ExpectVec(r.dir, 0.0, -1.0, 0.0, 1e-15);
}

TEST(CLineal, XmlRoundTrip) {
  CLineal l = Line(0.1, -2.5, 1e-300, 1, 2, 2);
  PCExBase out;
  out.StartStoring();
  ASSERT_TRUE(l.PersistXML(out));
  std::string xml;
  ASSERT_TRUE(out.SaveString(xml));
  EXPECT_NE(xml.find("<Ll>"), std::string::npos);
  EXPECT_NE(xml.find("<Lc"), std::string::npos);
  EXPECT_NE(xml.find("<Dr"), std::string::npos);

  PCExBase in;
  ASSERT_TRUE(in.LoadString(xml.c_str()));
  CLineal back;
  ASSERT_TRUE(back.PersistXML(in));
  EXPECT_EQ(back.origin.x, l.origin.x);  // bit for bit
  EXPECT_EQ(back.origin.z, l.origin.z);
  EXPECT_EQ(back.dir.y, l.dir.y);

  // Without "Lc" the direction is not read either.
  PCExBase partial;
  ASSERT_TRUE(partial.LoadString("<Ll><Dr V=\"0 1 0\" /></Ll>"));
  CLineal kept;
  EXPECT_FALSE(kept.PersistXML(partial));
  ExpectVec(kept.dir, 1.0, 0.0, 0.0);
}

TEST(CLineal, DebugArrow) {
  const CLineal l = Line(1, 0, 0, 0, 1, 0);
  ISection* sec = l.CreateDump(10.0);
  ASSERT_NE(sec, nullptr);
  char caption[64] = {};
  ASSERT_EQ(sec->GetCaption(caption, sizeof caption), S_OK);
  EXPECT_EQ(std::string(caption).rfind("CLineal ", 0), 0u);
  EXPECT_EQ(std::string(caption).size(), 16u);
  int n = 0;
  sec->GetVertexCount(&n);
  ASSERT_EQ(n, 4);
  double v[3];
  sec->GetVertex(1, v);
  ExpectVec(SMat(v), 1.0, 10.0, 0.0);
  // Both barbs at the absolute parameter 0.9, whatever the length, on top of each other.
  sec->GetVertex(2, v);
  ExpectVec(SMat(v), 1.0, 0.9, 0.0);
  sec->GetVertex(3, v);
  ExpectVec(SMat(v), 1.0, 0.9, 0.0);
  const LONG expected[] = {0, 1, 2, 1, 3};
  sec->GetIndexCount(&n);
  ASSERT_EQ(n, 5);
  for (int i = 0; i < 5; ++i) {
    LONG e = -1;
    sec->GetIndex(i, &e);
    EXPECT_EQ(e, expected[i]);
  }
  sec->Release();

  const size_t before = AnGeoState::GetDbg()->m_items.size();
  const int depth = AnGeoState::GetDbg()->GetStreamDepth();
  l.Dp(2.0);
  ASSERT_EQ(AnGeoState::GetDbg()->m_items.size(), before + 1);
  EXPECT_TRUE(AnGeoState::GetDbg()->m_items.back().b3D);
  EXPECT_EQ(AnGeoState::GetDbg()->GetStreamDepth(), depth);
}
