#pragma once

#include <windows.h>

#include <span>

#include "forms/drawing_list.h"

namespace forms {

/// Reads the scale of drawings on the screen. Error: 7 Out of memory.
[[nodiscard]] PixelScale ReadPixelScale();

/// Draws primitives, scaled, on a device context, and leaves the context's pen, brush and clip region changed. Creates
/// no objects: they may have run out. Returns whether all of it was drawn.
[[nodiscard]] bool Replay(HDC dc, std::span<const Primitive> drawing, const PixelScale& scale) noexcept;

}  // namespace forms
