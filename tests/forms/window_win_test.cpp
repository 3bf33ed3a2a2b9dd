#include "forms/window_win.h"

#include <gtest/gtest.h>

namespace {

class Orphan : public forms::Window<Orphan> {
 public:
  static constexpr const wchar_t* kWindowClass = L"TidewellOrphan";

  void Load() { Create({.style = WS_CHILD}); }  // a child without a parent, which the system refuses

 private:
  friend Window<Orphan>;
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) { return DefaultHandling(message, wParam, lParam); }
};

TEST(Window, ThatTheSystemRefusesIsAnError) {
  Orphan orphan;
  try {
    orphan.Load();
    ADD_FAILURE() << "no error";
  } catch (const runtime::RuntimeError& error) {
    EXPECT_EQ(error.number(), runtime::ErrorNumber::OutOfMemory);
  }
  EXPECT_EQ(orphan.hwnd(), nullptr);
}

}  // namespace
