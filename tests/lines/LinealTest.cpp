#include <znmt64/CLineal.h>
#include <znmt64/CMFrame.h>
#include <znmt64/CPlane.h>

#include <znag64/Section.h>
#include <znbl64/PCExBase.h>

#include <cmath>
#include <cstring>
#include <numbers>
#include <string>

#include "LinesTestUtil.h"

namespace {
constexpr double kPi = std::numbers::pi;
}

TEST(CLineal, ConstructionTagsAndArithmetic) {
  const SMat c(0, 3, 4);
  SMat m(0, 3, 4);
  EXPECT_TRUE(Near(CLineal(c).dir, 0, 3, 4) && Near(CLineal(m).dir, 0, 0.6, 0.8));  // const: taken as it stands

  CLineal src = Line(1, 2, 3, 0, 0, 1);
  src.tag = 5;
  CLineal assigned;
  assigned = src;
  EXPECT_TRUE(CLineal(src).tag == -1 && CLineal(src) == src && assigned.tag == 5);  // == ignores the tag

  // operator- subtracts the origins but adds the directions.
  const CLineal diff = Line(5, 5, 5, 1, 0, 0) - Line(1, 2, 3, 0, 1, 0);
  EXPECT_TRUE(Near(diff.origin, 4, 3, 2) && Near(diff.dir, std::sqrt(0.5), std::sqrt(0.5), 0));
  CLineal scaled = Line(1, 0, 0, 1, 0, 0);
  scaled *= 2.0;
  EXPECT_FALSE(scaled.IsValid());  // not renormalised
}

TEST(CLineal, PointQueries) {
  const CLineal l = Line(1, 2, 3, 1, 1, 0);
  SMat out(9, 9, 9);
  EXPECT_TRUE(l.GetPoint(5.0, 0, out) && !l.GetPoint(5.0, 2, out));  // the line never leaves z = 3
  EXPECT_TRUE(Near(out, 5, 6, 3, 1e-14));

  const CLineal x = Line(0, 0, 0, 1, 0, 0);
  EXPECT_EQ(x.GetAngle(SMat(0, 0, 0)), 1e307);

  // IsNormal's product is signed and its tolerance unused: a vector pointing back counts as normal.
  const SMat p1(2, 0, 0), back(-3, 0, 0), ahead(7, 0, 0), off(2, 1, 0);
  EXPECT_TRUE(x.IsNormal(&p1, &back, 0.0) && x.IsNormal(nullptr, &back));
  EXPECT_FALSE(x.IsNormal(&p1, &ahead, 100.0) || x.IsNormal(&off, &back));

  CLineal d = x;
  EXPECT_TRUE(!d.DirectTowards(SMat(5e-11, 0, 0)) && Near(d.dir, 5e-11, 0, 0, 0));  // the raw difference stays
  EXPECT_TRUE(d.DirectTowards(SMat(1e-10, 0, 0)) && Near(d.dir, 1e-10, 0, 0, 0));  // exactly 1e-10: not scaled
}

TEST(CLineal, LinePositionThresholds) {
  const CLineal x = Line(0, 0, 0, 1, 0, 0);
  // Parallel lines: the squared distance meets 1e-10, so 2e-6 apart is still coincident.
  SMat p1(9, 9, 9), p2;
  double t[2] = {-7.0, -7.0};
  CLineal::ELinePosn posn = CLineal::eLinePosnUnknown;
  EXPECT_NEAR(x.SquareDist(Line(3, 2e-6, 0, 1, 0, 0), &p1, &p2, t, &posn), 4e-12, 1e-25);
  EXPECT_TRUE(posn == CLineal::eCoincident && p1.Is(0, 0, 0) && p2.Is(0, 2e-6, 0));
  EXPECT_EQ(t[0], -7.0);  // parallel lines leave the parameters
  x.SquareDist(Line(3, 2e-5, 0, -1, 0, 0), nullptr, nullptr, nullptr, &posn);
  EXPECT_EQ(posn, CLineal::eParallel);

  // Skew lines 5e-6 apart intersect by the squared test and are skew by the plain one.
  const CLineal skew = Line(3, -1, 5e-6, 0, 1, 0);
  EXPECT_EQ(x.GetLineOrientation(skew), CLineal::eIntersecting);
  SMat at;
  double dist = 0.0;
  EXPECT_EQ(x.Intesect(skew, at, t, &dist), CLineal::eSkew);
  EXPECT_NEAR(dist, 5e-6, 1e-18);
  EXPECT_TRUE(at.Is(3, 0, 0) && t[0] == 3.0 && t[1] == 1.0);
  EXPECT_EQ(x.GetLineOrientation(Line(0, 0, 1.01e-5, 0, 1, 0)), CLineal::eSkew);

  SMat untouched(9, 9, 9);
  EXPECT_EQ(x.Intesect(Line(5, 0, 0, -1, 0, 0), untouched), CLineal::eCoincident);
  EXPECT_EQ(x.Intesect(Line(5, 1, 0, 1, 0, 0), untouched), CLineal::eParallel);
  EXPECT_TRUE(untouched.Is(9, 9, 9));
}

