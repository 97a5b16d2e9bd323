#include <znmt64/SMat.h>

#include <znbl64/PCExBase.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <utility>

#include "AlgebraTestUtil.h"

static double Above(double v) { return std::nextafter(v, 1e300); }
static double Below(double v) { return std::nextafter(v, -1e300); }

TEST(SMat, OverlaysDoublesAndConvertsWithMat) {
  static_assert(sizeof(SMat[2]) == 6 * sizeof(double));
  SMat pts[2] = {SMat(1, 2, 3), SMat(4, 5, 6)};
  EXPECT_EQ(pts[0].GetStore()[5], 6.0);  // callers walk SMat arrays as doubles
  EXPECT_TRUE(pts[1](1) == 4 && pts[1][1] == 5 && pts[1].Element(3, 1) == 6);
  Mat row, two(1, 2);
  pts[1].ToMat(row, false);
  EXPECT_TRUE(row.NRows() == 1 && row.GetElem(0, 2) == 6.0);
  two[0] = 7;
  pts[0] = two;  // only the two values the matrix has
  EXPECT_TRUE(pts[0].Is(7, 0, 3));
}

TEST(SMat, ZeroDivisorsAndFailedNormalizationsKeepTheVector) {
  SMat v(1, 2, 3), w(3, 4, 0);
  v /= 0.0;
  v /= -0.0;
  EXPECT_TRUE(v.Is(1, 2, 3));
  EXPECT_FALSE(w.Normalize(5.0));  // eps equal to the norm fails
  EXPECT_TRUE(w.Normalize(Below(5.0)) && w.y == 0.8);
  SMat tiny(0, 0, 5e-11);
  EXPECT_FALSE(tiny.SetLength(2.0));
  EXPECT_TRUE(tiny.NormalizeReturnNorm() == 5e-11 && tiny.z == 5e-11);
}

TEST(SMat, ComparisonThresholdsAndTheLiteralTolerances) {
  const std::pair<int, double> literal[] = {{3, 1e-7}, {4, 1e-6}, {5, 1e-5}, {7, 1e-3}, {-1, 1e-11}, {-12, 1e-22}};
  for (auto [n, eps] : literal) EXPECT_EQ(EpsPow(n), eps) << n;
  EXPECT_TRUE(SMat().EqualsTo(SMat(1e-10, 0, 0)));
  EXPECT_FALSE(SMat() == SMat(Above(1e-10), 0, 0));
  EXPECT_TRUE(SMat(1, 2, 3).IsSame(SMat(-1, -2, -3), 0.0, true));
  // Below 1e-7 the length test asks for the zero vector, from 1e-7 on for the length itself.
  EXPECT_TRUE(SMat() == Below(1e-7) && !(SMat() == 1e-7));
  EXPECT_TRUE(SMat(Below(1e-10), 0, 0) == 0.0 && !(SMat(1e-10, 0, 0) == 0.0));
  EXPECT_TRUE(SMat(3, 4, 0) == 5.0 + 0x1p-34);  // 5.8e-11 off
  EXPECT_TRUE(SMat(3, 4, 0) != 5.0 + 0x1p-33);  // 1.2e-10 off
}

TEST(SMat, IsCollinearBranches) {
  EXPECT_TRUE(SMat(1, 0, 0).IsCollinear(SMat(), 1e-10));  // a null vector is collinear with all
  EXPECT_FALSE(SMat(1, 0, 0).IsCollinear(SMat(), -1.0));
  // A cross product of 1e-4 is trusted: deviation 1e-4. Just below, the shorter vector is
  // compared with the longer one scaled down: deviation 5e-5.
  double dev = 0.0;
  EXPECT_TRUE(!SMat(2, 0, 0).IsCollinear(SMat(1, 5e-5, 0), 7e-5, &dev) && dev == 1e-4);
  EXPECT_TRUE(SMat(2, 0, 0).IsCollinear(SMat(1, Below(5e-5), 0), 7e-5, &dev) && dev == Below(5e-5));
  EXPECT_FALSE(SMat(1e6, 0, 0).IsCollinear(SMat(1e6, 1e-3, 0), 1e-10));  // absolute eps
}

TEST(SMat, AngleBranchesAndThrow) {
  EXPECT_DOUBLE_EQ(SMat(1, 0, 0).Angle(SMat(1, 1e-9, 0), 1e-10), 1e-9);  // not acos(1) = 0
  EXPECT_EQ(SMat(1, 0, 0).Angle(SMat(-1, 1e-9, 0), 1e-10), 3.14159265358979 - std::asin(1e-9));
  // A cosine of exactly -1 + 1e-3 still uses acos; just beyond, with eps 0.9999, the sine
  // branch gives the acute angle of nearly opposite vectors.
  const double lim = -1.0 + 1e-3;
  for (double c : {lim, Below(lim)}) {
    const SMat b(c, std::sqrt(1.0 - c * c), 0);
    ASSERT_EQ(b.Norm(), 1.0);
    EXPECT_NEAR(SMat(1, 0, 0).Angle(b, 0.9999), c == lim ? std::acos(c) : std::asin(b.y), 1e-15);
  }
  EXPECT_EQ(SMat(1e-10, 0, 0).Angle(SMat(0, 1, 0), 1e-10), std::acos(0.0));  // eps == norm passes
  try {
    SMat(Below(1e-10), 0, 0).Angle(SMat(0, 1, 0), 1e-10);
    ADD_FAILURE() << "no throw";
  } catch (CMatrExeption* e) {
    EXPECT_STREQ(e->m_szMessage, "SMat::Angle(): One of vectors has zero length");
    e->Delete();
  }
}

