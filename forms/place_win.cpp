#include "forms/place_win.h"

#include "forms/controls_win.h"
#include "runtime/end_on_error.h"

namespace forms {

namespace {

/// The main screen's work area, or the whole screen if the system does not tell it.
RECT MainWorkArea() {
  RECT work{};
  if (SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0) == FALSE) {
    work = {.left = 0, .top = 0, .right = GetSystemMetrics(SM_CXSCREEN), .bottom = GetSystemMetrics(SM_CYSCREEN)};
  }
  return work;
}

RECT Centred(const RECT& outer, const RECT& work) {
  const LONG width = outer.right - outer.left;
  const LONG height = outer.bottom - outer.top;
  const LONG left = work.left + (work.right - work.left - width) / 2;
  const LONG top = work.top + (work.bottom - work.top - height) / 2;
  return {.left = left, .top = top, .right = left + width, .bottom = top + height};
}

/// Whether a message shows or restores the window, or changes the screens under it.
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
  runtime::RequireMade(AdjustWindowRectEx(&outer, style, FALSE, exStyle) != FALSE);
  return Centred(outer, MainWorkArea());
}

RECT WorkAreaOf(HWND window) {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  const HMONITOR nearest = MonitorFromWindow(window, MONITOR_DEFAULTTOPRIMARY);
  return GetMonitorInfoW(nearest, &monitor) != FALSE ? monitor.rcWork : MainWorkArea();
}

void Centre(HWND window, const RECT& work) {
  RECT place{};
  if (GetWindowRect(window, &place) != FALSE) {
    place = Centred(place, work);
    SetWindowPos(window, nullptr, place.left, place.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  }
}

void StayOnScreen(HWND window, UINT message, WPARAM wParam) {
  // A minimised window is off every screen until it is restored.
  if (MayNeedAScreen(window, message, wParam) && IsIconic(window) == FALSE &&
      MonitorFromWindow(window, MONITOR_DEFAULTTONULL) == nullptr) {
    Centre(window, MainWorkArea());
  }
}

void ShowInForeground(HWND window) {
  ShowWindow(window, SW_RESTORE);
  // The first ShowWindow of a process may use its start-up command instead, and show no window or a minimised one.
  if (IsIconic(window) != FALSE || IsWindowVisible(window) == FALSE) {
    ShowWindow(window, SW_RESTORE);
  }
  if (!runtime::Ending()) {  // an error while it was shown may have ended the program
    SetForegroundWindow(window);
  }
}

void MakeTopmost(HWND window) {
  RECT place{};
  const UINT flags = GetWindowRect(window, &place) != FALSE ? 0 : SWP_NOMOVE | SWP_NOSIZE;
  SetWindowPos(window, HWND_TOPMOST, place.left, place.top, place.right - place.left, place.bottom - place.top, flags);
}

}  // namespace forms
