#include <znmt64/AffinTransf.h>
#include <znmt64/CMFrame.h>
#include <znmt64/MatSq.h>

#include <gtest/gtest.h>
#include <znag64/AnGeoState.h>
#include <znag64/Point2D.h>
#include <znbl64/PCExBase.h>

#include <cmath>
#include <string>

namespace {

constexpr double kPi = 3.14159265358979323846;

void ExpectVec(const SMat& v, double x, double y, double z, double tol = 1e-12) {
  EXPECT_NEAR(v.x, x, tol);
  EXPECT_NEAR(v.y, y, tol);
  EXPECT_NEAR(v.z, z, tol);
}

void ExpectSameFrame(const CMFrame& a, const CMFrame& b, double tol = 1e-12) {
  EXPECT_TRUE(a.IsSame(b, tol)) << "frames differ by " << a.Dist(b);
}

// Origin (1, 2, 3), turned by 0.7 about (1, 1, 1)/sqrt(3): no axis lies along a coordinate axis.
CMFrame SkewFrame() {
  CMFrame f;
  f.SetOrigin(1.0, 2.0, 3.0);
  f.Rotate(SMat(1.0, 1.0, 1.0), 0.7);
  return f;
}

}  // namespace

TEST(CMFrame, IdentityAndValidity) {
  CMFrame f;
  EXPECT_TRUE(f.IsUnitary());
  EXPECT_TRUE(f.IsValid());
  EXPECT_TRUE(f.GetOrientation());
  EXPECT_EQ(f.GetStdOrientation(), CMFrame::eStdPlusZ);

  // Only the origin's first component is range-checked.
  f.origin.Set(0.0, 1e300, -1e300);
  EXPECT_TRUE(f.IsValid());
  f.origin.x = 1.1e100;
  EXPECT_FALSE(f.IsValid());
  f.origin.x = 1e100;
  EXPECT_TRUE(f.IsValid());

  CMFrame g;
  g.axes[0].x = 1.0 + 2e-6;  // not unit within 1e-6
  EXPECT_FALSE(g.IsValid());
  g.axes[0].Set(1.0, 2e-6, 0.0);  // unit within 1e-6, but X.Y = 2e-6
  EXPECT_FALSE(g.IsValid());
  g.axes[0].Set(1.0, 5e-7, 0.0);
  EXPECT_TRUE(g.IsValid());

  g.SetOrigin(4.0, 5.0, 6.0);
  g.MakeInvalid();
  EXPECT_FALSE(g.IsValid());
  ExpectVec(g.origin, 4.0, 5.0, 6.0, 0.0);

  // IsUnitary reads only component k of axis k.
  CMFrame h;
  h.axes[0].Set(1.0, 0.5, 0.5);
  EXPECT_TRUE(h.IsUnitary());
  EXPECT_FALSE(h.IsValid());
}

TEST(CMFrame, Handedness) {
  CMFrame f;
  EXPECT_TRUE(f.Init(0, false));
  ExpectVec(f.axes[0], -1.0, 0.0, 0.0, 0.0);
  EXPECT_TRUE(f.IsValid());
  EXPECT_FALSE(f.GetOrientation());

  CMFrame g;
  g.Init(2, 1, true);  // (2, 1, 0) is odd: X := -(Z x Y) = (1, 0, 0)
  ExpectVec(g.axes[0], 1.0, 0.0, 0.0, 0.0);
  g.Init(2, 1, false);
  ExpectVec(g.axes[0], -1.0, 0.0, 0.0, 0.0);

  CMFrame s;
  s.SwapAxes(0, 1);
  EXPECT_FALSE(s.GetOrientation());
  s.Reflect(2);
  EXPECT_TRUE(s.GetOrientation());
  s.Reflect(3);  // out of range: no change
  EXPECT_TRUE(s.GetOrientation());

  EXPECT_FALSE(CMFrame().Init(3, true));
}

