// SMat: the point and direction of space, three doubles and nothing else.
//
// An SMat overlays any run of three doubles: arrays of SMat are arrays of doubles, and callers
// hand &v.x, or an SMat array, to code that expects plain doubles. Hence no base class and no
// virtual function, ever.
//
// Index bases differ by accessor, as for Mat:
//   1-based: operator()(k), Element(r, c) (as for a 3x1 matrix), GetElement
//   0-based: operator[](k), GetElem
//
// Tolerances are absolute; 1e-10 is the library's zero. The geometry above compares through the
// predicates here, so their thresholds and their odd branches are kept exactly as they are.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/Mat.h>

#include <cassert>
#include <cmath>
#include <cstddef>
#include <type_traits>

class C2DPoint;
class PCExBase;
class SMat;

SMat operator*(double s, const SMat& v);

// The scaled tolerance 1e-10 * 10^n: EpsPow(3) == 1e-7, EpsPow(4) == 1e-6, EpsPow(5) == 1e-5,
// EpsPow(7) == 1e-3, EpsPow(-1) == 1e-11, each the same double as its literal.
ZNMT64_API double EpsPow(int n);

class ZNMT64_API SMat {
 public:
  // ---- construction and copies -------------------------------------------------------------
  SMat() : x(0.0), y(0.0), z(0.0) {}
  SMat(double dx, double dy, double dz) : x(dx), y(dy), z(dz) {}
  // Implicit, as callers use them. A null p (a literal 0 converts to it) gives the zero vector.
  SMat(const double* p) : SMat() {  // NOLINT
    if (p != nullptr) Initze(p);
  }
  SMat(const Mat& m) : SMat() { Replicate(m); }  // NOLINT
  SMat(const SMat&) = default;
  SMat& operator=(const SMat&) = default;

  void Set(double dx, double dy, double dz) {
    x = dx;
    y = dy;
    z = dz;
  }
  void SetValues(double dx, double dy, double dz) { Set(dx, dy, dz); }
  void Copy(const SMat& v) { *this = v; }
  void CopyData(const SMat& v) { *this = v; }
  void Replicate(const SMat& v) { *this = v; }
  void SetAll(double v) { Set(v, v, v); }
  SMat& operator=(double v) {
    SetAll(v);
    return *this;
  }

  // The first three values of m's store whatever m's shape. A matrix with fewer values gives
  // only what it has and the remaining components are kept: reading past its block is not done.
  void Replicate(const Mat& m) {
    const double* p = m.GetStore();
    const int n = p == nullptr ? 0 : m.m_nSize < 3 ? m.m_nSize : 3;
    for (int k = 0; k < n; ++k) (*this)[k] = p[k];
  }
  SMat& operator=(const Mat& m) {
    Replicate(m);
    return *this;
  }
  // m becomes 3x1 (column) or 1x3. A matrix already of that shape but without a block (made with
  // alloc false) is not written: there is nowhere to write to.
  void ToMat(Mat& m, bool column) const {
    m.SetDimensions(column ? 3 : 1, column ? 1 : 3);
    if (m.GetBuffer() != nullptr && m.m_nSize <= 3) m.Initze(GetStore());
  }

  // ---- element access ----------------------------------------------------------------------
  double& operator()(int k) { return (*this)[k - 1]; }
  double operator()(int k) const { return (*this)[k - 1]; }
  double& operator[](int k) {
    assert(k >= 0 && k < 3);
    return (&x)[k];
  }
  double operator[](int k) const {
    assert(k >= 0 && k < 3);
    return (&x)[k];
  }
  // As Mat::Element on a 3x1 matrix: c = -1 reads r as a flat index.
  double& Element(int r, int c = -1) { return (*this)[c == -1 ? r - 1 : (r - 1) + (c - 1)]; }
  double GetElement(int k) const { return (*this)[k - 1]; }
  double GetElem(int k) const { return (*this)[k]; }
  double* GetBuffer() { return &x; }
  const double* GetBuffer() const { return &x; }
  const double* GetStore() const { return &x; }

  void GetCoord(double& dx, double& dy, double& dz) const {
    dx = x;
    dy = y;
    dz = z;
  }
  void GetDataCopy(double* p) const {
    p[0] = x;
    p[1] = y;
    p[2] = z;
  }
  void Initze(const double* p) { Set(p[0], p[1], p[2]); }

  // x and y to the planar point of the 2D module (z is dropped).
  void CopyTo(C2DPoint& p) const;
  void Copy2D(C2DPoint& p) const;

