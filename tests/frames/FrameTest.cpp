#include <znmt64/AffinTransf.h>
#include <znmt64/CMFrame.h>
#include <znmt64/FrameOI.h>
#include <znmt64/MatSq.h>

#include <gtest/gtest.h>
#include <znag64/Point2D.h>
#include <znag64/Section.h>
#include <znbl64/PCExBase.h>

#include <cmath>
#include <cstring>
#include <string>

namespace {

constexpr double kPi = 3.14159265358979323846;
const CMFrame kRaw{static_cast<unsigned char>(0)};  // zero axes, to be filled

// Origin (1, 2, 3), turned by 0.7 about (1, 1, 1): no axis lies along a coordinate axis.
CMFrame SkewFrame() {
  CMFrame f;
  f.SetOrigin(1.0, 2.0, 3.0);
  f.Rotate(SMat(1.0, 1.0, 1.0), 0.7);
  return f;
}

}  // namespace

TEST(CMFrame, ValidityAndHandedness) {
  CMFrame f;
  EXPECT_TRUE(f.IsUnitary() && f.IsValid() && f.GetOrientation());
  f.origin.Set(0.0, 1e300, -1e300);  // only the origin's x is range-checked
  EXPECT_TRUE(f.IsValid());
  f.origin.x = 1.1e100;
  EXPECT_FALSE(f.IsValid());

  CMFrame g;
  g.axes[0].x = 1.0 + 2e-6;  // not unit within 1e-6
  EXPECT_FALSE(g.IsValid());
  g.axes[0].Set(1.0, 2e-6, 0.0);  // unit within 1e-6, but X.Y = 2e-6
  EXPECT_TRUE(!g.IsValid() && g.IsUnitary());  // IsUnitary reads only component k of axis k
  g.SetOrigin(4.0, 5.0, 6.0);
  g.MakeInvalid();
  EXPECT_TRUE(!g.IsValid() && g.origin.Is(4.0, 5.0, 6.0));

  CMFrame l;
  EXPECT_TRUE(l.Init(0, false) && l.axes[0].Is(-1.0, 0.0, 0.0) && l.IsValid() && !l.GetOrientation());
  l.Init(2, 1, true);  // (2, 1, 0) is odd: X := -(Z x Y)
  EXPECT_TRUE(l.axes[0].Is(1.0, 0.0, 0.0));
  l.SwapAxes(0, 1);  // flips the hand; nothing repairs it
  EXPECT_FALSE(l.GetOrientation());
}

TEST(CMFrame, PointsVectorsAndMoves) {
  CMFrame f;
  f.SetOrigin(1.0, 2.0, 3.0);
  f.Rotate(kPi / 2, 2);  // X -> Y, Y -> -X
  SMat p(1.0, 3.0, 3.0);
  f.ToLocal(p);
  EXPECT_TRUE(p.Is(1.0, 0.0, 0.0));
  f.Translate(2.0, 1);
  f.Translate(1.0, 0.0, 0.0);
  f.TranslateGlob(SMat(1.0, 1.0, 1.0));
  EXPECT_TRUE(f.origin.Is(0.0, 4.0, 4.0));

  // A projection with its height comes back through To3DEx.
  const CMFrame s = SkewFrame();
  const SMat q(-4.0, 0.5, 7.0);
  SMat r;
  C2DPoint q2;
  double h = 0.0;
  s.Project(q, q2, &h);
  s.To3DEx(q2, h, r);
  EXPECT_TRUE(r.IsSame(q, 1e-14));
  CMFrame t = s;
  t.Rotate(1e-11, 2);  // a negligible turn is not made
  EXPECT_TRUE(t.IsSame(s, 0.0));
}

