#include "forms/place_win.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>

#include "support/system_stand_in_win.h"

extern "C" decltype(&ShowWindow) showWindowSlot asm("__imp__ShowWindow@8");

namespace {

decltype(&ShowWindow) systemsShowWindow = nullptr;
std::optional<int> wish;  ///< the show command that the program was started with

/// Windows does this: the first call follows the wish instead of its own command.
BOOL WINAPI HeedTheWish(HWND window, int command) {
  const int heeded = wish.value_or(command);
  wish.reset();
  return systemsShowWindow(window, heeded);
}

class ShowInForeground : public testing::TestWithParam<int> {
 protected:
  ~ShowInForeground() override { DestroyWindow(window_); }

  const HWND window_ = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPED | WS_CAPTION | WS_MINIMIZEBOX, 0, 0, 100, 100,
                                       nullptr, nullptr, nullptr, nullptr);
};

/// After a start that asked for no window, when the user asks for the window.
TEST_P(ShowInForeground, ShowsTheFirstWindowWhateverTheStartAskedFor) {
  systemsShowWindow = showWindowSlot;
  wish = GetParam();
  const SystemStandIn standIn(showWindowSlot, &HeedTheWish);
  forms::ShowInForeground(window_);
  EXPECT_TRUE(IsWindowVisible(window_));
  EXPECT_FALSE(IsIconic(window_));
}

INSTANTIATE_TEST_SUITE_P(Wishes, ShowInForeground, testing::Values(SW_HIDE, SW_SHOWMINIMIZED, SW_SHOWMINNOACTIVE));

}  // namespace
