#include "windows_check/tray.h"

// After windows.h, which it builds on.
#include <shellapi.h>

#include "support/other_windows_win.h"
#include "windows_check/program.h"
#include "windows_check/screen.h"
#include "windows_check/waiting.h"

namespace check {

namespace {

constexpr UINT kIcon = 1;  // the program's number for it
constexpr int kEntries = 3;

bool Notify(DWORD command, HWND owner) {
  NOTIFYICONDATAW icon{};
  icon.cbSize = sizeof icon;
  icon.hWnd = owner;
  icon.uID = kIcon;
  return Shell_NotifyIconW(command, &icon) != FALSE;
}

/// Wine has no Shell_NotifyIconGetRect, but a window for each icon.
HWND WindowOfIconInWine() {
  const HWND window = FindWindowW(L"__winex11_tray_icon", nullptr);
  return window != nullptr && IsWindowVisible(window) != FALSE ? window : nullptr;
}

/// The window of the icons behind the arrow, of Windows 7 to 10 and of Windows 11, while it is open.
bool IconsBehindTheArrowAreShown() {
  for (const wchar_t* name : {L"NotifyIconOverflowWindow", L"TopLevelWindowForOverflowXamlIsland"}) {
    const HWND window = FindWindowW(name, nullptr);
    if (window != nullptr && IsWindowVisible(window) != FALSE) {
      return true;
    }
  }
  return false;
}

}  // namespace

bool IconStands(HWND owner) { return Notify(NIM_MODIFY, owner); }  // which changes nothing, as no field is named

bool RemoveIcon(HWND owner) { return Notify(NIM_DELETE, owner); }

RECT PlaceOfIcon(HWND owner) {
  RECT place{};
  if (const HWND window = WindowOfIconInWine()) {
    GetWindowRect(window, &place);
    return place;
  }
  NOTIFYICONIDENTIFIER icon{};
  icon.cbSize = sizeof icon;
  icon.hWnd = owner;
  icon.uID = kIcon;
  const HRESULT answer = Shell_NotifyIconGetRect(&icon, &place);
  if (FAILED(answer)) {
    throw NotHere(L"Shell_NotifyIconGetRect does not tell where the icon is");
  }
  if (answer != S_OK || MonitorFromRect(&place, MONITOR_DEFAULTTONULL) == nullptr) {
    throw NotHere(L"the icon is behind the arrow: drag it onto the task bar");
  }
  return place;
}

std::optional<RECT> PlaceOfIconIfKnown(HWND owner) {
  const PhysicalPixels physical;
  try {
    return PlaceOfIcon(owner);
  } catch (const Outcome&) {
    return std::nullopt;
  }
}

bool ShowsTheIcon(const RECT& place) {
  const PhysicalPixels physical;
  const auto name =
      support::AccessibleNameAt({.x = (place.left + place.right) / 2, .y = (place.top + place.bottom) / 2});
  return WindowOfIconInWine() != nullptr || (name && name->starts_with(L"Moon's Age"));
}

void ClickIcon(const Program& program, bool right) {
  const PhysicalPixels physical;
  const RECT place = PlaceOfIcon(program.About());
  support::Click({.x = (place.left + place.right) / 2, .y = (place.top + place.bottom) / 2}, right);
  Sleep(200);  // the arrow's window takes a moment
  if (IconsBehindTheArrowAreShown()) {
    support::Press({VK_ESCAPE});
    throw NotHere(L"the icon is behind the arrow: drag it onto the task bar");
  }
}

void SendIconMessage(const Program& program, UINT message) {
  SendNotifyMessageW(program.About(), WM_MOUSEMOVE, kIcon, static_cast<LPARAM>(message));
}

HWND OpenMenu(const Program& program) {
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  support::Point({.x = work.right - 200, .y = work.bottom - 200});
  SendIconMessage(program, WM_RBUTTONUP);
  return Until(L"the menu", [&] { return program.Menu(); });
}

void ClickEntry(HWND menu, int entry) {
  RECT place{};
  GetWindowRect(menu, &place);
  support::Click({.x = (place.left + place.right) / 2,
                  .y = place.top + (place.bottom - place.top) * (2 * entry + 1) / (2 * kEntries)});
}

void ShowAbout(const Program& program) {
  ClickEntry(OpenMenu(program), 0);
  Until(L"the About box", [&] { return IsWindowVisible(program.About()) != FALSE; });
}

}  // namespace check
