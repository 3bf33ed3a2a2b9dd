#include "forms/controls_win.h"

#include <gtest/gtest.h>

#include "support/font_of_win.h"
#include "support/system_stand_in_win.h"

extern "C" decltype(&GetDeviceCaps) getDeviceCapsSlot asm("__imp__GetDeviceCaps@8");

namespace {

const auto theSystems = getDeviceCapsSlot;

/// A screen of 120 by 144 dpi.
int WINAPI OfAFineScreen(HDC dc, int what) {
  return what == LOGPIXELSX ? 120 : what == LOGPIXELSY ? 144 : theSystems(dc, what);
}

TEST(Control, StandsWhereTheScreensResolutionPutsIt) {
  const SystemStandIn standIn(getDeviceCapsSlot, &OfAFineScreen);
  const HWND parent = CreateWindowW(L"STATIC", L"", 0, 0, 0, 900, 900, HWND_MESSAGE, nullptr, nullptr, nullptr);
  const forms::Control control({.kind = forms::ControlKind::Label,
                                .id = 1,
                                .caption = L"",
                                .place = {1440, 720, 2880, 360},
                                .font = {.face = L"Arial", .points = 9, .bold = false}},
                               parent);
  RECT place{};
  GetWindowRect(control.hwnd(), &place);
  MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
  constexpr RECT kWanted = {.left = 120, .top = 72, .right = 120 + 240, .bottom = 72 + 36};
  EXPECT_TRUE(EqualRect(&place, &kWanted));
  EXPECT_EQ(FontOf(control.hwnd()), L"Arial -18 400");
  DestroyWindow(parent);
}

TEST(Control, HasAFontThatGrowsNoFasterThanTheControl) {
  const SystemStandIn standIn(getDeviceCapsSlot, &OfAFineScreen);
  const forms::FontDescription description = {
      .face = L"Pixels", .points = 8.25, .bold = false, .scalable = L"Outlines"};
  LOGFONTW font{};
  GetObjectW(forms::MakeFont(description).get(), sizeof font, &font);
  EXPECT_EQ(font.lfHeight, -16) << "8.25 points are 16.5 pixels";
  EXPECT_STREQ(font.lfFaceName, L"Outlines");
  EXPECT_EQ(font.lfCharSet, DEFAULT_CHARSET) << "month names come in every script";
}

/// The size is rounded on its own, so that controls of one size are equally large everywhere.
TEST(Control, HasItsSizeAtEveryPlace) {
  const RECT place = forms::ToPixels({7, 8, 22, 23}, {.x = 15, .y = 15});
  constexpr RECT kWanted = {.left = 0, .top = 1, .right = 0 + 1, .bottom = 1 + 2};
  EXPECT_TRUE(EqualRect(&place, &kWanted));
}

}  // namespace
