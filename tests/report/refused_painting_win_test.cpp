// If the system refuses to paint, the main window is whole again at the next tick, in the same minute.

#include <gtest/gtest.h>

#include "report/frmMoon_layout.h"
#include "support/shown_frmMoon.h"
#include "support/system_stand_in_win.h"
#include "support/window_pixels_win.h"

extern "C" decltype(&BeginPaint) beginPaintSlot asm("__imp__BeginPaint@8");
extern "C" decltype(&DrawEdge) drawEdgeSlot asm("__imp__DrawEdge@16");
extern "C" decltype(&Ellipse) ellipseSlot asm("__imp__Ellipse@20");
extern "C" decltype(&FillRect) fillRectSlot asm("__imp__FillRect@12");
extern "C" decltype(&IntersectClipRect) intersectClipRectSlot asm("__imp__IntersectClipRect@20");
extern "C" decltype(&InvalidateRect) invalidateRectSlot asm("__imp__InvalidateRect@12");
extern "C" decltype(&Pie) pieSlot asm("__imp__Pie@36");
extern "C" decltype(&SelectClipRgn) selectClipRgnSlot asm("__imp__SelectClipRgn@8");
extern "C" decltype(&SelectObject) selectObjectSlot asm("__imp__SelectObject@8");
extern "C" decltype(&SetDCBrushColor) setDCBrushColorSlot asm("__imp__SetDCBrushColor@8");
extern "C" decltype(&SetDCPenColor) setDCPenColorSlot asm("__imp__SetDCPenColor@8");

namespace {

/// The number of calls that succeed before one is refused. Below 0 none is.
int calls = -1;

template <auto& Slot, auto Answer>
struct Refusing;

/// A system function that refuses the call whose turn it is.
template <class Result, class... Arguments, Result(WINAPI*& Slot)(Arguments...), auto Answer>
struct Refusing<Slot, Answer> {
  static inline const auto system = Slot;
  static Result WINAPI Call(Arguments... arguments) {
    return calls-- == 0 ? static_cast<Result>(Answer) : system(arguments...);
  }
};

BOOL WINAPI RefusePie(HDC, int, int, int, int, int, int, int, int) { return FALSE; }

BOOL WINAPI RefuseToInvalidate(HWND, const RECT*, BOOL) { return FALSE; }

class RefusedPainting : public ShownMoon {
 protected:
  RefusedPainting() {
    // Just after the quarter the terminator is drawn row by row.
    SendMessageW(form().hwnd(), WM_TIMER, 1, 0);
    double fraction = 0.51;
    std::int16_t waning = 0;
    mMoon::DrawMoonPhase(form(), fraction, waning);
  }