  // ---- arithmetic --------------------------------------------------------------------------
  SMat operator+(const SMat& b) const { return SMat(x + b.x, y + b.y, z + b.z); }
  SMat operator-(const SMat& b) const { return SMat(x - b.x, y - b.y, z - b.z); }
  SMat operator-() const { return SMat(-x, -y, -z); }
  SMat& operator+=(const SMat& b) {
    x += b.x;
    y += b.y;
    z += b.z;
    return *this;
  }
  SMat& operator-=(const SMat& b) {
    x -= b.x;
    y -= b.y;
    z -= b.z;
    return *this;
  }
  SMat& operator*=(double s) {
    x *= s;
    y *= s;
    z *= s;
    return *this;
  }
  // Division by an exact zero is skipped and the vector kept; callers divide by lengths that
  // may be zero and rely on getting their vector back untouched.
  SMat& operator/=(double d) {
    if (d == 0.0) return *this;
    x /= d;
    y /= d;
    z /= d;
    return *this;
  }
  void SwapDirection() { *this *= -1.0; }

  double Prod(const SMat& b) const { return x * b.x + y * b.y + z * b.z; }
  // (a - this).(b - this): the dot product of the legs of the angle at this point.
  double ProdScalar(const SMat& a, const SMat& b) const { return (a - *this).Prod(b - *this); }
  double SquareNorm() const { return Prod(*this); }
  double Norm() const { return std::sqrt(SquareNorm()); }
  double DistSquare(const SMat& b) const { return (*this - b).SquareNorm(); }
  double Dist(const SMat& b) const { return std::sqrt(DistSquare(b)); }
  double DistMax(const SMat& b) const {
    double m = 0.0;
    for (int k = 0; k < 3; ++k) {
      const double d = std::fabs((*this)[k] - b[k]);
      if (d > m) m = d;
    }
    return m;
  }

  // this = a x b. The components are written in the order x, y, z straight from the arguments,
  // so when this is a or b the later components see the new x (and y): callers that pass
  // themselves accept that order.
  SMat& CrossProd(const SMat& a, const SMat& b) {
    x = a.y * b.z - b.y * a.z;
    y = b.x * a.z - a.x * b.z;
    z = a.x * b.y - b.x * a.y;
    return *this;
  }
  // 1e-21, far below the library's zero: nearly parallel factors still give a direction.
  bool CrossProdNormalized(const SMat& a, const SMat& b) {
    CrossProd(a, b);
    return Normalize(1e-21);
  }
  double MixProd(const SMat& b, const SMat& c) const { return Prod(SMat().CrossProd(b, c)); }
  double Area(const SMat& b) const { return SMat().CrossProd(*this, b).Norm(); }
  void Combine(const SMat& a, const SMat& b, double t) {
    const double s = 1.0 - t;
    x = s * a.x + t * b.x;
    y = s * a.y + t * b.y;
    z = s * a.z + t * b.z;
  }

  // this = M v with M's top-left 3x3 (M may be 3x3 or a 4x4 transform); v may be this. A
  // matrix smaller than 3x3 leaves the vector as it was.
  void Mult(const Mat& M, const SMat& v) {
    if (!Covers(M, 3, 3)) return;
    const SMat u = v;
    for (int k = 0; k < 3; ++k)
      (*this)[k] = M.GetElem(k, 0) * u.x + M.GetElem(k, 1) * u.y + M.GetElem(k, 2) * u.z;
  }
  void MultLeft(const Mat& M) { Mult(M, *this); }
  // this[k] = sum over i of A(k, i) B(i, 1), 0-based: B's second column, not its first.
  // Existing callers pass their vector in that column; do not "fix". Shapes too small for the
  // elements read leave the vector as it was.
  void Mult(const Mat& A, const Mat& B) {
    const int n = B.NRows();
    if (!Covers(A, 3, n) || !Covers(B, n, 2)) return;
    for (int k = 0; k < 3; ++k) {
      double s = 0.0;
      for (int i = 0; i < n; ++i) s += A.GetElem(k, i) * B.GetElem(i, 1);
      (*this)[k] = s;
    }
  }

