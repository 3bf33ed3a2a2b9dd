#pragma once

#include <windows.h>

#include "forms/drawing_list.h"

namespace forms {

/// The box as Windows has it.
[[nodiscard]] RECT ToRect(const Box& box) noexcept;

/// Reads how far a drawing is to be scaled for the screen. Error: 7 Out of memory when the system refuses.
[[nodiscard]] PixelScale ReadPixelScale();

/// Draws the list again, scaled, on a device context, whose pen, brush and clip region it leaves changed: they end with
/// the painting. Creates no objects, so that it needs nothing that may have run out. Returns whether all of it was
/// drawn.
[[nodiscard]] bool Replay(HDC dc, const DrawingList& drawing, const PixelScale& scale) noexcept;

}  // namespace forms
