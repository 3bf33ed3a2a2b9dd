#include "tray/frmAbout.h"

#include <gtest/gtest.h>
// After windows.h, which it builds on.
#include <shellapi.h>

#include "runtime/runtime_error.h"
#include "support/system_stand_in_win.h"
#include "tray/tray_icon_data.h"
#include "tray/tray_message.h"

extern "C" decltype(&ChangeWindowMessageFilterEx) changeFilterSlot asm("__imp__ChangeWindowMessageFilterEx@16");
extern "C" decltype(&Shell_NotifyIconA) shellNotifyIconSlot asm("__imp__Shell_NotifyIconA@8");

namespace {

namespace layout = tidewell::frmAboutLayout;

class FakeMainForm final : public tidewell::MainForm {
 public:
  bool visible = true;
  bool ended = false;
  RECT workArea = {.left = 100, .top = 50, .right = 700, .bottom = 450};

  [[nodiscard]] bool Visible() const override { return visible; }
  void Show() override { visible = true; }
  void Hide() override { visible = false; }
  [[nodiscard]] RECT WorkArea() const override { return workArea; }
  void EndProgram() override { ended = true; }
  [[nodiscard]] HICON Icon(WPARAM size) const override {
    return LoadIconW(nullptr, size == ICON_SMALL ? IDI_QUESTION : IDI_APPLICATION);
  }
};

class About : public testing::Test {
 protected:
  About() { Update(0, 5); }
  ~About() override { Update(2, 0); }

  std::int16_t Update(std::int32_t Value, std::int16_t IcoNum) {
    about_.UpdateMoonIcon(Value, IcoNum);
    return IcoNum;
  }

  /// What the tray sends for a mouse message of the icon.
  void TrayMessage(int message) { SendMessageW(about_.hwnd(), WM_MOUSEMOVE, 1, message); }

  void Show() { ShowWindow(about_.hwnd(), SW_SHOW); }

  HICON PictureOf(int index) {
    Show();  // which completes the window
    return reinterpret_cast<HICON>(
        SendMessageW(GetDlgItem(about_.hwnd(), layout::kPicMoon + index), STM_GETICON, 0, 0));
  }

  FakeMainForm main_;
  tidewell::frmAbout about_{main_};
};

TEST_F(About, FillsTheRecordOfTheIcon) {
  const tidewell::TrayIconRecord& record = mMoon::TrayIconData;
  EXPECT_EQ(record.cbSize, 88U);
  EXPECT_EQ(record.hWnd, static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(about_.hwnd())));
  EXPECT_EQ(record.uID, 1U);
  EXPECT_EQ(record.uFlags, 7U);
  EXPECT_EQ(record.uCallbackMessage, 512U);
  EXPECT_EQ(record.hIcon, static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(PictureOf(5))));
}

TEST_F(About, KeepsTheTipThatTheReportLeft) {
  mMoon::TrayIconData.SetTip(L"Moon's Age - 12 Days 7:48");
  const auto tip = mMoon::TrayIconData.szTip;
  Update(1, 6);
  EXPECT_EQ(mMoon::TrayIconData.szTip, tip);
}

BOOL WINAPI WriteIntoTheRecord(DWORD /*command*/, NOTIFYICONDATAA* record) {
  record->szTip[0] = '*';
  return TRUE;
}

/// The call hands over the record itself, not a copy.
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

/// The shell, with lower rights then, would not be heard otherwise.
TEST_F(About, HearsOfANewTaskBarAlsoWithHighRights) {
  const SystemStandIn standIn(changeFilterSlot, &NoteFilter);
  tidewell::frmAbout about{main_};
  std::int16_t IcoNum = 0;
  about.UpdateMoonIcon(1, IcoNum);
  EXPECT_EQ(listener, about.hwnd());
  EXPECT_EQ(heard, RegisterWindowMessageW(L"TaskbarCreated"));
}

