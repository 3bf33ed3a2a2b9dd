#include "sight.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <vector>

#include "support/pixels_win.h"

namespace {

/// Without a message to the window.
std::string TextOf(HWND window) {
  wchar_t text[256] = L"";
  InternalGetWindowText(window, text, 256);
  return Narrow(text);
}

std::string StateOf(HWND window) {
  return window == nullptr                  ? "none"
         : IsWindowVisible(window) == FALSE ? "hidden"
         : IsIconic(window) != FALSE        ? "minimised"
                                            : "shown";
}

std::string PlaceOf(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  return std::to_string(place.left) + "," + std::to_string(place.top) + "," + std::to_string(place.right) + "," +
         std::to_string(place.bottom);
}

/// The hash of a window's pixels as they are on the screen, or "blank" if they are of one colour.
std::string HashOfPixels(HWND window, const RECT& part) {
  const int width = part.right - part.left;
  const int height = part.bottom - part.top;
  const std::vector<DWORD> pixels = PixelsPaintedBy(width, height, [&](HDC dc) {
    const HDC from = GetDC(window);
    BitBlt(dc, 0, 0, width, height, from, part.left, part.top, SRCCOPY);
    ReleaseDC(window, from);
  });
  const bool blank = std::ranges::count(pixels, pixels[0]) == std::ssize(pixels);
  return blank ? "blank" : HashText(pixels.data(), pixels.size() * sizeof pixels[0]);
}

std::string HashOfMoon(HWND main) { return HashOfPixels(main, {60, 20, 191, 151}); }

std::string HashOfWindow(HWND window) {
  RECT inside{};
  GetClientRect(window, &inside);
  return HashOfPixels(window, inside);
}

std::string Field(const char* key, const std::string& value) { return std::string("\t") + key + "=" + value; }

}  // namespace

HWND Main() { return FindWindowW(L"TidewellMoon", nullptr); }
HWND About() { return FindWindowW(L"TidewellAbout", nullptr); }
HWND Option(const wchar_t* text) {
  return FindWindowExW(FindWindowExW(Main(), nullptr, L"TidewellFrame", nullptr), nullptr, nullptr, text);
}
HWND Button(HWND form, const wchar_t* text) { return FindWindowExW(form, nullptr, nullptr, text); }
bool Ticked(const wchar_t* option) { return SendMessageW(Option(option), BM_GETCHECK, 0, 0) == BST_CHECKED; }
bool Shown(HWND window) { return IsWindowVisible(window) != FALSE && IsIconic(window) == FALSE; }

std::string WindowsAsSeen() {
  const HWND main = Main();
  std::string lines;
  for (HWND label = nullptr; (label = FindWindowExW(main, label, L"Static", nullptr)) != nullptr;) {
    lines += TextOf(label) + "|";
  }
  std::string seen = Field("main", StateOf(main)) + Field("about", StateOf(About())) + Field("lines", lines) +
                     Field("options", std::to_string(Ticked(L"Restore in System Tray")) +
                                          std::to_string(Ticked(L"Enable Southern Hemisphere View"))) +
                     Field("topmost", (GetWindowLongW(main, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0 ? "yes" : "no");
  if (Shown(main)) {
    seen += Field("place", PlaceOf(main)) + Field("moon", HashOfMoon(main)) + Field("window", HashOfWindow(main));
  }
  if (Shown(About())) {
    seen += Field("about-place", PlaceOf(About())) + Field("about-window", HashOfWindow(About()));
  }
  return seen;
}

std::string HashText(const void* bytes, std::size_t size) {
  const std::string_view text(static_cast<const char*>(bytes), size);
  return std::to_string(std::hash<std::string_view>()(text));
}

std::string Narrow(const std::wstring& text) {
  std::string narrow;
  for (const wchar_t c : text) {
    narrow += c < 0x80 && c != L'\t' && c != L'\n' ? static_cast<char>(c) : '?';
  }
  return narrow;
}
