// First header of every exported header of znmt64, its companion modules and the platform layer.
#pragma once

// Results are plain IEEE double arithmetic, bit for bit, on every compiler and target. Our inline
// functions are compiled in the caller's translation unit, so the headers switch contraction into
// fused multiply-add off themselves instead of trusting the caller's flags.
#if defined(__clang__)
#pragma clang fp contract(off)
#elif defined(__GNUC__) && defined(__FP_FAST_FMA)
// Only a target with FMA instructions can contract; baseline x86-64 cannot.
#pragma GCC optimize("fp-contract=off")
#endif

// Symbols are hidden by default; exported classes and functions carry their module's macro.
#define ZNMT64_API __attribute__((visibility("default")))
#define ZNBL64_API __attribute__((visibility("default")))
#define ZNAG64_API __attribute__((visibility("default")))
#define ZNPF_API __attribute__((visibility("default")))
