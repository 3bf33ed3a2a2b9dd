#pragma once

#include <windows.h>

#include <vector>

/// A bitmap in memory: something to paint on, or a copy of what a window or the screen shows. Reading the screen itself
/// pixel by pixel would be slow.
class Pixels {
 public:
  Pixels(int width, int height) : width_(width), height_(height) {
    BITMAPINFO description{};
    description.bmiHeader.biSize = sizeof description.bmiHeader;
    description.bmiHeader.biWidth = width;
    description.bmiHeader.biHeight = -height;  // top down
    description.bmiHeader.biPlanes = 1;
    description.bmiHeader.biBitCount = 32;
    bitmap_ = CreateDIBSection(dc_, &description, DIB_RGB_COLORS, reinterpret_cast<void**>(&pixels_), nullptr, 0);
    SelectObject(dc_, bitmap_);
  }
  /// Copies a part of a window's client area, or of the screen if the window is null.
  Pixels(HWND window, const RECT& part) : Pixels(part.right - part.left, part.bottom - part.top) {
    const HDC from = GetDC(window);
    BitBlt(dc_, 0, 0, width_, height_, from, part.left, part.top, SRCCOPY | CAPTUREBLT);
    ReleaseDC(window, from);
  }
  explicit Pixels(HWND window) : Pixels(window, ClientOf(window)) {}
  ~Pixels() {
    DeleteDC(dc_);
    DeleteObject(bitmap_);
  }
  Pixels(const Pixels&) = delete;
  Pixels& operator=(const Pixels&) = delete;

  [[nodiscard]] HDC dc() const noexcept { return dc_; }
  [[nodiscard]] HBITMAP bitmap() const noexcept { return bitmap_; }
  [[nodiscard]] int Width() const noexcept { return width_; }
  [[nodiscard]] int Height() const noexcept { return height_; }

  [[nodiscard]] COLORREF At(int x, int y) const {
    GdiFlush();
    const DWORD pixel = pixels_[y * width_ + x];
    return RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
  }

  /// Row by row from the top, each 0x00RRGGBB.
  [[nodiscard]] std::vector<DWORD> All() const {
    GdiFlush();
    return {pixels_, pixels_ + width_ * height_};
  }

  bool operator==(const Pixels& other) const { return All() == other.All(); }

 private:
  static RECT ClientOf(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    return client;
  }

  int width_, height_;
  HDC dc_ = CreateCompatibleDC(nullptr);
  HBITMAP bitmap_;
  DWORD* pixels_ = nullptr;
};
