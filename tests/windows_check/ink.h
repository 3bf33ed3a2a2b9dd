#pragma once

#include <windows.h>

#include <string>

#include "forms/form_description.h"

namespace check {

/// Returns the size of the box around the pixels of a text in a font, in the pixels of this program.
[[nodiscard]] SIZE InkOfText(const std::wstring& text, const forms::FontDescription& font);

/// Returns the same of what a control shows on the screen, without what is left of a place in it, and without a border.
[[nodiscard]] SIZE InkOfControl(HWND control, int from = 0, int border = 0);

}  // namespace check
