#pragma once

#include "astro/mMoon.h"
#include "forms/date_value.h"

namespace forms {

/// The local clock, to the second.
[[nodiscard]] DateValue Now();

/// The system's zone, for mMoon::ReadTimeZone.
[[nodiscard]] mMoon::TimeZoneReading SystemTimeZone();

}  // namespace forms