  bool SetLength(double L) {
    if (!Normalize(1e-10)) return false;
    *this *= L;
    return true;
  }
  bool SetDirection(double dx, double dy, double dz) {
    Set(dx, dy, dz);
    return Normalize(1e-10);
  }
  // z = 1: the homogeneous form of a point of the plane z = 1.
  void SetPolar(double r, double phi) { Set(r * std::cos(phi), r * std::sin(phi), 1.0); }
  // The cylinder's axis is x: (h, r cos phi, r sin phi).
  void SetCylindrical(double r, double phi, double h) { Set(h, r * std::cos(phi), r * std::sin(phi)); }
  // out = (r, phi, h) for the x-axis cylinder. On the axis (r < 1e-10) the angle is undefined and
  // only out[0] is written; false then.
  bool GetCylindrical(double out[3]) const {
    out[0] = std::sqrt(y * y + z * z);
    if (out[0] < 1e-10) return false;
    out[1] = std::atan2(z, y);
    out[2] = x;
    return true;
  }
  // (cos b, 0, sin b) turned by a about z: longitude a, latitude b.
  void SetEulerAngles(double a, double b) {
    const double cb = std::cos(b);
    Set(std::cos(a) * cb, std::sin(a) * cb, std::sin(b));
  }

  // Projects onto the plane through the origin with normal n. n is normalised with 1e-10; a
  // shorter n is used as it is.
  void ProjectToPlane(SMat n) {
    n.Normalize(1e-10);
    RemoveAlongUnit(n);
  }
  // The plane spanned by a and b. Their cross product is normalised with tolerance 0, so only
  // exactly parallel a and b leave the vector unchanged.
  void ProjectToPlane(const SMat& a, const SMat& b) {
    SMat n;
    n.CrossProd(a, b);
    n.Normalize(0.0);
    RemoveAlongUnit(n);
  }

  // Largest absolute component; the first of equal maxima wins (|(-3, 3, 1)| gives index 0).
  double GetMaxAbsCoord(unsigned char* idx = nullptr) const { return PickAbs(-1e307, true, idx); }
  double GetMinAbsCoord(unsigned char* idx = nullptr) const { return PickAbs(1e307, false, idx); }
  // 0-based index of the one component above 1e-10, or -1 when none or several are.
  int GetAxis() const {
    int axis = -1;
    for (int k = 0; k < 3; ++k) {
      if (std::fabs((*this)[k]) <= 1e-10) continue;
      if (axis >= 0) return -1;
      axis = k;
    }
    return axis;
  }

  // ---- rotation (radians) ------------------------------------------------------------------
  // About coordinate axis 1 = x, 2 = y, 3 = z. For y the matrix is [[c, 0, -s], [0, 1, 0],
  // [s, 0, c]]: z turns towards -x, the opposite sense to x and z. Callers rely on that sense,
  // so it stays. Any other axis number gives the zero matrix (its diagonal
  // element lies outside a 3x3 matrix), so the vector becomes zero; callers pass 1 to 3.
  void Rotate(double angle, int axis) {
    if (axis < 1 || axis > 3) {
      SetAll(0.0);
      return;
    }
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    double& p = axis == 1 ? y : x;  // the two turned components, in increasing index order
    double& q = axis == 3 ? y : z;
    const double p0 = p;
    p = c * p0 - s * q;
    q = s * p0 + c * q;
  }
  void Rotate2(double angle, int axis) { Rotate(angle, axis + 1); }
  // About a line through the origin with direction axis (any length), right-handed. A zero vector,
  // a vector along the axis and a zero axis are left as they are.
  void Rotate(const SMat& axis, double angle) {
    if (*this == 0.0) return;
    SMat a = axis;
    if (!a.Normalize(1e-10)) return;
    SMat u = *this;
    if (!u.MakeOrtho(a)) return;
    u.Normalize(1e-10);
    const SMat w = SMat().CrossProd(a, u);
    // Into the frame (a, u, w), a turn about its first axis, and back.
    SMat f(Prod(a), Prod(u), Prod(w));
    f.Rotate(angle, 1);
    for (int k = 0; k < 3; ++k) (*this)[k] = a[k] * f.x + u[k] * f.y + w[k] * f.z;
  }
  void RotateEx(const SMat& axis, double angle) {
    SMat v = *this;
    v.Rotate(SMat(axis), angle);
    *this = v;
  }

