#include "windows_check/program.h"

// Needs windows.h first.
#include <shellapi.h>

#include "report/frmMoon.h"
#include "report/frmMoon_layout.h"
#include "support/other_windows_win.h"
#include "windows_check/tray.h"
#include "windows_check/waiting.h"

namespace check {

namespace layout = tidewell::frmMoonLayout;

std::wstring Program::Command(const Stage& stage) {
  stage.Forget();
  return L"\"" + stage.Program().wstring() + L"\"";
}

Program::Program(const Stage& stage, int show) : process_(Command(stage), show) {
  about_ = Until(L"the program's windows", [this] { return process_.Window(tidewell::frmAbout::kWindowClass); });
  main_ = process_.Window(tidewell::frmMoon::kWindowClass);
  // The start is over when its thread waits for messages; the icon is there then.
  WaitForInputIdle(process_.Handle(), kPatience);
  support::Ask(main_, WM_NULL);
  if (show == SW_SHOWNORMAL) {
    WaitUntilShown(true);
  }
}

Program::~Program() {
  if (!process_.Ended()) {
    support::Ask(main_, WM_ENDSESSION, TRUE);
    if (WaitForSingleObject(process_.Handle(), kPatience) != WAIT_OBJECT_0) {
      RemoveIcon(about_);
    }
  }
}

HWND Program::Option(int index) const noexcept {
  return GetDlgItem(GetDlgItem(main_, layout::kFrame1), layout::kCheck1 + index);
}

HWND Program::Menu() const {
  // EnumWindows omits menus on Windows.
  HWND menu = nullptr;
  while ((menu = FindWindowExW(nullptr, menu, L"#32768", nullptr)) != nullptr) {
    DWORD owner = 0;
    GetWindowThreadProcessId(menu, &owner);
    if (owner == process_.Id() && IsWindowVisible(menu) != FALSE) {
      return menu;
    }
  }
  return nullptr;
}

void Program::Update() const {
  constexpr WPARAM kTimer1 = 1;
  support::Ask(main_, WM_TIMECHANGE);
  support::Ask(main_, WM_TIMER, kTimer1);
}

void Program::WaitUntilShown(bool shown) const {
  Until(shown ? L"the main window shown" : L"the main window hidden", [&] { return Visible() == shown; });
}

void ClickWithin(HWND window, POINT at) {
  const HWND there = WindowFromPoint(at);
  if (GetAncestor(there, GA_ROOT) != GetAncestor(window, GA_ROOT)) {
    throw NotHere(L"a window of " + NameOf(there) + L" covers that of " + NameOf(window));
  }
  support::Click(at);
}

void ClickOn(HWND control, bool atItsLeft) {
  RECT place{};
  GetWindowRect(control, &place);
  POINT at = {.x = (place.left + place.right) / 2, .y = (place.top + place.bottom) / 2};
  if (atItsLeft) {
    at.x = place.left + (place.bottom - place.top) / 2;
  }
  ClickWithin(control, at);
}

std::wstring NameOf(HWND window) { return window == nullptr ? L"nobody" : support::ClassOf(window); }

}  // namespace check
