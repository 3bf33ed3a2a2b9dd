#include "forms/window_win.h"

#include <gtest/gtest.h>

#include <vector>

#include "forms/timer_win.h"
#include "support/system_stand_in_win.h"

extern "C" decltype(&GetMessageW) getMessageSlot asm("__imp__GetMessageW@16");
extern "C" decltype(&IsDialogMessageW) isDialogMessageSlot asm("__imp__IsDialogMessageW@8");

namespace {

class Plain : public forms::Window<Plain> {
 public:
  static constexpr const wchar_t* kWindowClass = L"TidewellPlain";

  void Load() { Create({.style = WS_POPUP}); }

 private:
  friend Window<Plain>;
  LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) { return DefaultHandling(message, wParam, lParam); }
};

TEST(Window, HasNoHandleAfterItWasDestroyed) {
  Plain window;
  window.Load();
  ASSERT_NE(window.hwnd(), nullptr);
  DestroyWindow(window.hwnd());
  EXPECT_EQ(window.hwnd(), nullptr);
}

TEST(Timer, EndsWithItsObject) {
  Plain window;
  window.Load();
  { const forms::Timer timer(window.hwnd(), 1, 1000); }
  EXPECT_FALSE(KillTimer(window.hwnd(), 1)) << "the timer still ran";
}

std::vector<UINT> toCome;
std::vector<UINT> askedOf;

BOOL WINAPI TakeMessage(MSG* message, HWND /*window*/, UINT /*first*/, UINT /*last*/) {
  if (toCome.empty()) {
    return FALSE;
  }
  *message = {};
  message->message = toCome.back();
  toCome.pop_back();
  return TRUE;
}

BOOL WINAPI NoteQuestion(HWND /*dialog*/, MSG* message) {
  askedOf.push_back(message->message);
  return TRUE;
}

TEST(MessageLoop, LooksForADialogsKeysInAllMessagesButTicks) {
  toCome = {WM_KEYDOWN, WM_TIMER, WM_LBUTTONDOWN, WM_TIMER};
  askedOf.clear();
  const SystemStandIn messages(getMessageSlot, &TakeMessage);
  const SystemStandIn dialog(isDialogMessageSlot, &NoteQuestion);
  forms::RunMessageLoop();
  EXPECT_EQ(askedOf, (std::vector<UINT>{WM_LBUTTONDOWN, WM_KEYDOWN}));
}

}  // namespace
