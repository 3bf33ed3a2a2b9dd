#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "support/pixels_win.h"

namespace check {

/// While it lives, this thread's coordinates are real pixels, even if the system scales the program.
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

class Picture {
 public:
  /// Takes what a function paints.
  template <class Paint>
  Picture(int width, int height, const Paint& paint)
      : width_(width), height_(height), pixels_(PixelsPaintedBy(width, height, paint)) {}

  /// Takes a part of the screen. Use it within PhysicalPixels.
  explicit Picture(const RECT& place);

  [[nodiscard]] int Width() const noexcept { return width_; }
  [[nodiscard]] int Height() const noexcept { return height_; }
  [[nodiscard]] COLORREF At(int x, int y) const;

  /// Saves it as tidewell-NAME.png in the current folder.
  void Save(const std::wstring& name) const;

 private:
  int width_, height_;
  std::vector<DWORD> pixels_;
};

/// Saves a picture of a place and its surroundings, as far as they are on a screen.
void SavePicture(const RECT& place, int around, const std::wstring& name);

/// Moves the pointer into a corner and waits for the repaint.
void RestPointer();

/// How long the system may take to repaint.
inline constexpr DWORD kPainting = 300;  // ms

}  // namespace check
