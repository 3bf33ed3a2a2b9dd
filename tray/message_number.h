#pragma once

#include <cstdint>

namespace tidewell {

/// The unit in which a form counts its coordinates.
enum class ScaleMode : std::uint8_t { Twips = 1, Pixels = 3 };

/// The tray's messages that the program answers: the button releases.
inline constexpr std::int32_t kLeftButtonUp = 514;
inline constexpr std::int32_t kRightButtonUp = 517;

/// Returns the number of a tray message. The shell reports it as the X of a mouse move in pixels; a form in twips has
/// converted it. Errors: 6 Overflow beyond 32 bits; 11 Division by zero for 0 twips a pixel.
std::int32_t DecodeTrayMessage(double X, ScaleMode scaleMode, double twipsPerPixelX);

/// Whether a mouse move with this Y may be a tray message. The shell's lParam is the message number, so its high half,
/// Y, is 0. A real mouse move can look the same only in row 0 of a window wider than 514 pixels.
[[nodiscard]] constexpr bool MayBeTrayMessage(double Y) noexcept { return Y == 0; }

}  // namespace tidewell

namespace mMoon {

/// The last tray message decoded.
inline std::int32_t MouseMsg = 0;

}  // namespace mMoon
