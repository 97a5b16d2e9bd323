// CMFrame: the coordinate frame that places every local construction of the library: an origin
// and three axes in global coordinates, with a stack of saved states.
//
// Axes are numbered 0 (X), 1 (Y), 2 (Z) in every operation that takes an axis number; SMat
// components and Mat rows and columns keep their own bases (Mat.h, SMat.h).
//
// The conversions of points and vectors, the moves and the axis accessors are inline and
// allocation-free: they run for every geometric query. Their arithmetic is written in the order
// the results have always had, so that they are bit for bit the same on every build.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/SMat.h>
#include <znmt64/StateStack.h>

#include <cmath>

class Mat;
class MatSq;
class AffinTransf;
class Rotation;
class CLineal;
class CPlane;
class C2DPoint;
class PCExBase;
struct ISection;
struct IFrame;

class ZNMT64_API CMFrame {
 public:
  // Which global coordinate axis the frame's Z axis lies along, when its axes are all
  // coordinate axes (GetStdOrientation).
  enum EStdOrientation {
    eStdNone = 0,
    eStdPlusZ = 1,
    eStdMinusZ = 2,
    eStdPlusX = 3,
    eStdMinusX = 4,
    eStdPlusY = 5,
    eStdMinusY = 6
  };

  // ---- construction, copies, reset -----------------------------------------------------------
  CMFrame() { ResetOrientation(); }
  // Axes left as SMat constructs them (zero): for arrays and for frames filled right after.
  explicit CMFrame(unsigned char) {}
  // The copy starts with its own empty stack: saved states are never shared or copied.
  CMFrame(const CMFrame& f) : origin(f.origin), axes{f.axes[0], f.axes[1], f.axes[2]} {}
  // Z along the line, origin on it. Defined with the lines.
  explicit CMFrame(CLineal& l);
  // Z along dir.
  explicit CMFrame(SMat& dir);
  // The frame behind a frame interface (Copy(IFrame*)); the identity when there is none.
  explicit CMFrame(IFrame* p) : CMFrame() { Copy(p); }
  virtual ~CMFrame() = default;

  // Origin and axes only; the target keeps its own stack. Returns nothing, as callers expect.
  void operator=(const CMFrame& f) { Replicate(f); }
  void Replicate(const CMFrame& f) { Copy(f); }
  void Copy(const CMFrame& f) {
    origin = f.origin;
    CopyOrientation(f);
  }
  // Exchange with a frame of another module through its 4x4 matrix (IFrame::GetMatrix,
  // IFrame::SetMatrix). Copy takes it as FromMatrix does; false, frame unchanged, for a null or
  // failing interface or an invalid frame behind it (which gives no matrix). CopyTo repairs an
  // invalid frame first, as ToMatrix does.
  bool Copy(IFrame* p);
  bool CopyTo(IFrame* p);
  void CopyOrientation(const CMFrame& f) {
    for (int k = 0; k < 3; ++k) axes[k] = f.axes[k];
  }
  void ResetOrientation() {
    axes[0].Set(1.0, 0.0, 0.0);
    axes[1].Set(0.0, 1.0, 0.0);
    axes[2].Set(0.0, 0.0, 1.0);
  }
  void Reset() {
    origin.SetAll(0.0);
    ResetOrientation();
  }
  // Zero axes, so that IsValid fails; the origin stays.
  void MakeInvalid() {
    for (SMat& a : axes) a.SetAll(0.0);
  }

  // ---- saved states ----------------------------------------------------------------------------
  virtual void Pop() { m_stack.Pop(*this); }
  virtual bool Discard() { return m_stack.Discard(*this); }
  virtual void Push() { m_stack.Push(*this); }
  virtual int GetStackCount() const { return m_stack.count; }
  virtual int GetStackSize() const { return m_stack.capacity; }
  virtual void AttachStack(int n) { m_stack.AttachStack(*this, n); }
  virtual bool PopDifferent() { return m_stack.PopDifferent(*this); }
  virtual void SetInitialStackSize(short n) { m_stack.initialSize = n; }
  void ResetStack() { m_stack.ResetStack(); }
  // i counts from the top (0: the state saved last); null past the bottom.
  CMFrame* GetState(int i) const { return m_stack.GetState(i); }

