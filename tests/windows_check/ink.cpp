#include "windows_check/ink.h"

#include <algorithm>

#include "forms/controls_win.h"
#include "windows_check/check.h"
#include "windows_check/screen.h"

namespace check {

namespace {

/// Whether a pixel is much darker than the ground. Letters smoothed with ClearType have fainter pixels further out.
bool IsInk(COLORREF pixel, COLORREF ground) {
  const auto light = [](COLORREF colour) { return GetRValue(colour) + GetGValue(colour) + GetBValue(colour); };
  return light(ground) - light(pixel) > 3 * 64;
}

SIZE InkOf(const Picture& picture) {
  LONG left = picture.Width(), right = -1, top = picture.Height(), bottom = -1;
  const COLORREF ground = picture.At(picture.Width() - 1, 0);
  for (int y = 0; y < picture.Height(); ++y) {
    for (int x = 0; x < picture.Width(); ++x) {
      if (IsInk(picture.At(x, y), ground)) {
        left = std::min<LONG>(left, x);
        right = std::max<LONG>(right, x);
        top = std::min<LONG>(top, y);
        bottom = std::max<LONG>(bottom, y);
      }
    }
  }
  return {.cx = std::max(0L, right - left + 1), .cy = std::max(0L, bottom - top + 1)};
}

}  // namespace

SIZE InkOfText(const std::wstring& text, const forms::FontDescription& font) {
  constexpr RECT kRoom = {.left = 0, .top = 0, .right = 1600, .bottom = 200};
  const runtime::unique_font made = forms::MakeFont(font);
  const Picture picture(kRoom.right, kRoom.bottom, [&](HDC dc) {
    const HGDIOBJ before = SelectObject(dc, made.get());
    FillRect(dc, &kRoom, GetSysColorBrush(COLOR_3DFACE));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, GetSysColor(COLOR_BTNTEXT));
    TextOutW(dc, 20, 20, text.c_str(), static_cast<int>(text.size()));
    SelectObject(dc, before);
  });
  return InkOf(picture);
}

SIZE InkOfControl(HWND control, int from, int border) {
  RECT physical{};
  {
    const PhysicalPixels scope;
    physical = ClientOnScreen(control);
  }
  RECT place = ClientOnScreen(control);
  const RECT parent = ClientOnScreen(GetParent(control));
  if (physical.right - physical.left != place.right - place.left) {
    throw NotHere(L"the system scales the window, so its letters differ");
  }
  IntersectRect(&place, &place, &parent);  // the lines are wider than the window
  place.left += from;
  InflateRect(&place, -border, -border);
  return InkOf(Picture(place));
}

}  // namespace check
