#pragma once

#include <cmath>

namespace benchmarks {

/// The result of one report.
struct Answer {
  double litFraction = 0;
  double lastNew = 0, nextNew = 0, lastFull = 0, nextFull = 0;  ///< Julian days
};

/// Finds the phases around an instant for a library that has no search of its own.
///
/// Given:    jd          Julian day of the instant
///           elongation  the Moon's longitude minus the Sun's at a Julian day, degrees, in any turn
/// Written:  the four phases of the answer, to a second or better
template <typename Elongation>
void SearchPhases(double jd, Elongation elongation, Answer& answer) {
  constexpr double kMeanRate = 360 / 29.530589;  // degrees a day
  constexpr double kCloseEnough = 0.001;         // days; after so small a step the error is far smaller

  const double now = std::fmod(elongation(jd) + 720, 360);
  // The secant method. The first step uses the mean rate.
  const auto when = [&](double wanted) {
    double rate = kMeanRate;
    double at = jd + (wanted - now) / rate;
    double missing = std::remainder(wanted - elongation(at), 360);
    for (;;) {
      const double step = missing / rate;
      at += step;
      if (std::fabs(step) < kCloseEnough) {
        return at;
      }
      const double left = std::remainder(wanted - elongation(at), 360);
      rate = (missing - left) / step;
      missing = left;
    }
  };
  answer.lastNew = when(0);
  answer.nextNew = when(360);
  answer.lastFull = when(now < 180 ? -180 : 180);
  answer.nextFull = when(now < 180 ? 180 : 540);
}

}  // namespace benchmarks