  // ---- state and comparison --------------------------------------------------------------------
  // Unit, pairwise orthogonal axes within 1e-6. Only the origin's first component is
  // range-checked (|x| <= 1e100): a huge y or z passes, and callers rely on that.
  bool IsValid() const;
  // True when right-handed: det[X Y Z] > 1e-10.
  bool GetOrientation() const;
  // Zero origin (squared length <= tol) and axis k's component k within tol of 1; the other
  // components are not looked at.
  bool IsUnitary(double tol = 1e-7) const;
  bool operator==(const CMFrame& f) const;
  bool operator!=(const CMFrame& f) const { return !(*this == f); }
  // X and Y only: Z follows from them.
  bool IsSameOrientation(const CMFrame& f) const { return !(axes[0] != f.axes[0]) && !(axes[1] != f.axes[1]); }
  // Origins and axes each within eps, component by component.
  bool IsSame(const CMFrame& f, double eps) const;
  // The largest of the distances origin to origin and axis k to axis k.
  double Dist(const CMFrame& f) const;

  // ---- accessors -------------------------------------------------------------------------------
  // k in 0..2, not checked.
  const SMat& GetAxis(int k) const { return axes[k]; }
  void GetAxis(int k, double& x, double& y, double& z) const { axes[k].GetCoord(x, y, z); }
  // The line through the origin along axis k. Defined with the lines.
  void GetAxis(int k, CLineal& l) const;
  // Component k (0-based) of the origin.
  double GetPosition(int k) const { return origin[k]; }
  void SetOrigin(double x, double y, double z) { origin.Set(x, y, z); }
  void SetOrigin(const SMat& p) { origin = p; }

  // ---- local and global coordinates --------------------------------------------------------
  void ToLocal(SMat& p) const {
    const SMat d = p - origin;
    p.Set(axes[0].Prod(d), axes[1].Prod(d), axes[2].Prod(d));
  }
  void ToLocalVector(SMat& v) const { v.Set(axes[0].Prod(v), axes[1].Prod(v), axes[2].Prod(v)); }
  void ToGlobalVector(SMat& v) const {
    const double vx = v.x, vy = v.y, vz = v.z;
    v = vx * axes[0] + vy * axes[1] + vz * axes[2];
  }
  void ToGlobal(SMat& p) const {
    ToGlobalVector(p);
    p += origin;
  }
  // The line's point as a point, its direction as a vector. Defined with the lines.
  void ToLocal(CLineal& l) const;
  void ToGlobal(CLineal& l) const;
  // f, given in this frame's coordinates, into global ones. X and Y are renormalised and Y is
  // re-orthogonalised; Z is rebuilt, right-handed unless keepHandedness keeps f's own hand.
  void ToGlobal(CMFrame& f, bool keepHandedness = false) const;
  // f, given globally, into this frame's coordinates. Unlike ToGlobal, X and Y are not
  // renormalised (callers rely on the lengths coming through); Z is rebuilt as in ToGlobal.
  void ToLocal(CMFrame& f, bool keepHandedness = false) const;
  // A point (vector) of this frame's coordinates into the coordinates of frame to.
  void ToFrame(const CMFrame& to, SMat& p) const {
    ToGlobal(p);
    to.ToLocal(p);
  }
  void ToFrameVector(const CMFrame& to, SMat& v) const {
    ToGlobalVector(v);
    to.ToLocalVector(v);
  }
  // p's local x and y; its local z (the height above the XY plane) into *height when given.
  void Project(const SMat& p, C2DPoint& out, double* height = nullptr) const;
  // The point (p.x, p.y, h) of this frame's coordinates, globally.
  void To3DEx(const C2DPoint& p, double h, SMat& out) const;
  // A point of the frame's XY plane, globally; ToGlobal is the same operation.
  void To3D(const C2DPoint& p, SMat& out) const { To3DEx(p, 0.0, out); }
  void ToGlobal(const C2DPoint& p, SMat& out) const { To3DEx(p, 0.0, out); }
  // An affine map into this frame's coordinates becomes the map into global ones (as ToGlobal
  // does for a frame): columns of the linear part as vectors, the translation as a point.
  void ToGlobal(AffinTransf& t) const;
  // The map from this frame's coordinates to global ones: linear part = the axes as columns,
  // translation = the origin.
  void GetTramsform(AffinTransf& t) const;
  // The coordinate plane through the origin with normal axis k (as a CPlane reads a CLineal);
  // nothing for k outside 0..2. Defined with the lines.
  void GetPlane(int k, CLineal& l) const;

