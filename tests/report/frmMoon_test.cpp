#include "report/frmMoon.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <new>

#include "report/frmMoon_layout.h"
#include "report/moon_report.h"
#include "report/settings.h"
#include "runtime/program_folder.h"
#include "support/font_of_win.h"
#include "support/high_contrast_stand_in_win.h"
#include "support/pixels_win.h"
#include "support/system_stand_in_win.h"
#include "tray/shell_record.h"

extern "C" decltype(&BeginPaint) beginPaintSlot asm("__imp__BeginPaint@8");
extern "C" decltype(&DrawEdge) drawEdgeSlot asm("__imp__DrawEdge@16");
extern "C" decltype(&GetDeviceCaps) getDeviceCapsSlot asm("__imp__GetDeviceCaps@8");
extern "C" decltype(&InvalidateRect) invalidateRectSlot asm("__imp__InvalidateRect@12");
extern "C" decltype(&Pie) pieSlot asm("__imp__Pie@36");
extern "C" decltype(&SetTimer) setTimerSlot asm("__imp__SetTimer@16");
extern "C" decltype(&SetWindowTextW) setWindowTextSlot asm("__imp__SetWindowTextW@8");

static int allocations = 0;

void* operator new(std::size_t size) {
  ++allocations;
  void* const memory = std::malloc(size);
  return memory != nullptr ? memory : throw std::bad_alloc();
}

namespace {

namespace layout = tidewell::frmMoonLayout;
using mMoon::Settings;

runtime::DateValue now;
runtime::TimeZoneReading zone;

/// The main window, loaded and shown.
class MainWindow : public testing::Test {
 protected:
  MainWindow() {
    now = runtime::AddTime(runtime::DateSerial(2026, 11, 21), 3, 40);
    zone = {};
    std::filesystem::remove(runtime::ProgramFolder() + L"\\vesk.dat");
    Load();
  }

  /// Loads the window as the program's start does. May be called again.
  void Load() {
    form_.reset();
    form_ = std::make_unique<tidewell::frmMoon>();
    mMoon::OffsetMinutes = 0;
    tidewell::surroundings = {.frmMoon = form_.get(), .Now = [] { return now; }, .ReadTimeZone = [] { return zone; }};
    form_->Load();
    form_->Show();
  }

  tidewell::frmMoon& form() { return *form_; }
  HWND Item(int id) { return GetDlgItem(form().hwnd(), id); }
  HWND Frame1() { return Item(layout::kFrame1); }
  HWND Check1(int index) { return GetDlgItem(Frame1(), layout::kCheck1 + index); }
  HWND Close() { return Item(layout::kCommand1Description.id); }
  HWND Line(int index) { return Item(layout::kLblMoon + index); }

  void Tick() { SendMessageW(form().hwnd(), WM_TIMER, 1, 0); }

