#include "forms/fitted_label_win.h"

#include <gtest/gtest.h>

#include <string>

#include "support/system_stand_in_win.h"

extern "C" decltype(&CreateFontIndirectW) createFontIndirectSlot asm("__imp__CreateFontIndirectW@4");
extern "C" decltype(&GetTextExtentPoint32W) getTextExtentSlot asm("__imp__GetTextExtentPoint32W@16");

namespace {

constexpr int kRoom = 253;
constexpr int kDesignHeight = 13;

const std::wstring kShort = L"Next New Moon : 09-Dec-26 12:51 AM";
const std::wstring kWide = L"Next New Moon : 09-gruod.-26 12:51 prie\x0161piet";

class FittedLabel : public testing::Test {
 protected:
  ~FittedLabel() override { DestroyWindow(parent_); }

  [[nodiscard]] HFONT Font() const {
    return reinterpret_cast<HFONT>(SendMessageW(GetDlgItem(parent_, 1), WM_GETFONT, 0, 0));
  }

  [[nodiscard]] LOGFONTW Logical() const {
    LOGFONTW font{};
    GetObjectW(Font(), sizeof font, &font);
    return font;
  }

  /// Writes a text and returns the height of its characters.
  int HeightFor(const std::wstring& text) {
    label_.SetCaption(text);
    return -Logical().lfHeight;
  }

  /// The width of a text in the label's font at a height.
  [[nodiscard]] LONG Width(const std::wstring& text, int height) const {
    LOGFONTW logical = Logical();
    logical.lfHeight = -height;
    const runtime::unique_font font(CreateFontIndirectW(&logical));
    const HDC dc = CreateCompatibleDC(nullptr);
    const HGDIOBJ former = SelectObject(dc, font.get());
    RECT place{};
    DrawTextW(dc, text.c_str(), -1, &place, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
    SelectObject(dc, former);
    DeleteDC(dc);
    return place.right;
  }

 private:
  HWND parent_ = CreateWindowW(L"STATIC", L"", 0, 0, 0, 300, 50, HWND_MESSAGE, nullptr, nullptr, nullptr);
  forms::FittedLabel label_{{.kind = forms::ControlKind::Label,
                             .id = 1,
                             .caption = L"",
                             .place = {0, 0, 4275, 255},
                             .font = {.face = L"Arial", .points = 9.75, .bold = true}},
                            parent_,
                            kRoom};
};

TEST_F(FittedLabel, WritesEveryTextInTheLargestSizeThatFits) {
  for (std::wstring text = L"Next"; text.size() < 80; text += text.size() % 3 == 0 ? L'w' : L'i') {
    SCOPED_TRACE(text.size());
    const int height = HeightFor(text);
    ASSERT_LE(Width(text, height), kRoom);
    ASSERT_TRUE(height == kDesignHeight || Width(text, height + 1) > kRoom);
    ASSERT_LE(height, kDesignHeight);
    EXPECT_STREQ(Logical().lfFaceName, L"Arial");
    EXPECT_EQ(Logical().lfWeight, FW_BOLD);
  }
}

TEST_F(FittedLabel, ReturnsToTheDesignsFontIfTheTextFitsAgainAndLeaksNoOther) {
  EXPECT_EQ(HeightFor(kShort), kDesignHeight);
  const HFONT design = Font();
  EXPECT_LT(HeightFor(kWide), kDesignHeight);
  const HFONT first = Font();
  HeightFor(kWide + L"!");
  const HFONT second = Font();
  HeightFor(kShort);
  EXPECT_EQ(Font(), design);
  EXPECT_EQ(GetObjectType(first), 0U);
  EXPECT_EQ(GetObjectType(second), 0U);
}

TEST_F(FittedLabel, TriesAgainAfterARefusal) {
  {
    const Refused<createFontIndirectSlot, nullptr> refused;
    EXPECT_EQ(HeightFor(kWide), kDesignHeight);
  }
  EXPECT_LT(HeightFor(kWide), kDesignHeight);
  HeightFor(kShort);
  {
    const Refused<getTextExtentSlot, FALSE> refused;
    EXPECT_EQ(HeightFor(kWide), kDesignHeight);
  }
  EXPECT_LT(HeightFor(kWide), kDesignHeight);
}

}  // namespace