TEST(CMFrame, PointsAndVectors) {
  CMFrame f;
  f.SetOrigin(1.0, 2.0, 3.0);
  f.Rotate(kPi / 2, 2);  // X -> Y, Y -> -X
  SMat p(1.0, 3.0, 3.0);
  f.ToLocal(p);
  ExpectVec(p, 1.0, 0.0, 0.0);
  f.ToGlobal(p);
  ExpectVec(p, 1.0, 3.0, 3.0);
  SMat v(1.0, 0.0, 0.0);
  f.ToLocalVector(v);
  ExpectVec(v, 0.0, -1.0, 0.0);

  const CMFrame s = SkewFrame();
  const SMat q(-4.0, 0.5, 7.0);
  SMat r = q;
  s.ToLocal(r);
  s.ToGlobal(r);
  ExpectVec(r, q.x, q.y, q.z, 1e-14);

  // Projection into the XY plane with the height, and back.
  C2DPoint p2;
  double h = 0.0;
  s.Project(q, p2, &h);
  SMat back;
  s.To3DEx(p2, h, back);
  ExpectVec(back, q.x, q.y, q.z, 1e-14);
  s.To3D(p2, back);
  EXPECT_NEAR(back.Dist(q), std::fabs(h), 1e-14);

  // A point of s carried into f and back out of f lands where s puts it.
  SMat a(0.5, -1.0, 2.0);
  SMat viaF = a;
  s.ToFrame(f, viaF);
  f.ToGlobal(viaF);
  s.ToGlobal(a);
  ExpectVec(viaF, a.x, a.y, a.z, 1e-14);

  // Moves in local and global terms.
  CMFrame m = f;
  m.Translate(1.0, 0.0, 0.0);
  ExpectVec(m.origin, 1.0, 3.0, 3.0);
  m.Translate(2.0, 1);
  ExpectVec(m.origin, -1.0, 3.0, 3.0);
  m.TranslateGlob(SMat(1.0, 1.0, 1.0));
  ExpectVec(m.origin, 0.0, 4.0, 4.0);

  CMFrame r0 = s;
  r0.Rotate(1e-11, 2);
  EXPECT_TRUE(r0.IsSame(s, 0.0));
}

TEST(CMFrame, FrameConversionsAreAsymmetric) {
  CMFrame id;
  CMFrame f(static_cast<unsigned char>(0));
  f.axes[0].Set(2.0, 0.0, 0.0);
  f.axes[1].Set(0.0, 3.0, 0.0);
  CMFrame local = f;
  id.ToLocal(local);  // lengths come through
  ExpectVec(local.axes[0], 2.0, 0.0, 0.0, 0.0);
  ExpectVec(local.axes[2], 0.0, 0.0, 6.0, 0.0);
  CMFrame global = f;
  id.ToGlobal(global);  // renormalised
  EXPECT_TRUE(global.IsUnitary());

  // A left-handed frame comes out right-handed unless asked to keep its hand.
  CMFrame left;
  left.Reflect(2);
  const CMFrame s = SkewFrame();
  CMFrame a = left;
  CMFrame b = left;
  s.ToGlobal(a);
  s.ToGlobal(b, true);
  EXPECT_TRUE(a.GetOrientation());
  EXPECT_FALSE(b.GetOrientation());
  s.ToLocal(b, true);
  ExpectSameFrame(b, left);
}

