#include "forms/place_win.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>

#include "support/system_stand_in_win.h"

extern "C" decltype(&GetMonitorInfoW) getMonitorInfoSlot asm("__imp__GetMonitorInfoW@8");
extern "C" decltype(&ShowWindow) showWindowSlot asm("__imp__ShowWindow@8");
extern "C" decltype(&SystemParametersInfoW) systemParametersInfoSlot asm("__imp__SystemParametersInfoW@16");

namespace {

// A screen with bars at the left and the top.
constexpr RECT kWorkArea = {.left = 201, .top = 101, .right = 1001, .bottom = 701};

BOOL WINAPI TellWorkArea(UINT action, UINT /*size*/, void* data, UINT /*change*/) {
  EXPECT_EQ(action, UINT{SPI_GETWORKAREA});
  *static_cast<RECT*>(data) = kWorkArea;
  return TRUE;
}

TEST(CentredPlace, IsInTheMiddleOfTheWorkArea) {
  const SystemStandIn standIn(systemParametersInfoSlot, &TellWorkArea);
  const RECT place = forms::CentredPlace(3855, 5130, WS_OVERLAPPED | WS_CAPTION, 0);
  EXPECT_NEAR(place.left - kWorkArea.left, kWorkArea.right - place.right, 1);
  EXPECT_NEAR(place.top - kWorkArea.top, kWorkArea.bottom - place.bottom, 1);
}

BOOL WINAPI TellMonitor(HMONITOR /*monitor*/, MONITORINFO* info) {
  if (info->cbSize != sizeof *info) {
    return FALSE;
  }
  info->rcMonitor = {.left = 1, .top = 1, .right = 1001, .bottom = 701};
  info->rcWork = kWorkArea;
  return TRUE;
}

TEST(WorkAreaOf, LeavesOutTheBarsOfTheScreen) {
  const SystemStandIn standIn(getMonitorInfoSlot, &TellMonitor);
  const RECT work = forms::WorkAreaOf(nullptr);
  EXPECT_TRUE(EqualRect(&work, &kWorkArea));
}

const auto systemsShowWindow = showWindowSlot;
std::optional<int> wish;  ///< the show command that the program was started with

/// As Windows does: a program's first ShowWindow ignores its argument and uses the start's show command.
BOOL WINAPI HeedTheWish(HWND window, int command) {
  return systemsShowWindow(window, std::exchange(wish, std::nullopt).value_or(command));
}

/// The program was started hidden or minimised; now the user asks for the window.
TEST(ShowInForeground, ShowsTheFirstWindowWhateverTheStartAskedFor) {
  const SystemStandIn standIn(showWindowSlot, &HeedTheWish);
  for (const int command : {SW_HIDE, SW_SHOWMINIMIZED, SW_SHOWMINNOACTIVE}) {
    const HWND window = CreateWindowW(L"STATIC", L"", WS_OVERLAPPED | WS_CAPTION | WS_MINIMIZEBOX, 0, 0, 100, 100,
                                      nullptr, nullptr, nullptr, nullptr);
    wish = command;
    forms::ShowInForeground(window);
    EXPECT_TRUE(IsWindowVisible(window)) << command;
    EXPECT_FALSE(IsIconic(window)) << command;
    DestroyWindow(window);
  }
}

}  // namespace
