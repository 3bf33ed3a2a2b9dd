// The phase drawing and the icon number for any fraction and flag.

#include <cmath>

#include "fuzz/fuzz_form.h"
#include "fuzz/fuzz_input.h"
#include "report/settings.h"
#include "tray/phase_drawing.h"
#include "tray/tray_message.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  FuzzForm form;
  mMoon::Settings.SouthernView = input.Any<std::int16_t>();
  const auto anything = input.Any<double>();
  double fraction = input.Between(0, 1) == 0 ? input.Any<double>() : input.Between(0, 1'000'000) / 1e6;
  auto waning = input.Any<std::int16_t>();
  MayRaise([&] {
    mMoon::DrawMoonPhase(form, fraction, waning);
    Require(form.drawing.Primitives().size() == 5, "a whole picture");
  });
  MayRaise([&] { mMoon::DrawDarkFraction(form, anything, waning); });
  for (const auto& primitive : form.drawing.Primitives()) {
    if (const auto* const ellipse = std::get_if<forms::Ellipse>(&primitive)) {
      Require(ellipse->halfWidth <= 65 && ellipse->halfHeight <= 65, "no ellipse larger than the disc");
      (void)ellipse->Bounds();
    }
  }

  mMoon::PhaseToIconNumber(anything);
  Require(mMoon::IconNumber >= 0 && mMoon::IconNumber <= 28, "an icon number is 0..28");
  Require(mMoon::IcoNumFromIconNumber() == static_cast<int>(mMoon::IconNumber), "as a whole number");

  MayRaise([&] { mMoon::DecodeTrayMessage(anything, mMoon::ScaleMode::Twips, fraction); });
  MayRaise([&] { mMoon::DecodeTrayMessage(anything, mMoon::ScaleMode::Pixels, fraction); });
  return 0;
}
