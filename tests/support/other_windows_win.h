#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

/// Finds, reads and clicks the windows of other programs.
namespace support {

/// Convert between UTF-8 and UTF-16.
[[nodiscard]] std::string Utf8(const std::wstring& text);
[[nodiscard]] std::wstring Wide(const std::string& bytes);

/// SendMessage; nothing if the window does not answer within 20 s.
std::optional<LRESULT> Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

[[nodiscard]] std::wstring TextOf(HWND window);
[[nodiscard]] std::wstring ClassOf(HWND window);

/// Returns a window's rectangle in its parent's client area; a top-level window's on the screen.
[[nodiscard]] RECT PlaceOf(HWND window);

/// Returns every window of a process, parents before children.
[[nodiscard]] std::vector<HWND> WindowsOf(DWORD process);

/// Returns the ids of the processes of an image, like Tidewell.exe.
[[nodiscard]] std::vector<DWORD> ProcessesOf(const std::wstring& image);

/// Returns the name that a screen reader gets; nothing if there is none.
[[nodiscard]] std::optional<std::wstring> AccessibleName(HWND window);

/// The same for what is at a point of the screen.
[[nodiscard]] std::optional<std::wstring> AccessibleNameAt(POINT place);

/// Returns the texts of the shown tooltips of every process.
[[nodiscard]] std::vector<std::wstring> ShownTips();

/// Presses keys together, by their virtual-key codes, and releases them.
void Press(const std::vector<WORD>& keys);

/// Moves the pointer and clicks.
void Click(POINT at, bool right = false);

}  // namespace support
