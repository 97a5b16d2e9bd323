#include <znmt64/znmt64.h>

#include "Demo.h"

namespace {
void Print(const char* name, const Mat& m) {
  std::printf("%s (%dx%d):\n", name, m.NRows(), m.NCols());
  for (int r = 1; r <= m.NRows(); ++r) {
    std::printf("  ");
    for (int c = 1; c <= m.NCols(); ++c) std::printf("%8.3f", m(r, c));
    std::printf("\n");
  }
}
}  // namespace

void DemoMatrices() {
  Section("Dense matrices and their index bases");
  Mat m(2, 3);
  for (int k = 0; k < 6; ++k) m[k] = k + 1;  // operator[] counts from 0
  Print("m", m);
  std::printf("m(2,3) counts from 1: %g; m.GetElem(1,2) counts from 0: %g; flat m(4) = %g, m[4] = %g\n",
              m(2, 3), m.GetElem(1, 2), m(4), m[4]);

  Mat column;
  column.SelectCol(m, 2);
  Print("column 2 of m", column);

  Mat shaped(3, 3);
  shaped = m;  // assignment keeps the target's shape and copies elements
  Print("a 3x3 after assignment of m (shape kept)", shaped);

  try {
    throw new CMatrExeption("demo: a shape mismatch");
  } catch (CMatrExeption* e) {
    char text[50];
    e->GetErrorMessage(text, sizeof text);
    std::printf("caught CMatrExeption by pointer: \"%s\" (code %u)\n", text, e->m_nCode);
    e->Delete();
  }

  Section("Linear systems, determinants, angles and polynomial roots");
  Mat a(3, 3);
  const double rows[3][3] = {{2, 1, -1}, {-3, -1, 2}, {-2, 1, 2}};
  for (int r = 0; r < 3; ++r) a.SetRow(r + 1, rows[r]);  // SetRow(int, const double*) counts from 1
  Print("A", a);
  std::printf("det A = %g\n", a.Det());
  Mat b(3, 1);
  b[0] = 8;
  b[1] = -11;
  b[2] = -3;
  a.Solve(b);  // b becomes x; A keeps its LU factors
  std::printf("A x = (8, -11, -3) gives x = (%g, %g, %g)\n", b[0], b[1], b[2]);

  const SMat u(1, 0, 0), v(1, 1, 0);
  std::printf("angle between (1, 0, 0) and (1, 1, 0): %.10f rad (pi/4 = %.10f)\n", u.Angle(v, 1e-10),
              0.78539816339744830962);

  Polinom p(2);  // x^2, then x^2 - 3x + 2 = (x - 1)(x - 2)
  p.SetCoef(1, -3.0);
  p.SetCoef(0, 2.0);
  C roots[2];
  const int n = p.GetRoots(roots);
  std::printf("x^2 - 3x + 2 has %d roots: %g and %g\n", n, roots[0].x, roots[1].x);
}
