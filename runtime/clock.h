#pragma once

#include <cstdint>

#include "runtime/date_value.h"

namespace runtime {

/// The computer's zone as the system gives it: UTC = local time + bias, biases in minutes.
struct TimeZoneReading {
  std::int32_t Result;  ///< -1 invalid, 0 unknown, 1 standard time, 2 daylight time
  std::int32_t Bias;
  std::int32_t StandardBias;
  std::int32_t DaylightBias;
};

/// The system's local clock, to the second.
[[nodiscard]] DateValue SystemNow();

/// The system's zone. If the system refuses, the Result is -1 and the biases are those of the last reading.
[[nodiscard]] TimeZoneReading SystemTimeZone();

}  // namespace runtime
