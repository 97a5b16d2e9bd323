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
}