TEST(SMat, CoordinateSearches) {
  unsigned char i = 9;
  EXPECT_TRUE(SMat(-3, 3, 1).GetMaxAbsCoord(&i) == 3.0 && i == 0);
  EXPECT_TRUE(SMat(2, -1, 1).GetMinAbsCoord(&i) == 1.0 && i == 1);
  EXPECT_EQ(SMat(1e-10, 5, 0).GetAxis(), 1);
  EXPECT_TRUE(SMat(Above(1e-10), 5, 0).GetAxis() == -1 && SMat().GetAxis() == -1);
}

TEST(SMat, Rotations) {
  SMat v(0, 0, 1);
  v.Rotate(M_PI / 2, 2);  // z turns towards -x about y
  EXPECT_TRUE(v.Is(-1, 0, 0));
  v.Rotate2(M_PI / 2, 2);
  EXPECT_TRUE(v.Is(0, -1, 0));
  v.Rotate(M_PI / 2, 4);  // no such axis: the matrix is zero
  EXPECT_TRUE(v.Is(0, 0, 0));
  const SMat k = (1.0 / 3.0) * SMat(1, 2, 2), p(0.3, -1.2, 2.5);
  const double a = 0.7;
  const SMat rodrigues =
      std::cos(a) * p + std::sin(a) * SMat().CrossProd(k, p) + (k.Prod(p) * (1 - std::cos(a))) * k;
  v = p;
  v.Rotate(SMat(3, 6, 6), a);  // the axis need not be unit
  EXPECT_TRUE(v.IsSame(rodrigues, 1e-14));
  v = SMat(2, 4, 4);
  v.RotateEx(v, a);  // along the axis: unchanged
  EXPECT_TRUE(v.Is(2, 4, 4));
}

TEST(SMat, ProductsWithMatricesAndAliasing) {
  const Mat A = Make(3, 3, {1, 2, 0, 0, 1, 0, 0, 0, 1}), B = Make(3, 2, {1, 4, 2, 5, 3, 6});
  SMat v(1, 1, 1);
  v.Mult(A, B);  // B's second column (4, 5, 6)
  EXPECT_TRUE(v.Is(14, 5, 6));
  v.MultLeft(A);
  v.Mult(Mat(2, 2), v);  // too small: untouched
  EXPECT_TRUE(v.Is(24, 5, 6));
  SMat c(1, 2, 3);
  c.CrossProd(c, SMat(4, 5, 6));  // y and z see the new x
  EXPECT_TRUE(c.Is(-3, 30, -135));
}

TEST(SMat, OrientationAndOrthogonality) {
  const double t = 0x1p-34, u = 0x1p-33;  // determinants 2e-31 and 1.6e-30
  EXPECT_EQ(SMat(t, 0, 0).GetOrient(SMat(0, t, 0), SMat(0, 0, t)), -1);
  EXPECT_EQ(SMat(u, 0, 0).GetOrient(SMat(0, u, 0), SMat(0, 0, u)), 1);
  EXPECT_EQ(SMat(0, 1, 0).GetOrientation(SMat(1, 0, 0), SMat(0, 0, 1)), -1.0);
  SMat w(2, 3, 0);
  EXPECT_TRUE(!w.MakeOrtho(SMat()) && w.MakeOrtho(SMat(0, 5, 0)) && w.Is(2, 0, 0));
  EXPECT_FALSE(w.MakeOrtho(SMat(7, 0, 0)));
  for (const SMat& d : {SMat(0, 0, 1), SMat(1, 2, 3), SMat(-4, 0, 0)}) {
    SMat o = d;
    o.GetAnyOrthoVect(o);  // out may be this
    EXPECT_TRUE(o.IsUnitary(1e-15) && o.IsOrtho(d, 1e-15));
  }
  double cyl[3] = {9, 9, 9};
  EXPECT_FALSE(SMat(7, 0, 0).GetCylindrical(cyl));
  EXPECT_TRUE(cyl[0] == 0 && cyl[1] == 9 && cyl[2] == 9);
}

TEST(SMat, XmlRoundTripIsBitExact) {
  SMat pts[2] = {SMat(0.1, 1.0 / 3.0, -0.0), SMat(1e-300, 4.9e-324, -1e306)};
  PCExBase out;
  out.StartStoring();
  ASSERT_TRUE(out.PushElement("Lc"));
  ASSERT_TRUE(pts[0].PersistXML(out, nullptr) && SMat::Read3DArrayXML(out, "P", pts, 2));
  std::string xml;
  ASSERT_TRUE(out.SaveString(xml));
  EXPECT_NE(xml.find(" V=\""), std::string::npos);
  PCExBase in;
  ASSERT_TRUE(in.LoadString(xml.c_str()) && in.PersistElement("Lc", false));
  SMat one, back[2];
  ASSERT_TRUE(one.PersistXML(in, "V") && SMat::Read3DArrayXML(in, "P", back, 2));
  EXPECT_EQ(std::memcmp(&one, &pts[0], sizeof one), 0);
  EXPECT_EQ(std::memcmp(back, pts, sizeof back), 0);
  SMat keep(1, 2, 3);
  EXPECT_FALSE(SMat::Read3DArrayXML(in, "P", &keep, 1) || keep.PersistXML(in, "none"));  // six, not three
  EXPECT_TRUE(keep.Is(1, 2, 3));
}

TEST(SMat, DumpWritesLabelAddressAndComponents) {
  const SMat v(1, -0.5, 2);
  testing::internal::CaptureStderr();
  v.Dump(false, true, "dir", true);
  v.Dp();
  const unsigned addr = static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(&v));
  char want[128];
  std::snprintf(want, sizeof want, "dir %08x (1.000000, -0.500000, 2.000000) len 2.291288\nSMat %08x (1, -0.5, 2)\n",
                addr, addr);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), want);
}
