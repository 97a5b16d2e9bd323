#include <gtest/gtest.h>
#include <znmt64/StateMatr.h>
#include <znag64/AnGeoState.h>

#include <cstring>

#include "AlgebraTestUtil.h"

namespace {

Mat Filled(int rows, int cols, double first = 1.0) {
  Mat m(rows, cols);
  for (int k = 0; k < rows * cols; ++k) m[k] = first + k;
  return m;
}

TEST(Mat, IndexBasesNameTheSameElements) {
  Mat m(2, 3);
  EXPECT_EQ(Flat(m), V(6, 0.0));
  m(2, 3) = 7.0;
  EXPECT_TRUE(m.m_pData[5] == 7.0 && m.GetElem(1, 2) == 7.0 && m.GetElement(2, 3) == 7.0);
  EXPECT_EQ(&m.Element(2, 3), &m[5]);
  m.Set(0, 1, 4.0);  // 0-based
  EXPECT_EQ(m(1, 2), 4.0);

  Mat n = Filled(3, 2, 10.0);
  EXPECT_EQ(n.GetElement(4), n.m_pData[3]);  // flat and 1-based
  EXPECT_EQ(n.GetElem(4), n.m_pData[4]);     // flat and 0-based
  EXPECT_EQ(n(1), 10.0);
  n.SetAt(0, -1.0);
  n.Swap(0, 5);
  EXPECT_EQ(Flat(n), (V{15, 11, 12, 13, 14, -1}));
}

TEST(Mat, RowsAndColumnsUseTheirOwnBases) {
  Mat m(3, 3);
  const double row[3] = {1, 2, 3};
  m.SetRow(1, row);                // from 1: the first row
  m.SetRow(1, Filled(1, 3, 4.0));  // from 0: the second row
  EXPECT_EQ(Flat(m), (V{1, 2, 3, 4, 5, 6, 0, 0, 0}));
  Mat out(1, 2);  // the count is capped by the destination's storage
  m.GetRow(2, out);
  EXPECT_EQ(Flat(out), (V{4, 5}));
  Mat col;  // no storage: shaped rows x 1 first
  col.SelectCol(m, 3);
  EXPECT_TRUE(col.NRows() == 3 && col.NCols() == 1 && Flat(col) == (V{3, 6, 0}));

  Mat dst(3, 3);
  dst = 9.0;
  Filled(3, 3).GetColumn(1, dst);  // writes rows 0..2 of column 0 to flat position 1 * 3
  EXPECT_EQ(Flat(dst), (V{9, 9, 9, 7, 9, 9, 9, 9, 9}));  // only the last row stays
  Mat small(1, 1);
  Filled(3, 3).GetColumn(1, small);  // position 1 lies past a 1x1 block: nothing is written
  EXPECT_EQ(small[0], 0.0);
}

TEST(Mat, SetDimensionsKeepsALargerBlockAndForgetsItsCapacity) {
  Mat m = Filled(3, 3);
  const double* block = m.m_pData;
  m.SetDimensions(2, 2);
  EXPECT_TRUE(m.m_pData == block && m.m_nSize == 4 && m[3] == 4.0);
  m.SetDimensions(3, 3);  // growth past m_nSize reallocates
  EXPECT_EQ(m.m_nSize, 9);
  m[0] = 5.0;
  m.SetDimensions(3, 3);  // same shape: contents kept
  EXPECT_EQ(m[0], 5.0);
}

TEST(Mat, AssignmentCopiesIntoAnExistingShape) {
  Mat big = Filled(3, 3, 0.0);
  const Mat two = Filled(2, 2, 100.0);
  big = two;  // keeps 3x3; only the four elements the source has are taken
  EXPECT_TRUE(big.NRows() == 3 && big.NCols() == 3);
  EXPECT_EQ(Flat(big), (V{100, 101, 102, 103, 4, 5, 6, 7, 8}));
  Mat empty;
  empty = two;  // an empty matrix takes the source's shape
  EXPECT_TRUE(empty.IsLike(two) && empty.EqualsTo(two) && empty.m_pData != two.m_pData);
  Mat r(1, 1);
  r.Replicate(two);  // a true copy, whatever the target's shape
  EXPECT_TRUE(r.IsLike(two) && r[3] == 103.0);
}

TEST(Mat, SetToIdentityAndEmbed) {
  Mat wide(2, 3);
  wide = 5.0;
  wide.SetToIdentity();  // the third one would fall past the block and is dropped
  EXPECT_EQ(Flat(wide), (V{1, 0, 0, 0, 1, 0}));
  Mat four(4, 4);
  four.Embed(Filled(3, 3));  // square overlap: exact, identity outside
  EXPECT_EQ(Flat(four), (V{1, 2, 3, 0, 4, 5, 6, 0, 7, 8, 9, 0, 0, 0, 0, 1}));
  Mat rect(2, 3);
  rect.Embed(Filled(2, 3));  // non-square overlap: the exchanged loops misplace elements, as documented
  EXPECT_EQ(Flat(rect), (V{1, 2, 0, 4, 5, 0}));
  rect.Embed(Filled(1, 1));  // not square: all zeros first, not the identity
  EXPECT_EQ(Flat(rect), (V{1, 0, 0, 0, 0, 0}));
}

TEST(Mat, BlockCopies) {
  Mat src = Filled(3, 4);
  Mat minor, untouched(1, 1);
  src.GetMinor(1, 2, 2, 3, minor);
  EXPECT_TRUE(minor.NRows() == 2 && Flat(minor) == (V{7, 8, 11, 12}));
  src.GetMinor(2, 3, 0, 0, untouched);  // r2 past the last row: nothing happens
  EXPECT_EQ(untouched.NRows(), 1);

  Mat dst(4, 4);
  dst.Copy(2, 2, 1, -1, 3, 4, src);  // negative end: the source's last row
  EXPECT_EQ(Flat(dst), (V{0, 0, 0, 0, 0, 3, 4, 0, 0, 7, 8, 0, 0, 11, 12, 0}));
  Mat overlap(2, 2);
  overlap.Copy(src);
  EXPECT_EQ(Flat(overlap), (V{1, 2, 5, 6}));

  Mat three, cols, at(3, 4);
  three.SelectCol(src, 1, 2, 4);  // reads with a row stride of 4: right for 4-column sources
  EXPECT_TRUE(three.NCols() == 3 && three(3, 3) == 12.0);
  cols.Cols(src, 2, 3);
  EXPECT_TRUE(cols.NCols() == 2 && cols(3, 2) == 11.0);
  at.Cols(3, src, 1, 2);
  EXPECT_TRUE(at(2, 3) == 5.0 && at(2, 4) == 6.0);
}

TEST(Mat, ValidityAndComparison) {
  Mat empty;
  EXPECT_TRUE(empty.IsValid());
  Mat m(2, 2);
  m[3] = 1e307;
  EXPECT_TRUE(!m.IsValid() && m.IsValidMemoryObject());
  m[3] = 1e306;
  EXPECT_TRUE(m.IsValid());
  Mat bad(2, 2, false);
  bad.m_nRows = 1000001;
  EXPECT_FALSE(bad.IsValidMemoryObject());

  Mat v(5, 1);
  v[3] = 1.0;  // only the first three elements are looked at
  EXPECT_TRUE(v.IsZero(1e-10));
  v[2] = 2e-10;
  EXPECT_FALSE(v.IsZero(1e-10));
  Mat a(1, 3), b(3, 1);  // dimensions are not compared
  b[0] = 1e-10;
  EXPECT_TRUE(a.EqualsTo(b));
  b[0] = 1.5e-10;
  EXPECT_FALSE(a.EqualsTo(b));
  EXPECT_TRUE(empty.EqualsTo(bad));  // neither has storage

  EXPECT_TRUE(empty.GetMax(true) == -1e307 && empty.GetMax(false) == 1e307);
  const Mat f = Filled(2, 2, -2.0);
  EXPECT_TRUE(f.GetMax(true) == 1.0 && f.GetMax(false) == -2.0);
}

TEST(Mat, AttachedStorageIsNeverFreedByTheAlias) {
  double outside[4] = {1, 2, 3, 4};
  {
    Mat m(2, 2);
    double* own = m.m_pData;
    m.AttachStorage(outside);
    m(1, 1) = 9.0;
    EXPECT_TRUE(outside[0] == 9.0 && m(2, 2) == 4.0);
    m.AttachStorage(own);  // the matrix's own block is still alive
    EXPECT_EQ(m(1, 1), 0.0);
  }
  {
    Mat alias(2, 2, false);
    alias.AttachStorage(outside);
    alias.SetDimensions(3, 3);  // growth drops the alias and allocates
    EXPECT_NE(alias.m_pData, outside);
  }
  Mat owner = Filled(2, 2), view;
  view.Attach(owner);
  EXPECT_EQ(view.m_pData, owner.m_pData);
  EXPECT_EQ(view.m_nSize, 0);  // m_nSize is left as it was
}

TEST(Mat, ExceptionCarriesItsMessageWithinItsBuffer) {
  CException* base = new CMatrExeption("shape mismatch");
  char buf[64];
  EXPECT_TRUE(base->IsKindOf(RUNTIME_CLASS(CMatrExeption)) && base->GetErrorMessage(buf, sizeof buf));
  EXPECT_STREQ(buf, "shape mismatch");
  base->Delete();
  CMatrExeption* e = new CMatrExeption("0123456789012345678901234567890123456789012345678901234567890");
  EXPECT_TRUE(std::strlen(e->m_szMessage) == 49u && e->m_nCode == 0u);
  e->Delete();
}

TEST(StateMatr, StartsTheLibraryAndTheGeometryModuleOnce) {
  StateMatr fresh;
  theMatrState.StartMatrLib();
  EXPECT_TRUE(theMatrState.m_bStarted);
  EXPECT_EQ(AnGeoStartCount(), 1);
  theMatrState.StartMatrLib();
  fresh.StartMatrLib();  // the geometry module itself starts once per process
  EXPECT_EQ(AnGeoStartCount(), 1);
}

}  // namespace
