// Mat: the dense row-major matrix of doubles, and CMatrExeption, the algebra's exception.
//
// Index bases differ by accessor and are part of the interface:
//   1-based: operator()(k), operator()(r, c), Element, GetElement
//   0-based: operator[](k), GetElem, Set, SetAt, Swap
// No accessor checks its indices.
#pragma once
#include <znmt64/Config.h>
#include <znmt64/platform/CException.h>
#include <znmt64/platform/CObject.h>

#include <cstddef>

class SMat;
class CArchive;

// Thrown by pointer (`throw new CMatrExeption(...)`); the catcher calls Delete().
class ZNMT64_API CMatrExeption : public CException {
  DECLARE_DYNAMIC(CMatrExeption)
 public:
  // Copies msg into the 50-byte buffer with a bounded copy: at most 49 characters are kept.
  explicit CMatrExeption(const char* msg);
  explicit CMatrExeption(unsigned int code);
  ~CMatrExeption() override = default;

  BOOL GetErrorMessage(LPTSTR lpszError, UINT nMaxError, UINT* pnHelpContext = nullptr) const override;

  char m_szMessage[50];
  std::uint32_t m_nCode;
};

class ZNMT64_API Mat : public CObject {
  DECLARE_DYNAMIC(Mat)
 public:
  // ---- construction ------------------------------------------------------------------------
  Mat() = default;
  Mat(int rows, int cols);
  Mat(int rows, int cols, bool alloc);
  Mat(const Mat& src);
  ~Mat() override;

  // ---- the framework's diagnostics: all inert ------------------------------------------------
  void Serialize(CArchive& ar) override;
  void AssertValid() const override;
  void Dump(CDumpContext& dc) const override;

  // ---- storage and shape -------------------------------------------------------------------
  virtual void Replicate(const Mat& src);
  virtual void SetDimensions(int rows, int cols);
  virtual const double* GetStore() const { return m_pData; }

  int NRows() const { return m_nRows; }
  int NCols() const { return m_nCols; }
  int GetStorage() const { return m_nRows * m_nCols; }
  bool IsSquare() const { return m_nRows == m_nCols; }
  bool IsLike(const Mat& m) const { return m_nRows == m.m_nRows && m_nCols == m.m_nCols; }
  bool Is3D() const { return m_nRows == 3 && m_nCols == 1; }
  double* GetBuffer() const { return m_pData; }

  // The matrix aliases p (or other's block) without owning it and never frees it. A block the
  // matrix allocated itself stays alive until the matrix replaces it or is destroyed, so a caller
  // may attach foreign storage for a while and attach the old block back.
  void AttachStorage(double* p) { m_pData = p; }
  void Attach(Mat& other);

  // Assignment into a matrix that already has a shape copies m_nSize elements without
  // re-shaping (see Mat.cpp); Replicate is the true copy.
  void operator=(const Mat& src);
  void operator=(double v) { SetAll(v); }
  void Initze(const double* p);
  void GetDataCopy(double* p) const;
  void SetAll(double v);
  void SetToIdentity();

  // ---- element access ----------------------------------------------------------------------
  double& operator()(int k) { return m_pData[k - 1]; }
  double operator()(int k) const { return m_pData[k - 1]; }
  double& operator[](int k) { return m_pData[k]; }
  double operator[](int k) const { return m_pData[k]; }
  double& operator()(int r, int c) { return m_pData[(r - 1) * m_nCols + (c - 1)]; }
  double operator()(int r, int c) const { return m_pData[(r - 1) * m_nCols + (c - 1)]; }
  double& Element(int r, int c = -1) { return c == -1 ? m_pData[r - 1] : m_pData[(r - 1) * m_nCols + (c - 1)]; }
  double GetElement(int r, int c = -1) const {
    return c == -1 ? m_pData[r - 1] : m_pData[(r - 1) * m_nCols + (c - 1)];
  }
  double GetElem(int r, int c = -1) const { return c == -1 ? m_pData[r] : m_pData[r * m_nCols + c]; }
  void Set(int r, int c, double v) { Element(r + 1, c + 1) = v; }
  void SetAt(int k, double v) { m_pData[k] = v; }
  void Swap(short i, short j);

  // ---- rows, columns, blocks ----------------------------------------------------------------
  void SetRow(int r0, const Mat& src);     // r0 counted from 0
  void SetRow(int r1, const double* p);    // r1 counted from 1
  void GetRow(int r1, Mat& dst) const;
  void SetColumn(int c1, const SMat& v);
  void SetColumn(int c1, const Mat& src);
  void SetColumn(int c1, double* p);
  void GetColumn(int c1, Mat& dst) const;
  void SelectCol(const Mat& src, int c);
  void SelectCol(Mat& src, int a, int b, int c);
  void SelectCol(Mat& src, int a, int b, int c, int d);
  void Cols(Mat& src, int c1, int c2);
  void Cols(int at, Mat& src, int c1, int c2);
  void GetMinor(int r1, int r2, int c1, int c2, Mat& dst) const;
  void Copy(int r0, int c0, int sr1, int sr2, int sc1, int sc2, const Mat& src);
  void Copy(const Mat& src);
  void Embed(const Mat& src);

