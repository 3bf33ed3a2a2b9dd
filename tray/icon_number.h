#pragma once

#include <cstdint>

namespace mMoon {

/// The tray icon number, 0..28, written only by PhaseToIconNumber.
inline float IconNumber = 0;

/// Sets IconNumber from a phase on the icons' scale: 0..100 waxing, 100..200 waning. A NaN gives 0.
void PhaseToIconNumber(double value);

}  // namespace mMoon

namespace tidewell {

/// Returns IconNumber as the tray's IcoNum: formatted with "00", then read from the first two characters.
[[nodiscard]] std::int16_t IcoNumFromIconNumber();

}  // namespace tidewell
