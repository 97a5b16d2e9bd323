// The parts of the plane classes that are not inline.
#include <znmt64/CPlane.h>
#include <znmt64/CCircle.h>
#include <znmt64/CMFrame.h>
#include <znmt64/CSegment.h>
#include <znmt64/DistContext.h>
#include <znmt64/Triangle3D.h>

#include <znag64/AnGeoState.h>
#include <znbl64/Range.h>
#include <znmt64/platform/CArchive.h>

#include "algebra/DebugSection.h"

// ---- PlaneEqn ----------------------------------------------------------------------------------

void PlaneEqn::ToLocal(const CMFrame* f) {
  CLineal l;
  if (f == nullptr || !l.PlaneFromEquation(*this)) return;  // no frame, or no normal to move
  f->ToLocal(l);
  l.GetPlaneEquation(*this);
}

void PlaneEqn::ToGlobal(const CMFrame* f) {
  CLineal l;
  if (f == nullptr || !l.PlaneFromEquation(*this)) return;
  f->ToGlobal(l);
  l.GetPlaneEquation(*this);
}

// ---- CPlane ------------------------------------------------------------------------------------

double CPlane::Dist(const CSegment& s, DistContext& ctx) const {
  SMat q;
  s.GetQ(q);
  SMat f1;
  SMat f2;
  const double d1 = Dist(s.origin, &f1);
  const double d2 = Dist(q, &f2);
  const bool atQ = d2 <= d1;  // Q wins a tie
  *ctx.Pt(true) = atQ ? f2 : f1;
  *ctx.Pt(false) = atQ ? q : s.origin;
  const double d = atQ ? d2 : d1;
  if (d < ctx.dDist) ctx.dDist = d;
  return d;
}

CPlane::ESegmLocn CPlane::GetSegmentLocation(const CSegment& s) const {
  SMat q;
  s.GetQ(q);
  return GetSegmLocn(GetPointLocation(s.origin, 1e-10), GetPointLocation(q, 1e-10));
}

bool CPlane::GetSegmentIntersection(const CSegment& s, SMat& out, double* t, double tol) const {
  double local = 0.0;
  double* pt = t != nullptr ? t : &local;
  return GetInfLineIntersection(s, out, pt, tol) && s.IsInRangeParam(*pt);
}

bool CPlane::PassPlane(const CLineal& line, const SMat& p) {
  SMat n;
  n.CrossProd(line.dir, p - line.origin);
  dir = n;
  return dir.Normalize(0.0);
}

bool CPlane::ProjectVector(SMat& v) const {
  if (v.IsCollinear(dir, 1e-10)) return false;
  // As the difference of two projected points, the way the plane moves points.
  SMat tip = v;
  SMat base;
  ProjectToPlane(tip);
  ProjectToPlane(base);
  v = tip - base;
  return true;
}

double CPlane::GetVal(unsigned char i, unsigned char j, double x, double y) const {
  if (i > 2 || j > 2 || i == j) return 0.0;
  const int k = 3 - i - j;
  if (std::fabs(dir[k]) <= 1e-10) return 0.0;
  return (dir.Prod(origin) - dir[i] * x - dir[j] * y) / dir[k];
}

void CPlane::GetValueRange(unsigned char i, unsigned char j, const RangeR12D& box, RangeR1& out) const {
  if (i > 2 || j > 2) return;
  const bool upI = dir[i] > 0.0;
  const bool upJ = dir[j] > 0.0;
  const double x1 = upI ? box.i.GetMax() : box.i.GetMin();
  const double x2 = upI ? box.i.GetMin() : box.i.GetMax();
  const double y1 = upJ ? box.j.GetMax() : box.j.GetMin();
  const double y2 = upJ ? box.j.GetMin() : box.j.GetMax();
  out.SetMin(GetVal(i, j, x1, y1));
  out.SetMax(GetVal(i, j, x2, y2));
}

void CPlane::GetFrame(CMFrame& f) const {
  f.axes[2] = dir;
  dir.GetAnyOrthoVect(f.axes[0]);
  f.origin = origin;
  f.Init(2, 0, true);
}

void CPlane::Dp(double r) const {
  // The plane is drawn as the disc of radius r about its point, under the plane's own caption.
  CCircle disc(r);
  disc.CLineal::Copy(*this);
  ISection* sec = disc.CreateDump();
  if (sec == nullptr) return;
  char caption[64];
  FormatDebugCaption(caption, "CPlane %08x", this);
  sec->SetCaption(caption);
  AnGeoState::GetDbg()->Show(sec, 65535, 0);  // yellow (0x00BBGGRR), lines only
  sec->Release();
}

// ---- Planeal -----------------------------------------------------------------------------------

bool Planeal::Init(bool uIsUnit) {
  if (!uIsUnit && !u.Normalize(1e-10)) return false;
  v.MakeOrtho(u);
  return v.Normalize(1e-10);
}

int PlanealLoc::GetIntersectionTriangleEdge(const Triangle3D& t, SMat& p, bool* onEdgePlane, bool positive) const {
  CPlane plane;
  GetPlane(plane);
  for (unsigned char i = 0; i < 3; ++i) {
    CSegment side;
    if (!t.GetSide(i, side, false)) return 0;
    if (plane.GetSegmentIntersection(side, p, nullptr, 1e-10) && IsInPositiveSemispace(p, onEdgePlane) == positive)
      return i;
  }
  return -1;
}

// ---- PlaneArray --------------------------------------------------------------------------------

template <>
void SerializeElements<CPlane>(CArchive& ar, CPlane* pElements, INT_PTR nCount) {
  for (INT_PTR i = 0; i < nCount; ++i) {
    double* v[6] = {&pElements[i].origin.x, &pElements[i].origin.y, &pElements[i].origin.z,
                    &pElements[i].dir.x,    &pElements[i].dir.y,    &pElements[i].dir.z};
    for (double* p : v) {
      if (ar.IsStoring())
        ar << *p;
      else
        ar >> *p;
    }
  }
}

void PlaneArray::Copy(const PlaneArray& o) {
  SetSize(o.GetSize(), -1);
  for (INT_PTR k = 0; k < o.GetSize(); ++k) GetAt(k).CLineal::Copy(o.GetAt(k));
}
