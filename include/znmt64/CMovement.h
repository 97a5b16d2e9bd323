// CMovement: a rigid motion, a turn about an axis line followed by a translation.
// TransformParametric: the motion with a per-coordinate scale and a centre, applied to 2D points.
#pragma once
#include <znmt64/CLineal.h>
#include <znmt64/Config.h>
#include <znmt64/SMat.h>

#include <cmath>

class CMFrame;
class C2DPoint;
class PCExBase;

class ZNMT64_API CMovement {
 public:
  CMovement() = default;
  // The axis by CLineal::Copy, so that its tag comes along.
  CMovement(const CMovement& m) { Copy(m); }
  CMovement& operator=(const CMovement& m) {
    Copy(m);
    return *this;
  }
  virtual ~CMovement() = default;

  void Copy(const CMovement& m) {
    angle = m.angle;
    axis.Copy(m.axis);
    shift = m.shift;
  }
  // No turn and no shift; the axis keeps its point and points along x.
  void Reset();

  // An angle within 1e-10 of zero is no turn at all.
  bool IsTranslation() const { return std::fabs(angle) <= 1e-10; }
  // A turn alone or a shift alone; the shift must be exactly zero.
  bool IsSimple() const { return IsTranslation() || shift.IsZero(0.0); }
  bool IsTrivial() const { return IsTranslation() && shift.IsZero(0.0); }

  // The turn about the axis direction only: a vector is not shifted.
  void MoveVect(SMat& v) const { v.Rotate(axis.dir, angle); }
  // The turn about the axis line, then the shift.
  void MovePoint(SMat& p) const;
  void MovePoint(double* p) const;
  // The motion in global terms: f turns about the axis line, then its origin moves by the shift
  // (applied in f's local terms, which for an orthonormal f is exactly the global shift).
  void Move(CMFrame& f) const;
  // The motion in f's own terms and in the other order: first the shift along f's axes, then the
  // turn about the axis direction read in f's coordinates.
  void MoveLoc(CMFrame& f) const;
  // The motion re-expressed in f's coordinates. The shift is converted as a point, so f's origin
  // is subtracted from it too; callers rely on that asymmetry with Move.
  void MakeLocal(CMFrame& f);

  double angle = 0.0;  // radians
  CLineal axis;
  SMat shift;
};

class ZNMT64_API TransformParametric : public CMovement {
 public:
  TransformParametric() = default;
  explicit TransformParametric(unsigned char n) : dim(n) {}
  TransformParametric(const TransformParametric&) = default;
  TransformParametric& operator=(const TransformParametric&) = default;
  ~TransformParametric() override = default;

  // Shift, turn about the centre, scale along the global axes about the centre, in that order;
  // only x and y of shift, centre and scale take part, and the axis line not at all.
  void Transform(C2DPoint& p) const;
  // The same on (p[0], p[1]).
  void Transform(double* p) const;
  // Element "TP" with the scale "Sc" and the centre "Cr", dim numbers each (at most three: that
  // is all either holds). The motion itself is not persisted. Loading looks for "TP" among the
  // children of the current element and leaves the object as it was without one. True when the
  // element was written or found.
  bool PersistXML(PCExBase& x);

  double scale[3] = {1.0, 1.0, 1.0};
  SMat center;
  unsigned char dim = 3;  // how many coordinates PersistXML transfers
};
