#include <znmt64/AffinTransf.h>
#include <znmt64/CMFrame.h>
#include <znmt64/FrameInterfaces.h>
#include <znmt64/Mat.h>
#include <znmt64/MatSq.h>

#include <znag64/Point2D.h>
#include <znbl64/PCExBase.h>

#include "algebra/DebugSection.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace {

// The axes from the columns of m (rows 1-3); false, axes untouched, when m is smaller than 3x3.
bool TakeAxes(const Mat& m, SMat* axes) {
  if (m.GetStore() == nullptr || m.NRows() < 3 || m.NCols() < 3 || m.m_nSize < 3 * m.NCols()) return false;
  for (int k = 0; k < 3; ++k) axes[k].Set(m.GetElem(0, k), m.GetElem(1, k), m.GetElem(2, k));
  return true;
}

// out = a x b for row-major 4x4 blocks. Mat's product would allocate a third matrix; this one sums
// in the same order (k ascending from 0.0), so the result has the same bits.
void Mult4(const double* a, const double* b, double* out) {
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j < 4; ++j) {
      double s = 0.0;
      for (int k = 0; k < 4; ++k) s += a[i * 4 + k] * b[k * 4 + j];
      out[i * 4 + j] = s;
    }
}

// out := a x b through the two 4x4 matrices, out may be a or b. Repairing an invalid operand is
// ToMatrix's side effect, which the composition has always had, const or not.
void Compose(const CMFrame& a, const CMFrame& b, CMFrame& out) {
  // The matrices live on the stack, zeroed as a freshly allocated 4x4 is: an invalid operand
  // leaves its matrix so.
  double blockA[16] = {};
  double blockB[16] = {};
  Mat A(4, 4, false);
  Mat B(4, 4, false);
  A.AttachStorage(blockA);
  B.AttachStorage(blockB);
  const_cast<CMFrame&>(a).ToMatrix(A);
  const_cast<CMFrame&>(b).ToMatrix(B);
  double p[16];
  Mult4(blockA, blockB, p);
  A.Initze(p);
  out.FromMatrix(A);
}

bool IsAxisIndex(int k) { return k >= 0 && k < 3; }

}  // namespace

CMFrame::CMFrame(SMat& dir) : CMFrame() { SetAxisRand(2, dir, -1); }

bool CMFrame::Copy(IFrame* p) {
  double m[16] = {};  // an invalid frame behind p leaves it unfilled, with a 0 where the 1 goes
  if (p == nullptr || FAILED(p->GetMatrix(m)) || m[15] != 1.0) return false;
  Mat M(4, 4, false);
  M.AttachStorage(m);
  FromMatrix(M);
  return true;
}

bool CMFrame::CopyTo(IFrame* p) {
  if (p == nullptr) return false;
  double m[16] = {};
  ToMatrix(m);
  if (m[15] != 1.0) ToMatrix(m);  // the first call only repaired the frame
  return m[15] == 1.0 && SUCCEEDED(p->SetMatrix(m));
}

// ---- state and comparison ------------------------------------------------------------------------

bool CMFrame::IsValid() const {
  if (std::fabs(origin.x) > 1e100) return false;
  for (const SMat& a : axes)
    if (!a.IsUnitary(1e-6)) return false;
  return std::fabs(axes[0].Prod(axes[1])) <= 1e-6 && std::fabs(axes[0].Prod(axes[2])) <= 1e-6 &&
         std::fabs(axes[1].Prod(axes[2])) <= 1e-6;
}

bool CMFrame::GetOrientation() const { return axes[0].MixProd(axes[1], axes[2]) > 1e-10; }

bool CMFrame::IsUnitary(double tol) const {
  if (origin.SquareNorm() > tol) return false;
  for (int k = 0; k < 3; ++k)
    if (std::fabs(axes[k][k] - 1.0) > tol) return false;
  return true;
}

bool CMFrame::operator==(const CMFrame& f) const {
  if (!(origin == f.origin)) return false;
  for (int k = 0; k < 3; ++k)
    if (axes[k] != f.axes[k]) return false;
  return true;
}

bool CMFrame::IsSame(const CMFrame& f, double eps) const {
  if (!origin.IsSame(f.origin, eps)) return false;
  for (int k = 0; k < 3; ++k)
    if (!axes[k].IsSame(f.axes[k], eps)) return false;
  return true;
}

double CMFrame::Dist(const CMFrame& f) const {
  double d = std::max(-1.0, origin.Dist(f.origin));
  for (int k = 0; k < 3; ++k) d = std::max(d, axes[k].Dist(f.axes[k]));
  return d;
}

