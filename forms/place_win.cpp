#include "forms/place_win.h"

#include "forms/controls_win.h"

namespace forms {

namespace {

RECT MainWorkArea() {
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  return work;
}

RECT Centred(const RECT& outer, const RECT& work) {
  const LONG width = outer.right - outer.left;
  const LONG height = outer.bottom - outer.top;
  const LONG left = work.left + (work.right - work.left - width) / 2;
  const LONG top = work.top + (work.bottom - work.top - height) / 2;
  return {.left = left, .top = top, .right = left + width, .bottom = top + height};
}

/// Whether a message says that a window is about to be shown, or restored, or that the screens have changed under it.
bool MayNeedAScreen(HWND window, UINT message, WPARAM wParam) {
  switch (message) {
    case WM_SHOWWINDOW:
      return wParam != FALSE;
    case WM_SIZE:
      return wParam == SIZE_RESTORED;
    case WM_DISPLAYCHANGE:
      return IsWindowVisible(window) != FALSE;
    default:
      return false;
  }
}

}  // namespace

RECT CentredPlace(int clientWidth, int clientHeight, DWORD style, DWORD exStyle) {
  RECT outer = ToPixels({0, 0, clientWidth, clientHeight}, ReadTwipsPerPixel());
  AdjustWindowRectEx(&outer, style, FALSE, exStyle);
  return Centred(outer, MainWorkArea());
}

RECT WorkAreaOf(HWND window) {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY), &monitor);
  return monitor.rcWork;
}

void Centre(HWND window, const RECT& work) {
  RECT place{};
  GetWindowRect(window, &place);
  place = Centred(place, work);
  SetWindowPos(window, nullptr, place.left, place.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void StayOnScreen(HWND window, UINT message, WPARAM wParam) {
  // A minimised window lies off every screen: its turn comes when it is restored.
  if (MayNeedAScreen(window, message, wParam) && IsIconic(window) == FALSE &&
      MonitorFromWindow(window, MONITOR_DEFAULTTONULL) == nullptr) {
    Centre(window, MainWorkArea());
  }
}

void ShowInForeground(HWND window) {
  ShowWindow(window, IsIconic(window) != FALSE ? SW_RESTORE : SW_SHOW);
  SetForegroundWindow(window);
}

void MakeTopmost(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  SetWindowPos(window, HWND_TOPMOST, place.left, place.top, place.right - place.left, place.bottom - place.top, 0);
}

}  // namespace forms