  // ---- composition -----------------------------------------------------------------------------
  // Through the 4x4 matrices: M(this) x M(b). An invalid operand is repaired (MakeValid(0)) as a
  // side effect, even through const, and contributes a zero matrix; callers rely on both.
  CMFrame operator*(const CMFrame& b) const;
  void operator*=(const CMFrame& b);
  // this := b x this.
  void MultLeft(const CMFrame& b);
  // this expressed in b's coordinates.
  void operator/=(const CMFrame& b) { b.ToLocal(*this); }
  CMFrame operator/(const CMFrame& b) const;
  // Origin and axes interpolated linearly ((1 - t)·a + t·b), then repaired with MakeValid(0).
  bool Combine(const CMFrame& a, const CMFrame& b, double t);

  // ---- matrices --------------------------------------------------------------------------------
  // m becomes 3x3 with column k + 1 = axis k.
  void GetMatrix(Mat& m) const;
  // A 3-column m gets GetMatrix; any other (a 4x4, or 3x4) the axes embedded top left, the
  // origin in column 4 and 1 at (4, 4), where those fit. An invalid frame is repaired with
  // MakeValid(0) instead and m is left untouched.
  void ToMatrix(Mat& m);
  // The same into 16 doubles, row-major 4x4.
  void ToMatrix(double* m);
  // Axis k := rows 1-3 of column k + 1, the origin := column 4 when there is one; then
  // MakeValid(0). A matrix smaller than 3x3 changes nothing.
  void FromMatrix(const Mat& m);
  void GetTransform(Mat& rot, SMat& pos) const;
  // t applied on the left, in global coordinates.
  void SetTransform(const MatSq& t);
  // The axes from the columns of a 3x3 matrix, as they stand (no repair).
  void SetAxes(Mat& m);
  void Invert();

  // ---- building the axes -----------------------------------------------------------------------
  // Axis k := (x, y, z) normalised; false for k >= 3 or a zero vector.
  bool SetAxis(unsigned char k, double x, double y, double z);
  // Axis k := axis k+1 x axis k+2 (mod 3), negated when !right; false when that is zero.
  bool Init(int k, bool right);
  // The third axis m := axis i x axis j, oriented so that the frame is right-handed when right
  // and left-handed otherwise.
  void Init(int i, int j, bool right);
  // Axis i := a, axis j := b made orthogonal to a, both normalised, the third by Init(i, j).
  // a and b are normalised in place, and stay so when a later step fails.
  bool SetAxes(int i, SMat& a, int j, SMat& b, bool right);
  // SetAxes(i, v[0], (i + 1) mod 3, v[1], right).
  bool SetAxes(int i, SMat* v, bool right);
  // Repairs the frame in the order i, j, k; i = j, i = k or an index >= 3 changes nothing (j = k is
  // not tested).
  void InitInOrder(unsigned char i, unsigned char j, unsigned char k);
  // Z towards target (away from it unless toward), Y the up vector made orthogonal, X completing
  // a right-handed frame. False, frame unchanged, when the target is the origin or up is along
  // the view.
  bool LookAt(const SMat& target, const SMat& up, bool toward);
  // Repairs the frame keeping axis i's direction.
  bool MakeValid(int i);
  void Normalize() {
    for (SMat& a : axes) a.Normalize(1e-10);
  }
  // Axis k := dir normalised; axis j (a perpendicular of dir when j < 0) made orthogonal to it;
  // the third completes a right-handed frame.
  void SetAxisRand(int k, const SMat& dir, int j);
  // Origin := the line's point, axis k along the line. Defined with the lines.
  void SetAxis(int k, const CLineal& l);
  // Turns the frame about Z so that X points along the part of v perpendicular to Z. False, frame
  // unchanged, when v is exactly along Z.
  bool Align(SMat& v);
  // X := x and Z := z made orthogonal to x (neither normalised), Y completing the frame by
  // Init(1, right); then a turn about X by -angle for a right-handed request, +angle otherwise.
  bool SetOrientation(const SMat& x, const SMat& z, double angle, bool right);
  // Exchanges axes i and j (the handedness flips).
  void SwapAxes(int i, int j);
  // Negates axis k (the handedness flips); k outside 0..2 changes nothing.
  void Reflect(int k) {
    if (k >= 0 && k < 3) axes[k].SwapDirection();
  }
  // The frame's mirror image in the plane (the handedness flips). Defined with the lines.
  void Mirror(const CPlane& p);