// ---- local and global coordinates ----------------------------------------------------------------

void CMFrame::ToGlobal(CMFrame& f, bool keepHandedness) const {
  if (&f == this) return CMFrame(*this).ToGlobal(f, keepHandedness);  // f is rewritten as it is read
  const bool right = keepHandedness ? f.GetOrientation() : true;
  ToGlobal(f.origin);
  ToGlobalVector(f.axes[0]);
  f.axes[0].Normalize(1e-10);
  ToGlobalVector(f.axes[1]);
  if (std::fabs(f.axes[0].Prod(f.axes[1])) > 1e-10) f.axes[1].MakeOrtho(f.axes[0]);
  f.axes[1].Normalize(1e-10);
  f.Init(2, right);
}

void CMFrame::ToLocal(CMFrame& f, bool keepHandedness) const {
  if (&f == this) return CMFrame(*this).ToLocal(f, keepHandedness);
  const bool right = keepHandedness ? f.GetOrientation() : true;
  ToLocal(f.origin);
  ToLocalVector(f.axes[0]);
  ToLocalVector(f.axes[1]);
  if (std::fabs(f.axes[0].Prod(f.axes[1])) > 1e-10) f.axes[1].MakeOrtho(f.axes[0]);
  f.Init(2, right);
}

void CMFrame::Project(const SMat& p, C2DPoint& out, double* height) const {
  SMat q = p;
  ToLocal(q);
  out.x = q.x;
  out.y = q.y;
  if (height != nullptr) *height = q.z;
}

void CMFrame::To3DEx(const C2DPoint& p, double h, SMat& out) const {
  out.Set(p.x, p.y, h);
  ToGlobal(out);
}

void CMFrame::ToGlobal(AffinTransf& t) const {
  MatSq& L = t.m_mL;
  // A linear part without three rows (an empty one) has no vectors to turn.
  if (L.GetBuffer() != nullptr && L.NRows() >= 3 && L.m_nSize >= L.NRows() * L.NCols()) {
    for (int c = 0; c < L.NCols(); ++c) {
      SMat v(L.GetElem(0, c), L.GetElem(1, c), L.GetElem(2, c));
      ToGlobalVector(v);
      for (int r = 0; r < 3; ++r) L.Set(r, c, v[r]);
    }
  }
  ToGlobal(t.m_vT);
}

void CMFrame::GetTramsform(AffinTransf& t) const {
  GetMatrix(t.m_mL);
  t.m_vT = origin;
}

// ---- composition ---------------------------------------------------------------------------------

CMFrame CMFrame::operator*(const CMFrame& b) const {
  CMFrame r(static_cast<unsigned char>(0));
  Compose(*this, b, r);
  return r;
}

void CMFrame::operator*=(const CMFrame& b) { Compose(*this, b, *this); }

void CMFrame::MultLeft(const CMFrame& b) { Compose(b, *this, *this); }

CMFrame CMFrame::operator/(const CMFrame& b) const {
  CMFrame r(*this);
  b.ToLocal(r);
  return r;
}

bool CMFrame::Combine(const CMFrame& a, const CMFrame& b, double t) {
  origin.Combine(a.origin, b.origin, t);
  for (int k = 0; k < 3; ++k) axes[k].Combine(a.axes[k], b.axes[k], t);
  return MakeValid(0);
}

// ---- matrices ------------------------------------------------------------------------------------

void CMFrame::GetMatrix(Mat& m) const {
  m.SetDimensions(3, 3);
  for (int k = 0; k < 3; ++k) m.SetColumn(k + 1, axes[k]);
}

void CMFrame::ToMatrix(Mat& m) {
  if (!IsValid()) {
    MakeValid(0);
    return;
  }
  if (m.NCols() == 3) {
    GetMatrix(m);
    return;
  }
  if (m.GetBuffer() == nullptr) return;
  // The 3x3 block on the stack: embedding needs a Mat, not an allocation.
  double block[9];
  Mat R(3, 3, false);
  R.AttachStorage(block);
  for (int k = 0; k < 3; ++k) R.SetColumn(k + 1, axes[k]);
  m.Embed(R);
  if (m.NCols() < 4) return;
  for (int i = 0; i < 3 && i < m.NRows(); ++i) m.Set(i, 3, origin[i]);
  if (m.NRows() >= 4) m.Set(3, 3, 1.0);
}

void CMFrame::ToMatrix(double* m) {
  Mat M(4, 4, false);
  M.AttachStorage(m);
  ToMatrix(M);
}

