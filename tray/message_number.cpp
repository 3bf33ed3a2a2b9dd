#include "tray/message_number.h"

#include "runtime/checked.h"

namespace tidewell {

using runtime::Checked;

std::int32_t DecodeTrayMessage(double X, ScaleMode scaleMode, double twipsPerPixelX) {
  const Checked pixels = scaleMode == ScaleMode::Pixels ? Checked(X) : Checked(X) / twipsPerPixelX;
  return runtime::RoundTo<std::int32_t>(pixels);
}

}  // namespace tidewell
