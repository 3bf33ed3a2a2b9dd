#pragma once

#include <cstdint>

#include "runtime/boolean.h"

namespace mMoon {

/// Whether LocalTimeOffset heeds daylight saving time. On purpose nothing sets it.
inline runtime::Boolean UseDaylightBias = runtime::False;

/// Returns the minutes that are added to UTC to give local time, positive east of Greenwich.
/// Error: 6 Overflow when a sum of biases leaves 32 bits.
std::int32_t LocalTimeOffset();

}  // namespace mMoon