TEST(CMFrame, FrameConversionsAreAsymmetric) {
  CMFrame f = kRaw;
  f.axes[0].Set(2.0, 0.0, 0.0);
  f.axes[1].Set(0.0, 3.0, 0.0);
  CMFrame local = f, global = f;
  CMFrame().ToLocal(local);    // lengths come through
  CMFrame().ToGlobal(global);  // renormalised
  EXPECT_TRUE(local.axes[2].Is(0.0, 0.0, 6.0) && global.IsUnitary());

  // A left-handed frame comes out right-handed unless asked to keep its hand.
  CMFrame left;
  left.Reflect(2);
  CMFrame a = left, b = left;
  SkewFrame().ToGlobal(a);
  SkewFrame().ToGlobal(b, true);
  EXPECT_TRUE(a.GetOrientation() && !b.GetOrientation());
  SkewFrame().ToLocal(b, true);
  EXPECT_TRUE(b.IsSame(left, 1e-14));
}

TEST(CMFrame, RepairsAndFailedBuilds) {
  CMFrame f = kRaw;
  f.axes[0].Set(2.0, 0.0, 0.0);
  f.axes[1].Set(1.0, 1.0, 0.0);
  f.axes[2].Set(0.0, 0.0, -5.0);
  CMFrame g = f;
  EXPECT_TRUE(f.MakeValid(0) && f.IsUnitary());  // X kept, Y made orthogonal, Z rebuilt right-handed
  EXPECT_TRUE(g.MakeValid(1));  // Y's direction kept
  const double r = std::sqrt(0.5);
  EXPECT_TRUE(g.axes[1].Is(r, r, 0.0) && g.axes[0].Is(r, -r, 0.0) && g.GetOrientation());
  g.axes[1] = g.axes[0];
  EXPECT_FALSE(g.MakeValid(0));

  // SetAxes: bad indices touch nothing; a failed orthogonalisation leaves a normalised.
  CMFrame s;
  SMat a(0.0, 0.0, 2.0), b(1.0, 0.0, 0.0), c(0.0, 0.0, -4.0);
  EXPECT_FALSE(s.SetAxes(0, a, 0, b, true) || s.SetAxes(0, a, 3, b, true));
  EXPECT_TRUE(a.Is(0.0, 0.0, 2.0));
  EXPECT_TRUE(!s.SetAxes(0, a, 1, c, true) && a.Is(0.0, 0.0, 1.0) && s.IsUnitary(0.0));
  EXPECT_TRUE(s.SetAxes(2, a, 0, b, false) && s.axes[1].Is(0.0, -1.0, 0.0));

  // LookAt: Z to the target, Y the up vector made orthogonal; degenerate requests change nothing.
  CMFrame l;
  l.SetOrigin(1.0, 1.0, 1.0);
  EXPECT_FALSE(l.LookAt(SMat(1.0, 1.0, 1.0), SMat(0.0, 0.0, 1.0), true) ||
               l.LookAt(SMat(1.0, 1.0, 5.0), SMat(0.0, 0.0, 1.0), true));
  EXPECT_TRUE(l.IsUnitary(1e300) && l.axes[2].Is(0.0, 0.0, 1.0));
  ASSERT_TRUE(l.LookAt(SMat(4.0, 1.0, 1.0), SMat(0.5, 0.0, 2.0), true));
  EXPECT_TRUE(l.axes[2].Is(1.0, 0.0, 0.0) && l.axes[1].Is(0.0, 0.0, 1.0) && l.axes[0].Is(0.0, 1.0, 0.0));
  EXPECT_TRUE(l.LookAt(SMat(4.0, 1.0, 1.0), SMat(0.0, 0.0, 1.0), false) && l.axes[2].Is(-1.0, 0.0, 0.0));

  // Align turns about Z only; a vector exactly along Z fails.
  CMFrame al;
  SMat v(0.0, 2.0, 7.0), up(0.0, 0.0, 3.0);
  EXPECT_TRUE(al.Align(v) && !al.Align(up) && al.axes[0].Is(0.0, 1.0, 0.0));
}

