// The pixels of the phase picture, in the real main window.

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "forms/drawing_list_win.h"
#include "runtime/handle_win.h"
#include "support/shown_frmMoon.h"
#include "tray/phase_drawing.h"
#include "tray/tray_icon_record.h"

namespace {

constexpr COLORREF kWhite = 0xFFFFFF;
constexpr COLORREF kBlack = 0;
constexpr int kCentreX = 125;
constexpr int kCentreY = 85;

class Picture : public ShownMoon {
 protected:
  /// Draws a dark fraction. Returns the pixel row through the disc's centre: # black, . white, ? any other colour.
  std::string CentreRow(double p, std::int16_t waning) {
    double fraction = 1 - p;
    std::int16_t flag = waning;
    mMoon::DrawMoonPhase(form(), fraction, flag);
    Repaint();
    std::string row;
    for (int x = 60; x <= 190; ++x) {
      const COLORREF colour = Pixel(x, kCentreY);
      row += colour == kBlack ? '#' : colour == kWhite ? '.' : '?';
    }
    return row;
  }
};

std::string Pixels(int length, char letter) { return std::string(static_cast<std::size_t>(length), letter); }

TEST_F(Picture, FullMoonIsWhiteWithinItsRim) {
  EXPECT_EQ(CentreRow(0, 0), "#" + Pixels(129, '.') + "#");
  EXPECT_EQ(CentreRow(0, 1), "#" + Pixels(129, '.') + "#");
}

TEST_F(Picture, NewMoonIsBlack) {
  EXPECT_EQ(CentreRow(1, 0), Pixels(131, '#'));
  EXPECT_EQ(CentreRow(1, 1), Pixels(131, '#'));
}

TEST_F(Picture, QuarterIsHalfAndHalfWithOneBlackColumnOnTheLitSide) {
  EXPECT_EQ(CentreRow(0.5, 0), Pixels(66, '#') + Pixels(64, '.') + "#");
  EXPECT_EQ(CentreRow(0.5, 1), "#" + Pixels(64, '.') + Pixels(66, '#'));
  for (int y = 21; y < 150; ++y) {
    ASSERT_EQ(Pixel(kCentreX, y), kBlack) << y;
  }
}

TEST_F(Picture, GibbousMoonIsWidenedByHalfTheRadius) {
  // The terminator's half-width is 65 / (0.5 / 0.24999) = 32.5 pixels, so the lit part begins just above 92.5.
  // The disc begins at 60.
  const std::string waxing = CentreRow(0.25, 0);
  EXPECT_EQ(waxing.find('.'), 33U) << waxing;
  EXPECT_EQ(waxing.find_first_not_of('.', 33), 130U) << waxing;
  const std::string waning = CentreRow(0.25, 1);
  EXPECT_EQ(waning, std::string(waxing.rbegin(), waxing.rend()));
}

TEST_F(Picture, CrescentIsNarrowedByHalfTheRadius) {
  const std::string waxing = CentreRow(0.75, 0);
  EXPECT_EQ(waxing.find('.'), 99U) << waxing;
  EXPECT_EQ(waxing.find_first_not_of('.', 99), 130U) << waxing;
  const std::string waning = CentreRow(0.75, 1);
  EXPECT_EQ(waning, std::string(waxing.rbegin(), waxing.rend()));
}

TEST_F(Picture, TheFractionThatDividesByZeroLeavesTheDiscItsDarkHalfAndAWhiteRim) {
  EXPECT_THROW(tidewell::DrawDarkFraction(form(), 0.49999, 0), runtime::RuntimeError);
  Repaint();
  EXPECT_EQ(Pixel(60, kCentreY), kWhite);
  EXPECT_EQ(Pixel(61, kCentreY), kBlack);
  EXPECT_EQ(Pixel(124, kCentreY), kBlack);
  EXPECT_EQ(Pixel(126, kCentreY), kWhite);
  EXPECT_EQ(Pixel(190, kCentreY), kWhite);
}

TEST_F(Picture, IsNotPaintedAgainIfNoPixelChanges) {
  const runtime::DateValue start = now;
  SendMessageW(form().hwnd(), WM_TIMER, 1, 0);
  UpdateWindow(form().hwnd());
  now = runtime::AddTime(start, 0, 1);
  const auto tip = mMoon::TrayIconData.szTip;
  SendMessageW(form().hwnd(), WM_TIMER, 1, 0);
  EXPECT_NE(mMoon::TrayIconData.szTip, tip);
  EXPECT_FALSE(GetUpdateRect(form().hwnd(), nullptr, FALSE));
  now = start;
}

/// The system's table of drawing objects holds about 65,000: one pen or brush leaked by each repaint would fill it.
/// Painting onto one pixel of memory is quicker than onto a window.
TEST_F(Picture, ReplayingLeaksNoHandle) {
  double fraction = 0.3;
  std::int16_t flag = 0;
  mMoon::DrawMoonPhase(form(), fraction, flag);
  const forms::DrawingList& drawing = form().Drawing();
  const HDC pixel = CreateCompatibleDC(nullptr);
  for (int i = 0; i < 70'000; ++i) {
    ASSERT_TRUE(forms::Replay(pixel, drawing.Primitives(), {}));
  }
  DeleteDC(pixel);
  std::array<HBRUSH, 100> brushes{};
  for (HBRUSH& brush : brushes) {
    brush = CreateSolidBrush(0x123456);
    EXPECT_NE(brush, nullptr);
  }
  for (const HBRUSH brush : brushes) {
    DeleteObject(brush);
  }
}

}  // namespace
