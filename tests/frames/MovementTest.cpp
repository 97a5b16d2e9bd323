#include <znmt64/CMFrame.h>
#include <znmt64/CMovement.h>
#include <znmt64/ZnScale.h>

#include <gtest/gtest.h>
#include <znag64/Point2D.h>
#include <znbl64/PCExBase.h>

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

TEST(CMovement, NegligibleAnglesAreTranslations) {
  CMovement m;
  EXPECT_TRUE(m.IsTrivial() && m.IsSimple() && m.IsTranslation());
  m.angle = 1e-11;
  m.axis.origin.Set(5.0, 5.0, 5.0);
  m.shift.Set(1.0, 2.0, 3.0);
  SMat p(1.0, 1.0, 1.0);
  m.MovePoint(p);
  EXPECT_TRUE(!m.IsTrivial() && p.Is(2.0, 3.0, 4.0));
  CMFrame f, turned;
  m.Move(f);
  EXPECT_TRUE(f.origin.Is(1.0, 2.0, 3.0) && f.axes[0].Is(1.0, 0.0, 0.0));
  turned.Rotate(kPi / 2, 2);
  m.MoveLoc(turned);  // along the frame's own axes
  EXPECT_TRUE(turned.origin.Is(-2.0, 1.0, 3.0));

  m.angle = 0.3;
  m.Reset();  // keeps the axis point
  EXPECT_TRUE(m.IsTrivial() && m.axis.dir.Is(1.0, 0.0, 0.0) && m.axis.origin.Is(5.0, 5.0, 5.0));
}

TEST(CMovement, FramesFollowTheirPoints) {
  const CMovement m = QuarterTurn(SMat(0.0, 0.0, 2.0));
  double p[3] = {0.0, 0.0, 0.0};
  m.MovePoint(p);
  EXPECT_TRUE(SMat(p).Is(1.0, -1.0, 2.0));

  CMFrame f;
  f.SetOrigin(2.0, 0.5, 0.0);
  f.Rotate(SMat(1.0, 1.0, 0.0), 0.4);
  CMFrame moved = f;
  m.Move(moved);
  m.MovePoint(f.origin);
  EXPECT_TRUE(moved.origin.IsSame(f.origin, 1e-14));
  for (int k = 0; k < 3; ++k) {
    m.MoveVect(f.axes[k]);
    EXPECT_TRUE(moved.axes[k].IsSame(f.axes[k], 1e-14)) << k;
  }

  // MakeLocal subtracts the frame's origin from the shift, as from a point.
  CMovement l = QuarterTurn(SMat(1.0, 0.0, 0.0));
  CMFrame at;
  at.SetOrigin(1.0, 0.0, 0.0);
  l.MakeLocal(at);
  EXPECT_TRUE(l.shift.Is(0.0, 0.0, 0.0) && l.axis.origin.Is(0.0, 0.0, 0.0));

  // A scale's frame follows in its own terms; its multipliers turn as a direction.
  ZnScale s;
  s.SetScale(2.0, 3.0, 4.0);
  CMovement turn = QuarterTurn(SMat(1.0, 0.0, 0.0));
  turn.axis.origin.SetAll(0.0);
  s.Transform(turn);
  EXPECT_TRUE(s.frame.origin.Is(1.0, 0.0, 0.0) && s.frame.axes[0].Is(0.0, 1.0, 0.0));
  EXPECT_TRUE(s.multipliers.Is(-3.0, 2.0, 4.0));
}

TEST(TransformParametric, PlanarTransformAndXml) {
  TransformParametric t(2);
  C2DPoint p(3.5, -2.0), q(2.0, 1.0);
  t.Transform(p);
  t.scale[0] = 2.0;
  t.center.Set(1.0, 1.0, 3.0);
  t.Transform(q);
  EXPECT_TRUE(p == C2DPoint(3.5, -2.0) && q == C2DPoint(3.0, 1.0));
  // Shift first, then the turn about the centre, then the scale along the global x.
  t.shift.Set(1.0, 0.0, 9.0);
  t.angle = kPi / 2;
  double r[2] = {1.0, 1.0};
  t.Transform(r);
  EXPECT_TRUE(SMat(r[0], r[1], 0.0).IsSame(SMat(1.0, 2.0, 0.0), 1e-15));

  t.scale[2] = 7.0;  // beyond dim 2: neither stored nor loaded
  PCExBase out;
  out.StartStoring();
  ASSERT_TRUE(out.PushElement("Doc") && t.PersistXML(out));
  out.PopElement(false);
  std::string xml;
  ASSERT_TRUE(out.SaveString(xml));
  PCExBase in;
  ASSERT_TRUE(in.LoadString(xml.c_str()) && in.PersistElement("Doc", false));
  TransformParametric u(2);
  ASSERT_TRUE(u.PersistXML(in));
  EXPECT_TRUE(u.scale[0] == 2.0 && u.scale[1] == 1.0 && u.scale[2] == 1.0 && u.center.Is(1.0, 1.0, 0.0));

  // Without a "TP" child nothing changes; nor with two numbers where three are read.
  PCExBase none;
  ASSERT_TRUE(none.LoadString("<Doc><Fr /></Doc>") && none.PersistElement("Doc", false));
  TransformParametric v;
  EXPECT_FALSE(v.PersistXML(none));
  ASSERT_TRUE(in.LoadString(xml.c_str()) && in.PersistElement("Doc", false));
  EXPECT_TRUE(v.PersistXML(in) && v.scale[0] == 1.0 && v.center.Is(0.0, 0.0, 0.0));
}