  // ---- moving ----------------------------------------------------------------------------------
  // A move by (x, y, z) in local coordinates.
  void Translate(double x, double y, double z) { origin += x * axes[0] + y * axes[1] + z * axes[2]; }
  // A move by d along axis k; k outside 0..2 changes nothing.
  void Translate(double d, int k) {
    if (k >= 0 && k < 3) origin += d * axes[k];
  }
  void Translate(const SMat& v) { Translate(v.x, v.y, v.z); }
  void TranslateGlob(const SMat& v) { origin += v; }
  // The other two axes turn about axis k; the origin stays. |angle| < 1e-10, or k outside 0..2,
  // changes nothing.
  void Rotate(double angle, int k) {
    if (std::fabs(angle) < 1e-10 || k < 0 || k > 2) return;
    for (int i = 0; i < 3; ++i)
      if (i != k) axes[i].Rotate(axes[k], angle);
  }
  // The origin turns about global coordinate axis k (0-based; SMat's sense for y), the axes
  // about the frame's own axis k.
  void RotateGlobal(int k, double angle);
  // The axes turn about the global direction dir through the origin; the origin stays. A dir
  // shorter than 1e-10 changes nothing.
  void Rotate(const SMat& dir, double angle);
  // As Rotate(dir, angle) with dir in local coordinates.
  void RotateLoc(const SMat& dir, double angle) {
    SMat d = dir;
    ToGlobalVector(d);
    Rotate(d, angle);
  }
  // The frame turns about the line: the origin is rotated about it, the axes about its
  // direction. Defined with the lines.
  void Rotate(const CLineal& axis, double angle);
  // r's axis taken in local coordinates; nothing for a trivial r.
  void Rotate(const Rotation& r);
  // The rotation that carries the global axes onto the frame's axes.
  void GetRotation(Rotation& r);

  // ---- standard orientation ------------------------------------------------------------------
  // The global coordinate axis (0..2) along which axis k lies within 1e-7, positive telling the
  // sense; -1 when it lies along none.
  int FindStdAxis(int k, bool& positive) const;
  EStdOrientation GetStdOrientation() const;

  // ---- persistence and diagnostics -----------------------------------------------------------
  // Element "Fr" with the origin "O", X "A0" and Y "A1"; Z is rebuilt on loading, never stored.
  // False when there is no such element.
  bool PersistXML(PCExBase& x);
  // A drawing of the three axes, len long, captioned "CMFrame 0x%08x"; null when the 2D module
  // cannot make one. The caller owns the returned reference.
  ISection* CreateDump(double len = 1.0) const;
  // Hands CreateDump(len) to the 2D module's 3D debugger.
  void Dump(double len = 1.0) const;

  StateStack<CMFrame> m_stack;
  SMat origin;
  SMat axes[3];
};
