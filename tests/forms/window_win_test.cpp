#include "forms/window_win.h"

#include <gtest/gtest.h>

namespace {

class Plain : public forms::Window<Plain> {
 public:
  static constexpr const wchar_t* kWindowClass = L"TidewellPlain";

  void Load(DWORD style) { Create({.style = style}); }

 private:
  friend Window<Plain>;
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) { return DefaultHandling(message, wParam, lParam); }
};

TEST(Window, RefusedByTheSystemIsAnError) {
  Plain orphan;
  try {
    orphan.Load(WS_CHILD);  // a child without a parent
    ADD_FAILURE() << "no error";
  } catch (const runtime::RuntimeError& error) {
    EXPECT_EQ(error.number(), runtime::ErrorNumber::OutOfMemory);
  }
  EXPECT_EQ(orphan.hwnd(), nullptr);
}

TEST(Window, HasNoHandleAfterItWasDestroyed) {
  Plain window;
  window.Load(WS_POPUP);
  ASSERT_NE(window.hwnd(), nullptr);
  DestroyWindow(window.hwnd());
  EXPECT_EQ(window.hwnd(), nullptr);
}

}  // namespace