TEST(CMFrame, MakeValidAndAxisBuilders) {
  CMFrame f(static_cast<unsigned char>(0));
  f.axes[0].Set(2.0, 0.0, 0.0);
  f.axes[1].Set(1.0, 1.0, 0.0);
  f.axes[2].Set(0.0, 0.0, -5.0);
  CMFrame g = f;
  EXPECT_TRUE(f.MakeValid(0));  // X kept, Y made orthogonal, Z rebuilt right-handed
  EXPECT_TRUE(f.IsUnitary());
  EXPECT_TRUE(g.MakeValid(1));  // Y's direction kept
  const double r = std::sqrt(0.5);
  ExpectVec(g.axes[1], r, r, 0.0);
  ExpectVec(g.axes[0], r, -r, 0.0);
  EXPECT_TRUE(g.GetOrientation());

  CMFrame bad(static_cast<unsigned char>(0));
  bad.axes[0].Set(1.0, 0.0, 0.0);
  bad.axes[1].Set(3.0, 0.0, 0.0);
  EXPECT_FALSE(bad.MakeValid(0));

  // SetAxes: bad indices touch nothing; a failed orthogonalisation leaves a normalised.
  CMFrame s;
  SMat a(0.0, 0.0, 2.0), b(1.0, 0.0, 0.0);
  EXPECT_FALSE(s.SetAxes(0, a, 0, b, true));
  EXPECT_FALSE(s.SetAxes(0, a, 3, b, true));
  ExpectVec(a, 0.0, 0.0, 2.0, 0.0);
  SMat c(0.0, 0.0, -4.0);
  EXPECT_FALSE(s.SetAxes(0, a, 1, c, true));
  ExpectVec(a, 0.0, 0.0, 1.0, 0.0);
  EXPECT_TRUE(s.IsUnitary());
  EXPECT_TRUE(s.SetAxes(2, a, 0, b, false));
  ExpectVec(s.axes[1], 0.0, -1.0, 0.0, 0.0);

  // LookAt: Z to the target, Y the up vector made orthogonal.
  CMFrame l;
  l.SetOrigin(1.0, 1.0, 1.0);
  const CMFrame before = l;
  EXPECT_FALSE(l.LookAt(SMat(1.0, 1.0, 1.0), SMat(0.0, 0.0, 1.0), true));
  EXPECT_FALSE(l.LookAt(SMat(1.0, 1.0, 5.0), SMat(0.0, 0.0, 1.0), true));
  EXPECT_TRUE(l.IsSame(before, 0.0));
  ASSERT_TRUE(l.LookAt(SMat(4.0, 1.0, 1.0), SMat(0.5, 0.0, 2.0), true));
  ExpectVec(l.axes[2], 1.0, 0.0, 0.0);
  ExpectVec(l.axes[1], 0.0, 0.0, 1.0);
  ExpectVec(l.axes[0], 0.0, 1.0, 0.0);
  ASSERT_TRUE(l.LookAt(SMat(4.0, 1.0, 1.0), SMat(0.0, 0.0, 1.0), false));
  ExpectVec(l.axes[2], -1.0, 0.0, 0.0);

  // Z along a direction, the rest any right-handed completion.
  SMat d(0.0, 3.0, 4.0);
  CMFrame z(d);
  ExpectVec(z.axes[2], 0.0, 0.6, 0.8);
  EXPECT_TRUE(z.IsValid());
  EXPECT_TRUE(z.GetOrientation());

  // Align turns about Z only; exactly along Z fails.
  CMFrame al;
  SMat v(0.0, 2.0, 7.0);
  EXPECT_TRUE(al.Align(v));
  ExpectVec(al.axes[0], 0.0, 1.0, 0.0, 0.0);
  SMat up(0.0, 0.0, 3.0);
  EXPECT_FALSE(al.Align(up));
  ExpectVec(al.axes[0], 0.0, 1.0, 0.0, 0.0);
}

