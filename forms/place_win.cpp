#include "forms/place_win.h"

#include "forms/controls_win.h"

namespace forms {

RECT CentredPlace(int clientWidth, int clientHeight, DWORD style, DWORD exStyle) {
  RECT outer = ToPixels({0, 0, clientWidth, clientHeight}, ReadTwipsPerPixel());
  AdjustWindowRectEx(&outer, style, FALSE, exStyle);
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  const LONG width = outer.right - outer.left;
  const LONG height = outer.bottom - outer.top;
  const LONG left = work.left + (work.right - work.left - width) / 2;
  const LONG top = work.top + (work.bottom - work.top - height) / 2;
  return {.left = left, .top = top, .right = left + width, .bottom = top + height};
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
