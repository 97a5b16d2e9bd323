// Segments and point arrays: CSegment (a bounded piece of an oriented line), SegmentPoint (where on
// a segment a query's result lies) and PointArray (a polyline of SMat points).
//
// A segment is its start point P (the inherited origin), its unit direction (dir) and its length;
// the end point Q is P + length·dir and its parameter range is [0, length]. Segment location codes
// below 5 (other than 0) mean "on the segment": callers compare with 5.
//
// The point, line and segment queries run in the suite's intersection loops: they take their
// arguments by reference and allocate nothing.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/CLineal.h>
#include <znmt64/CPlane.h>
#include <znmt64/SMat.h>
#include <znmt64/platform/CArray.h>
#include <znmt64/platform/CObject.h>

#include <znag64/MLine.h>

#include <cmath>

class CMFrame;
class PCExBase;
class RangeR1;
class Segment2D;
class SegmentPoint;
struct ISection;

class ZNMT64_API CSegment : public CLineal {
 public:
  // A point against the segment. Below 5 (and not 0): on the segment.
  enum ELocn {
    eSegUndefined = 0,
    eSegInside = 1,   // strictly between the ends
    eSegAtP = 2,      // at the start point
    eSegAtQ = 3,      // at the end point
    eSegLocn4 = 4,    // carried through the 2D conversions, not produced here
    eSegBeforeP = 6,  // on the carrier line before P
    eSegBeyondQ = 7,  // on the carrier line beyond Q
    eSegOffLine = 8   // off the carrier line
  };
  // The segment-against-plane codes, reachable from the segment too.
  using ESegmLocn = CPlane::ESegmLocn;

  // The unit segment along x from the global origin.
  CSegment() { Construct(); }
  explicit CSegment(double len) {
    Construct();
    length = len;
  }
  // From p to q (see SetQ for q at p).
  CSegment(const SMat& p, const SMat& q) {
    origin = p;
    SetQ(q, false);
  }
  // As for CLineal: a copy gets tag -1, assignment and Copy transfer the tag.
  CSegment(const CSegment&) = default;
  CSegment& operator=(const CSegment&) = default;

  // Length 1 and dir's x := 1; dir's other components are left as they are.
  void Construct() {
    length = 1.0;
    dir.x = 1.0;
  }
  void Copy(const CSegment& s) {
    CLineal::Copy(s);
    length = s.length;
  }
  // The line part only; the length stays.
  void CopyBase(const CLineal& l) { CLineal::Copy(l); }

  // ---- end points and parameters -------------------------------------------------------------
  void GetQ(SMat& q) const { q = origin + length * dir; }
  // q becomes the end point. Shorter than 1e-10: false, dir left as the raw difference q - P
  // (zero for q = P). The flag is not used.
  bool SetQ(const SMat& q, bool = false) {
    dir = q - origin;
    length = dir.Norm();
    if (length < 1e-10) return false;
    dir /= length;
    return true;
  }
  bool SetQ(double x, double y, double z) { return SetQ(SMat(x, y, z), false); }
  // r = 0 gives P, r = 1 gives Q.
  void GetPointAtRatio(double r, SMat& out) const { GetPoint(length * r, out); }
  // [-1e-10, length + 1e-10), open at the end.
  bool IsInRangeParam(double t) const { return -1e-10 <= t && t < length + 1e-10; }
  // Moves the whole segment along itself.
  void Translate(double d) { Slide(d); }
  // Moves P along the segment and keeps Q.
  void TranslateP(double d) {
    Translate(d);
    length -= d;
  }
  // From Q to P.
  void SwapDirection() {
    GetQ(origin);
    dir.SwapDirection();
  }
  // Coordinate i of P and of Q as out's lower and upper value, not reordered; i >= 3 leaves out.
  void GetProjection(unsigned char i, RangeR1& out) const;

  // ---- location --------------------------------------------------------------------------------
  // By parameter.
  ELocn GetPointLocation(double t, double tol) const {
    if (t < -tol) return eSegBeforeP;
    if (std::fabs(t) < tol) return eSegAtP;
    if (std::fabs(t - length) < tol) return eSegAtQ;
    if (t < length) return eSegInside;
    return eSegBeyondQ;
  }
  // By point. The off-line test compares the projection on the line with the distance from P, so
  // it grows more sensitive the farther p is from P: at 5 from P, 1e-6 off the line passes and
  // 1e-4 does not. Callers rely on the test as it is.
  ELocn GetLocation(const SMat& p, double tol) const {
    const SMat v = p - origin;
    const double s = dir.Prod(v);
    if (std::fabs(std::fabs(s) - v.Norm()) > tol) return eSegOffLine;
    if (s > length + tol) return eSegBeyondQ;
    if (s < -tol) return eSegBeforeP;
    if (tol < s && s < length - tol) return eSegInside;
    if (s < tol) return eSegAtP;
    return eSegAtQ;
  }
  // The ends' common location against pl, the off-plane one when the other end is in the plane,
  // and 0 for ends on opposite sides.
  CPlane::ELocn GetLocation(const CPlane& pl) const;
  bool ContainsSegm(const CSegment& o) const;
  // Whether p2 - p1 is normal to the segment at p1: inside, within 1e-10; at P or Q, also when it
  // leans away from the segment. True when either point is missing, false when p1 is not on it.
  bool IsNormal(const SMat* p1, const SMat* p2) const;

