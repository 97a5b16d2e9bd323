// ZnScale: anisotropic scaling by three multipliers along the axes of its own frame, with a stack
// of saved states. Zn4D: a homogeneous point or direction of space.
#pragma once
#include <znmt64/CMFrame.h>
#include <znmt64/Config.h>
#include <znmt64/SMat.h>

#include <vector>

class CMovement;

class ZNMT64_API ZnScale {
 public:
  ZnScale() { Reset(); }
  // Frame and multipliers; the saved states stay with their owner.
  ZnScale(const ZnScale& s) : frame(s.frame), multipliers(s.multipliers) {}
  ZnScale& operator=(const ZnScale& s) {
    frame = s.frame;
    multipliers = s.multipliers;
    return *this;
  }
  virtual ~ZnScale() = default;

  void Reset() {
    frame.Reset();
    multipliers.Set(1.0, 1.0, 1.0);
  }
  void SetScale(double x, double y, double z) { multipliers.Set(x, y, z); }
  void GetScalingVect(SMat& v) const { v = multipliers; }

  // The largest multiplier, starting from 0: 0 when none is positive.
  double NormMax() const;
  double Norm() const { return multipliers.Norm(); }
  // Every multiplier in [1e-10, 1000].
  bool IsValid() const;
  // Equal first two multipliers: symmetric about the frame's Z axis.
  bool IsAxial() const { return std::fabs(multipliers.x - multipliers.y) < 1e-10; }
  bool IsUnitaryOrientation() const { return frame.IsUnitary(); }
  // Unit multipliers within 1e-10 and the identity frame; IsTrivial is the same question.
  bool IsTrivialMultipliers() const;
  bool IsTrivial() const { return IsTrivialMultipliers(); }
  bool IsSame(const ZnScale& s) const { return frame == s.frame && multipliers.Dist(s.multipliers) <= 1e-10; }

  // Component i times multiplier i.
  void Scale3D(double& x, double& y, double& z) const {
    x *= multipliers.x;
    y *= multipliers.y;
    z *= multipliers.z;
  }
  void Scale3D(double* v) const { Scale3D(v[0], v[1], v[2]); }
  void Scale3D(SMat& v) const { Scale3D(v.x, v.y, v.z); }
  // Divides by the multipliers; false, v untouched, when the scale is not valid.
  bool ScaleInverse(double* v) const;
  // Divides the three doubles by their length, unless it is below 1e-10.
  static void Normalize(double* v);
  void ScaleUnitary(double* v) const {
    Scale3D(v);
    Normalize(v);
  }
  void ScaleUnitary(SMat& v) const {
    Scale3D(v);
    v.Normalize(1e-10);
  }
  // A surface normal, carried through its tangent plane: the result is the cross product of two
  // scaled unit tangents, so neither its length nor its sign is that of n.
  void ScaleNormal(SMat& n) const;
  void ScaleNormal(double* n) const;

  // Turns the frame about the local direction (x, y, z); nothing for |angle| < 1e-10 or the zero
  // vector.
  void SetOrientation(double x, double y, double z, double angle);
  // The multipliers re-expressed in f, which becomes the frame. They are carried as a direction,
  // so their signs may change; callers rely on that.
  void ChangeFrame(CMFrame& f);
  // frame := frame × f; the multipliers carried into f's terms as a direction (signs may change).
  void Transform(CMFrame& f);
  // The frame moved in its own terms, the multipliers turned as a direction. Defined with the
  // movements.
  void Transform(CMovement& m);

  // Frame and multipliers. A Pop without a matching Push leaves the multipliers as they are.
  void Push() {
    frame.Push();
    saved.push_back(multipliers);
  }
  void Pop();

  CMFrame frame;
  SMat multipliers;
  std::vector<SMat> saved;  // the multipliers' half of Push and Pop
};

class ZNMT64_API Zn4D {
 public:
  Zn4D() = default;
  ~Zn4D() = default;
  Zn4D(const Zn4D&) = default;
  Zn4D& operator=(const Zn4D&) = default;

  void Copy(const Zn4D& p) { *this = p; }
  // w is kept: a direction stays a direction, a point a point.
  void Copy(const SMat& v) {
    x = v.x;
    y = v.y;
    z = v.z;
  }
  // A finite point: w := 1.
  void CopyFinite(const SMat& v) {
    Copy(v);
    w = 1.0;
  }
  void CopyTo(SMat& v) const { v.Set(x, y, z); }
  void SwapDirection() {
    x = -x;
    y = -y;
    z = -z;
  }

  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
  double w = 1.0;
};
