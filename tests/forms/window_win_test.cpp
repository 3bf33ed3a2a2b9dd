#include "forms/window_win.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/system_stand_in_win.h"

extern "C" decltype(&GetMessageW) getMessageSlot asm("__imp__GetMessageW@16");
extern "C" decltype(&IsDialogMessageW) isDialogMessageSlot asm("__imp__IsDialogMessageW@8");

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
