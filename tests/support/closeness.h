#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>

namespace support {

/// The difference of two angles in degrees, the short way round: -180..180.
[[nodiscard]] inline double AngleDifference(double a, double b) { return std::remainder(a - b, 360.0); }

/// Success when `got` lies within an absolute tolerance of `want`.
[[nodiscard]] inline ::testing::AssertionResult Near(double want, double got, double tolerance) {
  if (std::fabs(got - want) <= tolerance) {  // false for a NaN
    return ::testing::AssertionSuccess();
  }
  std::array<char, 160> text{};
  (void)std::snprintf(text.data(), text.size(), "want %.17g, got %.17g, difference %.3g, tolerance %.3g", want, got,
                      got - want, tolerance);
  return ::testing::AssertionFailure() << text.data();
}

/// Success when two doubles are the same to the last bit.
[[nodiscard]] inline ::testing::AssertionResult Same(double want, double got) { return Near(want, got, 0); }

/// Success when `got`, rounded to the given number of decimals, is the printed value `want`.
[[nodiscard]] inline ::testing::AssertionResult Prints(double want, double got, int decimals) {
  return Near(want, got, 0.5 * std::pow(10.0, -decimals) + 1e-12);
}

}  // namespace support