TEST(CMFrame, SavedStates) {
  CMFrame f;
  EXPECT_EQ(f.GetStackSize(), -1);
  const int sizes[] = {1, 2, 4, 4};
  for (int n = 1; n <= 4; ++n) {
    f.Translate(1.0, 0.0, 0.0);
    f.Push();
    EXPECT_EQ(f.GetStackCount(), n);
    EXPECT_EQ(f.GetStackSize(), sizes[n - 1]);
  }
  EXPECT_TRUE(f.GetState(0)->origin.x == 4.0 && f.GetState(3)->origin.x == 1.0 && !f.GetState(4));

  // Copies get no stack; assignment leaves the target's own.
  EXPECT_EQ(CMFrame(f).GetStackSize(), -1);
  CMFrame target;
  target.Push();
  target = f;
  EXPECT_EQ(target.GetStackCount(), 1);

  // Discard drops the state either way; PopDifferent restores only a changed frame and keeps an
  // equal top state.
  f.Translate(0.5, 0.0, 0.0);
  EXPECT_TRUE(f.Discard() && f.origin.x == 4.5);
  f.Push();
  EXPECT_TRUE(!f.Discard() && f.GetStackCount() == 3);
  f.Push();
  EXPECT_TRUE(!f.PopDifferent() && f.GetStackCount() == 4);
  f.Rotate(0.3, 2);
  EXPECT_TRUE(f.PopDifferent() && f.axes[0].Is(1.0, 0.0, 0.0) && f.GetStackCount() == 3);

  f.ResetStack();
  f.Pop();  // empty: no change
  EXPECT_TRUE(f.origin.x == 4.5 && f.GetStackSize() == 4);
  CMFrame g;
  g.SetInitialStackSize(5);
  g.Push();
  EXPECT_EQ(g.GetStackSize(), 5);
}

TEST(CMFrame, CompositionAndInverse) {
  const CMFrame a = SkewFrame();
  CMFrame b;
  b.SetOrigin(-1.0, 0.5, 2.0);
  b.Rotate(SMat(0.0, 1.0, 0.2), -1.1);
  CMFrame expected = b, c = a, d = b;
  a.ToGlobal(expected);
  c *= b;
  d.MultLeft(a);
  EXPECT_TRUE((a * b).IsSame(expected, 1e-14) && c.IsSame(expected, 1e-14) && d.IsSame(expected, 1e-14));
  EXPECT_TRUE((c / a).IsSame(b, 1e-14));
  CMFrame self = a;
  const CMFrame& same = self;  // a frame divided by itself, through an alias
  self /= same;
  EXPECT_TRUE(self.IsUnitary(1e-14));

  // An invalid operand is repaired by the composition itself.
  CMFrame broken = a;
  broken.axes[2].SetAll(0.0);
  (void)(broken * b);
  EXPECT_TRUE(broken.IsSame(a, 1e-14));

  CMFrame mid;
  EXPECT_TRUE(mid.Combine(CMFrame(), a, 0.5) && mid.IsValid() && mid.origin.Is(0.5, 1.0, 1.5));
  EXPECT_NEAR(CMFrame().Dist(a), a.origin.Norm(), 1e-15);
}

