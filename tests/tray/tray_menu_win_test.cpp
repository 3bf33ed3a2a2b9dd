// What the tray's menu asks of the system, and in which order.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "runtime/program_end.h"
#include "support/shown_frmMoon.h"
#include "support/system_stand_in_win.h"

extern "C" decltype(&TrackPopupMenu) trackPopupMenuSlot asm("__imp__TrackPopupMenu@28");
extern "C" decltype(&SetForegroundWindow) setForegroundWindowSlot asm("__imp__SetForegroundWindow@4");
extern "C" decltype(&GetForegroundWindow) getForegroundWindowSlot asm("__imp__GetForegroundWindow@0");
extern "C" decltype(&FindWindowW) findWindowSlot asm("__imp__FindWindowW@8");
extern "C" decltype(&EndMenu) endMenuSlot asm("__imp__EndMenu@0");
extern "C" decltype(&GetWindowThreadProcessId) getProcessSlot asm("__imp__GetWindowThreadProcessId@8");
extern "C" decltype(&SetTimer) setTimerSlot asm("__imp__SetTimer@16");
extern "C" decltype(&GetCursorPos) getCursorPosSlot asm("__imp__GetCursorPos@4");
extern "C" decltype(&GetMessagePos) getMessagePosSlot asm("__imp__GetMessagePos@0");
extern "C" decltype(&PostMessageW) postMessageSlot asm("__imp__PostMessageW@16");

