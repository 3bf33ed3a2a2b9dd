#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace check {

class Program;

/// Whether a window's icon is in the tray.
[[nodiscard]] bool IconStands(HWND owner);

/// Removes a window's icon; returns whether the shell did.
bool RemoveIcon(HWND owner);

/// Returns where the icon is on the screen, in the pixels of PhysicalPixels; nothing if the system does not tell, or
/// hides the icon.
[[nodiscard]] std::optional<RECT> FindIcon(HWND owner);

/// The same, but then the check ends.
[[nodiscard]] RECT PlaceOfIcon(HWND owner);

/// Whether an icon of the program is at a place, even of an ended one. Its tip is its name for a screen reader.
[[nodiscard]] bool ShowsTheIcon(const RECT& place);

/// A real click in the middle of the icon; see PlaceOfIcon.
void ClickIcon(const Program& program, bool right = false);

/// Sends the icon's message as the shell does, for an icon that cannot be clicked.
void SendIconMessage(const Program& program, UINT message);

/// Opens the menu, by a real click on the icon if possible, and returns it.
HWND OpenMenu(const Program& program);

/// A real click on an entry of the open menu, counted from 0.
void ClickEntry(HWND menu, int entry);

/// Opens the About box from the menu.
void ShowAbout(const Program& program);

}  // namespace check
