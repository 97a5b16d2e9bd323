// Scalar helpers of the base module: tolerant remainders, rounding, step counts.
#pragma once
#include <znmt64/Config.h>

// 0.0 when value lies within tolerance of a multiple of modulus; otherwise the remainder of value
// by modulus in [0, |modulus|).
ZNBL64_API double zModulod(double value, double modulus, double tolerance);
