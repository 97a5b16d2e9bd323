#include <znmt64/ZnScale.h>

#include <gtest/gtest.h>

#include <cmath>

TEST(ZnScale, DefaultAndValidity) {
  ZnScale s;
  EXPECT_TRUE(s.IsTrivial());
  EXPECT_TRUE(s.IsValid());
  EXPECT_TRUE(s.IsAxial());
  EXPECT_EQ(s.NormMax(), 1.0);
  EXPECT_EQ(s.Norm(), std::sqrt(3.0));

  double v[3] = {2.0, 4.0, 6.0};
  s.SetScale(0.0, 1.0, 1.0);
  EXPECT_FALSE(s.IsValid());
  EXPECT_FALSE(s.ScaleInverse(v));
  EXPECT_EQ(v[0], 2.0);
  s.SetScale(1000.0, 1.0, 1.0);
  EXPECT_TRUE(s.IsValid());
  s.SetScale(1000.5, 1.0, 1.0);
  EXPECT_FALSE(s.IsValid());
  s.SetScale(2.0, 4.0, 0.5);
  EXPECT_TRUE(s.ScaleInverse(v));
  EXPECT_EQ(v[0], 1.0);
  EXPECT_EQ(v[1], 1.0);
  EXPECT_EQ(v[2], 12.0);
  EXPECT_FALSE(s.IsAxial());
  EXPECT_FALSE(s.IsTrivial());

  s.SetScale(-1.0, -2.0, 0.0);
  EXPECT_EQ(s.NormMax(), 0.0);
}

TEST(ZnScale, DirectionsAndNormals) {
  ZnScale s;
  s.SetScale(2.0, 3.0, 4.0);
  SMat x(5.0, 0.0, 0.0);
  s.ScaleUnitary(x);
  EXPECT_TRUE(x.Is(1.0, 0.0, 0.0));
  double d[3] = {1.0, 1.0, 0.0};
  s.ScaleUnitary(d);
  EXPECT_NEAR(d[0], 2.0 / std::sqrt(13.0), 1e-15);
  double tiny[3] = {1e-11, 0.0, 0.0};
  ZnScale::Normalize(tiny);
  EXPECT_EQ(tiny[0], 1e-11);

  s.SetScale(1.0, 1.0, 2.0);
  SMat n(0.0, 0.0, 1.0);
  s.ScaleNormal(n);
  EXPECT_TRUE(n.IsSame(SMat(0.0, 0.0, 1.0), 1e-15, true));
  // The plane x = z: tangents (0, 1, 0) and (1, 0, 1) scale to (0, 1, 0) and (1, 0, 2).
  double p[3] = {1.0, 0.0, -1.0};
  s.ScaleNormal(p);
  EXPECT_TRUE(SMat(p).IsCollinear(SMat(2.0, 0.0, -1.0), 1e-15));
  EXPECT_NEAR(p[1], 0.0, 1e-15);
}

TEST(ZnScale, FramesAndSavedStates) {
  ZnScale s;
  s.SetScale(2.0, 3.0, 4.0);
  // A frame turned 90 degrees about Z: the multipliers, as a direction, change axes and a sign.
  CMFrame f;
  f.Rotate(std::acos(-1.0) / 2, 2);
  ZnScale c = s;
  c.ChangeFrame(f);
  EXPECT_TRUE(c.multipliers.Is(3.0, -2.0, 4.0));
  EXPECT_TRUE(c.frame.IsSame(f, 0.0));
  ZnScale t = s;
  t.Transform(f);
  EXPECT_TRUE(t.multipliers.Is(3.0, -2.0, 4.0));
  EXPECT_TRUE(t.frame.IsSame(f, 1e-15));

  ZnScale o;
  o.SetOrientation(0.0, 0.0, 1.0, 1e-11);
  o.SetOrientation(0.0, 0.0, 0.0, 1.0);
  EXPECT_TRUE(o.IsTrivial());
  o.SetOrientation(0.0, 0.0, 5.0, std::acos(-1.0) / 2);
  EXPECT_TRUE(o.frame.IsSame(f, 1e-15));
  EXPECT_TRUE(o.IsSame(o));
  EXPECT_FALSE(o.IsSame(ZnScale()));

  ZnScale p = s;
  p.Push();
  EXPECT_EQ(p.frame.GetStackCount(), 1);
  p.SetScale(2.0, 2.0, 2.0);
  p.frame.Translate(1.0, 1.0, 1.0);
  p.Pop();
  EXPECT_TRUE(p.IsSame(s));
  p.Pop();  // unmatched: nothing changes
  EXPECT_TRUE(p.IsSame(s));

  // Copies do not take the saved states.
  p.Push();
  const ZnScale q(p);
  EXPECT_TRUE(q.saved.empty());
  EXPECT_EQ(q.frame.GetStackCount(), 0);
}

TEST(Zn4D, Conversions) {
  Zn4D h;
  SMat v(9.0, 9.0, 9.0);
  h.CopyTo(v);
  EXPECT_TRUE(v.Is(0.0, 0.0, 0.0));
  EXPECT_EQ(h.w, 1.0);
  h.w = 0.0;
  h.Copy(SMat(1.0, 2.0, 3.0));
  EXPECT_EQ(h.w, 0.0);
  h.SwapDirection();
  h.CopyTo(v);
  EXPECT_TRUE(v.Is(-1.0, -2.0, -3.0));
  h.CopyFinite(SMat(4.0, 5.0, 6.0));
  EXPECT_EQ(h.w, 1.0);
  EXPECT_EQ(h.x, 4.0);
}