  void Invalidate() { RedrawWindow(form().hwnd(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN); }

  static HICON IconOf(HWND window, int size) {
    return reinterpret_cast<HICON>(SendMessageW(window, WM_GETICON, static_cast<WPARAM>(size), 0));
  }

  /// Gives a window another procedure and returns the one before.
  static WNDPROC Replace(HWND window, WNDPROC procedure) {
    return reinterpret_cast<WNDPROC>(SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
  }

  /// Paints what is invalid, as the message loop does.
  Pixels Painted() {
    UpdateWindow(form().hwnd());
    UpdateWindow(Frame1());
    return Pixels(form().hwnd());
  }

  Pixels PaintedOverBlack() {
    const HDC dc = GetDC(form().hwnd());
    PatBlt(dc, 0, 0, 600, 800, BLACKNESS);
    ReleaseDC(form().hwnd(), dc);
    Invalidate();
    return Painted();
  }

 private:
  std::unique_ptr<tidewell::frmMoon> form_;
};

// ---- how it looks

TEST_F(MainWindow, HasTheDesignsFonts) {
  for (int index = 0; index < 4; ++index) {
    EXPECT_EQ(FontOf(Line(index)), L"Arial -13 700") << "9.75 points";
  }
  for (const HWND control : {Check1(0), Check1(1), Check1(2), Close(), Item(layout::kLabel1)}) {
    EXPECT_EQ(FontOf(control), L"MS Shell Dlg 2 -11 400") << "8.25 points";
  }
}

TEST_F(MainWindow, WritesALineSmallerOnlyIfItIsWiderThanTheWindow) {
  const std::wstring designs = FontOf(Line(0));
  const HDC dc = GetDC(Line(0));
  SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageW(Line(0), WM_GETFONT, 0, 0)));
  for (std::wstring text = L"Next New Moon : "; text.size() < 60; text += L'i') {
    form().SetMoonLine(0, text);
    SIZE size{};
    GetTextExtentPoint32W(dc, text.data(), static_cast<int>(text.size()), &size);
    EXPECT_EQ(FontOf(Line(0)) == designs, size.cx <= 257 - 2 * 2);
  }
  ReleaseDC(Line(0), dc);
}

TEST_F(MainWindow, HasIconsOfTheSystemsSizes) {
  for (const auto& [size, width] : {std::pair{ICON_SMALL, SM_CXSMICON}, {ICON_BIG, SM_CXICON}}) {
    ICONINFO info{};
    ASSERT_TRUE(GetIconInfo(IconOf(form().hwnd(), size), &info));
    BITMAP bitmap{};
    GetObjectW(info.hbmMask, sizeof bitmap, &bitmap);
    DeleteObject(info.hbmMask);
    DeleteObject(info.hbmColor);
    EXPECT_EQ(bitmap.bmWidth, GetSystemMetrics(width));
  }
}

int iconsSet = 0;
WNDPROC ownProcedure = nullptr;

LRESULT CALLBACK CountIcons(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  iconsSet += message == WM_SETICON ? 1 : 0;
  return CallWindowProcW(ownProcedure, window, message, wParam, lParam);
}

TEST_F(MainWindow, GivesItsIconsOnlyOnceToTheAboutBox) {
  const HWND about = FindWindowW(tidewell::frmAbout::kWindowClass, nullptr);
  ownProcedure = Replace(about, &CountIcons);
  iconsSet = 0;
  SendMessageW(about, WM_MOUSEMOVE, 1, 512);
  SendMessageW(about, WM_MOUSEMOVE, 1, 512);
  Replace(about, ownProcedure);
  EXPECT_EQ(iconsSet, 2) << "each paints the caption";
  for (const int size : {ICON_SMALL, ICON_BIG}) {
    EXPECT_EQ(IconOf(about, size), IconOf(form().hwnd(), size));
  }
}

TEST_F(MainWindow, HasTheArrowAsItsCursor) {
  const auto arrow = reinterpret_cast<ULONG_PTR>(LoadCursorW(nullptr, IDC_ARROW));
  EXPECT_EQ(GetClassLongPtrW(form().hwnd(), GCLP_HCURSOR), arrow);
  EXPECT_EQ(GetClassLongPtrW(Frame1(), GCLP_HCURSOR), arrow);
}

TEST_F(MainWindow, HasAFrameWithAnEtchedEdge) {
  PaintedOverBlack();
  const Pixels frame(Frame1());
  const COLORREF shadow = GetSysColor(COLOR_3DSHADOW);
  const COLORREF light = GetSysColor(COLOR_3DHILIGHT);
  ASSERT_NE(shadow, light);
  for (const auto& [x, y] : {std::pair{120, 0}, {0, 28}, {120, 55}, {241, 10}}) {
    EXPECT_EQ(frame.At(x, y), shadow) << x << ", " << y;
  }
  for (const auto& [x, y] : {std::pair{120, 1}, {1, 28}, {120, 56}, {242, 10}}) {
    EXPECT_EQ(frame.At(x, y), light) << x << ", " << y;
  }
}

// ---- high contrast

constexpr COLORREF kYellow = RGB(255, 255, 0);

TEST_F(MainWindow, HasARingAroundTheDiscInDarkHighContrast) {
  HighContrastStandIn standIn(false, 0, kYellow);
  const Pixels without = PaintedOverBlack();
  HighContrastStandIn::on = true;
  const Pixels with = PaintedOverBlack();
  int ring = 0;
  for (int y = 0; y < 165; ++y) {
    for (int x = 0; x < with.Width(); ++x) {
      if (with.At(x, y) != without.At(x, y)) {
        ++ring;
        ASSERT_EQ(with.At(x, y), kYellow);
        ASSERT_EQ(without.At(x, y), 0U) << "the ring covers nothing of the picture";
        ASSERT_NEAR(std::hypot(x - 125, y - 85), 66, 1) << x << ", " << y;
      }
    }
  }
  EXPECT_NEAR(ring, 66 * 4 * std::sqrt(2), 4) << "the pixels of an unbroken thin ring";
}

TEST_F(MainWindow, PaintsTheRingWithoutAnAllocation) {
  const HighContrastStandIn standIn(true, 0, kYellow);
  Invalidate();
  const int before = allocations;
  UpdateWindow(form().hwnd());
  EXPECT_EQ(allocations, before);
  EXPECT_EQ(Pixels(form().hwnd()).At(59, 85), kYellow);
}

TEST_F(MainWindow, FollowsTheNoticesOfHighContrast) {
  HighContrastStandIn standIn(false, 0, kYellow);
  PaintedOverBlack();
  for (const UINT notice : {WM_SYSCOLORCHANGE, WM_SETTINGCHANGE}) {
    for (const bool on : {true, false}) {
      HighContrastStandIn::on = on;
      SendMessageW(form().hwnd(), notice, notice == WM_SETTINGCHANGE ? SPI_SETHIGHCONTRAST : 0, 0);
      EXPECT_EQ(Painted().At(59, 85), on ? kYellow : 0) << notice;
    }
  }
}

// ---- the picture is painted if it changes, and again if the system refused it

TEST_F(MainWindow, IsNotPaintedAgainIfNoPixelChanges) {
  Tick();
  Painted();
  now = runtime::AddTime(now, 0, 1);
  const auto tip = mMoon::TrayIconData.szTip;
  Tick();
  EXPECT_NE(mMoon::TrayIconData.szTip, tip);
  EXPECT_FALSE(GetUpdateRect(form().hwnd(), nullptr, FALSE));
}

const auto deviceCaps = getDeviceCapsSlot;

int WINAPI OfTwiceThePixels(HDC dc, int what) {
  return what == LOGPIXELSX || what == LOGPIXELSY ? 192 : deviceCaps(dc, what);
}

TEST_F(MainWindow, PaintsANewPictureWholeOnAHighDpiScreen) {
  const SystemStandIn standIn(getDeviceCapsSlot, &OfTwiceThePixels);
  Load();
  for (int halfHour = 1; halfHour <= 48; ++halfHour) {
    now = runtime::AddTime(now, 0, 30);
    Tick();
    const Pixels shown = Painted();
    ASSERT_EQ(shown, PaintedOverBlack()) << halfHour;
  }
}

class RefusedPainting : public MainWindow {
 protected:
  RefusedPainting() { Tick(); }