  // ---- the 2D module's polyline codes ----------------------------------------------------------
  static constexpr CMLine::ELocn LocSegmToMLine(ELocn l) {
    switch (l) {
      case eSegInside: return CMLine::eMLInside;
      case eSegAtP: return CMLine::eMLAtStart;
      case eSegAtQ: return CMLine::eMLAtEnd;
      case eSegLocn4: return CMLine::eMLAtVertex;
      case eSegBeforeP: return CMLine::eMLBeforeStart;
      case eSegBeyondQ: return CMLine::eMLBeyondEnd;
      case eSegOffLine: return CMLine::eMLOffLine;
      default: return CMLine::eMLUndefined;
    }
  }
  // Not the inverse of LocSegmToMLine: off-line (8) comes back as 0. Callers rely on it.
  static constexpr ELocn LocnMLineToSegm(CMLine::ELocn l) {
    switch (l) {
      case CMLine::eMLInside: return eSegInside;
      case CMLine::eMLAtStart: return eSegAtP;
      case CMLine::eMLAtEnd: return eSegAtQ;
      case CMLine::eMLAtVertex: return eSegLocn4;
      case CMLine::eMLBeforeStart: return eSegBeforeP;
      case CMLine::eMLBeyondEnd: return eSegBeyondQ;
      default: return eSegUndefined;
    }
  }

  // ---- nearest points and distances --------------------------------------------------------------
  // Parameter of the point of the segment nearest p (the foot clamped to the ends); the point into
  // *out, its distance from p into *dist.
  double FindNearestPoint(const SMat& p, SMat* out = nullptr, double* dist = nullptr) const;
  // This segment keeps [0, t] up to the point nearest p, rest gets the remainder from there on;
  // returns t.
  double BreakAtPoint(const SMat& p, CSegment& rest);
  // The carrier line's distance, CLineal's own: declared here only so that the segment overloads
  // below do not hide it.
  double Dist(const SMat& p, SMat* foot = nullptr) const override { return CLineal::Dist(p, foot); }
  // Distance from p to the segment, *foot the nearest point; sp describes where it lies. The
  // three-argument form is the segment's.
  double Dist(const SMat& p, SMat* foot, SegmentPoint* sp) const;
  // Segment against the unbounded line: p1 on the segment (clamped), p2 on the line. sp is a pair:
  // record 0 for the segment, record 1 for the line; with record 1's flag set, parallel lines are
  // answered at once with the lines' distance (record 1's posn reset to 0, nothing else written).
  double SquareDist(const CLineal& line, SMat* p1 = nullptr, SMat* p2 = nullptr, SegmentPoint* sp = nullptr) const;
  double Dist(const CLineal& line, SMat* p1 = nullptr, SMat* p2 = nullptr, SegmentPoint* sp = nullptr) const {
    return std::sqrt(SquareDist(line, p1, p2, sp));
  }
  // Segment against segment, as against o's line and then clamped on o only: when the point on o
  // is clamped to an end, the point on this segment is not recomputed, so the result is the
  // distance from the first foot to o's end. Callers rely on that one-sided clamping.
  double DistSegm(const CSegment& o, SMat* p1 = nullptr, SMat* p2 = nullptr, SegmentPoint* sp = nullptr) const;
  // Squared, with the same one-sided clamping; 0 with both points at o's P when o lies on this
  // segment.
  double SquareDistSegment(const CSegment& o, SMat* p1 = nullptr, SMat* p2 = nullptr) const;

