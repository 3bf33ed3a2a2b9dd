#pragma once

#include <windows.h>

#include <string>

#include "forms/form_description.h"

namespace check {

/// Returns the bounds of a text's pixels in a font, in this program's pixels.
[[nodiscard]] SIZE InkOfText(const std::wstring& text, const forms::FontDescription& font);

/// Returns the same for a control on the screen. Ignores a border and whatever lies left of x = `from`.
[[nodiscard]] SIZE InkOfControl(HWND control, int from = 0, int border = 0);

}  // namespace check