  // ---- validity and comparison -------------------------------------------------------------
  bool IsValidMemoryObject() const;
  bool IsValid() const;
  bool IsZero(double eps) const;
  bool EqualsTo(const Mat& other) const;
  double GetMax(bool max) const;
  double SquareDist(const Mat& other) const;
  // Error hook of the linear-system and file routines: silent by design, they report through
  // their return values.
  void Error(const char* msg) const;

  // ---- arithmetic --------------------------------------------------------------------------
  // Shapes are generally not compared (callers rely on that), but nothing here reads or writes past
  // the elements the block really holds: m_nSize, or none when there is no block. Elements the block
  // does not hold read as 0 and are not written.
  int HeldSize() const { return m_pData != nullptr && m_nSize > 0 ? m_nSize : 0; }

  // Flat, over m_nSize elements, in place; shapes are not compared.
  void operator+=(double v);
  void operator*=(double v);
  void operator+=(const Mat& b);
  void operator-=(const Mat& b);
  double Prod(const Mat& b) const;  // dot product of the flat sequences
  double SquareNorm() const;
  double Norm() const;  // Frobenius; the Euclidean norm of a vector
  double NormInf() const;
  bool Normalize(double eps);  // false, matrix unchanged, when the norm is at most eps
  bool IsOrtho(const Mat& b, double eps) const;
  bool IsUnitary(double eps) const;
  bool IsUnitary() const { return IsUnitary(1e-10); }

  // Both throw a CMatrExeption by pointer on different shapes, with the same text naming
  // operator+ (callers match it).
  Mat operator+(const Mat& b) const;
  Mat operator-(const Mat& b) const;
  // The inner count is b's row count and is not compared with this matrix's column count.
  Mat operator*(const Mat& b) const;
  Mat operator*(const SMat& v) const;  // v as a 3×1 matrix
  void operator*=(const Mat& b);       // re-shapes this matrix to the product's shape

  // this = a · b; a and b may be this matrix. The shape becomes a.rows × b.cols but the block is
  // not re-allocated: callers size it first.
  void Mult(const Mat& a, const Mat& b);
  // this = a · this and this = this · b, keeping this matrix's shape: meant for square a and b.
  void MultLeft(const Mat& a);
  void MultRight(const Mat& b);

  void Transpose();
  // Sum of (0,0), (1,1), (2,2) only, whatever the size: the rotation part of a 4×4 transform.
  double Tr() const;
  bool IsIdentity(double eps) const;
  bool IsIdentity() const { return IsIdentity(1e-10); }
  // Chosen by the column count alone: 1, 2 and 3 columns use their closed forms on the first flat
  // elements (a 3×2 matrix gets a 2×2 determinant), more go through LUDecompose of a copy.
  double Det() const;
  // False only when a row is exactly zero; a nearly singular matrix gives a huge inverse.
  bool GetInverse(Mat& inv);
  bool Invert();  // false and unchanged when GetInverse fails
  // [R t; 0 1] becomes [Rᵀ −Rᵀt; 0 1] in place; orthogonality is not checked.
  void OrthogonalInverse();
  // The rotation by angle about axis (flat elements 1 … 3, not normalised), embedded top-left.
  void FindRotation(double angle, const Mat& axis);
  void GetAnyNonCollinear(Mat& out) const;
  int FindNonZeroRow() const;  // 0-based, -1 when every row is zero
  bool IsInteger();
  double Dist(const Mat& b) const;

  // Norm equal to len within 1e-10; a zero len tests the squared norm against 1e-10.
  bool operator==(double len);
  // For a non-zero len the norm is compared with len exactly, so a norm within 1e-10 of len but
  // not equal to it satisfies both == and !=. Callers rely on it.
  bool operator!=(double len);
  bool operator==(const Mat& b) const;  // EqualsTo
  bool operator!=(const Mat& b) const;  // !(b == *this)

  // ---- linear systems (1-based numerical routines over this matrix's block, NRCUtil.h) --------
  // In place: L below the diagonal (unit diagonal implied), U on and above it, of the row-permuted
  // matrix; indx[1 … n] the row exchanged at each step, d +1 or -1 by the parity of exchanges.
  // False only for an exactly zero row (nothing is changed then); a zero pivot becomes 1e-20.
  bool LUDecompose(int* indx, double& d);
  // rhs receives x of this · x = rhs. A 2-row matrix is solved by Cramer's rule and left as it is;
  // otherwise this matrix is left holding its LU factors.
  void Solve(Mat& rhs);
  // One solution of the equation row 1 · x = rhs; false, with x = e1, when row 1 is zero.
  bool GetAnySolution(double rhs, Mat& x) const;

  // ---- raw matrix files --------------------------------------------------------------------
  int Send2F(const char* dir, const char* name, std::size_t count);
  int Load(const char* path);

  // ---- fields, in this order ---------------------------------------------------------------
  int m_nRows = 0;
  int m_nCols = 0;
  int m_nSize = 0;
  double* m_pData = nullptr;

  // The block this matrix allocated and must free; m_pData differs from it only while the
  // matrix aliases foreign storage.
  double* m_pOwnedBlock = nullptr;

 private:
  double* Allocate(int n);  // replaces the owned block by n zeroed doubles and points at it
  void Release();           // frees the owned block and forgets m_pData
};

ZNMT64_API Mat operator-(const Mat& a);
ZNMT64_API Mat operator*(double s, const Mat& a);
