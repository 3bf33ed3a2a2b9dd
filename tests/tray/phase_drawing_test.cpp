#include "tray/phase_drawing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <optional>
#include <vector>

#include "astro/mMoon.h"
#include "support/module_test.h"
#include "support/raises.h"
#include "support/report_stage.h"
#include "tray/icon_number.h"

using forms::Box;
using forms::Ellipse;
using forms::Pie;
using forms::Point;
using support::Raises;

namespace tidewell {

using namespace mMoon;
using namespace runtime;

namespace {

constexpr forms::Colour kWhite = 16777215;
constexpr forms::Colour kBlack = 0;

constexpr Point kCentre = {.x = 125, .y = 85};
constexpr Box kSquare = {.left = 60, .top = 20, .right = 191, .bottom = 151};

// Counter-clockwise from the lower to the upper point is the right half.
constexpr Pie kDarkRight = {.box = kSquare, .from = {125, 150}, .to = {125, 0}, .fill = kBlack};
constexpr Pie kDarkLeft = {.box = kSquare, .from = {125, 0}, .to = {125, 150}, .fill = kBlack};

Ellipse Disc(forms::Colour outline, std::optional<forms::Colour> fill) {
  return {.centre = kCentre, .halfWidth = 65, .halfHeight = 65, .outline = outline, .fill = fill};
}

Ellipse Terminator(forms::Colour colour, double halfWidth, double halfHeight = 65) {
  return {.centre = kCentre, .halfWidth = halfWidth, .halfHeight = halfHeight, .outline = colour, .fill = colour};
}

std::vector<forms::Primitive> Picture(const Pie& darkHalf, const Ellipse& terminator) {
  return {Disc(kWhite, kWhite), darkHalf, Disc(kWhite, std::nullopt), terminator, Disc(kBlack, std::nullopt)};
}

class DrawMoonPhaseTest : public support::ModuleTest {
 protected:
  void Draw(double lit, std::int16_t waningFlag) {
    fraction = lit;
    waning = waningFlag;
    DrawMoonPhase(form, fraction, waning);
  }

  [[nodiscard]] const Ellipse& DrawnTerminator() const { return std::get<Ellipse>(form.drawing.Primitives().at(3)); }

  support::RecordingForm form;
  double fraction = 0;
  std::int16_t waning = 0;
};

}  // namespace

// All on the same form: each drawing must clear it first.
TEST_F(DrawMoonPhaseTest, DrawsEachPhase) {
  struct Phase {
    double lit;
    std::int16_t waning;
    bool southern;
    std::int16_t drawnAs;
    Ellipse terminator;
    const wchar_t* label;
    double fraction;
    int icon;
  };
  const Ellipse ofNewMoon = Terminator(kBlack, 65, 65 * (0.5 / (1 - 0.49999)));  // its aspect is just below 1
  const Ellipse hairline = Terminator(kBlack, 65 / (0.5 / (0.5 - 0.49999)));
  const Ellipse ofFullMoon = Terminator(kWhite, 65 / (0.5 / 0.49999));
  const double justBelow = 1 - 0.500005;  // its aspect is negative
  const Ellipse bright = Terminator(kWhite, 65 / (0.5 / (justBelow - 0.49999)));
  const Ellipse gibbous = Terminator(kWhite, 65 / (0.5 / (0.49999 - 0.25)));
  for (const Phase& phase :
       std::vector<Phase>{{0, 0, false, 0, ofNewMoon, L"1.000000", 0, 0},
                          {0.25, 0, false, 0, Terminator(kBlack, 65 / (0.5 / (0.75 - 0.49999))), L"0.750000", 25, 4},
                          {0.5, 0, false, 0, hairline, L"0.500000", 50, 7},
                          {1 - justBelow, 0, false, 0, bright, L"0.499995", 100 * (1 - justBelow), 7},
                          {1, 0, false, 0, ofFullMoon, L"0.000000", 100, 14},
                          {1, 1, false, 1, ofFullMoon, L"0.000000", 100, 14},
                          {0.75, 1, false, 1, gibbous, L"0.250000", 125, 19},
                          {0, 1, false, 1, ofNewMoon, L"1.000000", 200, 28},
                          {1.25, 0, false, 0, gibbous, L"0.250000", 75, 9},  // the dark fraction is |1 - 1.25|
                          {0.5, 0, true, 1, hairline, L"0.500000", 150, 21},
                          {0.5, 1, true, 0, hairline, L"0.500000", 50, 7},
                          {0.5, -1, false, -1, hairline, L"0.500000", 50, 7},  // any other flag is waxing
                          {0.5, 32767, false, 32767, hairline, L"0.500000", 50, 7},
                          {0.5, -1, true, 0, hairline, L"0.500000", 50, 7},
                          {0.5, 2, true, 0, hairline, L"0.500000", 50, 7}}) {
    SCOPED_TRACE(testing::Message() << phase.lit << ", " << phase.waning << ", " << phase.southern);
    form.southernView = phase.southern;
    Draw(phase.lit, phase.waning);
    EXPECT_EQ(waning, phase.drawnAs);
    EXPECT_EQ(form.drawing.Primitives(), Picture(phase.drawnAs == 1 ? kDarkRight : kDarkLeft, phase.terminator));
    EXPECT_EQ(form.drawing.ForeColor(), 255U);
    EXPECT_EQ(form.label1, phase.label);
    EXPECT_NEAR(fraction, phase.fraction, 0);
    EXPECT_EQ(IconNumber, phase.icon);
  }
}

TEST_F(DrawMoonPhaseTest, TheBiasAsDarkFractionDividesByZeroAndLeavesThePictureUnfinished) {
  for (const std::int16_t flag : std::initializer_list<std::int16_t>{0, 1}) {
    form.drawing.Cls();
    EXPECT_TRUE(Raises(ErrorNumber::DivisionByZero, [&] { DrawDarkFraction(form, 0.49999, flag); }));
    const std::vector<forms::Primitive> want = {Disc(kWhite, kWhite), flag == 1 ? kDarkRight : kDarkLeft,
                                                Disc(kWhite, std::nullopt)};
    EXPECT_EQ(form.drawing.Primitives(), want);
    EXPECT_EQ(form.drawing.ForeColor(), 0U);
    EXPECT_EQ(form.label1, L"Label1");
  }
}

// Lit fractions near 0.50001 are multiples of 2^-53, but 0.49999 is an odd multiple of 2^-54. So 1 minus a lit fraction
// may be a neighbour of 0.49999, but never 0.49999 itself.
TEST_F(DrawMoonPhaseTest, NoLitFractionGivesTheBiasAsDarkFraction) {
  const double lit = 1 - 0.49999;
  for (const double candidate : {std::nextafter(lit, 0), lit, std::nextafter(lit, 1)}) {
    EXPECT_NE(std::fabs(1 - candidate), 0.49999);
    EXPECT_NO_THROW(Draw(candidate, 0));
    EXPECT_LT(DrawnTerminator().halfWidth, 1e-13);
  }
}

TEST_F(DrawMoonPhaseTest, AnErrorLeavesLabelAndIconAlone) {
  Draw(0.75, 1);
  fraction = std::numeric_limits<double>::infinity();
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [&] { DrawMoonPhase(form, fraction, waning); }));
  EXPECT_TRUE(form.drawing.Primitives().empty());
  EXPECT_EQ(form.label1, L"0.250000");
  EXPECT_EQ(IconNumber, 19);
}

}  // namespace tidewell
