#pragma once

#include <windows.h>

namespace forms {

/// Returns the outer edges of a window with a client area of the given size in twips, centred on the main screen's work
/// area. Error: 7 Out of memory if the system refuses to tell the edges.
[[nodiscard]] RECT CentredPlace(int clientWidth, int clientHeight, DWORD style, DWORD exStyle);

/// Brings a window that is on no screen to the middle of the main one. Hidden windows stay: their screen may come back.
/// Call it for every message of a form; it looks at those that show the window or change the screens.
void StayOnScreen(HWND window, UINT message, WPARAM wParam);

/// Returns the work area of the screen that a window is on, or was on before it was hidden.
[[nodiscard]] RECT WorkAreaOf(HWND window);

/// Moves a window into the middle of a work area.
void Centre(HWND window, const RECT& work);

/// Shows a window and brings it to the foreground, restored if it was minimised.
void ShowInForeground(HWND window);

/// Makes a window topmost at its present place and size. The result is not checked. This activates even a hidden window
/// unless its form adds SWP_NOACTIVATE in WM_WINDOWPOSCHANGING.
void MakeTopmost(HWND window);

}  // namespace forms
