// The frame interfaces: how the other modules of the suite reach a CMFrame (FrameOI.h).
//
// The tables are binary layouts shared with modules built separately: never reorder, insert or
// remove an operation. Each operation forwards to the one CMFrame operation named with it, on the
// wrapped frame, in the frame's own units and index bases: points and vectors are three doubles
// (x, y, z), a matrix is 16 doubles of a 4×4 matrix, row-major, axes are numbered 0 (X), 1 (Y),
// 2 (Z).
//
// Status codes, common to every operation after the three of IUnknown:
//   S_OK                       done
//   S_FALSE                    the frame operation answered false (degenerate input); the frame
//                              is left as that operation leaves it
//   DISP_E_PARAMNOTOPTIONAL    a pointer argument is null (checked first; nothing is done)
//   E_INVALIDARG               an axis number outside 0..2 where the frame does not check it
//   E_UNEXPECTED               the object wraps no frame
#pragma once
#include <znmt64/Config.h>
#include <znmt64/platform/Com.h>

struct ISection;

// {85E08141-728D-4C19-B648-AFCD5EE1EFF1}
inline constexpr IID IID_I3DObject = {
    0x85E08141, 0x728D, 0x4C19, {0xB6, 0x48, 0xAF, 0xCD, 0x5E, 0xE1, 0xEF, 0xF1}};
// {862940CE-1F49-4F79-A82B-B532A80F864B}
inline constexpr IID IID_IFrame = {
    0x862940CE, 0x1F49, 0x4F79, {0xA8, 0x2B, 0xB5, 0x32, 0xA8, 0x0F, 0x86, 0x4B}};
// {4EBFBEF0-E222-4B74-BE72-26A148BD8190}
inline constexpr IID IID_IFrame2 = {
    0x4EBFBEF0, 0xE222, 0x4B74, {0xBE, 0x72, 0x26, 0xA1, 0x48, 0xBD, 0x81, 0x90}};
// {4D1F2EA2-897D-4C9C-8375-DD9046D300E4}
inline constexpr IID IID_IFrameEx = {
    0x4D1F2EA2, 0x897D, 0x4C9C, {0x83, 0x75, 0xDD, 0x90, 0x46, 0xD3, 0x00, 0xE4}};
// {D0C32852-3B88-4E15-AF33-5429023CBF8C}
inline constexpr IID IID_IFrame3 = {
    0xD0C32852, 0x3B88, 0x4E15, {0xAF, 0x33, 0x54, 0x29, 0x02, 0x3C, 0xBF, 0x8C}};
// {AA5EBDCD-D212-419C-9E25-50658AD33464}: an interface of the geometry module about a frame.
// FrameOI does not answer it itself but asks that module (command 26 through dynaModuleMatr).
inline constexpr IID IID_GeomFrameDelegate = {
    0xAA5EBDCD, 0xD212, 0x419C, {0x9E, 0x25, 0x50, 0x65, 0x8A, 0xD3, 0x34, 0x64}};

// Anything placed in space.
struct I3DObject : IUnknown {
  // CMFrame::IsValid.
  virtual HRESULT IsValid(BOOL* pValid) = 0;
  // CMFrame::TranslateGlob: a move by a global vector.
  virtual HRESULT TranslateGlob(double dx, double dy, double dz) = 0;
  // CMFrame::Rotate(const SMat&, double): the axes turn by angle (radians) about the global
  // direction dir through the origin; the origin stays.
  virtual HRESULT Rotate(const double* dir, double angle) = 0;
  // CMFrame::SetTransform: the 4×4 map m applied on the left, in global coordinates.
  virtual HRESULT SetTransform(const double* m) = 0;
  // CMFrame::CreateDump: a drawing of the three axes, len long; the caller owns the reference.
  // E_FAIL, *ppSection null, when the 2D module cannot make one.
  virtual HRESULT CreateDump(double len, ISection** ppSection) = 0;
};

// The frame as a placement: its matrix and the conversion of points.
struct IFrame : I3DObject {
  // CMFrame::ToMatrix(double*): axes as columns 1-3, origin as column 4, last row 0 0 0 1. An
  // invalid frame is repaired instead (MakeValid(0)) and m is left as it was.
  virtual HRESULT GetMatrix(double* m) = 0;
  // CMFrame::FromMatrix: axes from columns 1-3, origin from column 4, then repaired.
  virtual HRESULT SetMatrix(const double* m) = 0;
  // CMFrame::ToGlobal(SMat&) and CMFrame::ToLocal(SMat&): the point, in place.
  virtual HRESULT ToGlobal(double* xyz) = 0;
  virtual HRESULT ToLocal(double* xyz) = 0;
};