TEST(CLineal, ConicalDistancesAndSentinels) {
  const CLineal x = Line(0, 0, 0, 1, 0, 0);
  SMat out;
  EXPECT_TRUE(x.DistConical(SMat(0, 1, 0), 0.5e-10, &out) == 0.0 && out.Is(0, 1, 0));
  EXPECT_TRUE(x.DistConical(SMat(2, 1, 0), kPi / 2, &out) == 1.0 && Near(out, 2, 0, 0));  // a right angle: the foot
  EXPECT_NEAR(x.DistConical(SMat(2, 1, 0), kPi / 4, &out), std::sqrt(2.0), 1e-15);
  EXPECT_TRUE(Near(out, 1, 0, 0));  // the apex, 1 / tan(pi/4) back from the foot

  // Between lines: 1e307 for perpendicular and parallel lines, -1 without a solution.
  EXPECT_EQ(x.DistConical(Line(0, 0, 1, 0, 1, 0), 1.0), 1e307);
  EXPECT_EQ(x.DistConical(Line(0, 1, 0, 1, 0, 0), 1.0), 1e307);
  EXPECT_EQ(x.DistConical(Line(0, 1, 0, -1, 0, 0), 1.0), -1.0);  // anti-parallel passes the 1e307 test
  const CLineal l60 = Line(0, 0, 1, std::cos(kPi / 3), std::sin(kPi / 3), 0);
  EXPECT_EQ(x.DistConical(l60, kPi / 6 - 1e-9), -1.0);

  // phi = a = pi/3 at distance 1: h = 0.5 / (sin(pi/3)·sqrt(3/4 - 1/4)) = sqrt(2/3), h2 = h / 2.
  SMat q1, q2;
  double t[2];
  const double h = std::sqrt(2.0 / 3.0);
  const double r = x.DistConical(l60, kPi / 3, &q1, &q2, t);
  EXPECT_TRUE(Near(q1, h, 0, 0, 1e-14) && Near(q2, h / 4, h * std::sqrt(3.0) / 4, 1, 1e-14));
  EXPECT_NEAR(t[0], h, 1e-14);
  EXPECT_NEAR(t[1], h / 2, 1e-14);
  EXPECT_NEAR(r, q1.Dist(q2), 1e-15);

  CLineal::ELinePosn posn = CLineal::eLinePosnUnknown;
  SMat at;
  EXPECT_TRUE(x.GetSegmentAtAngle(l60, kPi / 3, &at, nullptr, posn) && posn == CLineal::eSkew);
  EXPECT_TRUE(Near(at, h, 0, 0, 1e-14));
}

