// The parts of CSegment that are not inline: clamped nearest points, distances to lines and
// segments, intersections, collinear overlap and projections.
#include <znmt64/CSegment.h>
#include <znmt64/CMFrame.h>

#include <znag64/Point2D.h>
#include <znbl64/Range.h>

#include <algorithm>

IMPLEMENT_DYNAMIC(SegmentPoint, CObject)

void CSegment::GetProjection(unsigned char i, RangeR1& out) const {
  if (i >= 3) return;
  out.SetMin(origin[i]);
  out.SetMax(origin[i] + length * dir[i]);
}

// ---- location ----------------------------------------------------------------------------------

CPlane::ELocn CSegment::GetLocation(const CPlane& pl) const {
  SMat q;
  GetQ(q);
  const CPlane::ELocn a = pl.GetPointLocation(origin, 1e-10);
  const CPlane::ELocn b = pl.GetPointLocation(q, 1e-10);
  if (a == b) return a;
  if (a == CPlane::eOnPlane) return b;
  if (b == CPlane::eOnPlane) return a;
  return CPlane::eLocnUndefined;
}

bool CSegment::ContainsSegm(const CSegment& o) const {
  SMat q;
  o.GetQ(q);
  return GetLocation(o.origin, 1e-10) < 5 && GetLocation(q, 1e-10) < 5;
}

bool CSegment::IsNormal(const SMat* p1, const SMat* p2) const {
  if (p1 == nullptr || p2 == nullptr) return true;
  const double s = dir.Prod(*p2 - *p1);
  switch (GetLocation(*p1, 1e-10)) {
    case eSegInside: return std::fabs(s) < 1e-10;
    case eSegAtP: return s < 1e-10;
    case eSegAtQ: return s > -1e-10;
    default: return false;
  }
}

// ---- nearest points and distances ----------------------------------------------------------------

double CSegment::FindNearestPoint(const SMat& p, SMat* out, double* dist) const {
  SMat local;
  SMat* f = out != nullptr ? out : &local;
  double t = FindPtToLineProjection(p, f);
  // Two tests in turn, not one or the other: a segment of negative length ends clamped to P.
  if (t > length) {
    GetQ(*f);
    t = length;
  }
  if (t < 0.0) {
    *f = origin;
    t = 0.0;
  }
  if (dist != nullptr) *dist = f->Dist(p);
  return t;
}

double CSegment::BreakAtPoint(const SMat& p, CSegment& rest) {
  const double t = FindNearestPoint(p, &rest.origin, nullptr);
  rest.length = length - t;
  length = t;
  rest.dir = dir;
  return t;
}

double CSegment::Dist(const SMat& p, SMat* foot, SegmentPoint* sp) const {
  SMat local;
  SMat* f = foot != nullptr ? foot : &local;
  // The line's distance and the foot's parameter in one projection (CLineal::Dist's own steps).
  const double t = FindPtToLineProjection(p, f);
  const double d = std::sqrt(p.DistSquare(*f));
  if (sp != nullptr) {
    sp->t = t;
    sp->kind = GetPointLocation(t, 1e-10);
    sp->len = length;
  }
  if (0.0 <= t && t <= length) return d;
  if (t < 0.0) {
    *f = origin;
    if (sp != nullptr) {
      sp->kind = eSegAtP;
      sp->t = 0.0;
    }
  } else {
    GetQ(*f);
    if (sp != nullptr) {
      sp->kind = eSegAtQ;
      sp->t = length;
    }
  }
  return f->Dist(p);
}

double CSegment::SquareDist(const CLineal& line, SMat* p1, SMat* p2, SegmentPoint* sp) const {
  SMat l1;
  SMat l2;
  SMat* q1 = p1 != nullptr ? p1 : &l1;
  SMat* q2 = p2 != nullptr ? p2 : &l2;
  ELinePosn posn = eLinePosnUnknown;
  double d2 = CLineal::SquareDist(line, q1, q2, nullptr, sp != nullptr ? &posn : nullptr);
  if (sp != nullptr && sp[1].flag && posn != eSkew && posn != eIntersecting) {
    sp[1].posn = eLinePosnUnknown;
    return d2;
  }
  double t = FindPtToLineProjection(*q1);
  const bool inside = 0.0 <= t && t <= length;
  if (inside && sp == nullptr) return d2;
  if (!inside) {
    if (t < 0.0) {
      *q1 = origin;
      t = 0.0;
    } else {
      GetQ(*q1);
      t = length;
    }
    d2 = line.SquareDist(*q1, q2);
  }
  if (sp != nullptr) {
    sp[0].kind = GetPointLocation(t, 1e-10);
    sp[0].t = t;
    sp[0].len = length;
    sp[1].kind = eSegUndefined;
    sp[1].t = line.FindPtToLineProjection(*q2);
    sp[1].len = 1e307;  // an unbounded line
    sp[1].posn = eLinePosnUnknown;
  }
  return d2;
}

double CSegment::DistSegm(const CSegment& o, SMat* p1, SMat* p2, SegmentPoint* sp) const {
  SMat l1;
  SMat l2;
  SegmentPoint lsp[2];
  SMat* q1 = p1 != nullptr ? p1 : &l1;
  SMat* q2 = p2 != nullptr ? p2 : &l2;
  SegmentPoint* r = sp != nullptr ? sp : lsp;
  const double d = Dist(static_cast<const CLineal&>(o), q1, q2, r);
  const double s = r[1].t;
  if (sp != nullptr) sp[1].len = o.length;
  if (0.0 <= s && s <= o.length) {
    if (sp != nullptr) sp[1].kind = o.GetPointLocation(s, 1e-10);
    return d;
  }
  if (s >= 0.0) {
    o.GetQ(*q2);
    r[1].t = o.length;
    r[1].kind = eSegAtQ;
  } else {
    *q2 = o.origin;
    r[1].t = 0.0;
    r[1].kind = eSegAtP;
  }
  return q1->Dist(*q2);
}