  /// Refuses each call that a painting makes to this function: one call per painting.
  template <auto& Slot, auto Answer>
  void RefuseEach() {
    const Pixels whole = PaintedOverBlack();
    for (int call = 0;; ++call) {
      {
        const Refused<Slot, Answer> refused(call);
        PaintedOverBlack();
        if (!refused.Happened()) {
          EXPECT_GT(call, 0) << "the painting does not call it";
          break;
        }
      }
      ASSERT_FALSE(GetUpdateRect(form().hwnd(), nullptr, FALSE)) << "it would be painted again and again";
      Tick();
      ASSERT_EQ(Painted(), whole) << "call " << call;
    }
    Tick();
    EXPECT_FALSE(GetUpdateRect(form().hwnd(), nullptr, FALSE)) << "painted again without need";
  }
};

TEST_F(RefusedPainting, IsRepeatedAtTheNextTick) {
  RefuseEach<beginPaintSlot, nullptr>();
  RefuseEach<drawEdgeSlot, FALSE>();
  RefuseEach<pieSlot, FALSE>();
}

LRESULT CALLBACK RefuseToErase(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  return message == WM_ERASEBKGND ? 0 : CallWindowProcW(ownProcedure, window, message, wParam, lParam);
}

TEST_F(RefusedPainting, OfTheBackgroundIsRepeatedAtTheNextTick) {
  const Pixels whole = PaintedOverBlack();
  ownProcedure = Replace(form().hwnd(), &RefuseToErase);
  EXPECT_NE(PaintedOverBlack(), whole);
  Replace(form().hwnd(), ownProcedure);
  Tick();
  EXPECT_EQ(Painted(), whole);
}

TEST_F(RefusedPainting, LeavesNoPictureRatherThanHalfOfIt) {
  const Pixels whole = PaintedOverBlack();
  {
    const Refused<pieSlot, FALSE> refused;
    PaintedOverBlack();
    for (int tick = 0; tick < 3; ++tick) {
      Tick();
      EXPECT_EQ(Painted().At(110, 85), GetSysColor(COLOR_3DFACE));
    }
  }
  Tick();
  EXPECT_EQ(Painted(), whole);
}

TEST_F(RefusedPainting, OfANewPictureIsRepeatedToo) {
  const COLORREF before = PaintedOverBlack().At(110, 85);
  now += 14;
  {
    const Refused<invalidateRectSlot, FALSE> refused;
    Tick();
  }
  Tick();
  EXPECT_NE(Painted().At(110, 85), before);
}

// ---- timers

std::map<UINT_PTR, UINT> intervals;

UINT_PTR WINAPI NoteTimer(HWND /*window*/, UINT_PTR id, UINT milliseconds, TIMERPROC /*call*/) {
  intervals[id] = milliseconds;
  return id;
}

TEST_F(MainWindow, HasTwoTimersOfASecond) {
  const SystemStandIn standIn(setTimerSlot, &NoteTimer);
  intervals.clear();
  Load();
  EXPECT_EQ(intervals, (std::map<UINT_PTR, UINT>{{1, 1000}, {2, 1000}}));
}

int written = 0;

BOOL WINAPI CountText(HWND /*window*/, LPCWSTR /*text*/) {
  ++written;
  return TRUE;
}

/// Writing a line makes it flicker.
TEST_F(MainWindow, WritesOnlyTheLinesThatHaveChanged) {
  const SystemStandIn standIn(setWindowTextSlot, &CountText);
  written = 0;
  SendMessageW(Check1(0), BM_CLICK, 0, 0);
  EXPECT_EQ(written, 0);
  zone.Bias = -330;
  SendMessageW(Check1(0), BM_CLICK, 0, 0);
  EXPECT_EQ(written, 4);
}

TEST_F(MainWindow, UpdatesAtTheFirstTickAfterANewLocaleAndNeverAtTheSecondTimer) {
  Tick();  // the update of this minute
  const SystemStandIn standIn(setWindowTextSlot, &CountText);
  zone.Bias = -330;
  written = 0;
  SendMessageW(form().hwnd(), WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"intl"));
  SendMessageW(form().hwnd(), WM_TIMER, 2, 0);
  EXPECT_EQ(written, 0);
  Tick();
  EXPECT_EQ(written, 4);
  Tick();
  EXPECT_EQ(written, 4);
}

