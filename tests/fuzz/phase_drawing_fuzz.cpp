// The picture and the icon number for any fraction.
// Input: fraction (a double), flag and southern view (16 bits each), a second value for the icons (a double).

#include "astro/mMoon.h"
#include "fuzz/fuzzing.h"
#include "runtime/runtime_error.h"
#include "support/recording_form.h"
#include "tray/icon_number.h"
#include "tray/phase_drawing.h"

using namespace fuzzing;
using namespace mMoon;
using namespace runtime;
using namespace tidewell;

namespace {

constexpr double kRadius = 65;
constexpr double kTooGreat = 1e9;  ///< more than 15 digits with the label's six decimals

float IconOf(double value) {
  PhaseToIconNumber(value);
  Require(Within(0, IconNumber, 28) && IconNumber == std::floor(IconNumber), "an icon number");
  Require(IcoNumFromIconNumber() == IconNumber, "the icon number is handed on");
  return IconNumber;
}

void RequirePicture(const forms::DrawingList& drawing) {
  Require(drawing.Primitives().size() == 5, "disc, dark half, rim, terminator, rim");
  for (const forms::DrawingList::Primitive& primitive : drawing.Primitives()) {
    if (const auto* ellipse = std::get_if<forms::Ellipse>(&primitive)) {
      Require(Within(0, ellipse->halfWidth, kRadius) && Within(0, ellipse->halfHeight, kRadius), "inside the disc");
      Require(ellipse->halfWidth == kRadius || ellipse->halfHeight == kRadius, "the radius is the larger half-axis");
      const forms::Box box = ellipse->Bounds();
      Require(box.left >= 60 && box.top >= 20 && box.right <= 191 && box.bottom <= 151, "inside the disc's square");
      Require(box.left < box.right && box.top < box.bottom, "at least one pixel");
    }
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  Input input(bytes, size);
  const auto lit = input.Take<double>();
  const auto flag = input.Take<std::int16_t>();
  const bool southern = input.Take<std::int16_t>() == -1;
  const auto other = input.Take<double>();

  support::RecordingForm form;
  form.southernView = southern;
  double fraction = lit;
  std::int16_t waning = flag;
  const auto error = ErrorOf([&] { DrawMoonPhase(form, fraction, waning); });
  const double dark = std::fabs(1 - lit);
  if (dark == 0.49999) {
    Require(error == ErrorNumber::DivisionByZero && form.label1 == L"Label1", "0.49999 divides by zero");
  } else if (std::isnan(lit)) {
    Require(error == ErrorNumber::InvalidProcedureCall, "a NaN is error 5");
  } else if (dark >= kTooGreat) {
    Require(error == ErrorNumber::Overflow && form.label1 == L"Label1", "a number without a text is error 6");
  } else {
    Require(!error, "there is a picture");
    const std::int16_t want = southern ? (flag == 0 ? 1 : 0) : flag;
    Require(waning == want, "the southern view inverts the flag");
    Require(fraction == (waning == 1 ? (dark + 1) * 100 : (1 - dark) * 100), "the icons' scale");
    RequirePicture(form.drawing);
    const float icon = IconNumber;
    Require(icon == IconOf(fraction), "the icon of the scale");
  }

  // A dark fraction that no lit one has: exactly 0.49999 divides by zero and leaves the drawing unfinished.
  support::RecordingForm unfinished;
  const auto darkError = ErrorOf([&] { DrawDarkFraction(unfinished, other, flag); });
  Require((darkError == ErrorNumber::DivisionByZero) == (other == 0.49999), "0.49999 alone divides by zero");
  if (std::fabs(other) >= kTooGreat) {
    RequireArithmetic(darkError);
    Require(unfinished.label1 == L"Label1", "no label");
  } else if (darkError) {
    RequireArithmetic(darkError);
    Require(unfinished.label1 == L"Label1" && unfinished.drawing.Primitives().size() == 3, "no terminator, no label");
  } else if (other >= 0) {
    RequirePicture(unfinished.drawing);
  }

  if (lit <= other) {
    const float lower = IconOf(lit);
    Require(lower <= IconOf(other), "a later phase has no earlier icon");
  }
  return 0;
}
