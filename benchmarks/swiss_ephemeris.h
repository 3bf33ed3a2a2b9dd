#pragma once

namespace benchmarks {

/// The result of one report.
struct Answer {
  double litFraction = 0;
  double lastNew = 0, nextNew = 0, lastFull = 0, nextFull = 0;  ///< Julian days
};

/// Does the work of one report at a Julian day. Throws std::runtime_error if the library cannot use its files.
Answer SwissEphemeris(double jd);

}  // namespace benchmarks
