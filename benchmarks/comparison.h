#pragma once

#include <cmath>
#include <vector>

namespace benchmarks {

/// Julian days, spread evenly.
using Instants = std::vector<double>;

inline constexpr int kInstants = 1000;

/// kInstants instants from a year on. The step is no multiple of any period of the Moon.
inline Instants InstantsOfYears(double firstYear, double years) {
  constexpr double kStartOf1900 = 2415020.5;
  constexpr double kDaysPerYear = 365.2425;
  Instants instants;
  for (int i = 0; i < kInstants; ++i) {
    instants.push_back(kStartOf1900 + kDaysPerYear * (firstYear - 1900 + years * (i + 0.5) / kInstants));
  }
  return instants;
}

/// The instants of every comparison: one about every five weeks, 1950 to 2050. comparison.cjs forms the same ones.
inline Instants InstantsOfComparison() { return InstantsOfYears(1950, 100); }

/// The least that a report costs if it calls the library for each sine: only their sum. The arguments are as large as
/// those of the series, thousands of radians. None comes twice, and the processor cannot learn a pattern.
inline double FreshSines(double jd) {
  constexpr int kSinesOfPlainReport = 387;  // the average over the instants
  double sum = 0;
  for (int i = 0; i < kSinesOfPlainReport; ++i) {
    sum += std::sin((jd - 2415020) * 1e-6 * i * i);
  }
  return sum;
}

}  // namespace benchmarks
