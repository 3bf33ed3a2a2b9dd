#pragma once

#include <cstdint>
#include <string>

#include "forms/drawing_list.h"

namespace tidewell {

/// The Moon's disc in pixels at 96 dpi, centred in a square of kPictureSize. The window scales it to its screen.
inline constexpr int kPictureSize = 150;
inline constexpr int kDiscRadius = 130 / 2;
inline constexpr forms::Point kDiscCentre = {.x = 50 + kPictureSize / 2, .y = 10 + kPictureSize / 2};

/// The square around a circle at the disc's centre: its rim runs through the outermost pixels.
[[nodiscard]] constexpr forms::Box SquareOfRadius(int radius) {
  return {.left = kDiscCentre.x - radius,
          .top = kDiscCentre.y - radius,
          .right = kDiscCentre.x + radius + 1,
          .bottom = kDiscCentre.y + radius + 1};
}

/// What the phase drawing needs of its window.
class PhaseForm {
 public:
  /// The drawing, writable. The window repaints itself afterwards.
  virtual forms::DrawingList& Drawing() = 0;

  /// Writes the caption of Label1, the dark fraction.
  virtual void SetLabel1Caption(const std::wstring& caption) = 0;

  /// Whether the Moon is shown as from the southern hemisphere, mirrored.
  [[nodiscard]] virtual bool SouthernView() const = 0;

 protected:
  ~PhaseForm() = default;
};

/// Draws the disc for a dark fraction p, 0 (Full) to 1 (New), and writes p into Label1. The right half is dark for
/// waning = 1, else the left. Error: 11 Division by zero for exactly 0.49999: then terminator and final rim are
/// missing, and the label keeps its caption. (DrawMoonPhase never passes that: 1 - fraction is never this double.)
void DrawDarkFraction(PhaseForm& form, double p, std::int16_t waning);

}  // namespace tidewell

namespace mMoon {

/// Paints the Moon's phase, writes the dark fraction into Label1 and sets IconNumber.
///
/// Given:   form      the window
///          fraction  lit fraction of the disc, 0..1
///          waning    1 while the Moon wanes, any other value while it waxes
/// Written: fraction  the phase on the icons' scale: 0..100 waxing, 100..200 waning
///          waning    inverted in the southern view, which shows the lit side mirrored
/// Errors:  those of DrawDarkFraction; then IconNumber keeps its value
void DrawMoonPhase(tidewell::PhaseForm& form, double& fraction, std::int16_t& waning);

}  // namespace mMoon
