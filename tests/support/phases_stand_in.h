#pragma once

#include <cstdint>
#include <vector>

namespace support {

/// What a call of FindPhases finds, and what it was called with.
struct PhasesAnswer {
  double newMoon, fullMoon;  // Julian days
  double illumination = 0.25;
  std::int16_t waning = 0;
};

struct PhasesCall {
  std::int16_t year;
  double jd, jdJan1;
  double centuries;  // of the moment whose positions were computed before
};

/// Takes the place of the program's FindPhases in the test binary that is linked with phases_stand_in.cpp: gives the
/// answers one after the other, and the last one for good.
struct PhasesStandIn {
  static inline std::vector<PhasesAnswer> answers;
  static inline std::vector<PhasesCall> calls;
};

}  // namespace support
