#pragma once

#include <windows.h>
// These need windows.h first.
#include <oleacc.h>
#include <tlhelp32.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// Finds, reads and clicks the windows of other programs.
namespace support {

/// Convert between UTF-8 and UTF-16.
[[nodiscard]] inline std::string Utf8(const std::wstring& text) {
  const std::u8string bytes = std::filesystem::path(text).u8string();
  return {bytes.begin(), bytes.end()};
}
[[nodiscard]] inline std::wstring Wide(const std::string& bytes) {
  return std::filesystem::path(std::u8string(bytes.begin(), bytes.end())).wstring();
}

/// SendMessage, but empty if the window is silent for 20 s.
inline std::optional<LRESULT> Ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
  constexpr UINT kPatience = 20000;  // ms
  DWORD_PTR result = 0;
  SetLastError(0);
  if (SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, kPatience, &result) == 0) {
    return std::nullopt;
  }
  return static_cast<LRESULT>(result);
}

[[nodiscard]] inline std::wstring TextOf(HWND window) {
  std::wstring text(1024, L'\0');
  const auto length = Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(length.value_or(0)));
  return text;
}

[[nodiscard]] inline std::wstring ClassOf(HWND window) {
  wchar_t name[256] = L"";
  GetClassNameW(window, name, 256);
  return name;
}

/// Returns a window's rectangle in its parent's client area; a top-level window's on the screen.
[[nodiscard]] inline RECT PlaceOf(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  MapWindowPoints(HWND_DESKTOP, GetAncestor(window, GA_PARENT), reinterpret_cast<POINT*>(&place), 2);
  return place;
}

/// A callback of EnumWindows and EnumChildWindows.
inline BOOL CALLBACK Gather(HWND window, LPARAM windows) {
  reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
  return TRUE;
}

[[nodiscard]] inline std::vector<HWND> TopLevelWindows() {
  std::vector<HWND> windows;
  EnumWindows(Gather, reinterpret_cast<LPARAM>(&windows));
  return windows;
}

/// Returns every window of a process, parents before children.
[[nodiscard]] inline std::vector<HWND> WindowsOf(DWORD process) {
  std::vector<HWND> found;
  for (const HWND top : TopLevelWindows()) {
    DWORD owner = 0;
    GetWindowThreadProcessId(top, &owner);
    if (owner == process) {
      found.push_back(top);
      EnumChildWindows(top, Gather, reinterpret_cast<LPARAM>(&found));
    }
  }
  return found;
}

/// Returns the ids of the processes of an image, like Tidewell.exe.
[[nodiscard]] inline std::vector<DWORD> ProcessesOf(const std::wstring& image) {
  std::vector<DWORD> ids;
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  for (BOOL more = Process32FirstW(snapshot, &entry); more; more = Process32NextW(snapshot, &entry)) {
    if (lstrcmpiW(entry.szExeFile, image.c_str()) == 0) {
      ids.push_back(entry.th32ProcessID);
    }
  }
  CloseHandle(snapshot);
  return ids;
}

/// Returns the name of an object and releases it.
inline std::optional<std::wstring> NameAndRelease(IAccessible* object, const VARIANT& child) {
  BSTR name = nullptr;
  object->get_accName(child, &name);
  const auto found = name != nullptr ? std::optional(std::wstring(name)) : std::nullopt;
  SysFreeString(name);
  object->Release();
  return found;
}

/// Returns the name that a screen reader gets; nothing if there is none.
[[nodiscard]] inline std::optional<std::wstring> AccessibleName(HWND window) {
  IAccessible* object = nullptr;
  if (FAILED(AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                        reinterpret_cast<void**>(&object)))) {
    return std::nullopt;
  }
  VARIANT self{};
  self.vt = VT_I4;
  self.lVal = CHILDID_SELF;
  return NameAndRelease(object, self);
}

/// The same for a point on the screen.
[[nodiscard]] inline std::optional<std::wstring> AccessibleNameAt(POINT place) {
  IAccessible* object = nullptr;
  VARIANT child{};
  if (FAILED(AccessibleObjectFromPoint(place, &object, &child))) {
    return std::nullopt;
  }
  return NameAndRelease(object, child);
}

/// Returns the texts of the shown tooltips of every process.
[[nodiscard]] inline std::vector<std::wstring> ShownTips() {
  std::vector<std::wstring> tips;
  for (const HWND window : TopLevelWindows()) {
    if (IsWindowVisible(window) != FALSE && ClassOf(window) == L"tooltips_class32") {
      tips.push_back(TextOf(window));
    }
  }
  return tips;
}

/// Presses keys together, by their virtual-key codes, and releases them.
inline void Press(const std::vector<WORD>& keys) {
  const auto send = [](WORD key, DWORD flags) {
    keybd_event(static_cast<BYTE>(key), static_cast<BYTE>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC)), flags, 0);
  };
  for (const WORD key : keys) {
    send(key, 0);
  }
  for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
    send(*key, KEYEVENTF_KEYUP);
  }
}

/// Moves the pointer and clicks.
inline void Click(POINT at, bool right = false) {
  SetCursorPos(at.x, at.y);
  mouse_event(right ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
  mouse_event(right ? MOUSEEVENTF_RIGHTUP : MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
}

}  // namespace support
