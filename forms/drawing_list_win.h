#pragma once

#include <windows.h>

#include "forms/drawing_list.h"

namespace forms {

/// The box as Windows has it.
[[nodiscard]] RECT ToRect(const Box& box) noexcept;

/// Draws the list again on a device context.
void Replay(HDC dc, const DrawingList& drawing) noexcept;

}  // namespace forms
