#pragma once

#include <windows.h>

#include <string>

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

/// Saves a place of the screen and its surroundings as tidewell-NAME.png in the current folder. Use it within
/// PhysicalPixels.
void SavePicture(const RECT& place, int around, const std::wstring& name);

/// Moves the pointer into a corner and waits for the repaint.
void RestPointer();

/// How long the system may take to repaint.
inline constexpr DWORD kPainting = 300;  // ms

}  // namespace check
