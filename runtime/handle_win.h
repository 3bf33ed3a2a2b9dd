#pragma once

#include <windows.h>

#include <memory>
#include <type_traits>

namespace runtime {

/// Releases a system handle with its function. What such a function answers is of no use to a destructor.
template <auto Release>
struct Releaser {
  template <class T>
  void operator()(T* handle) const noexcept {
    Release(handle);
  }
};

/// The owner of a system handle: unique<HICON, DestroyIcon>. Null is "none"; functions that say INVALID_HANDLE_VALUE
/// for it are translated where they are called.
template <class Handle, auto Release>
using unique = std::unique_ptr<std::remove_pointer_t<Handle>, Releaser<Release>>;

using unique_icon = unique<HICON, DestroyIcon>;
using unique_font = unique<HFONT, DeleteObject>;
using unique_brush = unique<HBRUSH, DeleteObject>;
using unique_pen = unique<HPEN, DeleteObject>;
using unique_menu = unique<HMENU, DestroyMenu>;
using unique_file = unique<HANDLE, CloseHandle>;
using unique_mutex = unique<HANDLE, CloseHandle>;

/// The device context of a WM_PAINT, for the time of the scope.
class PaintScope {
 public:
  explicit PaintScope(HWND window) noexcept : window_(window), dc_(BeginPaint(window, &paint_)) {}
  ~PaintScope() { EndPaint(window_, &paint_); }
  PaintScope(const PaintScope&) = delete;
  PaintScope& operator=(const PaintScope&) = delete;

  [[nodiscard]] HDC dc() const noexcept { return dc_; }

 private:
  HWND window_;
  PAINTSTRUCT paint_{};
  HDC dc_;
};

/// An object that is selected into a device context for the time of the scope.
class SelectScope {
 public:
  SelectScope(HDC dc, HGDIOBJ object) noexcept : dc_(dc), before_(SelectObject(dc, object)) {}
  ~SelectScope() { SelectObject(dc_, before_); }
  SelectScope(const SelectScope&) = delete;
  SelectScope& operator=(const SelectScope&) = delete;

 private:
  HDC dc_;
  HGDIOBJ before_;
};

/// What is drawn for the time of the scope stays within a rectangle.
class ClipScope {
 public:
  ClipScope(HDC dc, const RECT& within) noexcept : dc_(dc), before_(SaveDC(dc)) {
    IntersectClipRect(dc, within.left, within.top, within.right, within.bottom);
  }
  ~ClipScope() { RestoreDC(dc_, before_); }
  ClipScope(const ClipScope&) = delete;
  ClipScope& operator=(const ClipScope&) = delete;

 private:
  HDC dc_;
  int before_;
};

/// The device context of the whole screen, for the time of the scope.
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

}  // namespace runtime
