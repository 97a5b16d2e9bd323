#include <znmt64/Bar.h>

Bar::~Bar() = default;

void Bar::SetEdgeVert(int k, int n) {
  if (n < 1) return;
  const int q = k / n;  // the side walked along
  const int r = k % n;  // the step along it
  Bar a;
  Bar b;
  a.SetCorner(static_cast<unsigned char>(q));
  b.SetCorner(static_cast<unsigned char>(q + 1));
  Combine(a, b, static_cast<double>(r) / n);
}
