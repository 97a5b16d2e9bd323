#include <znmt64/CMFrame.h>
#include <znmt64/CMovement.h>
#include <znmt64/ZnScale.h>

#include <gtest/gtest.h>
#include <znag64/Point2D.h>
#include <znbl64/PCExBase.h>

#include <cmath>
#include <string>

namespace {

constexpr double kPi = 3.14159265358979323846;

// A quarter turn about the vertical line through (1, 0, 0), then a shift.
CMovement QuarterTurn(const SMat& shift) {
  CMovement m;
  m.angle = kPi / 2;
  m.axis.origin.Set(1.0, 0.0, 0.0);
  m.axis.dir.Set(0.0, 0.0, 1.0);
  m.shift = shift;
  return m;
}

}  // namespace

TEST(CMovement, TranslationsAndNegligibleAngles) {
  CMovement m;
  EXPECT_TRUE(m.IsTrivial());
  EXPECT_TRUE(m.IsSimple());
  EXPECT_TRUE(m.IsTranslation());

  // An angle of 1e-11 is no turn: every operation is the pure shift.
  m.angle = 1e-11;
  m.axis.origin.Set(5.0, 5.0, 5.0);
  m.shift.Set(1.0, 2.0, 3.0);
  EXPECT_FALSE(m.IsTrivial());
  SMat p(1.0, 1.0, 1.0);
  m.MovePoint(p);
  EXPECT_TRUE(p.Is(2.0, 3.0, 4.0));
  CMFrame f;
  m.Move(f);
  EXPECT_TRUE(f.origin.Is(1.0, 2.0, 3.0));
  EXPECT_TRUE(f.axes[0].Is(1.0, 0.0, 0.0));

  // MoveLoc shifts along the frame's own axes.
  CMFrame turned;
  turned.Rotate(kPi / 2, 2);
  m.MoveLoc(turned);
  EXPECT_TRUE(turned.origin.Is(-2.0, 1.0, 3.0));

  m.shift.SetAll(0.0);
  m.angle = 0.3;
  EXPECT_TRUE(m.IsSimple());
  EXPECT_FALSE(m.IsTranslation());
  m.Reset();
  EXPECT_TRUE(m.IsTrivial());
  EXPECT_TRUE(m.axis.dir.Is(1.0, 0.0, 0.0));
  EXPECT_TRUE(m.axis.origin.Is(5.0, 5.0, 5.0));
}

TEST(CMovement, FramesFollowTheirPoints) {
  const CMovement m = QuarterTurn(SMat(0.0, 0.0, 2.0));
  double p[3] = {0.0, 0.0, 0.0};
  m.MovePoint(p);
  EXPECT_TRUE(SMat(p).Is(1.0, -1.0, 2.0));

  // Move carries the frame as it carries its origin and its axes.
  CMFrame f;
  f.SetOrigin(2.0, 0.5, 0.0);
  f.Rotate(SMat(1.0, 1.0, 0.0), 0.4);
  CMFrame moved = f;
  m.Move(moved);
  SMat o = f.origin;
  m.MovePoint(o);
  EXPECT_TRUE(moved.origin.IsSame(o, 1e-14));
  for (int k = 0; k < 3; ++k) {
    SMat a = f.axes[k];
    m.MoveVect(a);
    EXPECT_TRUE(moved.axes[k].IsSame(a, 1e-14)) << k;
  }

  // MakeLocal subtracts the frame's origin from the shift, as from a point.
  CMovement l = QuarterTurn(SMat(1.0, 0.0, 0.0));
  CMFrame at;
  at.SetOrigin(1.0, 0.0, 0.0);
  l.MakeLocal(at);
  EXPECT_TRUE(l.shift.Is(0.0, 0.0, 0.0));
  EXPECT_TRUE(l.axis.origin.Is(0.0, 0.0, 0.0));
}

TEST(TransformParametric, PlanarTransform) {
  TransformParametric t;
  C2DPoint p(3.5, -2.0);
  t.Transform(p);
  EXPECT_EQ(p, C2DPoint(3.5, -2.0));

  t.scale[0] = 2.0;
  t.center.Set(1.0, 1.0, 0.0);
  C2DPoint q(2.0, 1.0);
  t.Transform(q);
  EXPECT_EQ(q, C2DPoint(3.0, 1.0));

  // Shift first, then the turn about the centre, then the scale along the global x.
  t.shift.Set(1.0, 0.0, 9.0);
  t.angle = kPi / 2;
  double r[2] = {1.0, 1.0};
  t.Transform(r);
  EXPECT_NEAR(r[0], 1.0, 1e-15);
  EXPECT_NEAR(r[1], 2.0, 1e-15);

  const TransformParametric copy(t);
  EXPECT_EQ(copy.scale[0], 2.0);
  EXPECT_EQ(copy.angle, t.angle);
  EXPECT_EQ(TransformParametric(2).dim, 2);
}

TEST(TransformParametric, XmlRoundTrip) {
  TransformParametric t(2);
  t.scale[0] = 0.5;
  t.scale[1] = 3.0;
  t.scale[2] = 7.0;  // beyond dim: not stored
  t.center.Set(1.0, 2.0, 3.0);
  PCExBase out;
  out.StartStoring();
  ASSERT_TRUE(out.PushElement("Doc"));
  ASSERT_TRUE(t.PersistXML(out));
  out.PopElement(false);
  std::string xml;
  ASSERT_TRUE(out.SaveString(xml));

  PCExBase in;
  ASSERT_TRUE(in.LoadString(xml.c_str()));
  ASSERT_TRUE(in.PersistElement("Doc", false));
  TransformParametric u(2);
  ASSERT_TRUE(u.PersistXML(in));
  EXPECT_EQ(u.scale[0], 0.5);
  EXPECT_EQ(u.scale[1], 3.0);
  EXPECT_EQ(u.scale[2], 1.0);
  EXPECT_TRUE(u.center.Is(1.0, 2.0, 0.0));

  // Without a "TP" child nothing changes; neither does a three-number load of two numbers.
  PCExBase none;
  ASSERT_TRUE(none.LoadString("<Doc><Fr /></Doc>"));
  ASSERT_TRUE(none.PersistElement("Doc", false));
  TransformParametric v;
  EXPECT_FALSE(v.PersistXML(none));
  EXPECT_EQ(v.scale[0], 1.0);
  PCExBase again;
  ASSERT_TRUE(again.LoadString(xml.c_str()));
  ASSERT_TRUE(again.PersistElement("Doc", false));
  EXPECT_TRUE(v.PersistXML(again));
  EXPECT_EQ(v.scale[0], 1.0);
}

TEST(ZnScale, FollowsAMovement) {
  ZnScale s;
  s.SetScale(2.0, 3.0, 4.0);
  CMovement m;
  m.axis.dir.Set(0.0, 0.0, 1.0);
  m.angle = kPi / 2;
  m.shift.Set(1.0, 0.0, 0.0);
  s.Transform(m);
  EXPECT_TRUE(s.frame.origin.Is(1.0, 0.0, 0.0));
  EXPECT_TRUE(s.frame.axes[0].Is(0.0, 1.0, 0.0));
  EXPECT_TRUE(s.multipliers.Is(-3.0, 2.0, 4.0));
}