TEST(CLineal, PlaneReading) {
  CLineal l;
  EXPECT_TRUE(l.IntersectPlanes(Line(0, 0, 2, 0, 0, 1), Line(3, 0, 0, 1, 0, 0)));
  EXPECT_TRUE(l.origin.Is(3, 0, 2) && l.dir.Is(0, 1, 0));
  const CLineal keep = l;
  EXPECT_FALSE(l.IntersectPlanes(Line(0, 0, 0, 0, 0, 1), Line(0, 0, 0, 0, 0, -1)));
  EXPECT_TRUE(l == keep);  // anti-parallel normals: nothing written
  // Normals of the same sense pass the first test: a non-finite origin and a zero direction.
  EXPECT_FALSE(l.IntersectPlanes(Line(0, 0, 0, 0, 0, 1), Line(0, 0, 1, 0, 0, 1)));
  EXPECT_TRUE(!std::isfinite(l.origin.z) && l.dir.Is(0, 0, 0));

  CLineal pl;
  EXPECT_TRUE(pl.PlaneFromEquation(PlaneEqn(0, 2, 0, 6)));  // 2y + 6 = 0
  EXPECT_FALSE(pl.PlaneFromEquation(SMat(1e-11, 0, 0), 1.0));
  EXPECT_TRUE(Near(pl.origin, 0, -3, 0));

  EXPECT_TRUE(!pl.PassPlane(SMat(0, 0, 0), SMat(1, 1, 1), SMat(2, 2, 2)) && pl.dir.Is(0, 0, 0));
  EXPECT_TRUE(pl.PassPlane(Line(0, 0, 5, 1, 0, 0), SMat(0, 1, 5)));  // through the line
  EXPECT_TRUE(pl.origin.Is(0, 0, 5) && pl.dir.Is(0, 0, 1));

  // Parallel to the floor: incident when its offset from the floor's point is in it, or normal to it.
  const CLineal floor = Line(0, 0, 0, 0, 0, 1);
  EXPECT_TRUE(Line(3, 0, 0, 0, 1, 0).IsIncident(floor) && Line(0, 0, 1, 1, 0, 0).IsIncident(floor));
  EXPECT_FALSE(Line(1, 0, 1, 1, 0, 0).IsIncident(floor));
}

TEST(CLineal, XmlRoundTrip) {
  CLineal l = Line(0.1, -2.5, 1e-300, 1, 2, 2), back;
  std::string xml;
  ASSERT_TRUE(XmlRoundTrip(l, back, &xml));
  EXPECT_NE(xml.find("<Dr"), std::string::npos);
  EXPECT_EQ(std::memcmp(&back.origin, &l.origin, sizeof(SMat)), 0);  // bit for bit
  EXPECT_EQ(std::memcmp(&back.dir, &l.dir, sizeof(SMat)), 0);

  // Without "Lc" the direction is not read either.
  PCExBase partial;
  ASSERT_TRUE(partial.LoadString("<Ll><Dr V=\"0 1 0\" /></Ll>"));
  CLineal kept;
  EXPECT_TRUE(!kept.PersistXML(partial) && kept.dir.Is(1, 0, 0));
}

TEST(CLineal, DebugArrow) {
  const CLineal l = Line(1, 0, 0, 0, 1, 0);
  ISection* sec = l.CreateDump(10.0);
  ASSERT_NE(sec, nullptr);
  int n = 0;
  sec->GetVertexCount(&n);
  ASSERT_EQ(n, 4);
  // The tip at len, both barbs at the absolute parameter 0.9 and on top of each other.
  const double tipY[4] = {0.0, 10.0, 0.9, 0.9};
  double v[3];
  for (int i = 0; i < 4; ++i) EXPECT_TRUE(sec->GetVertex(i, v) == S_OK && SMat(v).Is(1, tipY[i], 0)) << i;
  const LONG expectedIdx[5] = {0, 1, 2, 1, 3};
  LONG e = -1;
  for (int i = 0; i < 5; ++i) EXPECT_TRUE(sec->GetIndex(i, &e) == S_OK && e == expectedIdx[i]) << i;
  sec->Release();
}

TEST(CLineal, FrameOnALineTakesItAsZ) {
  CLineal l = Line(1, 0, 0, 0, 1, 0);
  const CMFrame on(l);
  EXPECT_TRUE(on.origin.Is(1, 0, 0) && on.axes[2].Is(0, 1, 0) && on.IsValid() && on.GetOrientation());
}