void CMFrame::FromMatrix(const Mat& m) {
  if (!TakeAxes(m, axes)) return;
  if (m.NCols() > 3) origin.Set(m.GetElem(0, 3), m.GetElem(1, 3), m.GetElem(2, 3));
  MakeValid(0);
}

void CMFrame::GetTransform(Mat& rot, SMat& pos) const {
  if (rot.NRows() < 3 || rot.NCols() < 3) rot.SetDimensions(3, 3);
  for (int k = 0; k < 3; ++k) rot.SetColumn(k + 1, axes[k]);
  pos = origin;
}

void CMFrame::SetTransform(const MatSq& t) {
  MatSq A(4);
  ToMatrix(A);
  FromMatrix(t * A);
}

void CMFrame::SetAxes(Mat& m) { TakeAxes(m, axes); }

void CMFrame::Invert() {
  // R = [X Y Z]^T: its rows are the axes, so R·origin is the origin's local form and column k of R
  // is (X[k], Y[k], Z[k]).
  SMat o = origin;
  ToLocalVector(o);
  const SMat a[3] = {axes[0], axes[1], axes[2]};
  for (int k = 0; k < 3; ++k) axes[k].Set(a[0][k], a[1][k], a[2][k]);
  origin = -o;
}

// ---- building the axes ---------------------------------------------------------------------------

bool CMFrame::SetAxis(unsigned char k, double x, double y, double z) {
  if (k >= 3) return false;
  // A vector too short to normalise is kept as given: callers test the result.
  axes[k].Set(x, y, z);
  return axes[k].Normalize(1e-10);
}

bool CMFrame::Init(int k, bool right) {
  if (!IsAxisIndex(k)) return false;
  axes[k].CrossProd(axes[(k + 1) % 3], axes[(k + 2) % 3]);
  if (!right) axes[k].SwapDirection();
  return !axes[k].IsZero(1e-10);
}

void CMFrame::Init(int i, int j, bool right) {
  if (!IsAxisIndex(i) || !IsAxisIndex(j) || i == j) return;
  const int m = 3 - i - j;
  axes[m].CrossProd(axes[i], axes[j]);
  // (i, j, m) is an even permutation exactly when j follows i cyclically.
  if (j != (i + 1) % 3) right = !right;
  if (!right) axes[m].SwapDirection();
}

bool CMFrame::SetAxes(int i, SMat& a, int j, SMat& b, bool right) {
  if (!IsAxisIndex(i) || !IsAxisIndex(j) || i == j) return false;
  if (!a.Normalize(1e-10) || !b.MakeOrtho(a) || !b.Normalize(1e-10)) return false;
  axes[i] = a;
  axes[j] = b;
  Init(i, j, right);
  return true;
}

bool CMFrame::SetAxes(int i, SMat* v, bool right) {
  if (v == nullptr || !IsAxisIndex(i)) return false;
  return SetAxes(i, v[0], (i + 1) % 3, v[1], right);
}

void CMFrame::InitInOrder(unsigned char i, unsigned char j, unsigned char k) {
  if (i == j || i == k || i >= 3 || j >= 3 || k >= 3) return;
  axes[i].Normalize(1e-10);
  axes[j].MakeOrtho(axes[i]);
  axes[j].Normalize(1e-10);
  Init(i, j, true);
}

bool CMFrame::LookAt(const SMat& target, const SMat& up, bool toward) {
  SMat d = target - origin;
  if (!d.Normalize(1e-10)) return false;
  if (!toward) d.SwapDirection();
  SMat u = up;
  return SetAxes(2, d, 1, u, true);
}

bool CMFrame::MakeValid(int i) {
  if (!IsAxisIndex(i)) return false;
  Normalize();
  const int j = i == 0 ? 1 : 0;
  const int k = i == 2 ? 1 : 2;
  // 1e-7, looser than the 1e-10 of the conversions: a frame that is orthogonal to single
  // precision is not touched.
  if (std::fabs(axes[i].Prod(axes[j])) > 1e-7) {
    if (!axes[j].MakeOrtho(axes[i])) return false;
    axes[j].Normalize(1e-10);
  }
  axes[k].CrossProd(axes[(k + 1) % 3], axes[(k + 2) % 3]);
  return true;
}

