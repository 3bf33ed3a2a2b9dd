#pragma once

#include <windows.h>

#include "forms/drawing_list.h"

namespace forms {

/// The box as Windows has it.
[[nodiscard]] RECT ToRect(const Box& box) noexcept;

/// Draws the list again on a device context, whose pen, brush and clip region it leaves changed: they end with the
/// painting. Creates no objects, so that it needs nothing that may have run out. Returns whether all of it was drawn.
[[nodiscard]] bool Replay(HDC dc, const DrawingList& drawing) noexcept;

}  // namespace forms
