#pragma once

#include <cmath>

namespace benchmarks {

/// The average number of sines and cosines in a report of plain sums, over the instants of the comparison.
inline constexpr int kSinesOfPlainReport = 387;

/// The least that a report costs if it calls the library for each sine: only their sum. The arguments are as large as
/// those of the series, thousands of radians. None comes twice, and the processor cannot learn a pattern.
inline double FreshSines(double jd) {
  double sum = 0;
  for (int i = 0; i < kSinesOfPlainReport; ++i) {
    sum += std::sin((jd - 2415020) * 1e-6 * i * i);
  }
  return sum;
}

}  // namespace benchmarks