  // ---- predicates --------------------------------------------------------------------------
  // 1e306 bounds a valid coordinate; NaN is not valid.
  bool IsValid() const { return IsZero(1e306); }
  bool IsZero(double eps) const { return std::fabs(x) <= eps && std::fabs(y) <= eps && std::fabs(z) <= eps; }
  bool IsSame(const SMat& b, double eps, bool orOpposite = false) const {
    if (orOpposite && IsSame(-b, eps, false)) return true;
    return (*this - b).IsZero(eps);
  }
  bool EqualsTo(const SMat& b) const { return IsSame(b, 1e-10); }
  bool operator==(const SMat& b) const { return EqualsTo(b); }
  bool operator!=(const SMat& b) const { return !EqualsTo(b); }
  bool Is(double dx, double dy, double dz) const { return EqualsTo(SMat(dx, dy, dz)); }
  // Length comparison. Below 1e-7 the question is "is it the zero vector" (norm < 1e-10), so
  // v == 5e-8 holds for the zero vector; from 1e-7 on the norm must be within 1e-10 of len.
  bool operator==(double len) const {
    if (std::fabs(len) < 1e-7) {
      const double sq = SquareNorm();
      return sq <= 1e-10 && std::sqrt(sq) < 1e-10;
    }
    return std::fabs(Norm() - len) <= 1e-10;
  }
  bool operator!=(double len) const { return !(*this == len); }
  bool IsUnitary(double eps) const { return std::fabs(Norm() - 1.0) <= eps; }
  // The raw dot product: eps scales with the lengths of both vectors.
  bool IsOrtho(const SMat& b, double eps) const { return std::fabs(Prod(b)) <= eps; }
  bool IsComplanar(SMat b, SMat c) const { return std::fabs(MixProd(b, c)) <= 1e-10; }
  // Parallel in either sense. A cross product of at least 1e-4 is trusted and compared with eps
  // (absolute, so long vectors need a larger eps). Below that, where it is mostly rounding, the
  // shorter vector is compared component by component with the longer one scaled to it, and a
  // vector within eps of zero is collinear with everything. *dev receives the cross product's
  // norm, or the largest component deviation (from -1) in the second case; it is not written
  // when a vector is zero. A negative eps is never collinear.
  bool IsCollinear(const SMat& b, double eps, double* dev = nullptr) const {
    if (eps < 0.0) return false;
    const double n = Area(b);
    if (n >= 1e-4) {
      if (dev != nullptr) *dev = n;
      return n <= eps;
    }
    unsigned char ia = 0;
    unsigned char ib = 0;
    const double ma = GetMaxAbsCoord(&ia);
    const double mb = b.GetMaxAbsCoord(&ib);
    if (eps >= ma || eps >= mb) return true;
    const bool bigIsThis = ma > mb;
    const SMat& big = bigIsThis ? *this : b;
    const SMat& other = bigIsThis ? b : *this;
    const int i = bigIsThis ? ia : ib;
    const double ratio = other[i] / big[i];
    if (dev != nullptr) *dev = -1.0;
    for (int k = 0; k < 3; ++k) {
      const double d = std::fabs(ratio * big[k] - other[k]);
      if (dev != nullptr && d > *dev) *dev = d;
      if (d > eps) return false;
    }
    return true;
  }
  bool IsSameDirection(const SMat& b, double eps) const {
    return !IsZero(eps) && !b.IsZero(eps) && IsCollinear(b, eps) && Prod(b) > 0.0;
  }
  bool IsOpposite(const SMat& b, double eps) const {
    return !IsZero(eps) && !b.IsZero(eps) && IsCollinear(b, eps) && Prod(b) < 0.0;
  }

  // False, vector unchanged, when the norm is not above eps; eps = 0 fails only the zero vector.
  bool Normalize(double eps) {
    const double n = Norm();
    if (eps >= n) return false;
    *this /= n;
    return true;
  }
  // The norm before normalisation; below 1e-10 the vector is left as it was.
  double NormalizeReturnNorm() {
    const double n = Norm();
    if (n < 1e-10) return n;
    *this /= n;
    return n;
  }

  // Angle to b in [0, pi]. Near 0 and pi (|cos| above 1 - 1e-3) acos loses precision, so the
  // angle comes from the sine instead. There pi - asin is taken only when cos < -eps, so a caller
  // with a large eps gets the acute angle for nearly opposite vectors. A vector shorter than eps
  // throws CMatrExeption by pointer; the catcher Delete()s it.
  double Angle(const SMat& b, double eps) const {
    const double p = Prod(b);
    const double na = Norm();
    const double nb = b.Norm();
    if (eps > na || eps > nb) throw new CMatrExeption("SMat::Angle(): One of vectors has zero length");
    const double c = p / nb / na;
    if (-1.0 + 1e-3 <= c && c <= 1.0 - 1e-3) return std::acos(c);
    SMat u = *this;
    SMat v = b;
    u.Normalize(1e-10);
    v.Normalize(1e-10);
    const double a = std::asin(u.Area(v));
    // pi to 15 digits, not M_PI: angles near pi keep the values they always had.
    return -eps > c ? 3.14159265358979 - a : a;
  }
  // The angle at this point of the triangle (this, a, b).
  double Angle(const SMat& a, const SMat& b) const { return (a - *this).Angle(b - *this, 1e-10); }

