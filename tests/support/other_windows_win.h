#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

/// The windows of other programs: finding, reading and clicking them from outside.
namespace support {

/// UTF-8 from and to UTF-16.
[[nodiscard]] std::string Utf8(const std::wstring& text);
[[nodiscard]] std::wstring Wide(const std::string& bytes);

/// SendMessage. Returns nothing if the window does not answer within 20 s.
std::optional<LRESULT> Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

[[nodiscard]] std::wstring TextOf(HWND window);
[[nodiscard]] std::wstring ClassOf(HWND window);

/// Returns its outer edges, in the client area of its parent or on the screen.
[[nodiscard]] RECT PlaceOf(HWND window);

/// Returns every window of a process, parents before children.
[[nodiscard]] std::vector<HWND> WindowsOf(DWORD process);

/// Returns the ids of the processes that run an image, like Tidewell.exe.
[[nodiscard]] std::vector<DWORD> ProcessesOf(const std::wstring& image);

/// Returns the name that a screen reader gets; nothing if there is none.
[[nodiscard]] std::optional<std::wstring> AccessibleName(HWND window);

/// The same of what is at a place on the screen.
[[nodiscard]] std::optional<std::wstring> AccessibleNameAt(POINT place);

/// Returns the texts of the tool tips that are shown, of every process.
[[nodiscard]] std::vector<std::wstring> ShownTips();

/// Presses keys on the keyboard together, by their virtual-key codes, and lets them go.
void Press(const std::vector<WORD>& keys);

/// Moves the pointer, and clicks there with the left or the right button.
void Point(POINT at);
void Click(POINT at, bool right = false);

}  // namespace support
