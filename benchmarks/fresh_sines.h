#pragma once

#include <cmath>

namespace benchmarks {

/// As many sines and cosines as a report of plain sums takes, on average of the instants of the comparison.
inline constexpr int kSinesOfPlainReport = 387;

/// The floor of a report that takes each sine from the run-time library: the sum of its sines, no argument of which was
/// seen before. The arguments reach as far as those of the series, thousands of radians, and follow no pattern that the
/// processor could learn.
inline double FreshSines(double jd) {
  double sum = 0;
  for (int i = 0; i < kSinesOfPlainReport; ++i) {
    sum += std::sin((jd - 2415020) * 1e-6 * i * i);
  }
  return sum;
}

}  // namespace benchmarks
