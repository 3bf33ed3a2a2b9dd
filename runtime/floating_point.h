#pragma once

#include <cfloat>

// The floating-point policy of the whole program, in one place:
//
// - Every step is done in 64-bit doubles. 32-bit x86 would otherwise compute in the 80-bit registers of the x87 and
//   round at moments of the compiler's choice, so the build says -msse2 -mfpmath=sse.
// - No contraction (-ffp-contract=off): a fused multiply-add rounds once where the formulas round twice.
// - Never -ffast-math: it removes the tests of runtime/checked.h, for which NaN and infinity must exist.
//
// What the policy does not fix is the run-time library: the 32-bit runtime's sine is the x87 instruction, glibc's is
// not, and their last bits differ. Builds are therefore compared at 1e-12, not bit for bit.

#if defined(__FAST_MATH__) || defined(__FINITE_MATH_ONLY__) && __FINITE_MATH_ONLY__
#error "Tidewell's checked arithmetic needs NaN and infinity: build without -ffast-math"
#endif

#if FLT_EVAL_METHOD != 0
#error "Tidewell computes in 64-bit doubles: build with -msse2 -mfpmath=sse"
#endif
