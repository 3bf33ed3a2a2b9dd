// How the windows look: fonts, icons, cursor, styles, the frame, the place on the screen.

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "report/frmMoon_layout.h"
#include "support/shown_frmMoon.h"
#include "support/system_stand_in_win.h"
#include "support/window_pixels_win.h"
#include "tray/frmAbout_layout.h"

extern "C" decltype(&SetTimer) setTimerSlot asm("__imp__SetTimer@16");
extern "C" decltype(&GetMonitorInfoW) getMonitorInfoSlot asm("__imp__GetMonitorInfoW@8");
extern "C" decltype(&SystemParametersInfoW) systemParametersInfoSlot asm("__imp__SystemParametersInfoW@16");

namespace {

namespace layout = tidewell::frmMoonLayout;
namespace about_layout = tidewell::frmAboutLayout;

struct Font {
  std::wstring face;
  LONG height;  ///< negative: the characters' height, without the space above them
  LONG weight;
  bool operator==(const Font&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Font& font) {
  return out << std::string(font.face.begin(), font.face.end()) << " " << font.height << " " << font.weight;
}

Font FontOf(HWND control) {
  LOGFONTW font{};
  GetObjectW(reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)), sizeof font, &font);
  EXPECT_FALSE(font.lfItalic || font.lfUnderline || font.lfStrikeOut);
  EXPECT_EQ(font.lfCharSet, DEFAULT_CHARSET) << "month names come in every script";
  return {.face = font.lfFaceName, .height = font.lfHeight, .weight = font.lfWeight};
}

const Font kLineFont = {.face = L"Arial", .height = -13, .weight = FW_BOLD};                   // 9.75 points
const Font kTitleFont = {.face = L"Arial", .height = -27, .weight = FW_BOLD};                  // 20.25 points
const Font kDescriptionFont = {.face = L"MS Sans Serif", .height = -16, .weight = FW_NORMAL};  // 12 points
const Font kDefaultFont = {.face = L"MS Shell Dlg 2", .height = -11, .weight = FW_NORMAL};     // 8.25 points

class Look : public ShownMoon {
 protected:
  HWND Item(int id) { return GetDlgItem(form().hwnd(), id); }
  HWND Line(int index) { return Item(layout::kLblMoon + index); }
  HWND Check1(int index) { return GetDlgItem(Item(layout::kFrame1), layout::kCheck1 + index); }
  HWND Close() { return Item(layout::kCommand1Description.id); }
  static HWND About() { return FindWindowW(L"TidewellAbout", nullptr); }
};

TEST_F(Look, EveryControlHasItsFont) {
  for (int index = 0; index < 4; ++index) {
    EXPECT_EQ(FontOf(Line(index)), kLineFont) << "line " << index;
  }
  for (int index = 0; index < 3; ++index) {
    EXPECT_EQ(FontOf(Check1(index)), kDefaultFont) << "box " << index;
  }
  EXPECT_EQ(FontOf(Close()), kDefaultFont);
  EXPECT_EQ(FontOf(Item(layout::kLabel1)), kDefaultFont);
  ShowWindow(About(), SW_SHOW);  // which makes its controls
  EXPECT_EQ(FontOf(GetDlgItem(About(), about_layout::kLblTitle)), kTitleFont);
  EXPECT_EQ(FontOf(GetDlgItem(About(), about_layout::kLblDescription)), kDescriptionFont);
  EXPECT_EQ(FontOf(GetDlgItem(About(), about_layout::kCmdOK)), kDefaultFont);
}

TEST_F(Look, BothIconsHaveTheSystemsSizes) {
  const auto width = [](WPARAM kind, HWND window) {
    const auto icon = reinterpret_cast<HICON>(SendMessageW(window, WM_GETICON, kind, 0));
    ICONINFO info{};
    if (GetIconInfo(icon, &info) == FALSE) {
      return 0L;
    }
    BITMAP bitmap{};
    GetObjectW(info.hbmMask, sizeof bitmap, &bitmap);
    DeleteObject(info.hbmMask);
    DeleteObject(info.hbmColor);
    return bitmap.bmWidth;
  };
  EXPECT_EQ(width(ICON_SMALL, form().hwnd()), GetSystemMetrics(SM_CXSMICON));
  EXPECT_EQ(width(ICON_BIG, form().hwnd()), GetSystemMetrics(SM_CXICON));
}

int iconsSet = 0;
WNDPROC aboutsOwn = nullptr;

LRESULT CALLBACK CountIcons(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  iconsSet += message == WM_SETICON ? 1 : 0;
  return CallWindowProcW(aboutsOwn, window, message, wParam, lParam);
}

TEST_F(Look, AboutGetsBothIconsOnce) {
  const HWND about = About();
  aboutsOwn =
      reinterpret_cast<WNDPROC>(SetWindowLongPtrW(about, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&CountIcons)));
  iconsSet = 0;
  SendMessageW(about, WM_MOUSEMOVE, 1, 512);
  SendMessageW(about, WM_MOUSEMOVE, 1, 512);
  SetWindowLongPtrW(about, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(aboutsOwn));
  EXPECT_EQ(iconsSet, 2) << "each paints the caption";
  for (const WPARAM size : {ICON_SMALL, ICON_BIG}) {
    EXPECT_EQ(SendMessageW(about, WM_GETICON, size, 0), SendMessageW(form().hwnd(), WM_GETICON, size, 0));
  }
}

