#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace check {

/// While it lives, places on the screen are counted in real pixels, also where the system scales this program.
class PhysicalPixels {
 public:
  PhysicalPixels() noexcept;
  ~PhysicalPixels();
  PhysicalPixels(const PhysicalPixels&) = delete;
  PhysicalPixels& operator=(const PhysicalPixels&) = delete;

 private:
  void* before_;
};

/// Returns the client area of a window, on the screen.
[[nodiscard]] RECT ClientOnScreen(HWND window);

/// Pixels.
class Picture {
 public:
  /// What a function paints.
  Picture(int width, int height, const std::function<void(HDC)>& paint);

  /// What a piece of the screen shows. To be used within PhysicalPixels.
  explicit Picture(const RECT& place);

  [[nodiscard]] int Width() const noexcept { return width_; }
  [[nodiscard]] int Height() const noexcept { return height_; }
  [[nodiscard]] COLORREF At(int x, int y) const;

  /// Writes it as a PNG file into the current folder.
  void Save(const std::wstring& name) const;

 private:
  int width_, height_;
  std::vector<std::uint32_t> pixels_;
};

/// Writes a picture of a place and what is around it, as far as it is on a screen.
void SavePicture(const RECT& place, int around, const std::wstring& name);

/// Moves the pointer where it covers nothing, and waits until what it was over is painted anew.
void RestPointer();

/// How long the system may take to paint what has changed.
inline constexpr DWORD kPainting = 300;  // ms

}  // namespace check
