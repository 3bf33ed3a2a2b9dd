// The picture in high contrast, in the real main window.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <new>
#include <numbers>

#include "support/shown_frmMoon.h"
#include "support/system_stand_in_win.h"
#include "support/window_pixels_win.h"

extern "C" decltype(&SystemParametersInfoW) systemParametersInfoSlot asm("__imp__SystemParametersInfoW@16");

namespace {

int allocations = 0;

}  // namespace

void* operator new(std::size_t size) {
  ++allocations;
  void* const memory = std::malloc(size);
  return memory != nullptr ? memory : throw std::bad_alloc();
}

namespace {

constexpr COLORREF kYellow = RGB(255, 255, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kBlack = 0;

bool highContrast = false;
const auto theSystems = systemParametersInfoSlot;

/// The high contrast that the test wants: Wine has none.
BOOL WINAPI WithHighContrast(UINT action, UINT size, void* data, UINT change) {
  if (action != SPI_GETHIGHCONTRAST) {
    return theSystems(action, size, data, change);
  }
  auto* const contrast = static_cast<HIGHCONTRASTW*>(data);
  if (contrast->cbSize != sizeof *contrast || size != sizeof *contrast) {
    return FALSE;
  }
  contrast->dwFlags = HCF_AVAILABLE | (highContrast ? HCF_HIGHCONTRASTON : 0);
  return TRUE;
}

class HighContrast : public ShownMoon {
 protected:
  ~HighContrast() override { SetSysColors(kElements.size(), kElements.data(), before_.data()); }

  /// Sets the colours of windows and their text, and whether high contrast is on.
  static void Choose(bool contrast, COLORREF face, COLORREF text) {
    highContrast = contrast;
    const std::array<COLORREF, 2> colours = {face, text};
    SetSysColors(kElements.size(), kElements.data(), colours.data());
  }

  WindowPixels Painted() {
    Repaint();
    return WindowPixels(form().hwnd());
  }

  /// The number of pixels that high contrast changes in these colours.
  int Ring(COLORREF face, COLORREF text) {
    Choose(false, face, text);
    const WindowPixels without = Painted();
    Choose(true, face, text);
    const WindowPixels with = Painted();
    int ring = 0;
    for (int y = 0; y < with.Height(); ++y) {
      for (int x = 0; x < with.Width(); ++x) {
        ring += with.At(x, y) == without.At(x, y) ? 0 : 1;
      }
    }
    return ring;
  }

 private:
  static constexpr std::array<INT, 2> kElements = {COLOR_3DFACE, COLOR_WINDOWTEXT};
  SystemStandIn<decltype(&SystemParametersInfoW)> standIn_{systemParametersInfoSlot, WithHighContrast};
  std::array<COLORREF, 2> before_ = {GetSysColor(COLOR_3DFACE), GetSysColor(COLOR_WINDOWTEXT)};
};

TEST_F(HighContrast, ARingStandsOutsideTheRimOnBlack) {
  Choose(false, kBlack, kYellow);
  const WindowPixels without = Painted();
  Choose(true, kBlack, kYellow);
  const WindowPixels with = Painted();
  int ring = 0;
  for (int y = 0; y < 165; ++y) {
    for (int x = 0; x < with.Width(); ++x) {
      if (with.At(x, y) == without.At(x, y)) {
        continue;
      }
      ++ring;
      ASSERT_EQ(with.At(x, y), kYellow);
      ASSERT_NEAR(std::hypot(x - 125, y - 85), 66, 1) << x << ", " << y;
      ASSERT_EQ(without.At(x, y), kBlack) << "the ring covers nothing of the picture";
    }
  }
  constexpr double kPixelsOfAnUnbrokenThinRing = 66 * 4 * std::numbers::sqrt2;
  EXPECT_NEAR(ring, kPixelsOfAnUnbrokenThinRing, 4);
  for (const POINT& end : {POINT{59, 85}, {191, 85}, {125, 19}, {125, 151}}) {
    EXPECT_EQ(with.At(end.x, end.y), kYellow) << end.x << ", " << end.y;
  }
}

TEST_F(HighContrast, ItIsPaintedWithoutAnAllocation) {
  Choose(true, kBlack, kYellow);
  const int before = allocations;
  Repaint();
  EXPECT_EQ(allocations, before);
  EXPECT_EQ(Pixel(59, 85), kYellow);
}

TEST_F(HighContrast, TheRingIsThereOnDarkBackgroundsAlone) {
  EXPECT_NE(Ring(kBlack, kWhite), 0);
  EXPECT_NE(Ring(RGB(32, 32, 32), kWhite), 0);
  EXPECT_NE(Ring(RGB(45, 50, 54), kWhite), 0);
  EXPECT_EQ(Ring(RGB(240, 240, 240), kBlack), 0);
  EXPECT_EQ(Ring(RGB(255, 250, 239), kBlack), 0);
  EXPECT_EQ(Ring(kWhite, kBlack), 0);
  EXPECT_EQ(Ring(RGB(0xFF, 0x20, 0), kBlack), 0) << "red is brighter than blue";
  EXPECT_NE(Ring(RGB(0, 0x20, 0xFF), kWhite), 0);
  EXPECT_NE(Ring(RGB(0x58, 0x58, 0x58), kWhite), 0);
  EXPECT_EQ(Ring(RGB(0x59, 0x59, 0x59), kWhite), 0);
}

TEST_F(HighContrast, ItComesAndGoesWithTheSystemsMessages) {
  Choose(false, kBlack, kYellow);
  Painted();
  for (const UINT notice : {WM_SYSCOLORCHANGE, WM_SETTINGCHANGE}) {
    for (const bool on : {true, false}) {
      highContrast = on;
      SendMessageW(form().hwnd(), notice, notice == WM_SETTINGCHANGE ? SPI_SETHIGHCONTRAST : 0, 0);
      UpdateWindow(form().hwnd());
      EXPECT_EQ(Pixel(59, 85), on ? kYellow : kBlack) << notice;
    }
  }
}

}  // namespace