  // ---- intersections -------------------------------------------------------------------------
  // Against the carrier line of line: yes when the lines meet (within 1e-10 of distance) at a
  // parameter in [0, length], exactly; no for skew lines and meetings off the segment; undefined
  // for parallel and coincident lines. t[0], t[1]: the parameters on the two lines (for coincident
  // lines: of P and Q on line, p then being P; for parallel ones 1e307).
  ENik GetIntesection(const CLineal& line, SMat& p, double* t = nullptr, CLineal::ELinePosn* posn = nullptr) const;
  // Against segment o: yes when the crossing lies on both within 1e-10; sp then describes it on
  // each.
  ENik GetIntesection(const CSegment& o, SMat& p, SegmentPoint* sp = nullptr) const;
  // Where the carrier line meets pl, located on the segment; off-line when it runs parallel.
  ELocn GetIntersectionPlane(const CPlane& pl, SMat& p) const;
  // For o on this segment's line: the parameter interval o covers, limited to [0, length] and
  // reversed when o runs the other way; true when o is longer than 1e-10.
  bool GetCollinearIntersSet(const CSegment& o, RangeR1* r = nullptr) const;
  // Cuts this segment to its overlap with o. A reversed interval (o running the other way) is
  // empty as an interval, so such an o gives false and changes nothing.
  bool IntersectCollinear(const CSegment& o, RangeR1* r = nullptr);

  // ---- frames and projections ------------------------------------------------------------------
  // P and Q converted as points, the segment rebuilt from them.
  void ToLocal(const CMFrame& f);
  void ToGlobal(const CMFrame& f);
  // P and Q into f's XY plane as the polyline's first two vertices.
  void To2D(const CMFrame& f, CMLine& out) const;
  void ProjectToPlane(const CMFrame& f, CMLine& out) const { To2D(f, out); }
  void ProjectToPlane(const CMFrame& f, Segment2D& out) const;
  // P and Q projected along n into the plane through the global origin; false when they then
  // coincide.
  bool ProjectToPlane(const SMat& n);
  // The segment as CLineal's arrow, as long as the segment.
  void Dp() const { CLineal::Dp(length); }

  double length = 1.0;
};

// Where on a segment a result point lies. Queries that fill a pair take a pointer to two
// consecutive records: record 0 for this segment, record 1 for the other object.
class ZNMT64_API SegmentPoint : public CObject {
  DECLARE_DYNAMIC(SegmentPoint)
 public:
  SegmentPoint() = default;
  SegmentPoint(const SegmentPoint& o) : CObject() { Copy(o); }
  SegmentPoint& operator=(const SegmentPoint& o) {
    Copy(o);
    return *this;
  }
  ~SegmentPoint() override = default;

  void Reset() {
    kind = CSegment::eSegUndefined;
    t = 1e307;
    len = 0.0;
    posn = CLineal::eLinePosnUnknown;
    flag = false;
  }
  void Copy(const SegmentPoint& o) {
    kind = o.kind;
    t = o.t;
    len = o.len;
    posn = o.posn;
    flag = o.flag;
  }
  // The same kind of place at the same parameter, within 1e-10.
  bool SamePoint(const SegmentPoint& o) const { return kind == o.kind && std::fabs(t - o.t) <= 1e-10; }
  // An inside point must lie 1e-10 clear of both ends.
  bool IsValid() const { return kind != CSegment::eSegInside || (1e-10 <= t && t <= len - 1e-10); }
  // A segment point has no geometry of its own to snap.
  bool StickGeometry() { return false; }

  CSegment::ELocn kind = CSegment::eSegUndefined;
  double t = 1e307;   // parameter: the distance from P; 1e307 when undefined
  double len = 0.0;   // length of the segment meant; 1e307 for an unbounded line
  CLineal::ELinePosn posn = CLineal::eLinePosnUnknown;  // line position recorded by intersections
  bool flag = false;  // request flag, read on record 1 by CSegment::SquareDist(const CLineal&, ...)
};

// A polyline: the points in order, each consecutive pair a segment.
class ZNMT64_API PointArray : public CArray<SMat, const SMat&> {
 public:
  PointArray() = default;
  PointArray(const PointArray&) = default;
  PointArray& operator=(const PointArray&) = default;

  // The count points of pts, replacing the array's.
  void Set(const SMat* pts, int count);
  // The points into pts, which holds GetSize() of them.
  void CopyTo(SMat* pts) const;
  // Index of the last point; -1 for an empty array.
  int GetMaxInd() const { return static_cast<int>(GetSize()) - 1; }
  // Segment i, from point i to point i + 1; false, s untouched, without such points.
  bool GetSegment(int i, CSegment& s) const;
  // Distance from p to the polyline, *nearest its nearest point; 1e307 for an empty array.
  double Dist(const SMat& p, SMat* nearest = nullptr) const;

  // <Pa N="count" P="x y z x y z ..." />, both directions through px. Loading replaces the points
  // only when the element is complete; true when the points were transferred.
  bool PersistXML(PCExBase& px);
  // The polyline, captioned "path %08x"; null when the 2D module cannot make one. The caller owns
  // the returned reference.
  ISection* CreateDump() const;
  // The caption and the points, one per line, to dc.
  void Dump(CDumpContext& dc) const override;
  // Shows CreateDump() in a 3D stream of the 2D module's debugger.
  void Dp() const;
};