  /// Paints the window over black, as the message loop does.
  WindowPixels PaintedOverBlack() {
    const HDC dc = GetDC(form().hwnd());
    const RECT all = {.left = 0, .top = 0, .right = 300, .bottom = 400};
    PatBlt(dc, 0, 0, all.right, all.bottom, BLACKNESS);
    ReleaseDC(form().hwnd(), dc);
    RedrawWindow(form().hwnd(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
    return Painted();
  }

  /// Paints what is invalid.
  WindowPixels Painted() {
    UpdateWindow(form().hwnd());
    UpdateWindow(GetDlgItem(form().hwnd(), tidewell::frmMoonLayout::kFrame1));
    return WindowPixels(form().hwnd());
  }

  /// Refuses each call that one painting makes to a function, one painting after another.
  template <auto& Slot, auto Answer>
  void RefuseEach() {
    const WindowPixels whole = PaintedOverBlack();
    const SystemStandIn standIn(Slot, &Refusing<Slot, Answer>::Call);
    int refused = 0;
    for (;; ++refused) {
      SCOPED_TRACE(refused);
      calls = refused;
      PaintedOverBlack();
      if (calls >= 0) {
        break;
      }
      ASSERT_FALSE(GetUpdateRect(form().hwnd(), nullptr, FALSE)) << "it would be painted again and again";
      SendMessageW(form().hwnd(), WM_TIMER, 1, 0);
      ASSERT_EQ(Painted(), whole);
    }
    calls = -1;
    EXPECT_GT(refused, 0) << "the painting does not call it";
    SendMessageW(form().hwnd(), WM_TIMER, 1, 0);
    EXPECT_FALSE(GetUpdateRect(form().hwnd(), nullptr, FALSE)) << "painted again without need";
  }
};

TEST_F(RefusedPainting, OfTheDeviceContext) { RefuseEach<beginPaintSlot, nullptr>(); }
TEST_F(RefusedPainting, OfTheClipRegion) { RefuseEach<intersectClipRectSlot, ERROR>(); }
TEST_F(RefusedPainting, OfAllThatIsClipped) { RefuseEach<selectClipRgnSlot, ERROR>(); }
TEST_F(RefusedPainting, OfAPenOrBrush) { RefuseEach<selectObjectSlot, nullptr>(); }
TEST_F(RefusedPainting, OfAColourOfThePen) { RefuseEach<setDCPenColorSlot, CLR_INVALID>(); }
TEST_F(RefusedPainting, OfAColourOfTheBrush) { RefuseEach<setDCBrushColorSlot, CLR_INVALID>(); }
TEST_F(RefusedPainting, OfAPie) { RefuseEach<pieSlot, FALSE>(); }
TEST_F(RefusedPainting, OfAnEllipse) { RefuseEach<ellipseSlot, FALSE>(); }
TEST_F(RefusedPainting, OfARow) { RefuseEach<fillRectSlot, 0>(); }
TEST_F(RefusedPainting, OfTheFrame) { RefuseEach<drawEdgeSlot, FALSE>(); }

WNDPROC windowsOwn = nullptr;

LRESULT CALLBACK RefuseToErase(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return message == WM_ERASEBKGND ? 0 : CallWindowProcW(windowsOwn, window, message, wParam, lParam);
}

TEST_F(RefusedPainting, OfTheBackground) {
  const WindowPixels whole = PaintedOverBlack();
  const HWND window = form().hwnd();
  windowsOwn =
      reinterpret_cast<WNDPROC>(SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&RefuseToErase)));
  EXPECT_NE(PaintedOverBlack(), whole);
  SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(windowsOwn));
  SendMessageW(window, WM_TIMER, 1, 0);
  EXPECT_EQ(Painted(), whole);
}

TEST_F(RefusedPainting, IsTriedAgainUntilItIsDone) {
  const WindowPixels whole = PaintedOverBlack();
  {
    const SystemStandIn standIn(pieSlot, &RefusePie);
    PaintedOverBlack();
    for (int tick = 0; tick < 3; ++tick) {
      SendMessageW(form().hwnd(), WM_TIMER, 1, 0);
      const WindowPixels painted = Painted();
      EXPECT_NE(painted, whole);
      EXPECT_EQ(painted.At(110, 85), GetSysColor(COLOR_3DFACE)) << "half a picture would show another phase";
    }
  }
  SendMessageW(form().hwnd(), WM_TIMER, 1, 0);
  EXPECT_EQ(Painted(), whole);
}

/// The system refuses to invalidate the new picture.
TEST_F(RefusedPainting, OfInvalidating) {
  const WindowPixels before = PaintedOverBlack();
  const runtime::DateValue start = now;
  now = start + 3;
  {
    const SystemStandIn standIn(invalidateRectSlot, &RefuseToInvalidate);
    SendMessageW(form().hwnd(), WM_TIMER, 1, 0);
  }
  SendMessageW(form().hwnd(), WM_TIMER, 1, 0);
  const WindowPixels after = Painted();
  EXPECT_NE(after.At(110, 85), before.At(110, 85));
  now = start;
}

}  // namespace
