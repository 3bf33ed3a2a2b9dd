#pragma once

#include <gtest/gtest.h>

#include <tuple>

#include "astro/mMoon.h"
#include "report/local_time_offset.h"
#include "report/moon_report.h"
#include "report/surroundings.h"
#include "runtime/number_format.h"

namespace support {

/// The variables that the program may read before it has written them.
inline auto Inputs() {
  return std::tie(mMoon::MoonElongation, mMoon::MoonMeanAnomaly, mMoon::SunMeanAnomaly, mMoon::OffsetMinutes,
                  mMoon::UseDaylightBias, runtime::DecimalSeparator, tidewell::surroundings);
}

inline const auto kInputsAtTheStart = std::apply([](auto... values) { return std::tuple(values...); }, Inputs());

/// Resets these variables to their values at the program's start.
inline void ResetModule() { Inputs() = kInputsAtTheStart; }

/// A test that begins with these variables as at the program's start.
class ModuleTest : public ::testing::Test {
 protected:
  ModuleTest() { ResetModule(); }
};

}  // namespace support
