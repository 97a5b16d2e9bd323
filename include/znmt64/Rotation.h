// Rotation: a turn by an angle about an axis direction. Frames hand out their orientation as one
// (CMFrame::GetRotation) and turn by one (CMFrame::Rotate); square matrices extract one
// (MatSq::GetRotation).
#pragma once
#include <znmt64/Config.h>
#include <znmt64/SMat.h>

// The SMat base is the axis. It is not necessarily of unit length: Set takes it as given.
class ZNMT64_API Rotation : public SMat {
 public:
  Rotation() { Reset(); }
  Rotation(double x, double y, double z, double a) { Set(x, y, z, a); }
  // p[0..2] the axis, p[3] the angle. A null p gives the zero axis and, where the angle used to be
  // left unset, angle 0.
  explicit Rotation(const double* p) {
    if (p != nullptr) Set(p[0], p[1], p[2], p[3]);
  }
  virtual ~Rotation() = default;

  using SMat::Set;
  void Set(double x, double y, double z, double a) {
    SMat::Set(x, y, z);
    angle = a;
  }
  void Reset() { Set(1.0, 0.0, 0.0, 0.0); }

  using SMat::IsSame;
  bool IsSame(const Rotation& r) const { return EqualsTo(r) && std::fabs(angle - r.angle) <= 1e-10; }
  bool operator==(const Rotation& r) const { return IsSame(r); }
  // No turn at all: a negligible angle, or an axis too short to give a direction.
  bool IsTrivial() const { return std::fabs(angle) < 1e-10 || SquareNorm() < 1e-10; }

  // The turn carrying direction from into direction to, angle in [0, pi]. False for parallel or
  // opposite directions (the axis is then the zero cross product and the angle 0) and for an
  // angle within 1e-10 of 0. A direction shorter than 1e-10 throws CMatrExeption by pointer
  // (SMat::Angle).
  bool FindRotation(const SMat& from, const SMat& to);

  double angle = 0.0;  // radians, counter-clockwise about the axis
};
