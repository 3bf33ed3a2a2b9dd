#include "tray/frmAbout.h"

#include <gtest/gtest.h>
// Needs windows.h before it.
#include <shellapi.h>

#include <functional>
#include <string>
#include <vector>

#include "runtime/end_on_error.h"
#include "support/font_of_win.h"
#include "support/raises.h"
#include "support/system_stand_in_win.h"
#include "tray/shell_record.h"

extern "C" decltype(&ChangeWindowMessageFilterEx) changeFilterSlot asm("__imp__ChangeWindowMessageFilterEx@16");
extern "C" decltype(&EndMenu) endMenuSlot asm("__imp__EndMenu@0");
extern "C" decltype(&FindWindowW) findWindowSlot asm("__imp__FindWindowW@8");
extern "C" decltype(&GetCursorPos) getCursorPosSlot asm("__imp__GetCursorPos@4");
extern "C" decltype(&GetForegroundWindow) getForegroundWindowSlot asm("__imp__GetForegroundWindow@0");
extern "C" decltype(&GetMessagePos) getMessagePosSlot asm("__imp__GetMessagePos@0");
extern "C" decltype(&GetWindowThreadProcessId) getProcessSlot asm("__imp__GetWindowThreadProcessId@8");
extern "C" decltype(&PostMessageW) postMessageSlot asm("__imp__PostMessageW@16");
extern "C" decltype(&SetForegroundWindow) setForegroundWindowSlot asm("__imp__SetForegroundWindow@4");
extern "C" decltype(&SetTimer) setTimerSlot asm("__imp__SetTimer@16");
extern "C" decltype(&Shell_NotifyIconA) shellNotifyIconSlot asm("__imp__Shell_NotifyIconA@8");
extern "C" decltype(&TrackPopupMenu) trackPopupMenuSlot asm("__imp__TrackPopupMenu@28");

namespace {

namespace layout = tidewell::frmAboutLayout;

class FakeMainForm final : public tidewell::MainForm {
 public:
  RECT workArea = {.left = 100, .top = 50, .right = 700, .bottom = 450};

  [[nodiscard]] bool Visible() const override { return true; }
  void Show() override {}
  void Hide() override {}
  [[nodiscard]] RECT WorkArea() const override { return workArea; }
  void EndProgram() override {}
  void SetIcons(HWND /*window*/) const override {}
};

HWND owner = nullptr;  ///< the About window

/// Sends a mouse message of the icon, as the tray does.
void TrayMessage(int message) { SendMessageW(owner, WM_MOUSEMOVE, 1, message); }

class About : public testing::Test {
 protected:
  About() {
    Update(0, 5);
    owner = about_.hwnd();
  }
  ~About() override { Update(2, 0); }

  std::int16_t Update(std::int32_t Value, std::int16_t IcoNum) {
    about_.UpdateMoonIcon(Value, IcoNum);
    return IcoNum;
  }

  static void Show() { ShowWindow(owner, SW_SHOW); }

  HWND Item(int id) {
    Show();  // which makes the controls
    return GetDlgItem(owner, id);
  }

  static RECT Place() {
    RECT place{};
    GetWindowRect(owner, &place);
    return place;
  }

