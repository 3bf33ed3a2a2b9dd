#include "tray/phase_drawing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

#include "astro/checked.h"
#include "astro/number_format.h"
#include "report/settings.h"

namespace mMoon {

float IconNumber = 0;

namespace {

constexpr forms::Colour kWhite = 0xFFFFFF;
constexpr forms::Colour kBlack = 0x000000;
constexpr forms::Colour kRed = 0x0000FF;

// The picture's square and the disc in it, in pixels of the client area.
constexpr int kLeft = 50;
constexpr int kTop = 10;
constexpr int kPictureSize = 150;
constexpr int kRadius = 130 / 2;
constexpr forms::Point kCentre = {.x = kLeft + kPictureSize / 2, .y = kTop + kPictureSize / 2};

/// The square of the disc's 131 pixels.
constexpr forms::Box kPieBox = {.left = 60, .top = 20, .right = 191, .bottom = 151};

/// Only the direction from the centre matters: straight up and straight down.
constexpr forms::Point kUp = {.x = kCentre.x, .y = 0};
constexpr forms::Point kDown = {.x = kCentre.x, .y = kPictureSize};

/// Stands for a half in the terminator's aspect, so that the quarter does not divide by zero. Exactly this dark
/// fraction still does.
constexpr double kTerminatorBias = 0.49999;

/// The icons' lower limits on the phase scale, from icon 28 down to icon 1; the limit itself belongs to the icon below.
/// They are irregular on purpose.
constexpr std::array<double, 28> kIconLimits = {
    198.22, 194.27, 188.2, 180.56, 171.0, 161.0, 150.58, 140.0, 129.61, 120.87, 112.81, 106.6, 102.36, 100.238,
    99.66,  97.44,  93.18, 86.89,  78.75, 69.96, 59.4,   48.87, 38.43,  28.13,  19.31,  11.2,  5.68,   1.73};
static_assert(kIconLimits.back() != 0);

}  // namespace

void DrawMoonPhase(PhaseForm& form, double& fraction, std::int16_t& waning) {
  form.Drawing().Cls();

  fraction = std::fabs(1 - Checked(fraction));
  const Checked p = fraction;
  if (Settings.SouthernView == True) {
    waning = waning == 0 ? 1 : 0;
  }
  DrawDarkFraction(form, p, waning);

  fraction = waning == 1 ? (p + 1) * 100 : (1 - p) * 100;
  PhaseToIconNumber(fraction);
}

void DrawDarkFraction(PhaseForm& form, double p, std::int16_t waning) {
  forms::DrawingList& drawing = form.Drawing();
  drawing.SetDrawStyle(forms::DrawStyle::Solid);
  drawing.SetFillStyle(forms::FillStyle::Solid);
  drawing.SetFillColor(kWhite);
  drawing.Circle(kCentre, kRadius, kWhite);

  const bool darkRight = waning == 1;
  drawing.DrawPie({.box = kPieBox, .from = darkRight ? kDown : kUp, .to = darkRight ? kUp : kDown, .fill = kBlack});

  drawing.SetFillStyle(forms::FillStyle::Transparent);
  drawing.Circle(kCentre, kRadius, kWhite);

  // The terminator: a white ellipse widens the lit half of a gibbous Moon, a black one eats into that of a crescent.
  drawing.SetDrawStyle(forms::DrawStyle::Solid);
  drawing.SetFillStyle(forms::FillStyle::Solid);
  const bool gibbous = p < 0.5;
  const forms::Colour colour = gibbous ? kWhite : kBlack;
  drawing.SetFillColor(colour);
  drawing.Circle(kCentre, kRadius, colour,
                 0.5 / (gibbous ? kTerminatorBias - Checked(p) : Checked(p) - kTerminatorBias));

  drawing.SetFillStyle(forms::FillStyle::Transparent);
  drawing.Circle(kCentre, kRadius, kBlack);
  drawing.SetForeColor(kRed);
  form.SetLabel1Caption(FormatNumber(p, L"0.000000"));
}

void PhaseToIconNumber(double value) {
  const auto* const limit =
      std::find_if(kIconLimits.begin(), kIconLimits.end(), [value](double lower) { return value > lower; });
  IconNumber = static_cast<float>(kIconLimits.end() - limit);
}

std::int16_t IcoNumFromIconNumber() { return LeadingInteger(FormatNumber(IconNumber, L"00")); }

}  // namespace mMoon
