// MatSq: the square matrix, chiefly the 3×3 linear map and the 4×4 homogeneous transform.
//
// An affine n×n matrix holds its linear part in the top-left (n−1)×(n−1) block and its
// translation in column n, rows 1 … n−1 (1-based), with (n, n) = 1 and the rest of row n zero.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/Mat.h>

class SMat;
class Polinom;
class Rotation;

class ZNMT64_API MatSq : public Mat {
 public:
  MatSq() = default;
  explicit MatSq(int n) : Mat(n, n) {}
  // 3×3 zeros with the three values placed as SetDiag places them (the third off the diagonal).
  MatSq(double a, double b, double c);
  MatSq(const MatSq&) = default;
  ~MatSq() override;

  using Mat::operator=;
  // Element copy into the existing shape (Mat::operator=): a shaped matrix is not re-shaped.
  void operator=(const MatSq& m) { Mat::operator=(m); }
  // Only the overlapping block is copied (Mat::Copy): an empty MatSq stays empty.
  void operator=(const Mat& m) { Copy(m); }

  void SetSize(int n) { SetDimensions(n, n); }
  void SetUnitary();
  // Flat elements 0, 4 and 7: on a 3×3 matrix c lands at (3, 2), not on the diagonal. Callers
  // rely on that placement.
  void SetDiag(double a, double b, double c);
  // The sum over all the diagonal, where Mat::Tr sums only its first three elements.
  double Trace() const;

  // The products are Mat's (by a MatSq, a Mat or an SMat) and return a Mat; an SMat is taken as
  // a 3×1 matrix.
  using Mat::operator*;

  // The planar rotation by a in the top-left 2×2 block; other elements are left as they are.
  void CreateRotationMatr(double a);
  // Rows a, b, c: the map v -> (a·v, b·v, c·v), coordinates in the frame with those axes.
  void FindTransformToCoordSystem(const SMat& a, const SMat& b, const SMat& c);
  // out, already (n−1)×(n−1), receives this matrix without row r and column c (both from 0).
  void Minor(int r, int c, MatSq& out) const;
  // The cofactor of (r, c), both from 0.
  double A(int r, int c) const;

  void SetLinPart(const Mat& L);
  void GetLinPart(MatSq& L) const;  // L receives the top-left block of its own size
  void SetTranslation(const Mat& t);
  // Places this matrix's first column in t from t's element (n, n) on, n being this matrix's
  // order; it does not extract the translation. Callers rely on that and read the translation
  // with SelectCol(*this, n).
  void GetTranslation(Mat& t) const;
  void SetAffinne(const Mat& L, const Mat& t);

  // det(λI − A) of a 3×3 matrix, coefficient of λ^k at k; other orders leave p unchanged.
  void GetCharPolinom(Polinom& p) const;
  // Axis and angle of the rotation this 3×3 or 4×4 matrix holds; false when it cannot be found.
  // Defined with the rotations.
  bool GetRotation(Rotation& r) const;
};