// ---- options and focus

TEST_F(MainWindow, StoresAClickOnTheAutoStartBox) {
  SendMessageW(Check1(1), BM_SETCHECK, BST_CHECKED, 0);
  SendMessageW(form().hwnd(), WM_COMMAND, MAKEWPARAM(layout::kCheck1 + 1, BN_CLICKED), 0);
  tidewell::SettingsFile().Read();
  EXPECT_EQ(Settings.AutoStart, runtime::True);
}

TEST_F(MainWindow, RestoresOnlyTheSouthernView) {
  Settings.RestoreInTray = Settings.AutoStart = Settings.SouthernView = runtime::True;
  tidewell::SettingsFile().Write();
  Load();
  for (int index = 0; index < 3; ++index) {
    EXPECT_EQ(SendMessageW(Check1(index), BM_GETCHECK, 0, 0), index == 2 ? 1 : 0) << index;
  }
}

// "Show desktop" minimises without WM_SYSCOMMAND.
TEST_F(MainWindow, GivesTheFocusBackToTheControlThatHadIt) {
  for (const HWND control : {Check1(2), Close()}) {
    SetFocus(control);
    SetFocus(form().hwnd());
    EXPECT_EQ(GetFocus(), control);
    ShowWindow(form().hwnd(), SW_MINIMIZE);
    form().Show();
    EXPECT_EQ(GetFocus(), control);
  }
}

}  // namespace
