// The icon in the tray: its place, clicks, the keyboard, a shell that restarts; its menu and the About box.

#include "support/other_windows_win.h"
#include "tray/frmAbout_layout.h"
#include "windows_check/check.h"
#include "windows_check/program.h"
#include "windows_check/screen.h"
#include "windows_check/tray.h"

namespace check {

namespace {

namespace layout = tidewell::frmAboutLayout;

Outcome IconInTheTray(const Program& program) {
  if (!IconStands(program.About())) {
    return Failed(L"the icon", L"none");
  }
  const PhysicalPixels physical;
  const RECT place = PlaceOfIcon(program.About());
  RestPointer();
  SavePicture(place, 200, L"tray");
  return Ok(L"at (" + std::to_wstring(place.left) + L", " + std::to_wstring(place.top) + L"), " +
            std::to_wstring(place.right - place.left) + L" x " + std::to_wstring(place.bottom - place.top));
}

Outcome LeftClicks(const Program& program) {
  ClickIcon(program);
  program.WaitUntilShown(false);
  Sleep(GetDoubleClickTime());  // two clicks, no double click
  ClickIcon(program);
  program.WaitUntilShown(true);
  Until(L"the shown window in the foreground", [&] { return GetForegroundWindow() == program.Main(); });
  return Ok();
}

/// A window to type into. The constructor gives it the keyboard.
class Typewriter {
 public:
  Typewriter() {
    SetWindowPos(window_, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    ClickOn(window_);
    Until(L"the keyboard at the second program", [this] { return HasTheKeyboard(); });
  }

  /// Types as the keyboard does, and waits for the whole text.
  void Type(const std::wstring& letters) {
    for (const wchar_t letter : letters) {
      INPUT inputs[2] = {};
      inputs[0].type = inputs[1].type = INPUT_KEYBOARD;
      inputs[0].ki.wScan = inputs[1].ki.wScan = static_cast<WORD>(letter);
      inputs[0].ki.dwFlags = KEYEVENTF_UNICODE;
      inputs[1].ki.dwFlags = KEYEVENTF_UNICODE | KEYEVENTF_KEYUP;
      SendInput(2, inputs, sizeof(INPUT));
    }
    typed_ += letters;
    Until(L"'" + typed_ + L"' in the second program", [&] { return support::TextOf(window_) == typed_; });
  }

  [[nodiscard]] bool HasTheKeyboard() const noexcept { return GetForegroundWindow() == window_; }

 private:
  Process process_{OwnCommand(L"--typewriter")};
  HWND window_ = process_.ShownWindow(L"Edit");
  std::wstring typed_;
};

/// Neither the pointer over the icon nor an update takes the keyboard from another program.
Outcome Keyboard(const Program& program) {
  Typewriter typewriter;
  typewriter.Type(L"abc");
  {
    const PhysicalPixels physical;
    const RECT place = PlaceOfIcon(program.About());
    for (LONG x = place.left; x < place.right; x += 4) {
      support::Point({.x = x, .y = (place.top + place.bottom) / 2});
      Sleep(20);
    }
  }
  typewriter.Type(L"def");
  program.Update();
  typewriter.Type(L"ghi");
  return typewriter.HasTheKeyboard() ? Ok()
                                     : Failed(L"the keyboard at the other program", NameOf(GetForegroundWindow()));
}

/// As after a crash of the shell. Only Tidewell gets the message: other programs keep their icons.
Outcome NewShell(const Program& program) {
  if (!RemoveIcon(program.About())) {
    return NotHere(L"the shell lets no other program remove the icon");
  }
  if (IconStands(program.About())) {
    return Failed(L"no icon after its removal", L"an icon");
  }
  support::Ask(program.About(), RegisterWindowMessageW(L"TaskbarCreated"));
  return IconStands(program.About()) ? Ok() : Failed(L"the icon again", L"none");  // at once, not after a minute
}

/// True if the pointer is in the menu or at its edge.
bool IsAtThePointer(const RECT& menu) {
  constexpr int kBorder = 4;
  RECT around = menu;
  InflateRect(&around, kBorder, kBorder);
  POINT pointer{};
  GetCursorPos(&pointer);
  return PtInRect(&around, pointer) != FALSE;
}

Outcome RightClick(const Program& program) {
  const std::wstring before = NameOf(GetForegroundWindow());
  ClickIcon(program, true);
  const HWND menu = Until(L"the menu", [&] { return program.Menu(); });
  const std::wstring during = NameOf(GetForegroundWindow());
  const PhysicalPixels physical;
  RECT place{};
  GetWindowRect(menu, &place);
  Facts facts;
  facts.Want(L"at the pointer", 1, IsAtThePointer(place));
  const HWND inFront = WindowFromPoint(MiddleOf(place));
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

Outcome Entries(const Program& program) {
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
  Facts facts;
  facts.Want(
      L"entries",
      std::wstring(layout::kMnuAboutCaption) + L"|" + layout::kMnuShowCaption + L"|" + layout::kMnuExitCaption + L"|",
      entries);
  return facts.Result();
}

Outcome ShowMainWindow(const Program& program) {
  SendIconMessage(program, WM_LBUTTONUP);
  program.WaitUntilShown(false);
  ClickEntry(OpenMenu(program), 1);
  program.WaitUntilShown(true);
  return Ok();
}

Outcome AboutAndOK(const Program& program) {
  ShowAbout(program);
  ClickOn(GetDlgItem(program.About(), layout::kCmdOK));
  Until(L"About hidden", [&] { return IsWindowVisible(program.About()) == FALSE; });
  return IconStands(program.About()) ? Ok() : Failed(L"the icon", L"none");
}

Outcome AboutAndEscape(const Program& program) {
  ShowAbout(program);
  Until(L"About in the foreground", [&] { return GetForegroundWindow() == program.About(); });
  support::Press({VK_ESCAPE});
  Until(L"About hidden", [&] { return IsWindowVisible(program.About()) == FALSE; });
  return IconStands(program.About()) ? Ok() : Failed(L"the icon", L"none");
}

}  // namespace

std::vector<Check> TrayChecks() {
  return {
      {L"icon in the tray", IconInTheTray},
      {L"left clicks on the icon", LeftClicks},
      {L"keyboard of another program", Keyboard},
      {L"TaskbarCreated", NewShell},
      {L"right click on the icon", RightClick},
      {L"entries of the menu", Entries},
      {L"Show Main Window in the menu", ShowMainWindow},
      {L"About in the menu, and OK", AboutAndOK},
      {L"About in the menu, and Escape", AboutAndEscape},
  };
}

}  // namespace check
