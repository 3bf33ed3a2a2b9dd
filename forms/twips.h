#pragma once

#include <cstdint>

#include "runtime/checked.h"

namespace forms {

/// Twips (1/1440 inch) per pixel of the screen, in each direction.
struct TwipsPerPixel {
  double x, y;
};

/// Twips per pixel at 96 dpi, for which drawings are designed.
inline constexpr double kDesignTwipsPerPixel = 15;

/// The unit in which a form counts its coordinates.
enum class ScaleMode : std::uint8_t { Twips = 1, Pixels = 3 };

/// A length in that unit as pixels, rounded to the nearest whole number.
/// Errors: 6 Overflow beyond 32 bits; 11 Division by zero for twips at 0 twips a pixel.
[[nodiscard]] inline std::int32_t ToPixels(double length, double twipsPerPixel, ScaleMode unit = ScaleMode::Twips) {
  return runtime::RoundTo<std::int32_t>(runtime::Checked(length) / (unit == ScaleMode::Pixels ? 1 : twipsPerPixel));
}

}  // namespace forms
