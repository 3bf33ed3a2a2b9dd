#include "report/frmMoon.h"

#include <gtest/gtest.h>

#include "report/frmMoon_layout.h"
#include "report/settings.h"
#include "support/shown_frmMoon.h"
#include "support/system_stand_in_win.h"
#include "tray/tray_icon_data.h"

extern "C" decltype(&SetWindowTextW) setWindowTextSlot asm("__imp__SetWindowTextW@8");

namespace {

namespace layout = tidewell::frmMoonLayout;
using mMoon::Settings;

class MainWindow : public ShownMoon {
 protected:
  HWND Item(int id) { return GetDlgItem(form().hwnd(), id); }
  HWND Check1(int index) { return GetDlgItem(Item(layout::kFrame1), layout::kCheck1 + index); }
  int State(int index) { return static_cast<int>(SendMessageW(Check1(index), BM_GETCHECK, 0, 0)); }

  static std::wstring Text(HWND window) {
    wchar_t text[200];
    GetWindowTextW(window, text, 200);
    return text;
  }

  std::wstring Line(int index) { return Text(Item(layout::kLblMoon + index)); }

  /// Stores options as another program would and loads the window again.
  void LoadWith(std::int16_t restoreInTray, std::int16_t autoStart, std::int16_t southernView) {
    Settings.RestoreInTray = restoreInTray;
    Settings.AutoStart = autoStart;
    Settings.SouthernView = southernView;
    tidewell::SettingsFile().Write();
    Load();
  }
};

TEST_F(MainWindow, ShowsTheReportOfItsInstant) {
  EXPECT_EQ(Line(0), L"Last Full Moon : 26-Oct-26 4:13 AM");
  EXPECT_EQ(Line(1), L"Last New Moon : 09-Nov-26 7:01 AM");
  EXPECT_EQ(Line(2), L"Next Full Moon : 24-Nov-26 2:55 PM");
  EXPECT_EQ(Line(3), L"Next New Moon : 09-Dec-26 12:51 AM");
}

TEST_F(MainWindow, IsTopmostAndAsLargeAsDesigned) {
  RECT client{};
  GetClientRect(form().hwnd(), &client);
  EXPECT_EQ(client.right, 257);
  EXPECT_EQ(client.bottom, 342);
  EXPECT_TRUE(GetWindowLongW(form().hwnd(), GWL_EXSTYLE) & WS_EX_TOPMOST);
}

TEST_F(MainWindow, TheFirstReportIsInUniversalTimeAndAClickBringsTheZone) {
  zone.Bias = -330;
  Load();
  EXPECT_EQ(mMoon::OffsetMinutes, 0);
  SendMessageW(Check1(0), BM_CLICK, 0, 0);
  EXPECT_EQ(mMoon::OffsetMinutes, 330);
  EXPECT_EQ(Line(2), L"Next Full Moon : 24-Nov-26 8:25 PM");
}

TEST_F(MainWindow, AClickStoresItsOptionAlone) {
  SendMessageW(Check1(0), BM_CLICK, 0, 0);
  SendMessageW(Check1(2), BM_CLICK, 0, 0);
  tidewell::SettingsFile().Read();
  EXPECT_EQ(Settings.RestoreInTray, runtime::True);
  EXPECT_EQ(Settings.AutoStart, runtime::False);
  EXPECT_EQ(Settings.SouthernView, runtime::True);
  SendMessageW(Check1(2), BM_CLICK, 0, 0);
  tidewell::SettingsFile().Read();
  EXPECT_EQ(Settings.RestoreInTray, runtime::True);
  EXPECT_EQ(Settings.SouthernView, runtime::False);
}

TEST_F(MainWindow, TheAutoStartBoxIsStoredWhenItIsHandled) {
  SendMessageW(Check1(1), BM_SETCHECK, BST_CHECKED, 0);
  SendMessageW(form().hwnd(), WM_COMMAND, MAKEWPARAM(layout::kCheck1 + 1, BN_CLICKED), 0);
  tidewell::SettingsFile().Read();
  EXPECT_EQ(Settings.AutoStart, runtime::True);
}

TEST_F(MainWindow, AClickKeepsWhatAnotherWriterChanged) {
  tidewell::SettingsRecord other = Settings;
  Settings.Reserved24 = 77;
  tidewell::SettingsFile().Write();
  Settings = other;
  SendMessageW(Check1(0), BM_CLICK, 0, 0);
  tidewell::SettingsFile().Read();
  EXPECT_EQ(Settings.Reserved24, 77);
  EXPECT_EQ(Settings.RestoreInTray, runtime::True);
}

TEST_F(MainWindow, RestoresOnlyTheSouthernView) {
  LoadWith(runtime::True, runtime::True, runtime::True);
  EXPECT_EQ(State(0), 0);
  EXPECT_EQ(State(1), 0);
  EXPECT_EQ(State(2), 1);
}

TEST_F(MainWindow, AStoredOneIsFalse) {
  LoadWith(0, 0, 1);
  EXPECT_EQ(State(2), 0);
  EXPECT_FALSE(form().SouthernView());
}

TEST_F(MainWindow, TheSouthernViewTakesEffectAtOnce) {
  const std::uint32_t north = mMoon::TrayIconData.hIcon;
  const COLORREF left = Pixel(70, 85);
  SendMessageW(Check1(2), BM_CLICK, 0, 0);
  Repaint();
  EXPECT_NE(Pixel(70, 85), left);
  EXPECT_NE(mMoon::TrayIconData.hIcon, north);
}

TEST_F(MainWindow, TheTickAfterAChangeOfTheSystemUpdatesAndNoneBehindIt) {
  struct Notice {
    UINT message;
    WPARAM wParam;
    const wchar_t* text;
  };
  const auto tickUpdates = [&] {
    SetWindowTextW(Item(layout::kLblMoon), L"mark");
    SendMessageW(form().hwnd(), WM_TIMER, 1, 0);
    return Line(0) != L"mark";
  };
  for (const Notice& notice : {Notice{WM_TIMECHANGE, 0, nullptr},
                               {WM_POWERBROADCAST, PBT_APMRESUMEAUTOMATIC, nullptr},
                               {WM_SETTINGCHANGE, 0, L"intl"}}) {
    tickUpdates();  // of this minute, if none was before
    SendMessageW(form().hwnd(), notice.message, notice.wParam, reinterpret_cast<LPARAM>(notice.text));
    EXPECT_TRUE(tickUpdates()) << notice.message;
    EXPECT_FALSE(tickUpdates()) << notice.message;
  }
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

/// Each line that is written flickers.
TEST_F(MainWindow, AnUpdateWritesOnlyWhatHasChanged) {
  const SystemStandIn standIn(setWindowTextSlot, &CountText);
  written = 0;
  SendMessageW(Check1(0), BM_CLICK, 0, 0);
  EXPECT_EQ(written, 0);
  zone.Bias = -330;
  SendMessageW(Check1(0), BM_CLICK, 0, 0);
  EXPECT_EQ(written, 4);
}

TEST_F(MainWindow, HidesWhenItsBoxIsTicked) {
  SendMessageW(Check1(0), BM_SETCHECK, BST_CHECKED, 0);
  SendMessageW(form().hwnd(), WM_CLOSE, 0, 0);
  EXPECT_FALSE(form().Visible());
  form().Show();
  SendMessageW(Item(layout::kCommand1Description.id), BM_CLICK, 0, 0);
  EXPECT_FALSE(form().Visible());
}

TEST_F(MainWindow, TheFocusGoesOnToTheControlThatHadIt) {
  for (const HWND control : {Check1(2), Item(layout::kCommand1Description.id)}) {
    SetFocus(control);
    SetFocus(form().hwnd());
    EXPECT_EQ(GetFocus(), control);
  }
}

// As the shell does it, which shows the desktop: it sends no WM_SYSCOMMAND.
TEST_F(MainWindow, TheFocusIsWhereItWasAfterBeingMinimisedFromOutside) {
  for (const HWND control : {Check1(2), Item(layout::kCommand1Description.id)}) {
    SetFocus(control);
    ShowWindow(form().hwnd(), SW_MINIMIZE);
    form().Show();
    EXPECT_EQ(GetFocus(), control);
  }
}

TEST_F(MainWindow, TheFirstControlHasTheFocusFirst) { EXPECT_EQ(GetFocus(), Check1(0)); }

TEST_F(MainWindow, TheDisabledBoxIsCutOffByTheFrame) {
  RECT box{};
  RECT frame{};
  GetWindowRect(Check1(1), &box);
  GetWindowRect(Item(layout::kFrame1), &frame);
  EXPECT_EQ(GetParent(Check1(1)), Item(layout::kFrame1));
  EXPECT_EQ(frame.right - box.left, 23);
  EXPECT_GT(box.right, frame.right);
  EXPECT_FALSE(IsWindowEnabled(Check1(1)));
  EXPECT_TRUE(IsWindowVisible(Check1(1)));
}

TEST_F(MainWindow, Label1IsKeptUpToDateAndUnseen) {
  const HWND label = Item(layout::kLabel1);
  EXPECT_FALSE(IsWindowVisible(label));
  EXPECT_TRUE(Text(label).starts_with(L"0.")) << "the dark fraction";
}

}  // namespace
