#include "forms/timer_win.h"

#include <gtest/gtest.h>

#include "support/raises.h"

namespace {

TEST(Timer, RefusedByTheSystemIsAnError) {
  const HWND window = CreateWindowW(L"STATIC", L"", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr, nullptr, nullptr);
  DestroyWindow(window);  // the system refuses a timer for it
  EXPECT_TRUE(support::Raises(runtime::ErrorNumber::OutOfMemory, [&] { forms::Timer(window, 1, 1000); }));
}

TEST(Timer, EndsWithItsObject) {
  const HWND window = CreateWindowW(L"STATIC", L"", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr, nullptr, nullptr);
  { const forms::Timer timer(window, 1, 1000); }
  EXPECT_FALSE(KillTimer(window, 1)) << "the timer still ran";
  DestroyWindow(window);
}

}  // namespace
