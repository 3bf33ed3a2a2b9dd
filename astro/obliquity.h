#pragma once

#include "runtime/checked.h"

namespace astro {

/// Returns the mean obliquity of the ecliptic for T Julian centuries since 1900 (AFC, ch. 18), in degrees, not
/// normalised.
inline runtime::Checked MeanObliquity(runtime::Checked T) {
  return 23.452294 - 0.0130125 * T - 0.00000164 * Pow(T, 2) + 0.000000503 * Pow(T, 3);
}

}  // namespace astro