TEST_F(About, WithoutAnIconToRemoveThereIsNoWindow) {
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

TEST_F(About, HasTwentyEightPicturesBelowItsClientArea) {
  Show();
  for (int index = 0; index < 28; ++index) {
    const HWND holder = GetDlgItem(about_.hwnd(), layout::kPicMoon + index);
    ASSERT_NE(holder, nullptr) << index;
    ASSERT_NE(PictureOf(index), nullptr) << index;
    RECT place{};
    GetWindowRect(holder, &place);
    MapWindowPoints(nullptr, about_.hwnd(), reinterpret_cast<POINT*>(&place), 2);
    EXPECT_GE(place.top, 172) << index;
    EXPECT_EQ(place.right - place.left, 16) << index;
    EXPECT_EQ(place.bottom - place.top, 16) << index;
  }
}

TEST_F(About, ALeftReleaseTogglesTheMainWindow) {
  TrayMessage(514);
  EXPECT_FALSE(main_.visible);
  EXPECT_EQ(mMoon::MouseMsg, 514);
  TrayMessage(514);
  EXPECT_TRUE(main_.visible);
}

TEST_F(About, OtherMessagesDoNothingButMakeItTopmost) {
  for (const int message : {512, 513, 515, 516, 518}) {
    TrayMessage(message);
    EXPECT_TRUE(main_.visible) << message;
    EXPECT_EQ(mMoon::MouseMsg, message);
  }
  EXPECT_TRUE(GetWindowLongW(about_.hwnd(), GWL_EXSTYLE) & WS_EX_TOPMOST);
  for (const WPARAM size : {ICON_SMALL, ICON_BIG}) {
    EXPECT_EQ(reinterpret_cast<HICON>(SendMessageW(about_.hwnd(), WM_GETICON, size, 0)), main_.Icon(size));
  }
}

int iconsSet = 0;
WNDPROC aboutsOwn = nullptr;

LRESULT CALLBACK CountIcons(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  iconsSet += message == WM_SETICON ? 1 : 0;
  return CallWindowProcW(aboutsOwn, window, message, wParam, lParam);
}

TEST_F(About, MessagesOfTheIconDoNotMakeItFlicker) {
  Show();
  TrayMessage(512);
  UpdateWindow(about_.hwnd());
  aboutsOwn = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(about_.hwnd(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&CountIcons)));
  iconsSet = 0;
  TrayMessage(512);
  EXPECT_EQ(iconsSet, 0) << "each draws the caption";
  EXPECT_FALSE(GetUpdateRect(about_.hwnd(), nullptr, FALSE));
}

TEST_F(About, ShownAfterAMessageOfTheIconItHasTheKeyboard) {
  TrayMessage(512);
  Show();
  EXPECT_EQ(GetFocus(), GetDlgItem(about_.hwnd(), layout::kCmdOK));
}

TEST_F(About, ActiveForTheMenuBeforeItWasShownItHasTheKeyboardOnOk) {
  SendMessageW(about_.hwnd(), WM_ACTIVATE, WA_ACTIVE, 0);
  EXPECT_EQ(GetFocus(), about_.hwnd()) << "there is no control yet";
  SendMessageW(about_.hwnd(), WM_ACTIVATE, WA_INACTIVE, 0);
  Show();
  EXPECT_EQ(GetFocus(), GetDlgItem(about_.hwnd(), layout::kCmdOK));
}

TEST_F(About, ThePointerAtTheColumnOfAClickIsNone) {
  for (const int row : {1, 100, -1}) {
    TrayMessage(MAKELONG(514, row));
    EXPECT_TRUE(main_.visible) << row;
    EXPECT_EQ(mMoon::MouseMsg, 514);
  }
}

TEST_F(About, ClosingOnlyHidesIt) {
  const HWND window = about_.hwnd();
  ShowWindow(window, SW_SHOW);
  SendMessageW(window, WM_CLOSE, 0, 0);
  EXPECT_TRUE(IsWindow(window));
  EXPECT_FALSE(IsWindowVisible(window));
  ShowWindow(window, SW_SHOW);
  SendMessageW(GetDlgItem(window, layout::kCmdOK), BM_CLICK, 0, 0);
  EXPECT_TRUE(IsWindow(window));
  EXPECT_FALSE(IsWindowVisible(window));
  TrayMessage(514);
  EXPECT_FALSE(main_.visible);
}

TEST_F(About, HasItsTexts) {
  Show();
  const auto text = [&](int id) {
    wchar_t buffer[100];
    GetDlgItemTextW(about_.hwnd(), id, buffer, 100);
    return std::wstring(buffer);
  };
  EXPECT_EQ(text(layout::kLblTitle), L"Tidewell 1.0");
  EXPECT_EQ(text(layout::kLblDescription), L"Developed by Quorvane Systems");
  EXPECT_EQ(text(layout::kCmdOK), L"OK");
  RECT client{};
  GetClientRect(about_.hwnd(), &client);
  EXPECT_EQ(client.right, 283);
  EXPECT_EQ(client.bottom, 137);
}

}  // namespace
