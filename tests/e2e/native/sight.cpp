#include "sight.h"

#include <cstdint>

namespace {

std::uint64_t Hash(const void* bytes, std::size_t size) {
  std::uint64_t hash = 14695981039346656037U;
  for (const auto* byte = static_cast<const unsigned char*>(bytes); size > 0; ++byte, --size) {
    hash = (hash ^ *byte) * 1099511628211U;
  }
  return hash;
}

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

/// The pixels of a window's inside, as they are on the screen.
class Picture {
 public:
  explicit Picture(HWND window) {
    RECT inside{};
    GetClientRect(window, &inside);
    BITMAPINFOHEADER& header = description_.bmiHeader;
    header.biSize = sizeof header;
    header.biWidth = inside.right;
    header.biHeight = inside.bottom;
    header.biPlanes = 1;
    header.biBitCount = 24;
    const HDC from = GetDC(window);
    const HDC to = CreateCompatibleDC(from);
    const HBITMAP bitmap = CreateDIBSection(to, &description_, DIB_RGB_COLORS, &bits_, nullptr, 0);
    const HGDIOBJ former = SelectObject(to, bitmap);
    BitBlt(to, 0, 0, inside.right, inside.bottom, from, 0, 0, SRCCOPY);
    GdiFlush();
    rows_.assign(static_cast<char*>(bits_), static_cast<char*>(bits_) + RowSize() * inside.bottom);
    SelectObject(to, former);
    DeleteObject(bitmap);
    DeleteDC(to);
    ReleaseDC(window, from);
  }

  std::string HashOfAll() const { return HashText(rows_.data(), rows_.size()); }

  /// The hash of the Moon's square, or "blank" if it is of one colour.
  std::string HashOfMoon() const {
    constexpr int kLeft = 60;
    constexpr int kTop = 20;
    constexpr int kSide = 131;
    std::string square;
    for (int row = kTop; row < kTop + kSide && row < description_.bmiHeader.biHeight; ++row) {
      square += rows_.substr(RowSize() * (description_.bmiHeader.biHeight - 1 - row) + 3 * kLeft, 3 * kSide);
    }
    return square.find_first_not_of(square[0]) == std::string::npos ? "blank" : HashText(square.data(), square.size());
  }

 private:
  std::size_t RowSize() const { return (description_.bmiHeader.biWidth * 3 + 3) / 4 * 4; }

  BITMAPINFO description_{};
  void* bits_ = nullptr;
  std::string rows_;
};

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
    const Picture picture(main);
    seen += Field("place", PlaceOf(main)) + Field("moon", picture.HashOfMoon()) + Field("window", picture.HashOfAll());
  }
  if (Shown(About())) {
    seen += Field("about-place", PlaceOf(About())) + Field("about-window", Picture(About()).HashOfAll());
  }
  return seen;
}

std::string HashText(const void* bytes, std::size_t size) {
  char text[20];
  wsprintfA(text, "%08x", static_cast<unsigned>(Hash(bytes, size)));
  return text;
}

std::string Narrow(const std::wstring& text) {
  std::string narrow;
  for (const wchar_t c : text) {
    narrow += c < 0x80 && c != L'\t' && c != L'\n' ? static_cast<char>(c) : '?';
  }
  return narrow;
}
