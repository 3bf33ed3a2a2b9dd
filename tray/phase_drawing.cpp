#include "tray/phase_drawing.h"

#include <cmath>

#include "runtime/checked.h"
#include "runtime/number_format.h"
#include "tray/icon_number.h"

namespace tidewell {

using runtime::Checked;

namespace {

constexpr forms::Colour kWhite = 0xFFFFFF;
constexpr forms::Colour kBlack = 0x000000;
constexpr forms::Colour kRed = 0x0000FF;

/// Only the direction from the centre matters: straight up and straight down.
constexpr forms::Point kUp = {.x = kDiscCentre.x, .y = 0};
constexpr forms::Point kDown = {.x = kDiscCentre.x, .y = kPictureSize};

/// On purpose not 0.5, which would divide by zero at the quarter. A dark fraction of exactly 0.49999 still does.
constexpr double kTerminatorBias = 0.49999;

}  // namespace

void DrawDarkFraction(PhaseForm& form, double p, std::int16_t waning) {
  forms::DrawingList& drawing = form.Drawing();
  drawing.SetDrawStyle(forms::DrawStyle::Solid);
  drawing.SetFillStyle(forms::FillStyle::Solid);
  drawing.SetFillColor(kWhite);
  drawing.Circle(kDiscCentre, kDiscRadius, kWhite);

  const bool darkRight = waning == 1;
  drawing.DrawPie({.box = SquareOfRadius(kDiscRadius),
                   .from = darkRight ? kDown : kUp,
                   .to = darkRight ? kUp : kDown,
                   .fill = kBlack});

  drawing.SetFillStyle(forms::FillStyle::Transparent);
  drawing.Circle(kDiscCentre, kDiscRadius, kWhite);

  // The terminator: a white ellipse widens the lit half of a gibbous Moon, a black one eats into that of a crescent.
  drawing.SetDrawStyle(forms::DrawStyle::Solid);
  drawing.SetFillStyle(forms::FillStyle::Solid);
  const bool gibbous = p < 0.5;
  const forms::Colour colour = gibbous ? kWhite : kBlack;
  drawing.SetFillColor(colour);
  drawing.Circle(kDiscCentre, kDiscRadius, colour,
                 0.5 / (gibbous ? kTerminatorBias - Checked(p) : Checked(p) - kTerminatorBias));

  drawing.SetFillStyle(forms::FillStyle::Transparent);
  drawing.Circle(kDiscCentre, kDiscRadius, kBlack);
  drawing.SetForeColor(kRed);
  form.SetLabel1Caption(runtime::FormatNumber(p, L"0.000000"));
}

}  // namespace tidewell

namespace mMoon {

using runtime::Checked;

void DrawMoonPhase(tidewell::PhaseForm& form, double& fraction, std::int16_t& waning) {
  form.Drawing().Cls();

  fraction = std::fabs(1 - Checked(fraction));
  const Checked p = fraction;
  if (form.SouthernView()) {
    waning = waning == 0 ? 1 : 0;
  }
  tidewell::DrawDarkFraction(form, p, waning);

  fraction = waning == 1 ? (p + 1) * 100 : (1 - p) * 100;
  PhaseToIconNumber(fraction);
}

}  // namespace mMoon
