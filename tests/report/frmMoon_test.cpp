#include "report/frmMoon.h"

#include <gtest/gtest.h>

#include "report/frmMoon_layout.h"
#include "report/settings.h"
#include "support/shown_frmMoon.h"
#include "support/system_stand_in_win.h"

extern "C" decltype(&SetWindowTextW) setWindowTextSlot asm("__imp__SetWindowTextW@8");

namespace {

namespace layout = tidewell::frmMoonLayout;
using mMoon::Settings;

class MainWindow : public ShownMoon {
 protected:
  HWND Item(int id) { return GetDlgItem(form().hwnd(), id); }
  HWND Check1(int index) { return GetDlgItem(Item(layout::kFrame1), layout::kCheck1 + index); }
  int State(int index) { return static_cast<int>(SendMessageW(Check1(index), BM_GETCHECK, 0, 0)); }

  std::wstring Line(int index) {
    wchar_t text[200];
    GetWindowTextW(Item(layout::kLblMoon + index), text, 200);
    return text;
  }
};

TEST_F(MainWindow, AClickOnTheAutoStartBoxIsStored) {
  SendMessageW(Check1(1), BM_SETCHECK, BST_CHECKED, 0);
  SendMessageW(form().hwnd(), WM_COMMAND, MAKEWPARAM(layout::kCheck1 + 1, BN_CLICKED), 0);
  tidewell::SettingsFile().Read();
  EXPECT_EQ(Settings.AutoStart, runtime::True);
}

TEST_F(MainWindow, RestoresOnlyTheSouthernView) {
  Settings.RestoreInTray = Settings.AutoStart = Settings.SouthernView = runtime::True;
  tidewell::SettingsFile().Write();
  Load();
  EXPECT_EQ(State(0), 0);
  EXPECT_EQ(State(1), 0);
  EXPECT_EQ(State(2), 1);
}

TEST_F(MainWindow, TheTickAfterANewLocaleUpdatesAndTheNextDoesNot) {
  const auto tickUpdates = [&] {
    SetWindowTextW(Item(layout::kLblMoon), L"mark");
    SendMessageW(form().hwnd(), WM_TIMER, 1, 0);
    return Line(0) != L"mark";
  };
  tickUpdates();  // the update of this minute
  SendMessageW(form().hwnd(), WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"intl"));
  EXPECT_TRUE(tickUpdates());
  EXPECT_FALSE(tickUpdates());
}

TEST_F(MainWindow, TheSecondTimerDoesNothing) {
  SetWindowTextW(Item(layout::kLblMoon), L"mark");
  SendMessageW(form().hwnd(), WM_TIMER, 2, 0);
  EXPECT_EQ(Line(0), L"mark");
}

int written = 0;

BOOL WINAPI CountText(HWND /*window*/, LPCWSTR /*text*/) {
  ++written;
  return TRUE;
}

/// Writing a line makes it flicker.
TEST_F(MainWindow, AnUpdateWritesOnlyWhatHasChanged) {
  const SystemStandIn standIn(setWindowTextSlot, &CountText);
  written = 0;
  SendMessageW(Check1(0), BM_CLICK, 0, 0);
  EXPECT_EQ(written, 0);
  zone.Bias = -330;
  SendMessageW(Check1(0), BM_CLICK, 0, 0);
  EXPECT_EQ(written, 4);
}

TEST_F(MainWindow, TheFocusReturnsToTheControlThatHadIt) {
  for (const HWND control : {Check1(2), Item(layout::kCommand1Description.id)}) {
    SetFocus(control);
    SetFocus(form().hwnd());
    EXPECT_EQ(GetFocus(), control);
  }
}

// "Show desktop" minimises without WM_SYSCOMMAND.
TEST_F(MainWindow, TheFocusIsWhereItWasAfterBeingMinimisedFromOutside) {
  for (const HWND control : {Check1(2), Item(layout::kCommand1Description.id)}) {
    SetFocus(control);
    ShowWindow(form().hwnd(), SW_MINIMIZE);
    form().Show();
    EXPECT_EQ(GetFocus(), control);
  }
}

}  // namespace
