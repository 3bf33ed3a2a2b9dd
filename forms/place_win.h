#pragma once

#include <windows.h>

namespace forms {

/// Returns the outer edges of a window with a client area of the given size in twips, centred on the main screen's work
/// area.
[[nodiscard]] RECT CentredPlace(int clientWidth, int clientHeight, DWORD style, DWORD exStyle);

/// Shows a window and brings it to the foreground, restored if it was minimised.
void ShowInForeground(HWND window);

/// Makes a window topmost at its present place and size. The result is not checked.
void MakeTopmost(HWND window);

}  // namespace forms