double CSegment::SquareDistSegment(const CSegment& o, SMat* p1, SMat* p2) const {
  if (ContainsSegm(o)) {
    if (p1 != nullptr) *p1 = o.origin;
    if (p2 != nullptr) *p2 = o.origin;
    return 0.0;
  }
  SMat l1;
  SMat l2;
  SMat* q1 = p1 != nullptr ? p1 : &l1;
  SMat* q2 = p2 != nullptr ? p2 : &l2;
  const double d2 = SquareDist(static_cast<const CLineal&>(o), q1, q2, nullptr);
  const ELocn loc = o.GetLocation(*q2, 1e-10);
  if (loc < 5) return d2;
  if (loc == eSegBeforeP)
    *q2 = o.origin;
  else
    o.GetQ(*q2);
  return q1->DistSquare(*q2);
}

// ---- intersections -------------------------------------------------------------------------------

ENik CSegment::GetIntesection(const CLineal& line, SMat& p, double* t, ELinePosn* posn) const {
  double s[2] = {1e307, 1e307};  // parallel lines leave them undefined
  const ELinePosn r = Intesect(line, p, s, nullptr);
  if (t != nullptr) {
    if (r == eCoincident) {
      p = origin;
      t[0] = line.FindPtToLineProjection(origin);
      t[1] = dir.Prod(line.dir) >= 0.0 ? t[0] + length : t[0] - length;
    } else {
      t[0] = s[0];
      t[1] = s[1];
    }
  }
  if (posn != nullptr) *posn = r;
  switch (r) {
    case eIntersecting: return 0.0 <= s[0] && s[0] <= length ? eNikYes : eNikNo;
    case eSkew: return eNikNo;
    default: return eNikUndefined;
  }
}

ENik CSegment::GetIntesection(const CSegment& o, SMat& p, SegmentPoint* sp) const {
  double s[2] = {1e307, 1e307};
  ELinePosn posn = eLinePosnUnknown;
  const ENik r = GetIntesection(static_cast<const CLineal&>(o), p, s, &posn);
  if (r != eNikYes) return r;
  const ELocn a = GetLocation(p, 1e-10);
  const ELocn b = o.GetLocation(p, 1e-10);
  if (a == eSegUndefined || a >= 5 || b == eSegUndefined || b >= 5) return eNikNo;
  if (sp != nullptr) {
    const ELocn kinds[2] = {a, b};
    for (int k = 0; k < 2; ++k) {
      sp[k].t = s[k];
      sp[k].kind = kinds[k];
      sp[k].posn = posn;
    }
    sp[0].len = length;
    sp[1].len = o.length;
  }
  return eNikYes;
}

CSegment::ELocn CSegment::GetIntersectionPlane(const CPlane& pl, SMat& p) const {
  if (!IntersectPlane(pl, p, nullptr, 1e-10)) return eSegOffLine;
  return GetLocation(p, 1e-10);
}

bool CSegment::GetCollinearIntersSet(const CSegment& o, RangeR1* r) const {
  RangeR1 local;
  RangeR1& set = r != nullptr ? *r : local;
  if (!IsCoinside(o)) return false;
  SMat q;
  o.GetQ(q);
  const double t1 = FindPtToLineProjection(o.origin);
  const double t2 = FindPtToLineProjection(q);
  set.Set(std::min(t1, t2), std::max(t1, t2));
  set.Intersect(RangeR1(0.0, length));
  if (t1 > t2) set.Swap();
  return std::fabs(t2 - t1) > 1e-10;
}

bool CSegment::IntersectCollinear(const CSegment& o, RangeR1* r) {
  RangeR1 set;
  if (!GetCollinearIntersSet(o, &set)) return false;
  RangeR1 overlap(0.0, length);
  if (!overlap.Intersect(set)) return false;
  Slide(overlap.GetMin());
  length = overlap.GetLength();
  if (r != nullptr) *r = overlap;
  return true;
}

// ---- frames and projections ----------------------------------------------------------------------

void CSegment::ToLocal(const CMFrame& f) {
  SMat q;
  GetQ(q);
  f.ToLocal(origin);
  f.ToLocal(q);
  SetQ(q, false);
}

void CSegment::ToGlobal(const CMFrame& f) {
  SMat q;
  GetQ(q);
  f.ToGlobal(origin);
  f.ToGlobal(q);
  SetQ(q, false);
}

void CSegment::To2D(const CMFrame& f, CMLine& out) const {
  SMat q;
  GetQ(q);
  C2DPoint a;
  C2DPoint b;
  f.Project(origin, a);
  f.Project(q, b);
  out.SetVertex(0, a);
  out.SetVertex(1, b);
}

void CSegment::ProjectToPlane(const CMFrame& f, Segment2D& out) const {
  SMat q;
  GetQ(q);
  C2DPoint end;
  f.Project(origin, out.origin);
  f.Project(q, end);
  out.SetQ(end);
}

bool CSegment::ProjectToPlane(const SMat& n) {
  SMat q;
  GetQ(q);
  origin.ProjectToPlane(n);
  q.ProjectToPlane(n);
  return SetQ(q, false);
}