  FakeMainForm main_;
  tidewell::frmAbout about_{main_};
};

// ---- the icon's record

BOOL WINAPI WriteIntoTheRecord(DWORD /*command*/, NOTIFYICONDATAA* record) {
  record->szTip[0] = '*';
  return TRUE;
}

/// The shell gets the record itself, not a copy.
TEST_F(About, KeepsWhatTheShellWritesIntoTheRecord) {
  mMoon::TrayIconData.SetTip(L"Moon's Age");
  const SystemStandIn standIn(shellNotifyIconSlot, &WriteIntoTheRecord);
  Update(1, 6);
  EXPECT_EQ(std::wstring(mMoon::TrayIconData.szTip.data(), 10), L"*oon's Age");
}

HWND listener = nullptr;
UINT heard = 0;

BOOL WINAPI NoteFilter(HWND window, UINT message, DWORD action, CHANGEFILTERSTRUCT* /*ignored*/) {
  EXPECT_EQ(action, DWORD{MSGFLT_ALLOW});
  listener = window;
  heard = message;
  return TRUE;
}

/// If we run elevated, the system would block the shell's broadcast.
TEST_F(About, AllowsTheBroadcastOfANewTaskBar) {
  const SystemStandIn standIn(changeFilterSlot, &NoteFilter);
  tidewell::frmAbout about{main_};
  std::int16_t IcoNum = 0;
  about.UpdateMoonIcon(1, IcoNum);
  EXPECT_EQ(listener, about.hwnd());
  EXPECT_EQ(heard, RegisterWindowMessageW(L"TaskbarCreated"));
}

TEST_F(About, MakesNoWindowIfThereIsNoIconToRemove) {
  tidewell::frmAbout about{main_};
  std::int16_t IcoNum = 0;
  about.UpdateMoonIcon(2, IcoNum);
  EXPECT_EQ(about.hwnd(), nullptr);
}

TEST_F(About, ShowsTheNewMoonForNumber28) {
  EXPECT_EQ(Update(1, 28), 0);
  const auto newMoon = static_cast<std::uint32_t>(SendMessageW(Item(layout::kPicMoon), STM_GETICON, 0, 0));
  EXPECT_EQ(mMoon::TrayIconData.hIcon, newMoon);
  EXPECT_EQ(Update(1, 27), 27);
  EXPECT_NE(mMoon::TrayIconData.hIcon, newMoon);
}

TEST_F(About, RefusesANumberBelowZero) {
  EXPECT_TRUE(support::Raises(runtime::ErrorNumber::ControlArrayElementDoesNotExist, [&] { Update(1, -1); }));
}

// ---- how it looks

TEST_F(About, HasTheDesignsFonts) {
  EXPECT_EQ(FontOf(Item(layout::kLblTitle)), L"Arial -27 700") << "20.25 points";
  EXPECT_EQ(FontOf(Item(layout::kLblDescription)), L"MS Sans Serif -16 400") << "12 points";
  EXPECT_EQ(FontOf(Item(layout::kCmdOK)), L"MS Shell Dlg 2 -11 400") << "8.25 points";
}

TEST_F(About, OpensInTheMiddleOfTheMainWindowsScreenAndAgainWhereItWasMovedTo) {
  Show();
  EXPECT_NEAR(Place().left + Place().right, main_.workArea.left + main_.workArea.right, 1);
  EXPECT_NEAR(Place().top + Place().bottom, main_.workArea.top + main_.workArea.bottom, 1);

  SetWindowPos(owner, nullptr, 30, 40, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  SendMessageW(owner, WM_CLOSE, 0, 0);
  Show();
  EXPECT_EQ(Place().left, 30);
  EXPECT_EQ(Place().top, 40);
}

// ---- messages of the icon

TEST_F(About, KeepsTheNumberOfEachMessage) {
  for (const int message : {512, 513, 515, 516, 518}) {
    TrayMessage(message);
    EXPECT_EQ(mMoon::MouseMsg, message);
  }
}

TEST_F(About, IsNotPaintedAgainByTheMessages) {
  Show();
  TrayMessage(512);
  UpdateWindow(owner);
  TrayMessage(512);
  EXPECT_FALSE(GetUpdateRect(owner, nullptr, FALSE));
}

// ---- the menu: what it asks of the system, in which order, and when it ends by itself. Windows, processes and
// foreground are stand-ins.

std::vector<std::string> asked;
std::function<void()> whileTheMenuIsOpen;
HWND foreground = nullptr;
POINT menuPlace;

const auto kTaskBar = reinterpret_cast<HWND>(0x1000);
const auto kDesktop = reinterpret_cast<HWND>(0x1001);  // of the shell, like the task bar
const auto kOther = reinterpret_cast<HWND>(0x1002);

BOOL WINAPI RunMenu(HMENU /*menu*/, UINT flags, int x, int y, int /*reserved*/, HWND window, const RECT* /*ignored*/) {
  EXPECT_EQ(window, owner);
  menuPlace = {.x = x, .y = y};
  EXPECT_EQ(flags & TPM_RIGHTBUTTON, 0U) << "a second right click must choose nothing";
  asked.emplace_back("menu");
  whileTheMenuIsOpen();
  return 0;
}

/// The system refuses the foreground.
BOOL WINAPI NoteForeground(HWND window) {
  asked.emplace_back(window == owner ? "foreground" : "foreground of another window");
  return FALSE;
}

BOOL WINAPI NotePost(HWND window, UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/) {
  asked.emplace_back(window == owner && message == WM_NULL ? "null message" : "another message");
  return TRUE;
}

BOOL WINAPI NoteEnd() {
  asked.emplace_back("end");
  return TRUE;
}

HWND WINAPI TellForeground() { return foreground; }

HWND WINAPI FindTaskBar(LPCWSTR windowClass, LPCWSTR /*caption*/) {
  return lstrcmpW(windowClass, L"Shell_TrayWnd") == 0 ? kTaskBar : nullptr;
}

/// The task bar and the desktop share a process, but not a thread.
DWORD WINAPI TellProcess(HWND window, DWORD* process) {
  const bool shells = window == kTaskBar || window == kDesktop;
  if (process != nullptr) {
    *process = window == nullptr ? 0 : shells ? 1 : window == kOther ? 2 : GetCurrentProcessId();
  }
  return window == nullptr ? 0 : window == kTaskBar ? 11 : 12;
}

/// Waits for a tick of the menu's timer and dispatches it. Returns whether it ends the menu.
bool EndsWithTheForegroundAt(HWND window) {
  foreground = window;
  asked.clear();
  MSG message{};
  GetMessageW(&message, owner, WM_TIMER, WM_TIMER);
  DispatchMessageW(&message);
  return asked == std::vector<std::string>{"end"};
}

class TrayMenu : public About {
 protected:
  /// Opens the menu by a right click while another window keeps the foreground.
  static void OpenMenu(HWND before, std::function<void()> meanwhile) {
    const SystemStandIn menu(trackPopupMenuSlot, &RunMenu);
    const SystemStandIn setForeground(setForegroundWindowSlot, &NoteForeground);
    const SystemStandIn getForeground(getForegroundWindowSlot, &TellForeground);
    const SystemStandIn find(findWindowSlot, &FindTaskBar);
    const SystemStandIn process(getProcessSlot, &TellProcess);
    const SystemStandIn post(postMessageSlot, &NotePost);
    const SystemStandIn end(endMenuSlot, &NoteEnd);
    asked.clear();
    foreground = before;
    whileTheMenuIsOpen = std::move(meanwhile);
    TrayMessage(517);
  }
};

/// Without the foreground a click elsewhere leaves the menu open. Without the message the next menu may close at once.
TEST_F(TrayMenu, OpensInTheForegroundAndPostsANullMessage) {
  OpenMenu(kTaskBar, [] { TrayMessage(517); });  // a second right click opens no second one
  EXPECT_EQ(asked, (std::vector<std::string>{"foreground", "menu", "null message"}));
  POINT pointer{};
  GetCursorPos(&pointer);
  EXPECT_EQ(menuPlace.x, pointer.x);
  EXPECT_EQ(menuPlace.y, pointer.y);
}

TEST_F(TrayMenu, EndsIfAnotherProgramGetsTheForeground) {
  OpenMenu(kTaskBar, [] {
    EXPECT_FALSE(EndsWithTheForegroundAt(owner));
    EXPECT_FALSE(EndsWithTheForegroundAt(nullptr)) << "the foreground is changing";
    EXPECT_FALSE(EndsWithTheForegroundAt(kTaskBar)) << "the click on the icon gave it to the task bar";
    EXPECT_TRUE(EndsWithTheForegroundAt(kOther));
    EXPECT_TRUE(EndsWithTheForegroundAt(kDesktop));
  });
  EXPECT_EQ(KillTimer(owner, 1), FALSE) << "no timer is left";
}

TEST_F(TrayMenu, EndsIfTheUserWasElsewhereBeforeItOpened) {
  for (const HWND before : {kOther, kDesktop}) {
    OpenMenu(before, [before] { EXPECT_TRUE(EndsWithTheForegroundAt(before)); });
  }
}

TEST_F(TrayMenu, EndsByAClickOnTheIconIfTheTaskBarKeepsTheForeground) {
  for (const int click : {514, 517}) {
    OpenMenu(kTaskBar, [click] {
      for (const int message : {512, click | 1 << 16, click | -1 << 16}) {
        TrayMessage(message);
        EXPECT_FALSE(EndsWithTheForegroundAt(kTaskBar)) << "the pointer has moved";
      }
      TrayMessage(click);
      EXPECT_TRUE(EndsWithTheForegroundAt(kTaskBar));
    });
  }
}

DWORD WINAPI LeftOfTheMainScreen() { return MAKELONG(-20, 30); }

TEST_F(TrayMenu, OpensWhereThePointerWasIfItsPlaceIsRefused) {
  const SystemStandIn message(getMessagePosSlot, &LeftOfTheMainScreen);
  const Refused<getCursorPosSlot, FALSE> refused;
  OpenMenu(kTaskBar, [] {});
  EXPECT_EQ(menuPlace.x, -20);
  EXPECT_EQ(menuPlace.y, 30);
}

TEST_F(TrayMenu, OpensWithoutItsTimer) {
  const Refused<setTimerSlot, 0> refused;
  OpenMenu(kTaskBar, [] {});
  EXPECT_EQ(asked.at(1), "menu");
  EXPECT_FALSE(runtime::Ending());
}

}  // namespace
