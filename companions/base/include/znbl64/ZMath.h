// Scalar helpers of the base module: tolerant remainders, rounding, step counts, and index
// arithmetic on a cycle of n elements (triangle corners, permutation shifts).
#pragma once
#include <znmt64/Config.h>

// 0.0 when value lies within tolerance (inclusive) of a multiple of modulus, on either side;
// otherwise the remainder of value by |modulus|, in [0, |modulus|). Near-integers below a whole
// number, negative ones included, give exactly 0.0: Mat::IsInteger compares the result with 0.0.
// A zero modulus has 0 as its only multiple, so value itself comes back unless it is within
// tolerance of 0. A NaN or infinite value gives NaN.
ZNBL64_API double zModulod(double value, double modulus, double tolerance);

// Nearest integer, halves away from zero; saturates at the int range, NaN gives 0.
ZNBL64_API int zRound(double value);

// Number of steps of size step that cover length, rounded up. A length within 1e-10 steps of an
// exact multiple counts as that multiple: 0.3 by 0.1 is 3 steps, and 2.1 by 0.7 is 3, not the 4
// that the quotient 3.0000000000000004 would round up to. 0 for a length that is not positive or
// a step that is not positive; saturates at the int range.
ZNBL64_API int zCeilN(double length, double step);

// Indices of a cycle of order n: 0..n-1, where n-1 is followed by 0.
class ZNBL64_API CZGroup {
 public:
  // i reduced modulo n into 0..n-1, negative i included (Factorize(3, -1) == 2). n <= 0 has no
  // residues; the result is then 0, which callers read as "no shift".
  static int Factorize(int n, int i) {
    if (n <= 0) return 0;
    const int r = i % n;
    return r < 0 ? r + n : r;
  }

  // Of two indices of the cycle, the one from which the other is next (reduced into 0..n-1):
  // side k of a triangle joins corners k and k+1, so GetMin(3, 2, 0) == 2. When each is next to
  // the other (n == 2) i wins; -1 when neither is next to the other, equal indices included.
  static int GetMin(int n, int i, int j) {
    const int a = Factorize(n, i);
    const int b = Factorize(n, j);
    if (n <= 0 || a == b) return -1;
    if (Factorize(n, a + 1) == b) return a;
    if (Factorize(n, b + 1) == a) return b;
    return -1;
  }
};
