#pragma once

#include <cstdint>
#include <vector>

namespace support {

/// What a call of FindPhases finds.
struct PhasesAnswer {
  double newMoon, fullMoon;  // Julian days
  double illumination = 0.25;
  std::int16_t waning = 0;
};

struct PhasesCall {
  std::int16_t year;
  double jd, jdJan1;
  double centuries;  // of the positions computed before the call
};

/// Replaces the program's FindPhases in a test program that links phases_stand_in.cpp. It gives one answer after
/// another, then repeats the last one.
struct PhasesStandIn {
  static inline std::vector<PhasesAnswer> answers;
  static inline std::vector<PhasesCall> calls;
};

}  // namespace support
