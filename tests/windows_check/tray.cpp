#include "windows_check/tray.h"

// Needs windows.h first.
#include <shellapi.h>

#include "windows_check/check.h"
#include "windows_check/program.h"
#include "windows_check/screen.h"

namespace check {

namespace {

constexpr UINT kIcon = 1;  // its id in the program
constexpr int kEntries = 3;

bool Notify(DWORD command, HWND owner) {
  NOTIFYICONDATAW icon{};
  icon.cbSize = sizeof icon;
  icon.hWnd = owner;
  icon.uID = kIcon;
  return Shell_NotifyIconW(command, &icon) != FALSE;
}

HRESULT AskForPlace(HWND owner, RECT& place) {
  NOTIFYICONIDENTIFIER icon{};
  icon.cbSize = sizeof icon;
  icon.hWnd = owner;
  icon.uID = kIcon;
  return Shell_NotifyIconGetRect(&icon, &place);
}

/// Wine's window for the icon; null on Windows.
HWND WindowOfIconInWine() {
  for (const DWORD shell : support::ProcessesOf(L"explorer.exe")) {
    for (const HWND window : support::WindowsOf(shell)) {
      if (support::ClassOf(window) == L"__winex11_tray_icon" && IsWindowVisible(window) != FALSE) {
        return window;
      }
    }
  }
  return nullptr;
}

/// Waits until the tray has moved that window out of the corner and it stands still; returns its place.
RECT PlaceOfIconInWine() {
  RECT place{};
  Until(L"an icon that stands still", [&] {
    const RECT before = place;
    Sleep(100);
    GetWindowRect(WindowOfIconInWine(), &place);
    return place.left > 0 && EqualRect(&place, &before) != FALSE;
  });
  return place;
}

}  // namespace

bool IconStands(HWND owner) {
  RECT place{};
  return Notify(NIM_MODIFY, owner) || SUCCEEDED(AskForPlace(owner, place));  // without flags: changes nothing
}

bool RemoveIcon(HWND owner) { return Notify(NIM_DELETE, owner); }

std::optional<RECT> FindIcon(HWND owner) {
  const PhysicalPixels physical;
  RECT place{};
  const HRESULT answer = AskForPlace(owner, place);
  if (answer == E_NOTIMPL) {
    place = PlaceOfIconInWine();
  } else if (FAILED(answer)) {
    return std::nullopt;
  }
  // For a hidden icon the system may return the place of the arrow.
  return ShowsTheIcon(place) ? std::optional(place) : std::nullopt;
}

RECT PlaceOfIcon(HWND owner) {
  const std::optional<RECT> place = FindIcon(owner);
  if (!place) {
    NotHere(L"the icon is behind the arrow (drag it onto the taskbar), or the system does not tell its place");
  }
  return *place;
}

bool ShowsTheIcon(const RECT& place) {
  const PhysicalPixels physical;
  const auto name = support::AccessibleNameAt(MiddleOf(place));
  return (name && name->starts_with(L"Moon's Age")) || WindowOfIconInWine() != nullptr;
}

void ClickIcon(const Program& program, bool right) {
  const PhysicalPixels physical;
  const RECT place = PlaceOfIcon(program.About());
  support::Click(MiddleOf(place), right);
}

void SendIconMessage(const Program& program, UINT message) {
  SendNotifyMessageW(program.About(), WM_MOUSEMOVE, kIcon, static_cast<LPARAM>(message));
}

HWND OpenMenu(const Program& program) {
  if (FindIcon(program.About()) || !program.Visible()) {
    ClickIcon(program, true);
  } else {
    ClickOn(program.Main());  // otherwise the system would refuse the menu the foreground
    SendIconMessage(program, WM_RBUTTONUP);
  }
  const HWND menu = Until(L"the menu", [&] { return program.Menu(); });
  Sleep(kPainting);
  return menu;
}

void ClickEntry(HWND menu, int entry) {
  RECT place{};
  GetWindowRect(menu, &place);
  ClickWithin(menu, {.x = (place.left + place.right) / 2,
                     .y = place.top + (place.bottom - place.top) * (2 * entry + 1) / (2 * kEntries)});
}

void ShowAbout(const Program& program) {
  ClickEntry(OpenMenu(program), 0);
  Until(L"the About box", [&] { return IsWindowVisible(program.About()) != FALSE; });
}

}  // namespace check