TEST_F(Look, TheCursorIsTheArrow) {
  const auto arrow = reinterpret_cast<ULONG_PTR>(LoadCursorW(nullptr, IDC_ARROW));
  for (const HWND window : {form().hwnd(), Item(layout::kFrame1), About()}) {
    EXPECT_EQ(GetClassLongPtrW(window, GCLP_HCURSOR), arrow);
  }
}

TEST_F(Look, TheWindowsCannotBeResized) {
  const LONG_PTR main = GetWindowLongPtrW(form().hwnd(), GWL_STYLE);
  EXPECT_EQ(main & (WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX), WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX);
  EXPECT_EQ(main & (WS_MAXIMIZEBOX | WS_THICKFRAME), 0);
  const LONG_PTR about = GetWindowLongPtrW(About(), GWL_STYLE);
  EXPECT_EQ(about & (WS_CAPTION | WS_SYSMENU), WS_CAPTION | WS_SYSMENU);
  EXPECT_EQ(about & (WS_MINIMIZEBOX | WS_MAXIMIZEBOX | WS_THICKFRAME), 0);
}

TEST_F(Look, TheFrameHasAnEtchedEdge) {
  Repaint();
  RedrawWindow(Item(layout::kFrame1), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
  const WindowPixels frame(Item(layout::kFrame1));
  const int right = frame.Width() - 1;
  const int bottom = frame.Height() - 1;
  const COLORREF shadow = GetSysColor(COLOR_3DSHADOW);
  const COLORREF light = GetSysColor(COLOR_3DHILIGHT);
  ASSERT_EQ(frame.Width(), 243);
  ASSERT_EQ(frame.Height(), 57);
  ASSERT_NE(shadow, light);
  for (int x = 2; x < right - 1; ++x) {
    ASSERT_EQ(frame.At(x, 0), shadow) << x;
    ASSERT_EQ(frame.At(x, 1), light) << x;
    ASSERT_EQ(frame.At(x, bottom - 1), shadow) << x;
    ASSERT_EQ(frame.At(x, bottom), light) << x;
  }
  for (int y = 2; y < bottom - 1; ++y) {
    ASSERT_EQ(frame.At(0, y), shadow) << y;
    ASSERT_EQ(frame.At(1, y), light) << y;
  }
  // Further down the third box covers the right edge.
  for (int y = 2; y < 30; ++y) {
    ASSERT_EQ(frame.At(right - 1, y), shadow) << y;
    ASSERT_EQ(frame.At(right, y), light) << y;
  }
}

TEST_F(Look, ItsBackgroundIsErased) {
  const HDC dc = GetDC(form().hwnd());
  const RECT all = {0, 0, 257, 342};
  FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
  ReleaseDC(form().hwnd(), dc);
  Repaint();
  const WindowPixels pixels(form().hwnd());
  for (const POINT& place : {POINT{3, 3}, {30, 85}, {220, 85}, {125, 160}, {3, 330}, {100, 325}}) {
    EXPECT_EQ(pixels.At(place.x, place.y), GetSysColor(COLOR_3DFACE)) << place.x << ", " << place.y;
  }
}

std::map<UINT_PTR, UINT> intervals;

UINT_PTR WINAPI NoteTimer(HWND /*window*/, UINT_PTR id, UINT milliseconds, TIMERPROC /*call*/) {
  intervals[id] = milliseconds;
  return id;
}

TEST_F(Look, TheTimersTickEverySecond) {
  intervals.clear();
  const SystemStandIn standIn(setTimerSlot, &NoteTimer);
  Load();
  EXPECT_EQ(intervals, (std::map<UINT_PTR, UINT>{{1, 1000}, {2, 1000}}));
}

const auto systemParametersInfo = systemParametersInfoSlot;

/// A screen with bars at the left and the top.
BOOL WINAPI WithWorkArea(UINT action, UINT size, void* data, UINT change) {
  if (action != SPI_GETWORKAREA) {
    return systemParametersInfo(action, size, data, change);
  }
  *static_cast<RECT*>(data) = {.left = 201, .top = 101, .right = 1001, .bottom = 701};
  return TRUE;
}

TEST_F(Look, TheWindowsStandInTheMiddleOfTheWorkArea) {
  const SystemStandIn standIn(systemParametersInfoSlot, &WithWorkArea);
  Load();
  RECT place{};
  GetWindowRect(form().hwnd(), &place);
  EXPECT_NEAR(place.left - 201, 1001 - place.right, 1);
  EXPECT_NEAR(place.top - 101, 701 - place.bottom, 1);
}

/// The same screen, by the call that demands the size of its record.
BOOL WINAPI WithBars(HMONITOR /*monitor*/, MONITORINFO* info) {
  if (info->cbSize != sizeof *info) {
    return FALSE;
  }
  info->rcMonitor = {.left = 1, .top = 1, .right = 1001, .bottom = 701};
  info->rcWork = {.left = 201, .top = 101, .right = 1001, .bottom = 701};
  return TRUE;
}

TEST_F(Look, AboutStandsInTheMiddleOfTheWorkArea) {
  const SystemStandIn standIn(getMonitorInfoSlot, &WithBars);
  ShowWindow(About(), SW_SHOW);
  RECT place{};
  GetWindowRect(About(), &place);
  EXPECT_NEAR(place.left - 201, 1001 - place.right, 1);
  EXPECT_NEAR(place.top - 101, 701 - place.bottom, 1);
}

}  // namespace