TEST(CMFrame, SavedStates) {
  CMFrame f;
  EXPECT_EQ(f.GetStackCount(), 0);
  EXPECT_EQ(f.GetStackSize(), -1);
  const int sizes[] = {1, 2, 4, 4};
  for (int n = 1; n <= 4; ++n) {
    f.Translate(1.0, 0.0, 0.0);
    f.Push();
    EXPECT_EQ(f.GetStackCount(), n);
    EXPECT_EQ(f.GetStackSize(), sizes[n - 1]);
  }
  EXPECT_DOUBLE_EQ(f.GetState(0)->origin.x, 4.0);
  EXPECT_DOUBLE_EQ(f.GetState(3)->origin.x, 1.0);
  EXPECT_EQ(f.GetState(4), nullptr);

  // Copies get no stack; assignment leaves the target's own.
  const CMFrame copy(f);
  EXPECT_EQ(copy.GetStackCount(), 0);
  EXPECT_EQ(copy.GetStackSize(), -1);
  CMFrame target;
  target.Push();
  target = f;
  EXPECT_EQ(target.GetStackCount(), 1);

  // Discard drops the state either way and tells whether the frame moved away from it.
  f.Translate(0.5, 0.0, 0.0);
  EXPECT_TRUE(f.Discard());
  EXPECT_DOUBLE_EQ(f.origin.x, 4.5);
  EXPECT_EQ(f.GetStackCount(), 3);
  f.Push();
  EXPECT_FALSE(f.Discard());
  EXPECT_EQ(f.GetStackCount(), 3);

  // PopDifferent restores only a changed frame and keeps an equal top state.
  f.Push();
  EXPECT_FALSE(f.PopDifferent());
  EXPECT_EQ(f.GetStackCount(), 4);
  f.Rotate(0.3, 2);
  EXPECT_TRUE(f.PopDifferent());
  EXPECT_EQ(f.GetStackCount(), 3);
  EXPECT_TRUE(f.axes[0].Is(1.0, 0.0, 0.0));

  f.Pop();
  EXPECT_DOUBLE_EQ(f.origin.x, 3.0);
  f.ResetStack();
  EXPECT_EQ(f.GetStackCount(), 0);
  EXPECT_EQ(f.GetStackSize(), 4);
  f.Pop();  // empty: no change
  EXPECT_DOUBLE_EQ(f.origin.x, 3.0);

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

  CMFrame expected = b;
  a.ToGlobal(expected);
  ExpectSameFrame(a * b, expected, 1e-14);
  CMFrame c = a;
  c *= b;
  ExpectSameFrame(c, expected, 1e-14);
  CMFrame d = b;
  d.MultLeft(a);
  ExpectSameFrame(d, expected, 1e-14);
  ExpectSameFrame(c / a, b, 1e-14);

  CMFrame inv = a;
  inv.Invert();
  EXPECT_TRUE((a * inv).IsUnitary(1e-14));
  EXPECT_TRUE((inv * a).IsUnitary(1e-14));

  // An invalid operand is repaired by the composition itself.
  CMFrame broken = a;
  broken.axes[2].SetAll(0.0);
  const CMFrame product = broken * b;
  EXPECT_TRUE(broken.IsValid());
  ExpectSameFrame(broken, a, 1e-14);
  (void)product;

  // Interpolation halfway between two orientations stays a valid frame.
  CMFrame mid;
  EXPECT_TRUE(mid.Combine(CMFrame(), a, 0.5));
  EXPECT_TRUE(mid.IsValid());
  ExpectVec(mid.origin, 0.5, 1.0, 1.5, 0.0);
  EXPECT_NEAR(CMFrame().Dist(a), a.origin.Norm(), 1e-15);
  EXPECT_EQ(a.Dist(a), 0.0);
}

TEST(CMFrame, Matrices) {
  CMFrame f = SkewFrame();
  MatSq m(4);
  f.ToMatrix(m);
  for (int k = 0; k < 3; ++k) {
    for (int r = 0; r < 3; ++r) EXPECT_EQ(m.GetElem(r, k), f.axes[k][r]);
    EXPECT_EQ(m.GetElem(k, 3), f.origin[k]);
    EXPECT_EQ(m.GetElem(3, k), 0.0);
  }
  EXPECT_EQ(m.GetElem(3, 3), 1.0);
  double flat[16];
  f.ToMatrix(flat);
  for (int i = 0; i < 16; ++i) EXPECT_EQ(flat[i], m[i]);

  CMFrame g;
  g.FromMatrix(m);
  EXPECT_TRUE(g.IsSame(f, 1e-15));
  Mat three;
  f.ToMatrix(three);  // an empty matrix has no 3 columns and no block: left as it is
  EXPECT_EQ(three.NRows(), 0);
  Mat rot(3, 3);
  f.ToMatrix(rot);
  EXPECT_EQ(rot.GetElem(1, 2), f.axes[2].y);

  // An invalid frame is repaired and the matrix left untouched.
  CMFrame bad = f;
  bad.axes[1] *= 2.0;
  MatSq untouched(4);
  bad.ToMatrix(untouched);
  EXPECT_EQ(untouched.GetMax(true), 0.0);
  EXPECT_EQ(untouched.GetMax(false), 0.0);
  EXPECT_TRUE(bad.IsSame(f, 1e-15));

  // The affine form, and an affine map carried from local to global terms.
  AffinTransf t;
  f.GetTramsform(t);
  EXPECT_EQ(t.m_mL.GetElem(2, 0), f.axes[0].z);
  EXPECT_TRUE(t.m_vT == f.origin);
  AffinTransf u;
  CMFrame().GetTramsform(u);
  f.ToGlobal(u);
  EXPECT_TRUE(u.m_mL.EqualsTo(t.m_mL));
  EXPECT_TRUE(u.m_vT == t.m_vT);

  // SetTransform applies a global transform on the left.
  MatSq shift(4);
  shift.SetUnitary();
  shift(1, 4) = 10.0;
  CMFrame moved = f;
  moved.SetTransform(shift);
  ExpectVec(moved.origin, f.origin.x + 10.0, f.origin.y, f.origin.z, 1e-14);
}

