#include "windows_check/ink.h"

#include <algorithm>

#include "forms/controls_win.h"
#include "runtime/handle_win.h"
#include "windows_check/check.h"
#include "windows_check/screen.h"

namespace check {

namespace {

/// Whether a pixel is far from the ground: the edges of letters that are smoothed by colours shimmer further out.
bool IsInk(COLORREF pixel, COLORREF ground) {
  const auto light = [](COLORREF colour) { return GetRValue(colour) + GetGValue(colour) + GetBValue(colour); };
  return light(ground) - light(pixel) > 3 * 64;
}

template <class At>
SIZE BoxOfInk(int from, int width, int height, At at) {
  LONG left = width, right = -1, top = height, bottom = -1;
  const COLORREF ground = at(width - 1, 0);
  for (int y = 0; y < height; ++y) {
    for (int x = from; x < width; ++x) {
      if (IsInk(at(x, y), ground)) {
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
  const runtime::ScreenScope screen;
  const HDC memory = CreateCompatibleDC(screen.dc());
  const runtime::unique_font made = forms::MakeFont(font);
  SIZE extent{};
  SIZE ink{};
  {
    const runtime::SelectScope selectFont(memory, made.get());
    GetTextExtentPoint32W(memory, text.c_str(), static_cast<int>(text.size()), &extent);
    const RECT all = {.left = 0, .top = 0, .right = extent.cx + 20, .bottom = extent.cy};
    const HBITMAP bitmap = CreateCompatibleBitmap(screen.dc(), all.right, all.bottom);
    {
      const runtime::SelectScope selectBitmap(memory, bitmap);
      FillRect(memory, &all, GetSysColorBrush(COLOR_3DFACE));
      SetBkMode(memory, TRANSPARENT);
      SetTextColor(memory, GetSysColor(COLOR_BTNTEXT));
      TextOutW(memory, 10, 0, text.c_str(), static_cast<int>(text.size()));
      ink = BoxOfInk(0, all.right, all.bottom, [&](int x, int y) { return GetPixel(memory, x, y); });
    }
    DeleteObject(bitmap);
  }
  DeleteDC(memory);
  return ink;
}

SIZE InkOfControl(HWND control, int from) {
  RECT physical{};
  {
    const PhysicalPixels scope;
    physical = ClientOnScreen(control);
  }
  RECT place = ClientOnScreen(control);
  const RECT parent = ClientOnScreen(GetParent(control));
  if (physical.right - physical.left != place.right - place.left) {
    throw NotHere(L"the system scales the window: its letters are others");
  }
  IntersectRect(&place, &place, &parent);  // the lines are wider than the window
  const Picture picture(place);
  return BoxOfInk(from, picture.Width(), picture.Height(), [&](int x, int y) { return picture.At(x, y); });
}

}  // namespace check
