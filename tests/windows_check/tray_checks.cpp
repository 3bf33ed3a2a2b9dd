// The icon in the tray: its place, clicks, the keyboard, a shell that restarts; its menu and the About box.

#include "tray/frmAbout_layout.h"
#include "windows_check/program.h"
#include "windows_check/screen.h"

namespace {

namespace layout = tidewell::frmAboutLayout;

TEST(Tray, HasTheIcon) {
  const Program program;
  EXPECT_TRUE(program.IconStands());
  const PhysicalPixels physical;
  const RECT place = program.PlaceOfIcon();
  SavePicture(place, 200, L"tray");
  Note(L"at (" + std::to_wstring(place.left) + L", " + std::to_wstring(place.top) + L"), " +
       std::to_wstring(place.right - place.left) + L" x " + std::to_wstring(place.bottom - place.top));
}

TEST(Tray, LeftClicksHideAndShowTheWindow) {
  const Program program;
  program.ClickIcon();
  program.WaitUntilShown(false);
  Sleep(GetDoubleClickTime());  // two clicks, no double click
  program.ClickIcon();
  program.WaitUntilShown(true);
  Until(L"the shown window in the foreground", [&] { return GetForegroundWindow() == program.Main(); });
}

TEST(Tray, LeftClickRestoresAMinimisedWindow) {
  const Program program;
  support::Ask(program.Main(), WM_SYSCOMMAND, SC_MINIMIZE);
  Until(L"a minimised window", [&] { return IsIconic(program.Main()) != FALSE; });
  program.SendIconMessage(WM_LBUTTONUP);
  Until(L"a restored window", [&] { return IsIconic(program.Main()) == FALSE && program.Visible(); });
}

/// Neither the pointer over the icon nor an update takes the keyboard from another program.
TEST(Tray, LeavesTheKeyboardToAnotherProgram) {
  const Program program;
  const Process typewriter(OwnCommand(L"--typewriter"));
  const HWND window = typewriter.ShownWindow(L"Edit");
  SetWindowPos(window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
  ClickOn(window);
  Until(L"the keyboard at the second program", [&] { return GetForegroundWindow() == window; });
  const auto type = [&](std::size_t length) {
    support::Press({VK_SPACE});  // the same on every keyboard
    Until(L"one more blank in the second program", [&] { return support::TextOf(window).size() == length; });
  };
  type(1);
  {
    const PhysicalPixels physical;
    const RECT place = program.PlaceOfIcon();
    for (LONG x = place.left; x < place.right; x += 4) {
      SetCursorPos(x, (place.top + place.bottom) / 2);
      Sleep(20);
    }
  }
  type(2);
  program.Update();
  type(3);
  EXPECT_EQ(GetForegroundWindow(), window) << NameOf(GetForegroundWindow());
}

/// As after a crash of the shell. Only Tidewell gets the message: other programs keep their icons.
TEST(Tray, OfANewShellGetsTheIcon) {
  const Program program;
  if (!program.RemoveIcon()) {
    NotHere(L"the shell lets no other program remove the icon");
  }
  EXPECT_FALSE(program.IconStands());
  support::Ask(program.About(), RegisterWindowMessageW(L"TaskbarCreated"));
  EXPECT_TRUE(program.IconStands()) << "at once, not after a minute";
}

TEST(Menu, OpensAtThePointerInTheForeground) {
  const Program program;
  const std::wstring before = NameOf(GetForegroundWindow());
  program.ClickIcon(true);
  const HWND menu = Until(L"the menu", [&] { return program.Menu(); });
  const HWND during = GetForegroundWindow();
  EXPECT_EQ(during, program.About()) << NameOf(during);
  const PhysicalPixels physical;
  RECT place{};
  GetWindowRect(menu, &place);
  RECT around = place;
  InflateRect(&around, 4, 4);  // the menu's edge
  POINT pointer{};
  GetCursorPos(&pointer);
  EXPECT_TRUE(PtInRect(&around, pointer));
  EXPECT_EQ(WindowFromPoint(MiddleOf(place)), menu) << "another window is in front";
  Sleep(kPainting);
  SavePicture(place, 40, L"menu");
  support::Press({VK_ESCAPE});
  Until(L"the end of the menu after Escape", [&] { return program.Menu() == nullptr; });
  Sleep(200);  // by then the foreground has moved
  Note(L"foreground before " + before + L", during " + NameOf(during) + L", after " + NameOf(GetForegroundWindow()));
}

TEST(Menu, HasItsEntries) {
  const Program program;
  const auto menu = reinterpret_cast<HMENU>(support::Ask(program.OpenMenu(), MN_GETHMENU).value_or(0));
  if (GetMenuItemCount(menu) < 1) {
    NotHere(L"the system does not show the menus of other programs");
  }
  UINT entry = 0;
  for (const wchar_t* wanted : {layout::kMnuAboutCaption, layout::kMnuShowCaption, layout::kMnuExitCaption}) {
    wchar_t text[80] = L"";
    GetMenuStringW(menu, entry++, text, 80, MF_BYPOSITION);
    EXPECT_STREQ(text, wanted);
  }
}

TEST(Menu, ShowsTheMainWindow) {
  const Program program;
  program.SendIconMessage(WM_LBUTTONUP);
  program.WaitUntilShown(false);
  ClickEntry(program.OpenMenu(), 1);
  program.WaitUntilShown(true);
}

TEST(Menu, ShowsTheAboutBoxWhichOkAndEscapeHide) {
  const Program program;
  for (const bool byEscape : {false, true}) {
    program.ShowAbout();
    if (byEscape) {
      Until(L"About in the foreground", [&] { return GetForegroundWindow() == program.About(); });
      support::Press({VK_ESCAPE});
    } else {
      ClickOn(GetDlgItem(program.About(), layout::kCmdOK));
    }
    Until(L"About hidden", [&] { return IsWindowVisible(program.About()) == FALSE; });
    EXPECT_TRUE(program.IconStands());
  }
}

}  // namespace