TEST(CMFrame, StandardOrientation) {
  CMFrame f;
  bool positive = false;
  EXPECT_EQ(f.FindStdAxis(2, positive), 2);
  EXPECT_TRUE(positive);
  f.Reflect(2);
  f.Reflect(1);
  EXPECT_EQ(f.GetStdOrientation(), CMFrame::eStdMinusZ);
  CMFrame x;
  x.SetAxisRand(2, SMat(1.0, 0.0, 0.0), 1);  // Z along +X, Y kept
  EXPECT_EQ(x.GetStdOrientation(), CMFrame::eStdPlusX);
  CMFrame y;
  y.Rotate(-kPi / 2, 0);  // Z -> +Y, Y -> -Z
  EXPECT_EQ(y.GetStdOrientation(), CMFrame::eStdPlusY);
  EXPECT_EQ(SkewFrame().GetStdOrientation(), CMFrame::eStdNone);
}

TEST(CMFrame, XmlRoundTrip) {
  CMFrame f = SkewFrame();
  PCExBase out;
  out.StartStoring();
  ASSERT_TRUE(f.PersistXML(out));
  std::string xml;
  ASSERT_TRUE(out.SaveString(xml));
  EXPECT_NE(xml.find("<Fr"), std::string::npos);
  EXPECT_EQ(xml.find("A2"), std::string::npos);  // Z is never stored

  PCExBase in;
  ASSERT_TRUE(in.LoadString(xml.c_str()));
  CMFrame g(static_cast<unsigned char>(0));
  ASSERT_TRUE(g.PersistXML(in));
  EXPECT_TRUE(g.IsSame(f, 1e-15));

  // X and Y are normalised on loading, and Z rebuilt from them.
  PCExBase raw;
  ASSERT_TRUE(raw.LoadString("<Doc><Fr O=\"1 2 3\" A0=\"0 2 0\" A1=\"0 0 3\" /></Doc>"));
  ASSERT_TRUE(raw.PersistElement("Doc", false));
  CMFrame h;
  ASSERT_TRUE(h.PersistXML(raw));
  ExpectVec(h.origin, 1.0, 2.0, 3.0, 0.0);
  ExpectVec(h.axes[0], 0.0, 1.0, 0.0, 0.0);
  ExpectVec(h.axes[2], 1.0, 0.0, 0.0, 0.0);

  PCExBase empty;
  ASSERT_TRUE(empty.LoadString("<Doc />"));
  CMFrame e;
  EXPECT_FALSE(e.PersistXML(empty));
  EXPECT_TRUE(e.IsUnitary(0.0));
}

TEST(CMFrame, DebugDrawing) {
  const CMFrame f = SkewFrame();
  ISection* sec = f.CreateDump(2.0);
  ASSERT_NE(sec, nullptr);
  char caption[64] = {};
  ASSERT_EQ(sec->GetCaption(caption, sizeof caption), S_OK);
  EXPECT_EQ(std::string(caption).rfind("CMFrame 0x", 0), 0u);
  int strips = 0;
  sec->GetStripCount(&strips);
  EXPECT_EQ(strips, 3);
  double tip[3];
  sec->GetVertex(3, tip);
  ExpectVec(SMat(tip), f.origin.x + 2.0 * f.axes[2].x, f.origin.y + 2.0 * f.axes[2].y,
            f.origin.z + 2.0 * f.axes[2].z, 1e-15);
  sec->Release();

  const size_t before = AnGeoState::GetDbg()->m_items.size();
  f.Dump();
  EXPECT_EQ(AnGeoState::GetDbg()->m_items.size(), before + 1);
}
