#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace check {

class Program;

/// Whether the icon of a window stands in the tray.
[[nodiscard]] bool IconStands(HWND owner);

/// Takes the icon of a window away; returns whether the shell did.
bool RemoveIcon(HWND owner);

/// Returns where the icon is on the screen, in the pixels of PhysicalPixels. The check ends as "not here" if the system
/// does not tell, or hides the icon.
[[nodiscard]] RECT PlaceOfIcon(HWND owner);

/// The same; nothing instead of the check's end.
[[nodiscard]] std::optional<RECT> PlaceOfIconIfKnown(HWND owner);

/// Whether an icon of the program is shown at a place, be it a dead one: a screen reader gets its tip as its name.
[[nodiscard]] bool ShowsTheIcon(const RECT& place);

/// A real click in the middle of the icon; see PlaceOfIcon.
void ClickIcon(const Program& program, bool right = false);

/// Hands the icon's message to the program as the shell does, for where the icon cannot be clicked itself.
void SendIconMessage(const Program& program, UINT message);

/// Opens the menu, by a real click on the icon if it can be clicked, and returns it.
HWND OpenMenu(const Program& program);

/// A real click on an entry of the open menu, counted from 0.
void ClickEntry(HWND menu, int entry);

/// Opens the About box by the menu.
void ShowAbout(const Program& program);

}  // namespace check
