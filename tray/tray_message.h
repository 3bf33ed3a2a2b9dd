#pragma once

#include <cstdint>

namespace tidewell {

/// The unit in which a form counts its coordinates.
enum class ScaleMode : std::uint8_t { Twips = 1, Pixels = 3 };

/// The tray's messages that the program answers: the button releases.
inline constexpr std::int32_t kLeftButtonUp = 514;
inline constexpr std::int32_t kRightButtonUp = 517;

/// Returns the number of a tray message. The shell reports it as the X of a mouse move, in pixels, which a form in
/// twips has turned into twips. Errors: 6 Overflow beyond 32 bits; 11 Division by zero for a screen without resolution.
std::int32_t DecodeTrayMessage(double X, ScaleMode scaleMode, double twipsPerPixelX);

/// Whether a mouse move at the height Y may be a message of the icon. The whole coordinate pair of such a one is the
/// number, so that its Y is 0; the pointer over a window as wide as 514 pixels has the same X, but another Y.
[[nodiscard]] constexpr bool MayBeOfTheIcon(double Y) noexcept { return Y == 0; }

}  // namespace tidewell

namespace mMoon {

/// The last tray message decoded.
inline std::int32_t MouseMsg = 0;

}  // namespace mMoon
