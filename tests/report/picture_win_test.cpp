// The phase picture in pixels, on the real main window.

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "forms/drawing_list_win.h"
#include "report/settings.h"
#include "runtime/handle_win.h"
#include "support/shown_frmMoon.h"
#include "tray/phase_drawing.h"
#include "tray/tray_icon_data.h"

namespace {

constexpr COLORREF kWhite = 0xFFFFFF;
constexpr COLORREF kBlack = 0;
constexpr int kCentreX = 125;
constexpr int kCentreY = 85;

class Picture : public ShownMoon {
 protected:
  ~Picture() override { mMoon::Settings.SouthernView = runtime::False; }

  /// Draws for a dark fraction and returns the pixel row through the centre of the disc, left to right, as 131 letters:
  /// # for black, . for white, ? for anything else.
  std::string CentreRow(double p, std::int16_t waning) {
    double fraction = 1 - p;
    std::int16_t flag = waning;
    mMoon::DrawMoonPhase(form(), fraction, flag);
    Repaint();
    return ShownRow();
  }

  std::string ShownRow() {
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
  // p = 0.25: the terminator's half-width is 65 / (0.5 / 0.24999) = 32.5 pixels.
  const std::string waxing = CentreRow(0.25, 0);
  EXPECT_EQ(waxing.find('.'), 33U)
      << waxing;  // 125 - 32.5 is just above 92.5: the first lit pixel is 93, the disc's 33rd
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

TEST_F(Picture, SouthernViewMirrorsIt) {
  const std::string north = CentreRow(0.75, 0);
  mMoon::Settings.SouthernView = runtime::True;
  const std::string south = CentreRow(0.75, 0);
  EXPECT_EQ(south, std::string(north.rbegin(), north.rend()));
  const std::string southWaning = CentreRow(0.25, 1);
  mMoon::Settings.SouthernView = runtime::False;
  EXPECT_EQ(southWaning, CentreRow(0.25, 0));
}

TEST_F(Picture, TheFailingFractionLeavesDiscDarkHalfAndWhiteRim) {
  EXPECT_THROW(tidewell::DrawDarkFraction(form(), 0.49999, 0), runtime::RuntimeError);
  Repaint();
  EXPECT_EQ(Pixel(60, kCentreY), kWhite);
  EXPECT_EQ(Pixel(61, kCentreY), kBlack);
  EXPECT_EQ(Pixel(124, kCentreY), kBlack);
  EXPECT_EQ(Pixel(126, kCentreY), kWhite);
  EXPECT_EQ(Pixel(190, kCentreY), kWhite);
}

TEST_F(Picture, ANewOneIsPaintedByItself) {
  const std::string white = CentreRow(0, 0);
  SendMessageW(form().hwnd(), WM_TIMER, 1, 0);
  UpdateWindow(form().hwnd());  // as the message loop does
  EXPECT_NE(ShownRow(), white);
}

TEST_F(Picture, OneOfTheSamePixelsIsNotPaintedAgain) {
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

TEST_F(Picture, PersistsWhenTheWindowIsHiddenMovedOffScreenOrRepainted) {
  const std::string row = CentreRow(0.25, 0);
  const auto again = [&] {
    std::string read;
    Repaint();
    for (int x = 60; x <= 190; ++x) {
      read += Pixel(x, kCentreY) == kBlack ? '#' : '.';
    }
    return read;
  };
  form().Hide();
  form().Show();
  EXPECT_EQ(again(), row);
  SetWindowPos(form().hwnd(), nullptr, -2000, -2000, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  SetWindowPos(form().hwnd(), nullptr, 20, 20, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  EXPECT_EQ(again(), row);
}

/// The system's table of drawing objects ends near 65,000: a pen or brush that stays behind at each repaint fills it,
/// but for the places of those that are deleted. Replayed onto one pixel of memory, which spares the time of a window.
TEST_F(Picture, ReplayingLeavesNoHandleBehind) {
  double fraction = 0.3;
  std::int16_t flag = 0;
  mMoon::DrawMoonPhase(form(), fraction, flag);
  const forms::DrawingList& drawing = form().Drawing();
  const HDC pixel = CreateCompatibleDC(nullptr);
  for (int i = 0; i < 70'000; ++i) {
    ASSERT_TRUE(forms::Replay(pixel, drawing, {}));
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