  // Sign of det[this; b; c]: 1 positive, 0 negative, -1 undefined (|det| < 1e-30).
  int GetOrient(const SMat& b, const SMat& c) const {
    const double d = x * b.y * c.z + y * b.z * c.x + b.x * z * c.y - z * b.y * c.x - y * b.x * c.z -
                     x * b.z * c.y;
    if (std::fabs(d) < 1e-30) return -1;
    return d > 0.0 ? 1 : 0;
  }
  // The same as a sign: 1.0, -1.0, and 0.0 when undefined.
  double GetOrientation(const SMat& b, const SMat& c) const {
    const int o = GetOrient(b, c);
    return o < 0 ? 0.0 : o == 1 ? 1.0 : -1.0;
  }

  // out: a unit vector orthogonal to this (zero for the zero vector).
  void GetAnyOrthoVect(SMat& out) const;
  // Removes the component along b. False, vector unchanged, when b or the result is not longer
  // than 1e-10 (b has no direction, or this lies along it).
  bool MakeOrtho(const SMat& b) {
    const double bb = b.SquareNorm();
    if (!(std::sqrt(bb) > 1e-10)) return false;
    const SMat r = *this - (Prod(b) / bb) * b;
    if (!(r.Norm() > 1e-10)) return false;
    *this = r;
    return true;
  }

  // ---- XML and diagnostics -------------------------------------------------------------------
  // The three components as the data item name ("V" when null) of px's current element, stored
  // or loaded as px's mode says; loading keeps the vector on a missing or malformed item. True
  // when the transfer happened.
  bool PersistXML(PCExBase& px, const char* name);
  // count vectors as one data item of 3 * count numbers (an SMat array is an array of doubles),
  // in px's direction: it stores when px is storing. Loading needs exactly 3 * count numbers and
  // leaves out untouched otherwise.
  static bool Read3DArrayXML(PCExBase& px, const char* name, SMat* out, int count);

  // One line to the framework's diagnostic stream (afxDump):
  //   "<label> <address> (x, y, z)[ len <norm>]"
  // label "SMat" when null; address: the low 32 bits of this, "%08x". bFull prints 17
  // significant digits (the bits read back) instead of "%.6f"; bNorm appends the length;
  // bNewLine ends the line.
  void Dump(bool bFull, bool bNewLine, const char* label, bool bNorm) const;
  // Dump(true, true, nullptr, false): full precision, so the values can be pasted into a test.
  void Dp() const;

  double x;
  double y;
  double z;

 private:
  // this -= (this.n) n, for n unit or left as the caller's normalisation gave it.
  void RemoveAlongUnit(const SMat& n);
  double PickAbs(double start, bool largest, unsigned char* idx) const {
    double best = start;
    unsigned char at = 0;
    for (unsigned char k = 0; k < 3; ++k) {
      const double a = std::fabs((*this)[k]);
      if (largest ? a > best : a < best) {
        best = a;
        at = k;
      }
    }
    if (idx != nullptr) *idx = at;
    return best;
  }
  // Whether m's block holds its top-left rows x cols elements (trivially so when none are read).
  static bool Covers(const Mat& m, int rows, int cols) {
    if (rows <= 0 || cols <= 0) return true;
    return m.m_pData != nullptr && m.m_nRows >= rows && m.m_nCols >= cols &&
           m.m_nSize >= (rows - 1) * m.m_nCols + cols;
  }
};

inline SMat operator*(double s, const SMat& v) { return SMat(s * v.x, s * v.y, s * v.z); }

inline void SMat::RemoveAlongUnit(const SMat& n) { *this -= Prod(n) * n; }

static_assert(sizeof(SMat) == 3 * sizeof(double), "an SMat overlays three doubles");
static_assert(std::is_standard_layout_v<SMat> && std::is_trivially_copyable_v<SMat>);
static_assert(offsetof(SMat, x) == 0 && offsetof(SMat, y) == 8 && offsetof(SMat, z) == 16);
