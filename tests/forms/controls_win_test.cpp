#include "forms/controls_win.h"

#include <gtest/gtest.h>

#include "support/font_of_win.h"
#include "support/raises.h"
#include "support/system_stand_in_win.h"

extern "C" decltype(&CreateFontIndirectW) createFontIndirectSlot asm("__imp__CreateFontIndirectW@4");
extern "C" decltype(&GetDC) getDCSlot asm("__imp__GetDC@4");
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
  EXPECT_EQ(place.left, 120);
  EXPECT_EQ(place.top, 72);
  EXPECT_EQ(place.right, 120 + 240);
  EXPECT_EQ(place.bottom, 72 + 36);
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
  EXPECT_EQ(place.left, 0);
  EXPECT_EQ(place.top, 1);
  EXPECT_EQ(place.right, 0 + 1);
  EXPECT_EQ(place.bottom, 1 + 2);
}

TEST(Control, RefusedByTheSystemIsAnError) {
  const forms::ControlDescription label = {.kind = forms::ControlKind::Label, .id = 1, .caption = L"", .place = {}};
  // A child without a parent.
  EXPECT_TRUE(support::Raises(runtime::ErrorNumber::OutOfMemory, [&] { forms::Control(label, nullptr); }));
}

TEST(Control, WithoutTheScreensResolutionIsAnError) {
  using runtime::ErrorNumber;
  {
    const Refused<getDCSlot, nullptr> refused;
    EXPECT_TRUE(support::Raises(ErrorNumber::OutOfMemory, [] { return forms::ReadTwipsPerPixel(); }));
  }
  const Refused<getDeviceCapsSlot, 0> refused;
  EXPECT_TRUE(support::Raises(ErrorNumber::OutOfMemory, [] { return forms::ReadTwipsPerPixel(); }));
}

TEST(Control, WithoutItsFontIsAnError) {
  const Refused<createFontIndirectSlot, nullptr> refused;
  EXPECT_TRUE(support::Raises(runtime::ErrorNumber::OutOfMemory,
                              [] { return forms::MakeFont({.face = L"Arial", .points = 9, .bold = false}); }));
}

}  // namespace
