#pragma once

#include <windows.h>

#include <vector>

namespace support {

/// Returns the pixels that a function paints on a device context: row by row from the top, each 0x00RRGGBB.
template <class Paint>
[[nodiscard]] std::vector<DWORD> Painted(int width, int height, const Paint& paint) {
  BITMAPINFO description{};
  description.bmiHeader.biSize = sizeof description.bmiHeader;
  description.bmiHeader.biWidth = width;
  description.bmiHeader.biHeight = -height;  // top down
  description.bmiHeader.biPlanes = 1;
  description.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  const HDC dc = CreateCompatibleDC(nullptr);
  const HBITMAP bitmap = CreateDIBSection(dc, &description, DIB_RGB_COLORS, &bits, nullptr, 0);
  const HGDIOBJ former = SelectObject(dc, bitmap);
  paint(dc);
  GdiFlush();
  const auto* const pixels = static_cast<const DWORD*>(bits);
  std::vector<DWORD> painted(pixels, pixels + width * height);
  SelectObject(dc, former);
  DeleteObject(bitmap);
  DeleteDC(dc);
  return painted;
}

}  // namespace support
