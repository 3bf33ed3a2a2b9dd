// The tray's message from any coordinate on any screen.
// Input: coordinate, twips per pixel (doubles), scale (8 bits), a message (16 bits).

#include "fuzz/fuzzing.h"
#include "tray/tray_message.h"

using namespace fuzzing;
using namespace mMoon;
using namespace runtime;
using namespace tidewell;

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  Input input(bytes, size);
  const auto X = input.Take<double>();
  const auto twipsPerPixel = input.Take<double>();
  const ScaleMode scaleMode = input.Take<std::uint8_t>() % 2 == 0 ? ScaleMode::Twips : ScaleMode::Pixels;
  const auto message = input.Take<std::int16_t>();

  std::int32_t decoded = 0;
  const auto error = ErrorOf([&] { decoded = DecodeTrayMessage(X, scaleMode, twipsPerPixel); });
  RequireArithmetic(error);
  if (!error) {
    const double pixels = scaleMode == ScaleMode::Pixels ? X : X / twipsPerPixel;
    Require(std::fabs(decoded - pixels) <= 0.5, "the nearest whole number");
  }
  // Twice to sixty-four times the standard resolution and down to a quarter of it.
  if (Within(0.25, twipsPerPixel, 60)) {
    Require(DecodeTrayMessage(message * twipsPerPixel, ScaleMode::Twips, twipsPerPixel) == message,
            "a message survives the way through twips");
  }
  return 0;
}
