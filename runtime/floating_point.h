#pragma once

#include <cfloat>

// The floating-point policy of the whole program:
//
// - Every step is done in 64-bit doubles (-msse2 -mfpmath=sse). The x87 of 32-bit x86 has 80-bit registers and would
//   round only when the compiler stores a value.
// - No contraction (-ffp-contract=off): a fused multiply-add rounds once where the formulas round twice.
// - Never -ffast-math: the checks in runtime/checked.h need NaN and infinity.
//
// The library's sine is not fixed by this: on 32 bits it is the x87 instruction, and its last bits differ from glibc's.
// So builds are compared with a tolerance, not bit for bit.

#if defined(__FAST_MATH__) || defined(__FINITE_MATH_ONLY__) && __FINITE_MATH_ONLY__
#error "Tidewell's checked arithmetic needs NaN and infinity: build without -ffast-math"
#endif

#if FLT_EVAL_METHOD != 0
#error "Tidewell computes in 64-bit doubles: build with -msse2 -mfpmath=sse"
#endif
