#pragma once

#include <windows.h>

#include <string>

/// The face, height and weight of a control's font, such as L"Arial -13 700". A negative height is that of the
/// characters, without the leading.
inline std::wstring FontOf(HWND control) {
  LOGFONTW font{};
  GetObjectW(reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)), sizeof font, &font);
  return std::wstring(font.lfFaceName) + L" " + std::to_wstring(font.lfHeight) + L" " + std::to_wstring(font.lfWeight);
}
