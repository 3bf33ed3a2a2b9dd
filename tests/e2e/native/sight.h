// What a user sees of the program's windows.
#pragma once

#include <windows.h>

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "support/pixels_win.h"

constexpr const wchar_t* kRestore = L"Restore in System Tray";
constexpr const wchar_t* kSouth = L"Enable Southern Hemisphere View";

inline HWND Main() { return FindWindowW(L"TidewellMoon", nullptr); }
inline HWND About() { return FindWindowW(L"TidewellAbout", nullptr); }
inline HWND Button(HWND form, const wchar_t* text) { return FindWindowExW(form, nullptr, nullptr, text); }
inline HWND Option(const wchar_t* text) {
  return Button(FindWindowExW(Main(), nullptr, L"TidewellFrame", nullptr), text);
}

inline bool Ticked(const wchar_t* option) { return SendMessageW(Option(option), BM_GETCHECK, 0, 0) == BST_CHECKED; }
inline bool Shown(HWND window) { return IsWindowVisible(window) != FALSE && IsIconic(window) == FALSE; }

/// Keeps ASCII, but no tab or newline: it would break the log.
inline std::string Narrow(const std::wstring& text) {
  std::string narrow;
  for (const wchar_t c : text) {
    narrow += c < 0x80 && c != L'\t' && c != L'\n' ? static_cast<char>(c) : '?';
  }
  return narrow;
}

/// The hash of pixels, or "blank" if they are of one colour.
inline std::string HashOf(const std::vector<DWORD>& pixels) {
  const std::string_view bytes(reinterpret_cast<const char*>(pixels.data()), pixels.size() * sizeof pixels[0]);
  const bool blank = std::ranges::count(pixels, pixels[0]) == std::ssize(pixels);
  return blank ? "blank" : std::to_string(std::hash<std::string_view>()(bytes));
}

inline std::string PlaceOf(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  return std::to_string(place.left) + "," + std::to_string(place.top) + "," + std::to_string(place.right) + "," +
         std::to_string(place.bottom);
}

/// Texts, states, places and pixels of the windows, as fields KEY=VALUE with a tab before each. Sends no message to a
/// window of the program's own classes.
inline std::string WindowsAsSeen() {
  const auto state = [](HWND window) {
    return window == nullptr                  ? "none"
           : IsWindowVisible(window) == FALSE ? "hidden"
           : IsIconic(window) != FALSE        ? "minimised"
                                              : "shown";
  };
  const HWND main = Main();
  std::string seen = std::string("\tmain=") + state(main) + "\tabout=" + state(About()) + "\tlines=";
  for (HWND label = nullptr; (label = FindWindowExW(main, label, L"Static", nullptr)) != nullptr;) {
    wchar_t text[256] = L"";
    InternalGetWindowText(label, text, 256);
    seen += Narrow(text) + "|";
  }
  seen += "\toptions=" + std::to_string(Ticked(kRestore)) + std::to_string(Ticked(kSouth)) +
          "\ttopmost=" + std::to_string((GetWindowLongW(main, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0);
  if (Shown(main)) {
    seen += "\tplace=" + PlaceOf(main) + "\tmoon=" + HashOf(Pixels(main, {60, 20, 191, 151}).All()) +
            "\twindow=" + HashOf(Pixels(main).All());
  }
  if (Shown(About())) {
    seen += "\tabout-place=" + PlaceOf(About()) + "\tabout-window=" + HashOf(Pixels(About()).All());
  }
  return seen;
}