void CMFrame::SetAxisRand(int k, const SMat& dir, int j) {
  if (!IsAxisIndex(k)) return;
  const SMat d = dir;  // dir may be one of the axes rewritten below
  axes[k] = d;
  axes[k].Normalize(1e-10);
  if (j == k || j > 2) j = -1;
  int m;
  if (j >= 0) {
    if (!axes[j].MakeOrtho(d)) d.GetAnyOrthoVect(axes[j]);
    axes[j].Normalize(1e-10);
    m = 3 - k - j;
  } else {
    j = (k + 1) % 3;
    m = (k + 2) % 3;
    axes[k].GetAnyOrthoVect(axes[j]);
  }
  if (j == (k + 1) % 3)
    axes[m].CrossProd(axes[k], axes[j]);
  else
    axes[m].CrossProd(axes[j], axes[k]);
}

bool CMFrame::Align(SMat& v) {
  SMat y;
  y.CrossProd(axes[2], v);
  // Tolerance 0: any direction off Z, however slight, decides the turn.
  if (!y.Normalize(0.0)) return false;
  axes[1] = y;
  Init(0, true);
  return true;
}

bool CMFrame::SetOrientation(const SMat& x, const SMat& z, double angle, bool right) {
  SMat zo = z;
  if (!x.IsOrtho(zo, 1e-10)) zo.MakeOrtho(x);
  axes[0] = x;
  axes[2] = zo;
  if (!Init(1, right)) return false;
  if (std::fabs(angle) > 1e-10) Rotate(right ? -angle : angle, 0);
  return true;
}

void CMFrame::SwapAxes(int i, int j) {
  if (i != j && IsAxisIndex(i) && IsAxisIndex(j)) std::swap(axes[i], axes[j]);
}

// ---- moving --------------------------------------------------------------------------------------

void CMFrame::RotateGlobal(int k, double angle) {
  if (!IsAxisIndex(k)) return;
  origin.Rotate2(angle, k);
  Rotate(angle, k);
}

void CMFrame::Rotate(const SMat& dir, double angle) {
  SMat a = dir;
  if (!a.Normalize(1e-10)) return;
  Mat axis(3, 1, false);
  axis.AttachStorage(a.GetBuffer());
  MatSq R(3);
  R.FindRotation(angle, axis);
  MatSq A(3);
  GetMatrix(A);
  FromMatrix(R * A);
}

// ---- standard orientation ------------------------------------------------------------------------

int CMFrame::FindStdAxis(int k, bool& positive) const {
  if (!IsAxisIndex(k)) return -1;
  const SMat& a = axes[k];
  for (int i = 0; i < 3; ++i) {
    if (std::fabs(std::fabs(a[i]) - 1.0) > 1e-7) continue;
    if (std::fabs(a[(i + 1) % 3]) > 1e-7 || std::fabs(a[(i + 2) % 3]) > 1e-7) return -1;
    positive = a[i] > 0.0;
    return i;
  }
  return -1;
}

CMFrame::EStdOrientation CMFrame::GetStdOrientation() const {
  for (int k = 0; k < 3; ++k) {
    const double d = std::fabs(axes[k][k]);
    if (d > 1e-7 && std::fabs(d - 1.0) > 1e-7) return eStdNone;
  }
  bool positive = false;
  switch (FindStdAxis(2, positive)) {
    case 0:
      return positive ? eStdPlusX : eStdMinusX;
    case 1:
      return positive ? eStdPlusY : eStdMinusY;
    case 2:
      return positive ? eStdPlusZ : eStdMinusZ;
    default:
      return eStdNone;
  }
}

// ---- persistence and diagnostics -----------------------------------------------------------------

bool CMFrame::PersistXML(PCExBase& x) {
  if (!x.PersistElement("Fr", true)) return false;
  origin.PersistXML(x, "O");
  axes[0].PersistXML(x, "A0");
  axes[1].PersistXML(x, "A1");
  if (x.IsLoading()) {
    axes[0].Normalize(1e-10);
    axes[1].Normalize(1e-10);
    Init(0, 1, true);
  }
  x.PopElement(false);
  return true;
}

ISection* CMFrame::CreateDump(double len) const {
  // Vertex 0 the origin, 1..3 the tips of X, Y and Z; three strokes from the origin, split by -1.
  const SMat pts[4] = {origin, origin + len * axes[0], origin + len * axes[1], origin + len * axes[2]};
  static constexpr LONG kStrokes[] = {0, 1, -1, 0, 2, -1, 0, 3};
  char caption[64];
  FormatDebugCaption(caption, "CMFrame 0x%08x", this);
  return MakeDebugSection(pts, 4, kStrokes, 8, caption);
}

void CMFrame::Dump(double len) const { ShowDebugSection(CreateDump(len)); }
