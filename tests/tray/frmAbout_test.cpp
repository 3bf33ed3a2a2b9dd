#include "tray/frmAbout.h"

#include <gtest/gtest.h>
// Needs windows.h before it.
#include <shellapi.h>

#include "runtime/runtime_error.h"
#include "support/system_stand_in_win.h"
#include "tray/message_number.h"
#include "tray/tray_icon_record.h"

extern "C" decltype(&ChangeWindowMessageFilterEx) changeFilterSlot asm("__imp__ChangeWindowMessageFilterEx@16");
extern "C" decltype(&Shell_NotifyIconA) shellNotifyIconSlot asm("__imp__Shell_NotifyIconA@8");

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
  void SetIcons(HWND window) const override { iconsGivenTo = window; }

  mutable HWND iconsGivenTo = nullptr;
};

class About : public testing::Test {
 protected:
  About() { Update(0, 5); }
  ~About() override { Update(2, 0); }

  std::int16_t Update(std::int32_t Value, std::int16_t IcoNum) {
    about_.UpdateMoonIcon(Value, IcoNum);
    return IcoNum;
  }

  /// Sends a mouse message of the icon, as the tray does.
  void TrayMessage(int message) { SendMessageW(about_.hwnd(), WM_MOUSEMOVE, 1, message); }

  void Show() { ShowWindow(about_.hwnd(), SW_SHOW); }

  HICON PictureOf(int index) {
    Show();  // which makes the controls
    return reinterpret_cast<HICON>(
        SendMessageW(GetDlgItem(about_.hwnd(), layout::kPicMoon + index), STM_GETICON, 0, 0));
  }

  FakeMainForm main_;
  tidewell::frmAbout about_{main_};
};

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
  const auto newMoon = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(PictureOf(0)));
  EXPECT_EQ(mMoon::TrayIconData.hIcon, newMoon);
  EXPECT_EQ(Update(1, 27), 27);
  EXPECT_NE(mMoon::TrayIconData.hIcon, newMoon);
}

TEST_F(About, RefusesANumberBelowZero) {
  try {
    Update(1, -1);
    FAIL();
  } catch (const runtime::RuntimeError& error) {
    EXPECT_EQ(error.number(), runtime::ErrorNumber::ControlArrayElementDoesNotExist);
  }
}

TEST_F(About, OpensInTheMiddleOfTheMainWindowsScreen) {
  Show();
  RECT place{};
  GetWindowRect(about_.hwnd(), &place);
  EXPECT_NEAR(place.left + place.right, main_.workArea.left + main_.workArea.right, 1);
  EXPECT_NEAR(place.top + place.bottom, main_.workArea.top + main_.workArea.bottom, 1);
}

TEST_F(About, OpensAgainWhereItWasMovedTo) {
  Show();
  SetWindowPos(about_.hwnd(), nullptr, 30, 40, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
  SendMessageW(about_.hwnd(), WM_CLOSE, 0, 0);
  Show();
  RECT place{};
  GetWindowRect(about_.hwnd(), &place);
  EXPECT_EQ(place.left, 30);
  EXPECT_EQ(place.top, 40);
}

TEST_F(About, AMessageOfTheIconIsKeptAndBringsTheMainWindowsIcons) {
  for (const int message : {512, 513, 515, 516, 518}) {
    main_.iconsGivenTo = nullptr;
    TrayMessage(message);
    EXPECT_EQ(mMoon::MouseMsg, message);
    EXPECT_EQ(main_.iconsGivenTo, about_.hwnd());
  }
}

TEST_F(About, MessagesOfTheIconDoNotPaintItAgain) {
  Show();
  TrayMessage(512);
  UpdateWindow(about_.hwnd());
  TrayMessage(512);
  EXPECT_FALSE(GetUpdateRect(about_.hwnd(), nullptr, FALSE));
}

TEST_F(About, FirstShownAfterTheMenuHadTheKeyboardItHasItOnOk) {
  SendMessageW(about_.hwnd(), WM_ACTIVATE, WA_ACTIVE, 0);
  EXPECT_EQ(GetFocus(), about_.hwnd()) << "there is no control yet";
  SendMessageW(about_.hwnd(), WM_ACTIVATE, WA_INACTIVE, 0);
  Show();
  EXPECT_EQ(GetFocus(), GetDlgItem(about_.hwnd(), layout::kCmdOK));
}

}  // namespace
