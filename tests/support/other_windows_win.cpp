#include "support/other_windows_win.h"

// These need windows.h first.
#include <oleacc.h>
#include <tlhelp32.h>

namespace support {

namespace {

constexpr UINT kPatience = 20000;  // ms

struct Gathering {
  DWORD process;
  std::vector<HWND> windows;
};

BOOL CALLBACK GatherTopLevel(HWND window, LPARAM parameter) {
  auto& gathering = *reinterpret_cast<Gathering*>(parameter);
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process == gathering.process) {
    gathering.windows.push_back(window);
  }
  return TRUE;
}

BOOL CALLBACK GatherChild(HWND window, LPARAM parameter) {
  reinterpret_cast<Gathering*>(parameter)->windows.push_back(window);
  return TRUE;
}

BOOL CALLBACK GatherTip(HWND window, LPARAM parameter) {
  if (IsWindowVisible(window) != FALSE && ClassOf(window) == L"tooltips_class32") {
    reinterpret_cast<std::vector<std::wstring>*>(parameter)->push_back(TextOf(window));
  }
  return TRUE;
}

std::optional<std::wstring> NameAndRelease(IAccessible* object, const VARIANT& child) {
  BSTR name = nullptr;
  object->get_accName(child, &name);
  const auto found = name != nullptr ? std::optional(std::wstring(name)) : std::nullopt;
  SysFreeString(name);
  object->Release();
  return found;
}

}  // namespace

std::string Utf8(const std::wstring& text) {
  const int length =
      WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(length), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), bytes.data(), length, nullptr, nullptr);
  return bytes;
}

std::wstring Wide(const std::string& bytes) {
  const int length = MultiByteToWideChar(CP_UTF8, 0, bytes.data(), static_cast<int>(bytes.size()), nullptr, 0);
  std::wstring text(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, bytes.data(), static_cast<int>(bytes.size()), text.data(), length);
  return text;
}

std::optional<LRESULT> Ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  DWORD_PTR result = 0;
  SetLastError(0);
  if (SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, kPatience, &result) == 0) {
    return std::nullopt;
  }
  return static_cast<LRESULT>(result);
}

std::wstring TextOf(HWND window) {
  std::wstring text(1024, L'\0');
  const auto length = Ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
  text.resize(static_cast<std::size_t>(length.value_or(0)));
  return text;
}

std::wstring ClassOf(HWND window) {
  wchar_t name[256] = L"";
  GetClassNameW(window, name, 256);
  return name;
}

RECT PlaceOf(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  MapWindowPoints(HWND_DESKTOP, GetAncestor(window, GA_PARENT), reinterpret_cast<POINT*>(&place), 2);
  return place;
}

std::vector<HWND> WindowsOf(DWORD process) {
  Gathering top = {.process = process, .windows = {}};
  EnumWindows(GatherTopLevel, reinterpret_cast<LPARAM>(&top));
  Gathering all = {.process = process, .windows = {}};
  for (const HWND window : top.windows) {
    all.windows.push_back(window);
    EnumChildWindows(window, GatherChild, reinterpret_cast<LPARAM>(&all));
  }
  return all.windows;
}

std::vector<DWORD> ProcessesOf(const std::wstring& image) {
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

std::optional<std::wstring> AccessibleName(HWND window) {
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

std::optional<std::wstring> AccessibleNameAt(POINT place) {
  IAccessible* object = nullptr;
  VARIANT child{};
  if (FAILED(AccessibleObjectFromPoint(place, &object, &child))) {
    return std::nullopt;
  }
  return NameAndRelease(object, child);
}

std::vector<std::wstring> ShownTips() {
  std::vector<std::wstring> tips;
  EnumWindows(GatherTip, reinterpret_cast<LPARAM>(&tips));
  return tips;
}

void Press(const std::vector<WORD>& keys) {
  std::vector<INPUT> inputs;
  const auto add = [&](WORD key, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = flags;
    inputs.push_back(input);
  };
  for (const WORD key : keys) {
    add(key, 0);
  }
  for (auto key = keys.rbegin(); key != keys.rend(); ++key) {
    add(*key, KEYEVENTF_KEYUP);
  }
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

void Point(POINT at) { SetCursorPos(at.x, at.y); }

void Click(POINT at, bool right) {
  Point(at);
  INPUT inputs[2] = {};
  inputs[0].type = inputs[1].type = INPUT_MOUSE;
  inputs[0].mi.dwFlags = right ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_LEFTDOWN;
  inputs[1].mi.dwFlags = right ? MOUSEEVENTF_RIGHTUP : MOUSEEVENTF_LEFTUP;
  SendInput(2, inputs, sizeof(INPUT));
}

}  // namespace support
