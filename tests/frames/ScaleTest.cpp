#include <znmt64/ZnScale.h>

#include <gtest/gtest.h>

#include <cmath>

TEST(ZnScale, ValidityAndScaling) {
  ZnScale s;
  EXPECT_TRUE(s.IsTrivial() && s.IsValid() && s.IsAxial());
  EXPECT_TRUE(s.NormMax() == 1.0 && s.Norm() == std::sqrt(3.0));

  double v[3] = {2.0, 4.0, 6.0};
  s.SetScale(0.0, 1.0, 1.0);
  EXPECT_TRUE(!s.ScaleInverse(v) && v[0] == 2.0);
  s.SetScale(1000.0, 1.0, 1.0);
  EXPECT_TRUE(s.IsValid());
  s.SetScale(1000.5, 1.0, 1.0);
  EXPECT_FALSE(s.IsValid());

  s.SetScale(2.0, 3.0, 4.0);
  SMat x(5.0, 0.0, 0.0);
  s.ScaleUnitary(x);
  EXPECT_TRUE(x.Is(1.0, 0.0, 0.0));

  // Normals go through their tangent plane: for the plane x = z the tangents (0, 1, 0) and
  // (1, 0, 1) scale to (0, 1, 0) and (1, 0, 2).
  s.SetScale(1.0, 1.0, 2.0);
  SMat n(0.0, 0.0, 1.0);
  s.ScaleNormal(n);
  EXPECT_TRUE(n.IsSame(SMat(0.0, 0.0, 1.0), 1e-15, true));
  double p[3] = {1.0, 0.0, -1.0};
  s.ScaleNormal(p);
  EXPECT_TRUE(SMat(p).IsCollinear(SMat(2.0, 0.0, -1.0), 1e-15));
}

TEST(ZnScale, FramesAndSavedStates) {
  ZnScale s;
  s.SetScale(2.0, 3.0, 4.0);
  // Into a frame turned 90 degrees about Z the multipliers, carried as a direction, swap and
  // change a sign.
  CMFrame f;
  f.Rotate(std::acos(-1.0) / 2, 2);
  ZnScale c = s, t = s, o;
  c.ChangeFrame(f);
  t.Transform(f);
  EXPECT_TRUE(c.multipliers.Is(3.0, -2.0, 4.0) && c.frame.IsSame(f, 0.0));
  EXPECT_TRUE(t.multipliers.Is(3.0, -2.0, 4.0) && t.frame.IsSame(f, 1e-15));
  o.SetOrientation(0.0, 0.0, 1.0, 1e-11);
  o.SetOrientation(0.0, 0.0, 0.0, 1.0);
  EXPECT_TRUE(o.IsTrivial());
  o.SetOrientation(0.0, 0.0, 5.0, std::acos(-1.0) / 2);
  EXPECT_TRUE(o.frame.IsSame(f, 1e-15));

  ZnScale p = s;
  p.Push();
  p.SetScale(2.0, 2.0, 2.0);
  p.frame.Translate(1.0, 1.0, 1.0);
  p.Pop();
  p.Pop();  // unmatched: nothing changes
  EXPECT_TRUE(p.IsSame(s));
  p.Push();
  const ZnScale q(p);  // copies do not take the saved states
  EXPECT_TRUE(q.saved.empty() && q.frame.GetStackCount() == 0);
}

TEST(Zn4D, DirectionsKeepTheirWeight) {
  Zn4D h;
  h.w = 0.0;
  h.Copy(SMat(1.0, 2.0, 3.0));
  h.SwapDirection();
  SMat v;
  h.CopyTo(v);
  EXPECT_TRUE(v.Is(-1.0, -2.0, -3.0) && h.w == 0.0);
  h.CopyFinite(v);
  EXPECT_EQ(h.w, 1.0);
}
