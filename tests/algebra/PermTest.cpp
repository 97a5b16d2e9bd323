#include <gtest/gtest.h>
#include <znmt64/Perm.h>

#include <vector>

namespace {

using V = std::vector<short>;
V Entries(const Perm& p) { return V(p.m_pData, p.m_pData + p.m_nLen); }

TEST(Perm, LengthsAndEmptyPlaces) {
  Perm p(4);
  EXPECT_EQ(p.GetFirstEmpty(-1), -1);
  p.SetLength(0);  // changes nothing, not even the length
  EXPECT_EQ(Entries(p), (V{0, 1, 2, 3}));
  p.SetLength(2);  // keeps the first entries
  EXPECT_EQ(Entries(p), (V{0, 1}));
  p.Empty();
  p[0] = 1;
  EXPECT_EQ(p.GetFirstEmpty(-1), 1);
  EXPECT_EQ(p.GetFirstEmpty(2), -1);
}

TEST(Perm, CompositionAndInverseLaws) {
  const short ad[] = {1, 0, 2}, bd[] = {2, 1, 0}, cd[] = {2, 0, 1};
  Perm a(3, ad), b(3, bd), c(3, cd), ab(3), inv, id(3);
  ab.Prod(a, b);  // apply a, then b
  EXPECT_EQ(Entries(ab), (V{1, 2, 0}));
  c.GetInverse(inv);
  EXPECT_EQ(Entries(inv), (V{1, 2, 0}));
  id.Prod(c, inv);
  EXPECT_EQ(Entries(id), (V{0, 1, 2}));
  c *= c;  // the operand may be the permutation itself
  c.MultBySwap(1, 5);  // outside the permutation: nothing
  c.MultBySwap(-1, 0);
  EXPECT_EQ(Entries(c), (V{1, 2, 0}));
}

TEST(Perm, MovesShiftsAndSpreads) {
  Perm m(6);
  m.SetMove(0, 3, 2);
  EXPECT_EQ(Entries(m), (V{3, 4, 2, 0, 1, 5}));
  // Entries move by k in increasing order and the last stays: entry i gets old entry i mod k.
  for (short k : {2, 7, -3}) {
    Perm s(5);
    s.ShiftCyclic(k);
    EXPECT_EQ(Entries(s), (V{0, 1, 0, 1, 4})) << k;
  }
  Perm s(5);
  s.ShiftCyclic(4);
  EXPECT_EQ(Entries(s), (V{0, 1, 2, 3, 0}));
  Perm p(10);
  p.Spread(3);  // step 3, offset 2
  EXPECT_EQ(Entries(p), (V{3, 4, 0, 5, 6, 1, 7, 8, 2, 9}));
  Perm q(4);
  q.Spread(3);  // step 1, offset 1
  q.Spread(4);  // n not below the length: nothing
  EXPECT_EQ(Entries(q), (V{3, 0, 1, 2}));
}

TEST(N3, ComponentwisePartialOrderAndWrapping) {
  const N3 a(1, 5, 0), b(2, 4, 0);
  EXPECT_FALSE(a < b || a >= b || a > b);
  EXPECT_TRUE(N3(1, 2, 3) < N3(2, 3, 4) && !(N3(1, 2, 3) < N3(2, 2, 4)));
  EXPECT_TRUE(N3(1, 0, 1) >= 0 && !(N3(1, 0, 1) > 0));
  N3 m = a;
  m.SetMin(b);
  EXPECT_EQ(m, N3(1, 4, 0));
  EXPECT_EQ(N3(65536, 65536, 1).Prod(), 0);
  EXPECT_EQ(N3(2147483647, 1, 0).Sum(), -2147483647 - 1);
}

}  // namespace