TEST(CMFrame, Matrices) {
  CMFrame f = SkewFrame();
  MatSq m(4);
  f.ToMatrix(m);
  double flat[16];
  f.ToMatrix(flat);
  const SMat &X = f.axes[0], &Y = f.axes[1], &Z = f.axes[2], &O = f.origin;  // axes as columns
  const double rows[16] = {X.x, Y.x, Z.x, O.x, X.y, Y.y, Z.y, O.y, X.z, Y.z, Z.z, O.z, 0, 0, 0, 1};
  EXPECT_EQ(std::memcmp(m.m_pData, rows, sizeof rows), 0);
  EXPECT_EQ(std::memcmp(flat, rows, sizeof rows), 0);
  CMFrame g;
  g.FromMatrix(m);
  EXPECT_TRUE(g.IsSame(f, 1e-15));

  // Exchange through another module's frame interface.
  CMFrame wrapped;
  IFrame* p = FrameOI::Create(wrapped);
  ASSERT_NE(p, nullptr);
  EXPECT_TRUE(f.CopyTo(p) && wrapped.IsSame(f, 1e-15) && CMFrame(p).IsSame(f, 1e-15));
  wrapped.MakeInvalid();
  EXPECT_FALSE(g.Copy(p) || g.Copy(nullptr));
  p->Release();

  // An invalid frame is repaired and the matrix left untouched.
  CMFrame bad = f;
  bad.axes[1] *= 2.0;
  MatSq untouched(4);
  bad.ToMatrix(untouched);
  EXPECT_TRUE(untouched.GetMax(true) == 0.0 && untouched.GetMax(false) == 0.0 && bad.IsSame(f, 1e-15));

  // The identity's affine map carried from f's terms into global ones is f's own.
  AffinTransf t, u;
  f.GetTramsform(t);
  CMFrame().GetTramsform(u);
  f.ToGlobal(u);
  EXPECT_TRUE(u.m_mL.EqualsTo(t.m_mL) && u.m_vT == f.origin && t.m_mL.GetElem(2, 0) == f.axes[0].z);
}

TEST(CMFrame, StandardOrientation) {
  CMFrame f;
  EXPECT_EQ(f.GetStdOrientation(), CMFrame::eStdPlusZ);
  f.Reflect(2);
  f.Reflect(1);
  EXPECT_EQ(f.GetStdOrientation(), CMFrame::eStdMinusZ);
  CMFrame x, y;
  x.SetAxisRand(2, SMat(1.0, 0.0, 0.0), 1);  // Z along +X, Y kept
  y.Rotate(-kPi / 2, 0);                     // Z -> +Y
  EXPECT_TRUE(x.GetStdOrientation() == CMFrame::eStdPlusX && y.GetStdOrientation() == CMFrame::eStdPlusY);
  EXPECT_EQ(SkewFrame().GetStdOrientation(), CMFrame::eStdNone);
}

TEST(CMFrame, XmlAndDrawing) {
  const CMFrame f = SkewFrame();
  PCExBase out;
  out.StartStoring();
  ASSERT_TRUE(CMFrame(f).PersistXML(out));
  std::string xml;
  ASSERT_TRUE(out.SaveString(xml));
  EXPECT_EQ(xml.find("A2"), std::string::npos);  // Z is never stored
  PCExBase in;
  ASSERT_TRUE(in.LoadString(xml.c_str()));
  CMFrame g = kRaw;
  ASSERT_TRUE(g.PersistXML(in));
  EXPECT_TRUE(g.IsSame(f, 1e-15));

  // X and Y are normalised on loading and Z is rebuilt; no element, no change.
  PCExBase raw;
  ASSERT_TRUE(raw.LoadString("<Doc><Fr O=\"1 2 3\" A0=\"0 2 0\" A1=\"0 0 3\" /></Doc>"));
  ASSERT_TRUE(raw.PersistElement("Doc", false));
  CMFrame h;
  ASSERT_TRUE(h.PersistXML(raw));
  EXPECT_TRUE(h.origin.Is(1.0, 2.0, 3.0) && h.axes[0].Is(0.0, 1.0, 0.0) && h.axes[2].Is(1.0, 0.0, 0.0));
  PCExBase empty;
  ASSERT_TRUE(empty.LoadString("<Doc />"));
  EXPECT_TRUE(!h.PersistXML(empty) && h.origin.Is(1.0, 2.0, 3.0));

  ISection* sec = f.CreateDump(2.0);
  ASSERT_NE(sec, nullptr);
  char caption[64] = {};
  double tip[3];
  sec->GetCaption(caption, sizeof caption);
  sec->GetVertex(3, tip);
  EXPECT_EQ(std::string(caption).rfind("CMFrame 0x", 0), 0u);
  EXPECT_TRUE(SMat(tip).IsSame(f.origin + 2.0 * f.axes[2], 1e-15));
  sec->Release();
}
