#include <znmt64/DistContext.h>

#include <gtest/gtest.h>

TEST(DistContext, FreshRecordAndLimit) {
  const DistContext c;
  EXPECT_TRUE(c.dDist == 1e307 && c.IsCloser());  // 1e307 > -1
  EXPECT_FALSE(c.IsOperCloser() || c.IsNeedPoints() || c.IsValid());  // two null places are not two
  EXPECT_EQ(c.IsCloserD(), 1e307);  // beyond 1e306 the distance itself comes back

  DistContext limited(0.5);
  EXPECT_TRUE(limited.IsOperCloser());
  limited.dDist = 0.75;
  EXPECT_EQ(limited.IsCloserD(), 1e306);
  limited.dDist = 0.25;
  EXPECT_TRUE(!limited.IsCloser() && limited.IsCloserD() == -1e306);
  EXPECT_FALSE(DistContext(1e-10).IsOperCloser());
}

TEST(DistContext, OutputPlaces) {
  DistContext c(true, false);
  EXPECT_TRUE(c.Pt(true) == &c.aPts[0] && c.pPt2 == nullptr);
  EXPECT_TRUE(c.Pt(false) == &c.aPts[2] && c.GetInd(false) == 2);  // never null, even when not asked for

  SMat mine;
  DistContext e;
  e.pPt2 = &mine;
  e.SetNeed(true, true);  // keeps the external place
  EXPECT_TRUE(e.pPt2 == &mine && e.IsValid());

  // IsLocal asks about the first pointer whatever it is told.
  DistContext only2;
  only2.SetNeed(false);
  EXPECT_TRUE(!only2.IsLocal(false) && c.IsLocal(false));

  DistContext both(true, true);
  both.Swap();
  EXPECT_TRUE(both.GetInd(true) == 2 && both.GetInd(false) == 0);
}

TEST(DistContext, UpdateAndInsert) {
  DistContext c(true, true);
  c.Update(SMat(1, 0, 0), SMat(2, 0, 0), 3.0);
  c.Update(SMat(9, 0, 0), SMat(9, 0, 0), 3.0);  // a tie keeps the first result
  EXPECT_TRUE(c.aPts[0].x == 1.0 && c.dDist == 3.0);

  DistContext sub(true, true);
  sub.Update(SMat(5, 0, 0), SMat(6, 0, 0), 2.0);
  sub.nCount = 4;
  sub.abFlag[0] = sub.abFlag[1] = true;
  sub.anInd[0] = 1;
  EXPECT_TRUE(c.Insert(sub) && c.dDist == 2.0 && c.aPts[2].x == 6.0 && c.nCount == 4 && c.abFlag[0]);
  EXPECT_TRUE(!c.abFlag[1] && c.anInd[0] == -1);  // not merged
  EXPECT_FALSE(c.Insert(sub));  // not strictly closer
}

TEST(DistContext, CopyReseatsLocalPoints) {
  DistContext src(true, true);
  src.Swap();  // the first object's point now in aPts[2]
  src.aPts[2].Set(1, 2, 3);
  src.aPts[3].Set(4, 5, 6);  // its companion travels with it
  src.anInd[1] = 2;
  const DistContext copy(src);
  EXPECT_TRUE(copy.pPt1 == &copy.aPts[2] && copy.pPt2 == &copy.aPts[0]);
  EXPECT_TRUE(copy.aPts[3].z == 6.0 && copy.anInd[1] == 2);

  // A local first point makes the copy's second point local too, even from null.
  const DistContext first(true, false);
  const DistContext c1(first);
  EXPECT_EQ(c1.pPt2, &c1.aPts[2]);

  // An external first point: both pointers are shared as they are.
  SMat a, b;
  DistContext ext, c2;
  ext.pPt1 = &a;
  ext.SetNeed(false);
  c2 = ext;
  EXPECT_TRUE(c2.pPt1 == &a && c2.pPt2 == &ext.aPts[2]);

  // Equality compares pointer values, not points, and ignores anInd.
  DistContext x, y;
  x.anInd[0] = 5;
  EXPECT_TRUE(x == y);
  x.pPt1 = &a;
  y.pPt1 = &b;
  EXPECT_FALSE(x == y);
}
