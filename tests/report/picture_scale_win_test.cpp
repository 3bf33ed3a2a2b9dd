// The phase picture at 192 dpi, in the real main window.

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "forms/drawing_list_win.h"
#include "support/shown_frmMoon.h"
#include "support/system_stand_in_win.h"
#include "support/window_pixels_win.h"

extern "C" decltype(&Ellipse) ellipseSlot asm("__imp__Ellipse@20");
extern "C" decltype(&FillRect) fillRectSlot asm("__imp__FillRect@12");
extern "C" decltype(&GetDeviceCaps) getDeviceCapsSlot asm("__imp__GetDeviceCaps@8");
extern "C" decltype(&SystemParametersInfoW) systemParametersInfoSlot asm("__imp__SystemParametersInfoW@16");

namespace {

constexpr int kCentreY = 85 * 2 + 1;

const auto deviceCaps = getDeviceCapsSlot;
const auto ellipse = ellipseSlot;
const auto fillRect = fillRectSlot;
const auto systemParametersInfo = systemParametersInfoSlot;

int WINAPI OfTwiceThePixels(HDC dc, int what) {
  return what == LOGPIXELSX || what == LOGPIXELSY ? 192 : deviceCaps(dc, what);
}

BOOL WINAPI InHighContrast(UINT action, UINT size, void* data, UINT change) {
  if (action != SPI_GETHIGHCONTRAST) {
    return systemParametersInfo(action, size, data, change);
  }
  static_cast<HIGHCONTRASTW*>(data)->dwFlags = HCF_AVAILABLE | HCF_HIGHCONTRASTON;
  return TRUE;
}

/// Refuses the smaller ellipses that widen an outline inwards.
BOOL WINAPI RefuseSmallerEllipses(HDC dc, int left, int top, int right, int bottom) {
  return (right - left) % 2 == 0 ? ellipse(dc, left, top, right, bottom) : FALSE;
}

/// Windows does not tell what it answers for an empty rectangle.
int WINAPI RefuseEmptyRectangles(HDC dc, const RECT* place, HBRUSH brush) {
  return place->left < place->right ? fillRect(dc, place, brush) : 0;
}

class PictureScale : public ShownMoon {
 protected:
  PictureScale() { Load(); }

  /// Draws a dark fraction. Returns the first pixels of the row through the disc's centre: # black, . white, O the ring
  /// of high contrast, blank the window.
  std::string Edge(double p) {
    double fraction = 1 - p;
    std::int16_t waning = 0;
    mMoon::DrawMoonPhase(form(), fraction, waning);
    Repaint();
    const WindowPixels pixels(form().hwnd());
    std::string row;
    for (int x = 116; x < 128; ++x) {
      const COLORREF colour = pixels.At(x, kCentreY);
      row += colour == GetSysColor(COLOR_3DFACE) ? ' ' : colour == kRing ? 'O' : colour == 0 ? '#' : '.';
    }
    return row;
  }

  static constexpr COLORREF kRing = RGB(255, 255, 0);

 private:
  SystemStandIn<decltype(&GetDeviceCaps)> standIn_{getDeviceCapsSlot, &OfTwiceThePixels};
};

TEST_F(PictureScale, TheRimIsTwiceAsWide) { EXPECT_EQ(Edge(0), "    ##......"); }

TEST_F(PictureScale, TheRingOfHighContrastIsTwiceAsWide) {
  const SystemStandIn standIn(systemParametersInfoSlot, &InHighContrast);
  const std::array<INT, 2> elements = {COLOR_3DFACE, COLOR_WINDOWTEXT};
  const std::array<COLORREF, 2> before = {GetSysColor(COLOR_3DFACE), GetSysColor(COLOR_WINDOWTEXT)};
  const std::array<COLORREF, 2> dark = {RGB(16, 16, 16), kRing};
  SetSysColors(elements.size(), elements.data(), dark.data());
  const std::string edge = Edge(0);
  SetSysColors(elements.size(), elements.data(), before.data());
  EXPECT_EQ(edge, "  OO##......");
}

/// On such a screen the picture's pixels change more often than at 96 dpi.
TEST_F(PictureScale, ANewPictureIsPaintedWhole) {
  const runtime::DateValue start = now;
  for (int halfHour = 1; halfHour <= 48; ++halfHour) {
    now = runtime::AddTime(start, 0, 30 * halfHour);
    SendMessageW(form().hwnd(), WM_TIMER, 1, 0);
    UpdateWindow(form().hwnd());
    const WindowPixels shown(form().hwnd());
    Repaint();
    ASSERT_EQ(shown, WindowPixels(form().hwnd())) << halfHour;
  }
  now = start;
}

TEST_F(PictureScale, AnOutlineThatIsNotWidenedIsReported) {
  Edge(0);
  const HDC pixel = CreateCompatibleDC(nullptr);
  EXPECT_TRUE(forms::Replay(pixel, form().Drawing().Primitives(), {.x = 2, .y = 2}));
  {
    const SystemStandIn standIn(ellipseSlot, &RefuseSmallerEllipses);
    EXPECT_FALSE(forms::Replay(pixel, form().Drawing().Primitives(), {.x = 2, .y = 2}));
  }
  DeleteDC(pixel);
}

TEST_F(PictureScale, AnEmptyRowOfATerminatorIsNotRefused) {
  Edge(0.5);
  const HDC pixel = CreateCompatibleDC(nullptr);
  {
    const SystemStandIn standIn(fillRectSlot, &RefuseEmptyRectangles);
    EXPECT_TRUE(forms::Replay(pixel, form().Drawing().Primitives(), {.x = 2, .y = 2}));
  }
  DeleteDC(pixel);
}

}  // namespace
