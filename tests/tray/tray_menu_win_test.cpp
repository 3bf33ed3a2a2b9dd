// What the tray's menu asks of the system, in what order.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/shown_frmMoon.h"
#include "support/system_stand_in_win.h"

extern "C" decltype(&TrackPopupMenu) trackPopupMenuSlot asm("__imp__TrackPopupMenu@28");
extern "C" decltype(&SetForegroundWindow) setForegroundWindowSlot asm("__imp__SetForegroundWindow@4");
extern "C" decltype(&PostMessageW) postMessageSlot asm("__imp__PostMessageW@16");

namespace {

std::vector<std::string> asked;
HWND owner = nullptr;

BOOL WINAPI NoteForeground(HWND window) {
  asked.emplace_back(window == owner ? "foreground" : "foreground of another window");
  return TRUE;
}

BOOL WINAPI NoteMenu(HMENU /*menu*/, UINT flags, int x, int y, int /*reserved*/, HWND window, const RECT* /*ignored*/) {
  POINT pointer{};
  GetCursorPos(&pointer);
  EXPECT_EQ(window, owner);
  EXPECT_EQ(x, pointer.x);
  EXPECT_EQ(y, pointer.y);
  EXPECT_EQ(flags & TPM_RIGHTBUTTON, 0U) << "a second right click must choose nothing";
  asked.emplace_back("menu");
  return 0;
}

BOOL WINAPI NotePost(HWND window, UINT message, WPARAM /*wParam*/, LPARAM /*lParam*/) {
  asked.emplace_back(window == owner && message == WM_NULL ? "null message" : "another message");
  return TRUE;
}

using TrayMenu = ShownMoon;

/// Without the foreground the menu stays open when the user clicks elsewhere, without the message behind it the next
/// one may close at once.
TEST_F(TrayMenu, ComesInTheForegroundWithANullMessageBehindIt) {
  owner = FindWindowW(L"TidewellAbout", nullptr);
  ASSERT_NE(owner, nullptr);
  asked.clear();
  {
    const SystemStandIn menu(trackPopupMenuSlot, &NoteMenu);
    const SystemStandIn foreground(setForegroundWindowSlot, &NoteForeground);
    const SystemStandIn post(postMessageSlot, &NotePost);
    SendMessageW(owner, WM_MOUSEMOVE, 1, 517);
  }
  EXPECT_EQ(asked, (std::vector<std::string>{"foreground", "menu", "null message"}));
}

}  // namespace