// Vectors and the saved-state stack.
struct IFrameEx : IUnknown {
  // CMFrame::ToGlobalVector and CMFrame::ToLocalVector: the vector, in place.
  virtual HRESULT ToGlobalVector(double* xyz) = 0;
  virtual HRESULT ToLocalVector(double* xyz) = 0;
  // CMFrame::Push: saves the frame's state.
  virtual HRESULT Push() = 0;
  // CMFrame::Pop: restores the state saved last; with nothing saved the frame stays as it is.
  virtual HRESULT Pop() = 0;
};

// Building the axes.
struct IFrame2 : IUnknown {
  // CMFrame::SetAxis(unsigned char, ...): axis k := (x, y, z) normalised. S_FALSE for a zero
  // vector or k outside 0..2.
  virtual HRESULT SetAxis(int k, double x, double y, double z) = 0;
  // CMFrame::SetAxes(int, SMat&, int, SMat&, bool) on copies of a and b: axis i along a, axis j
  // along b made orthogonal to it, the third completing a right-handed frame (left-handed when
  // right is FALSE). S_FALSE for bad indices or degenerate vectors.
  virtual HRESULT SetAxes(int i, const double* a, int j, const double* b, BOOL right) = 0;
  // CMFrame::LookAt: Z towards target (away from it unless toward), Y from up. S_FALSE, frame
  // unchanged, when the target is the origin or up lies along the view.
  virtual HRESULT LookAt(const double* target, const double* up, BOOL toward) = 0;
  // CMFrame::MakeValid: repairs the frame keeping axis k's direction. S_FALSE when it cannot.
  virtual HRESULT MakeValid(int k) = 0;
  // CMFrame::Align: turns the frame about Z so that X points along the part of v across Z.
  // S_FALSE, frame unchanged, when v is exactly along Z.
  virtual HRESULT Align(const double* v) = 0;
};

// The frame's full set of operations for the modules that handle frames themselves.
struct IFrame3 : IUnknown {
  // 1-3: origin and axes as plain doubles. GetAxis: CMFrame::GetAxis(int, double&, double&,
  // double&).
  virtual HRESULT GetOrigin(double* x, double* y, double* z) = 0;
  virtual HRESULT SetOrigin(double x, double y, double z) = 0;
  virtual HRESULT GetAxis(int k, double* x, double* y, double* z) = 0;
  // 4: as IFrame2::SetAxis.
  virtual HRESULT SetAxis(int k, double x, double y, double z) = 0;
  // 5: as I3DObject::IsValid.
  virtual HRESULT IsValid(BOOL* pValid) = 0;
  // 6: CMFrame::GetOrientation: TRUE when right-handed.
  virtual HRESULT GetOrientation(BOOL* pRight) = 0;
  // 7: CMFrame::Reset: the identity frame.
  virtual HRESULT Reset() = 0;
  // 8-11: as IFrame::ToGlobal, IFrame::ToLocal, IFrameEx::ToGlobalVector, IFrameEx::ToLocalVector.
  virtual HRESULT ToGlobal(double* xyz) = 0;
  virtual HRESULT ToLocal(double* xyz) = 0;
  virtual HRESULT ToGlobalVector(double* xyz) = 0;
  virtual HRESULT ToLocalVector(double* xyz) = 0;
  // 12: CMFrame::Translate(double, double, double): a move by a local vector.
  virtual HRESULT Translate(double x, double y, double z) = 0;
  // 13: CMFrame::Rotate(double, int): the other two axes turn by angle about axis k; nothing for
  // |angle| < 1e-10 or k outside 0..2.
  virtual HRESULT Rotate(double angle, int k) = 0;
  // 14, 15: as IFrame::GetMatrix and IFrame::SetMatrix.
  virtual HRESULT GetMatrix(double* m) = 0;
  virtual HRESULT SetMatrix(const double* m) = 0;
  // 16: as IFrame2::MakeValid.
  virtual HRESULT MakeValid(int k) = 0;
  // 17, 18: as IFrameEx::Push and IFrameEx::Pop.
  virtual HRESULT Push() = 0;
  virtual HRESULT Pop() = 0;
  // 19: CMFrame::ToLocal(CMFrame&): the frame behind pFrame (any frame interface of this
  // library) is re-expressed in this frame's local coordinates. E_NOINTERFACE when pFrame is not
  // a frame of this library.
  virtual HRESULT FrameToLocal(IUnknown* pFrame) = 0;
  // 20: CMFrame::Dist: the largest of the distances origin to origin and axis k to axis k
  // between this frame and the frame behind pFrame.
  virtual HRESULT Dist(IUnknown* pFrame, double* pDist) = 0;
  // 21: CMFrame::Invert: the inverse transformation.
  virtual HRESULT Invert() = 0;
};
