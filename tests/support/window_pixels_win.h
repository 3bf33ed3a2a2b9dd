#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

/// The pixels of a window's client area, read at once: one by one would be slow.
class WindowPixels {
 public:
  explicit WindowPixels(HWND window) {
    RECT client{};
    GetClientRect(window, &client);
    width_ = client.right;
    height_ = client.bottom;
    BITMAPINFO description{};
    description.bmiHeader.biSize = sizeof description.bmiHeader;
    description.bmiHeader.biWidth = width_;
    description.bmiHeader.biHeight = -height_;  // top down
    description.bmiHeader.biPlanes = 1;
    description.bmiHeader.biBitCount = 32;
    const HDC from = GetDC(window);
    const HDC to = CreateCompatibleDC(from);
    void* bits = nullptr;
    const HBITMAP bitmap = CreateDIBSection(to, &description, DIB_RGB_COLORS, &bits, nullptr, 0);
    const HGDIOBJ former = SelectObject(to, bitmap);
    BitBlt(to, 0, 0, width_, height_, from, 0, 0, SRCCOPY);
    GdiFlush();
    const auto* const pixels = static_cast<const std::uint32_t*>(bits);
    pixels_.assign(pixels, pixels + width_ * height_);
    SelectObject(to, former);
    DeleteObject(bitmap);
    DeleteDC(to);
    ReleaseDC(window, from);
  }

  [[nodiscard]] int Width() const noexcept { return width_; }
  [[nodiscard]] int Height() const noexcept { return height_; }

  [[nodiscard]] COLORREF At(int x, int y) const {
    const std::uint32_t pixel = pixels_.at(static_cast<std::size_t>(y * width_ + x));
    return RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
  }

  bool operator==(const WindowPixels&) const = default;

 private:
  int width_ = 0;
  int height_ = 0;
  std::vector<std::uint32_t> pixels_;
};
