#include "tray/tray_message.h"

#include "astro/checked.h"

namespace mMoon {

std::int32_t MouseMsg = 0;

std::int32_t DecodeTrayMessage(double X, ScaleMode scaleMode, double twipsPerPixelX) {
  const Checked pixels = scaleMode == ScaleMode::Pixels ? Checked(X) : Checked(X) / twipsPerPixelX;
  return RoundTo<std::int32_t>(pixels);
}

}  // namespace mMoon
