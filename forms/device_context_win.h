#pragma once

#include <windows.h>

#include "forms/paint_retry_win.h"

namespace forms {

/// The device context of a WM_PAINT within a scope; null if the system refuses it. PaintRetry notes that, and a
/// background that the system has not erased.
class PaintScope {
 public:
  PaintScope(HWND window, PaintRetry& retry) noexcept : window_(window), dc_(BeginPaint(window, &paint_)) {
    retry.Note(dc_ != nullptr && paint_.fErase == FALSE);
  }
  ~PaintScope() {
    if (dc_ != nullptr) {
      EndPaint(window_, &paint_);
    } else {
      ValidateRect(window_, nullptr);  // or WM_PAINT would come again at once, for ever
    }
  }
  PaintScope(const PaintScope&) = delete;
  PaintScope& operator=(const PaintScope&) = delete;

  [[nodiscard]] HDC dc() const noexcept { return dc_; }

 private:
  HWND window_;
  PAINTSTRUCT paint_{};
  HDC dc_;
};

/// The device context of the whole screen within a scope; null if the system refuses it.
class ScreenScope {
 public:
  ScreenScope() noexcept : dc_(GetDC(nullptr)) {}
  ~ScreenScope() { ReleaseDC(nullptr, dc_); }
  ScreenScope(const ScreenScope&) = delete;
  ScreenScope& operator=(const ScreenScope&) = delete;

  [[nodiscard]] HDC dc() const noexcept { return dc_; }

 private:
  HDC dc_;
};

}  // namespace forms
