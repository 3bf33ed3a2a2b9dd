// The tray's menu and the About box.

#include "report/frmMoon_layout.h"
#include "support/other_windows_win.h"
#include "tray/frmAbout_layout.h"
#include "windows_check/program.h"
#include "windows_check/screen.h"
#include "windows_check/tray.h"
#include "windows_check/waiting.h"

namespace check {

namespace {

namespace layout = tidewell::frmAboutLayout;

/// One of the menu's corners is at the pointer.
bool IsAtThePointer(const RECT& menu) {
  constexpr int kBorder = 4;
  RECT around = menu;
  InflateRect(&around, kBorder, kBorder);
  POINT pointer{};
  GetCursorPos(&pointer);
  return PtInRect(&around, pointer) != FALSE;
}

Outcome RightClick(const Stage& stage) {
  const Program program(stage);
  const std::wstring before = NameOf(GetForegroundWindow());
  ClickIcon(program, true);
  const HWND menu = Until(L"the menu", [&] { return program.Menu(); });
  const std::wstring during = NameOf(GetForegroundWindow());
  const PhysicalPixels physical;
  RECT place{};
  GetWindowRect(menu, &place);
  Facts facts;
  facts.Want(L"at the pointer", 1, IsAtThePointer(place));
  const HWND inFront = WindowFromPoint({.x = (place.left + place.right) / 2, .y = (place.top + place.bottom) / 2});
  facts.Want(L"in front", NameOf(menu), NameOf(inFront));
  facts.Want(L"foreground", NameOf(program.About()), during);
  Sleep(kPainting);
  SavePicture(place, 40, L"menu");
  support::Press({VK_ESCAPE});
  Until(L"the end of the menu after Escape", [&] { return program.Menu() == nullptr; });
  Sleep(200);  // by then the foreground has moved
  return facts.Result(L"foreground before " + before + L", during " + during + L", after " +
                      NameOf(GetForegroundWindow()));
}

Outcome Entries(const Stage& stage) {
  const Program program(stage);
  const HWND window = OpenMenu(program);
  const auto menu = reinterpret_cast<HMENU>(support::Ask(window, MN_GETHMENU).value_or(0));
  if (GetMenuItemCount(menu) < 1) {
    return NotHere(L"the system does not show the menus of other programs");
  }
  std::wstring entries;
  for (UINT entry = 0; entry < 3; ++entry) {
    wchar_t text[80] = L"";
    GetMenuStringW(menu, entry, text, 80, MF_BYPOSITION);
    entries += std::wstring(text) + L"|";
  }
  return Same(
      std::wstring(layout::kMnuAboutCaption) + L"|" + layout::kMnuShowCaption + L"|" + layout::kMnuExitCaption + L"|",
      entries);
}

Outcome ShowMainWindow(const Stage& stage) {
  const Program program(stage);
  SendIconMessage(program, WM_LBUTTONUP);
  program.WaitUntilShown(false);
  ClickEntry(OpenMenu(program), 1);
  program.WaitUntilShown(true);
  return Ok();
}

Outcome AboutAndOK(const Stage& stage) {
  const Program program(stage);
  ShowAbout(program);
  ClickOn(GetDlgItem(program.About(), layout::kCmdOK));
  Until(L"About hidden", [&] { return IsWindowVisible(program.About()) == FALSE; });
  return IconStands(program.About()) ? Ok() : Failed(L"the icon", L"none");
}

Outcome AboutAndEscape(const Stage& stage) {
  const Program program(stage);
  ShowAbout(program);
  Until(L"About in the foreground", [&] { return GetForegroundWindow() == program.About(); });
  support::Press({VK_ESCAPE});
  Until(L"About hidden", [&] { return IsWindowVisible(program.About()) == FALSE; });
  return IconStands(program.About()) ? Ok() : Failed(L"the icon", L"none");
}

}  // namespace

std::vector<Check> MenuChecks() {
  return {
      {L"right click on the icon", RightClick},           {L"entries of the menu", Entries},
      {L"Show Main Window in the menu", ShowMainWindow},  {L"About in the menu, and OK", AboutAndOK},
      {L"About in the menu, and Escape", AboutAndEscape},
  };
}

}  // namespace check