namespace {

std::vector<std::string> asked;
HWND owner = nullptr;

BOOL WINAPI NoteForeground(HWND window) {
  asked.emplace_back(window == owner ? "foreground" : "foreground of another window");
  return TRUE;
}

BOOL WINAPI NoteMenu(HMENU /*menu*/, UINT flags, int x, int y, int /*reserved*/, HWND window, const RECT* /*ignored*/) {
  POINT pointer{};
  GetCursorPos(&pointer);
  EXPECT_EQ(window, owner);
  EXPECT_EQ(x, pointer.x);
  EXPECT_EQ(y, pointer.y);
  EXPECT_EQ(flags & TPM_RIGHTBUTTON, 0U) << "a second right click must choose nothing";
  asked.emplace_back("menu");
  return 0;
}

BOOL WINAPI NotePost(HWND window, UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/) {
  asked.emplace_back(window == owner && message == WM_NULL ? "null message" : "another message");
  return TRUE;
}

class TrayMenu : public ShownMoon {
 protected:
  void SetUp() override {
    owner = FindWindowW(L"TidewellAbout", nullptr);
    ASSERT_NE(owner, nullptr);
    asked.clear();
  }
};

/// Without the foreground a click elsewhere leaves the menu open. Without the message the next menu may close at once.
TEST_F(TrayMenu, OpensInTheForegroundAndPostsANullMessage) {
  {
    const SystemStandIn menu(trackPopupMenuSlot, &NoteMenu);
    const SystemStandIn foreground(setForegroundWindowSlot, &NoteForeground);
    const SystemStandIn post(postMessageSlot, &NotePost);
    SendMessageW(owner, WM_MOUSEMOVE, 1, 517);
  }
  EXPECT_EQ(asked, (std::vector<std::string>{"foreground", "menu", "null message"}));
}

BOOL WINAPI RefusePointer(POINT* /*pointer*/) { return FALSE; }

DWORD WINAPI LeftOfTheMainScreen() { return MAKELONG(-20, 30); }

POINT menuPlace;

BOOL WINAPI NotePlace(HMENU /*menu*/, UINT /*flags*/, int x, int y, int /*reserved*/, HWND /*window*/,
                      const RECT* /*ignored*/) {
  menuPlace = {.x = x, .y = y};
  return 0;
}

TEST_F(TrayMenu, OpensWhereThePointerWasIfItsPlaceIsRefused) {
  const SystemStandIn menu(trackPopupMenuSlot, &NotePlace);
  const SystemStandIn pointer(getCursorPosSlot, &RefusePointer);
  const SystemStandIn message(getMessagePosSlot, &LeftOfTheMainScreen);
  SendMessageW(owner, WM_MOUSEMOVE, 1, 517);
  EXPECT_EQ(menuPlace.x, -20);
  EXPECT_EQ(menuPlace.y, 30);
}

BOOL WINAPI ClickAgain(HMENU /*menu*/, UINT /*flags*/, int /*x*/, int /*y*/, int /*reserved*/, HWND window,
                       const RECT* /*ignored*/) {
  asked.emplace_back("menu");
  if (asked.size() == 1) {
    SendMessageW(window, WM_MOUSEMOVE, 1, 517);
  }
  return 0;
}

TEST_F(TrayMenu, ASecondRightClickOpensNoSecondOne) {
  asked.clear();
  const SystemStandIn menu(trackPopupMenuSlot, &ClickAgain);
  SendMessageW(owner, WM_MOUSEMOVE, 1, 517);
  EXPECT_EQ(asked, std::vector<std::string>{"menu"});
}

// ---- A menu that the user has left. The windows, their processes, the foreground and the menu's end are made up.

const auto kTaskBar = reinterpret_cast<HWND>(0x1000);
const auto kDesktop = reinterpret_cast<HWND>(0x1001);  // of the shell, like the task bar
const auto kOther = reinterpret_cast<HWND>(0x1002);

HWND foreground = nullptr;
bool menuEnds = false;
void (*whileTheMenuIsOpen)() = nullptr;

HWND WINAPI TellForeground() { return foreground; }

const auto findWindow = findWindowSlot;

HWND WINAPI FindTaskBar(LPCWSTR windowClass, LPCWSTR caption) {
  return lstrcmpW(windowClass, L"Shell_TrayWnd") == 0 ? kTaskBar : findWindow(windowClass, caption);
}

/// The task bar and the desktop are of one process, but of two threads.
DWORD WINAPI TellProcess(HWND window, DWORD* process) {
  const bool shells = window == kTaskBar || window == kDesktop;
  if (process != nullptr) {
    *process = window == nullptr ? 0 : shells ? 1 : window == kOther ? 2 : GetCurrentProcessId();
  }
  return window == nullptr ? 0 : window == kTaskBar ? 11 : 12;
}

BOOL WINAPI NoteEnd() {
  menuEnds = true;
  return TRUE;
}

BOOL WINAPI RefuseForeground(HWND /*window*/) { return FALSE; }

BOOL WINAPI RunMenu(HMENU /*menu*/, UINT /*flags*/, int /*x*/, int /*y*/, int /*reserved*/, HWND /*window*/,
                    const RECT* /*ignored*/) {
  whileTheMenuIsOpen();
  return 0;
}

/// Waits for a tick of the menu's timer and dispatches it.
void Tick() {
  MSG message{};
  GetMessageW(&message, owner, WM_TIMER, WM_TIMER);
  DispatchMessageW(&message);
}

bool EndsWithTheForegroundAt(HWND window) {
  menuEnds = false;
  foreground = window;
  Tick();
  return menuEnds;
}

class LeftMenu : public TrayMenu {
 protected:
  /// Opens the menu while another window keeps the foreground.
  void OpenMenu(HWND before, void (*meanwhile)()) {
    const SystemStandIn menu(trackPopupMenuSlot, &RunMenu);
    const SystemStandIn setForeground(setForegroundWindowSlot, &RefuseForeground);
    const SystemStandIn getForeground(getForegroundWindowSlot, &TellForeground);
    const SystemStandIn find(findWindowSlot, &FindTaskBar);
    const SystemStandIn process(getProcessSlot, &TellProcess);
    const SystemStandIn end(endMenuSlot, &NoteEnd);
    foreground = before;
    whileTheMenuIsOpen = meanwhile;
    SendMessageW(owner, WM_MOUSEMOVE, 1, 517);
  }
};

TEST_F(LeftMenu, EndsIfAnotherProgramGetsTheForeground) {
  OpenMenu(kTaskBar, [] {
    EXPECT_FALSE(EndsWithTheForegroundAt(owner));
    EXPECT_FALSE(EndsWithTheForegroundAt(FindWindowW(L"TidewellMoon", nullptr)));
    EXPECT_FALSE(EndsWithTheForegroundAt(nullptr)) << "the foreground is changing";
    EXPECT_TRUE(EndsWithTheForegroundAt(kOther));
    EXPECT_TRUE(EndsWithTheForegroundAt(kDesktop));
  });
}

TEST_F(LeftMenu, EndsIfTheUserWasElsewhereBeforeItOpened) {
  OpenMenu(kOther, [] { EXPECT_TRUE(EndsWithTheForegroundAt(kOther)); });
}

TEST_F(LeftMenu, EndsIfTheDesktopKeepsTheForeground) {
  OpenMenu(kDesktop, [] { EXPECT_TRUE(EndsWithTheForegroundAt(kDesktop)); });
}

/// The click on the icon gave the task bar the foreground, and the system may refuse it to the menu.
TEST_F(LeftMenu, StaysWhileTheTaskBarKeepsTheForeground) {
  OpenMenu(kTaskBar, [] { EXPECT_FALSE(EndsWithTheForegroundAt(kTaskBar)); });
}

TEST_F(LeftMenu, EndsByAClickOnTheIconIfTheTaskBarKeepsTheForeground) {
  for (const LPARAM click : {514, 517}) {
    static LPARAM message;
    message = click;
    OpenMenu(kTaskBar, [] {
      SendMessageW(owner, WM_MOUSEMOVE, 1, 512);
      EXPECT_FALSE(EndsWithTheForegroundAt(kTaskBar)) << "the pointer has moved";
      SendMessageW(owner, WM_MOUSEMOVE, 1, message);
      EXPECT_TRUE(EndsWithTheForegroundAt(kTaskBar));
    });
  }
}

TEST_F(LeftMenu, IsWatchedWhileItIsOpen) {
  OpenMenu(kTaskBar, [] { Tick(); });
  EXPECT_EQ(KillTimer(owner, 1), FALSE) << "no timer is left";
}

UINT_PTR WINAPI RefuseTimer(HWND /*window*/, UINT_PTR /*id*/, UINT /*milliseconds*/, TIMERPROC /*handler*/) {
  return 0;
}

TEST_F(LeftMenu, OpensWithoutItsTimer) {
  static bool opened;
  opened = false;
  const SystemStandIn timer(setTimerSlot, &RefuseTimer);
  OpenMenu(kTaskBar, [] { opened = true; });
  EXPECT_TRUE(opened);
  EXPECT_FALSE(runtime::Ending());
}

}  // namespace
