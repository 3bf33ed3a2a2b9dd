// The picture of the Moon in the screen's pixels, at any density.

#include <cmath>
#include <sstream>
#include <variant>

#include "report/frmMoon_layout.h"
#include "runtime/clock.h"
#include "tray/phase_drawing.h"
#include "windows_check/check.h"
#include "windows_check/program.h"
#include "windows_check/screen.h"
#include "windows_check/wanted.h"

namespace check {

namespace {

namespace layout = tidewell::frmMoonLayout;

using tidewell::kDiscCentre;
using tidewell::kDiscRadius;

constexpr COLORREF kWhite = 0xFFFFFF;
constexpr COLORREF kBlack = 0;
constexpr double kDesignedWidth = layout::kClientWidth / 15.0;  // pixels at 96 dpi

/// How the disc's rows look: the terminator's distance from the middle towards the lit side, as a share of a row's half
/// width, and which side is lit.
struct Phase {
  double terminator;
  bool litOnTheLeft;
};

/// Reads it from the drawing's primitives: disc, dark half, rim, terminator, rim.
Phase PhaseOf(const forms::DrawingList& drawing) {
  const auto& darkHalf = std::get<forms::Pie>(drawing.Primitives().at(1));
  const auto& terminator = std::get<forms::Ellipse>(drawing.Primitives().at(3));
  const double part = terminator.halfWidth / kDiscRadius;
  return {.terminator = terminator.fill == kWhite ? -part : part, .litOnTheLeft = darkHalf.from.y > darkHalf.to.y};
}

/// One row of the picture. It measures from the disc's centre in the design's pixels; the scale is the screen's.
class Row {
 public:
  Row(const Picture& picture, double scale, int height)
      : picture_(picture),
        scale_(scale),
        y_(static_cast<int>(std::lround((kDiscCentre.y + height + 0.5) * scale - 0.5))),
        halfWidth_(std::sqrt(double{kDiscRadius} * kDiscRadius - height * height)) {}

  [[nodiscard]] double HalfWidth() const noexcept { return halfWidth_; }

  /// The colour at a distance right of the centre.
  [[nodiscard]] COLORREF At(double x) const {
    return picture_.At(static_cast<int>(std::lround((kDiscCentre.x + x + 0.5) * scale_ - 0.5)), y_);
  }

  /// The lit length of the row.
  [[nodiscard]] double Lit() const {
    int lit = 0;
    const int middle = static_cast<int>(std::lround(kDiscCentre.x * scale_));
    const int reach = static_cast<int>(std::lround(halfWidth_ * scale_));
    for (int x = middle - reach; x <= middle + reach; ++x) {
      lit += GetGValue(picture_.At(x, y_)) >= 128 ? 1 : 0;
    }
    return lit / scale_;
  }

 private:
  const Picture& picture_;
  double scale_;
  int y_;
  double halfWidth_;
};

std::wstring Colour(COLORREF colour) {
  std::wostringstream text;
  text << std::hex << colour;
  return text.str();
}

/// Compares a row with the phase. Rim and rounding may change a length by 3 pixels.
void WantRow(Facts& facts, const Row& row, const Phase& phase, COLORREF ground) {
  constexpr double kTolerance = 3;
  const double side = phase.litOnTheLeft ? -1 : 1;
  const double half = row.HalfWidth();
  const double edge = phase.terminator * half;
  const double lit = half - edge;
  const double dark = half + edge;
  if (std::fabs(row.Lit() - lit) > kTolerance) {
    facts.Want(L"lit pixels", std::to_wstring(lit), std::to_wstring(row.Lit()));
  }
  if (lit > 2 * kTolerance) {
    facts.Want(L"colour of the lit part", Colour(kWhite), Colour(row.At(side * (half + edge) / 2)));
  }
  if (dark > 2 * kTolerance) {
    facts.Want(L"colour of the dark part", Colour(kBlack), Colour(row.At(side * (edge - half) / 2)));
  }
  for (const double outside : {-half - kTolerance, half + kTolerance}) {
    facts.Want(L"colour beside the disc", Colour(ground), Colour(row.At(outside)));
  }
}

Outcome PictureIsThatOf(const Program& program, bool southern) {
  const runtime::DateValue start = runtime::SystemNow();
  program.Update();
  const Report report = ReportsFor(start, start, true, southern).front();
  const PhysicalPixels physical;
  RestPointer();
  const Picture picture(ClientOnScreen(program.Main()));
  const double scale = picture.Width() / kDesignedWidth;
  const Phase phase = PhaseOf(report.drawing);
  Facts facts;
  for (const int height : {-30, 0, 30}) {
    WantRow(facts, Row(picture, scale, height), phase, picture.At(2, 2));
  }
  return facts.Result(std::to_wstring(std::lround(scale * 100)) + L" % of the designed size, dark fraction " +
                      report.label);
}

Outcome NorthernPicture(const Stage& stage) { return PictureIsThatOf(Program(stage), false); }

Outcome SouthernPicture(const Stage& stage) {
  const Program program(stage);
  ClickOn(program.Option(2), true);
  return PictureIsThatOf(program, true);
}

}  // namespace

std::vector<Check> PictureChecks() {
  return {
      {L"picture of the Moon", NorthernPicture},
      {L"picture of the southern view", SouthernPicture},
  };
}

}  // namespace check
