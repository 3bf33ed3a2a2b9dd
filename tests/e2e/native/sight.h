// What a user sees of the program's windows.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>

HWND Main();
HWND About();
HWND Option(const wchar_t* text);
HWND Button(HWND form, const wchar_t* text);

bool Ticked(const wchar_t* option);
bool Shown(HWND window);

/// Texts, states, places and pixels of the windows, as fields KEY=VALUE with a tab before each. No message goes to a
/// window of the program's own classes.
std::string WindowsAsSeen();

std::string HashText(const void* bytes, std::size_t size);

/// Without characters that would break a line of the log.
std::string Narrow(const std::wstring& text);
