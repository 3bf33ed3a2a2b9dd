// The font of the lines in every locale: a line too wide for the window gets a smaller one.

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <iostream>
#include <set>
#include <string>
#include <vector>

#include "report/frmMoon_layout.h"
#include "runtime/locale_names.h"
#include "support/shown_frmMoon.h"
#include "support/system_stand_in_win.h"

extern "C" decltype(&CreateFontIndirectW) createFontIndirectSlot asm("__imp__CreateFontIndirectW@4");
extern "C" decltype(&DeleteObject) deleteObjectSlot asm("__imp__DeleteObject@4");
extern "C" decltype(&GetTextExtentPoint32W) getTextExtentSlot asm("__imp__GetTextExtentPoint32W@16");

namespace {

constexpr int kRoom = 253;  // the window's 257 pixels without 2 on either side
constexpr int kDesignHeight = 13;

const std::wstring kShort = L"Next New Moon : 09-Dec-26 12:51 AM";
const std::wstring kWide = L"Next New Moon : 09-gruod.-26 12:51 prie\x0161piet";

BOOL CALLBACK Collect(wchar_t* name, DWORD /*flags*/, LPARAM names) {
  reinterpret_cast<std::vector<std::wstring>*>(names)->emplace_back(name);
  return TRUE;
}

std::wstring TextOf(const std::wstring& locale, LCTYPE type) {
  std::array<wchar_t, 80> text{};
  GetLocaleInfoEx(locale.c_str(), type, text.data(), static_cast<int>(text.size()));
  return text.data();
}

/// The lines of a locale in each month, before and after noon. All digits are equally wide.
void AddLines(const runtime::LocaleNames& locale, std::set<std::wstring>& lines) {
  for (std::int16_t month = 1; month <= 12; ++month) {
    for (const int hour : {0, 12}) {
      const runtime::DateValue date = runtime::AddTime(runtime::DateSerial(2028, month, 28), hour, 28);
      lines.insert(L"Next New Moon : " + runtime::DateText(date, locale) + L" " + runtime::TimeText(date, locale));
    }
  }
}

/// The lines of every locale that the system has.
std::set<std::wstring> AllLines() {
  std::vector<std::wstring> names;
  EnumSystemLocalesEx(&Collect, LOCALE_ALL, reinterpret_cast<LPARAM>(&names), nullptr);
  EXPECT_GT(names.size(), 100U);
  std::set<std::wstring> lines;
  for (const std::wstring& name : names) {
    runtime::LocaleNames locale;
    for (std::size_t month = 0; month < 12; ++month) {
      locale.abbreviatedMonths.at(month) = TextOf(name, LOCALE_SABBREVMONTHNAME1 + static_cast<LCTYPE>(month));
    }
    locale.am = TextOf(name, LOCALE_S1159);
    locale.pm = TextOf(name, LOCALE_S2359);
    AddLines(locale, lines);
  }
  return lines;
}

int madeFonts = 0;
int deletedFonts = 0;
bool refuseFonts = false;
bool refuseToMeasure = false;

const auto createFont = createFontIndirectSlot;
const auto deleteObject = deleteObjectSlot;
const auto getTextExtent = getTextExtentSlot;

HFONT WINAPI CountFont(const LOGFONTW* font) {
  if (refuseFonts) {
    return nullptr;
  }
  ++madeFonts;
  return createFont(font);
}

BOOL WINAPI CountDeletion(HGDIOBJ object) {
  deletedFonts += GetObjectType(object) == OBJ_FONT ? 1 : 0;
  return deleteObject(object);
}

BOOL WINAPI Measure(HDC dc, const wchar_t* text, int length, SIZE* size) {
  return refuseToMeasure ? FALSE : getTextExtent(dc, text, length, size);
}

class LineFonts : public ShownMoon {
 protected:
  static constexpr std::size_t kLine = 2;

  HWND Label() { return GetDlgItem(form().hwnd(), tidewell::frmMoonLayout::kLblMoon + static_cast<int>(kLine)); }

  void Write(const std::wstring& text) { form().SetMoonLine(kLine, text); }

  LOGFONTW Font() {
    LOGFONTW font{};
    GetObjectW(reinterpret_cast<HGDIOBJ>(SendMessageW(Label(), WM_GETFONT, 0, 0)), sizeof font, &font);
    return font;
  }

  int Height() { return -Font().lfHeight; }

  /// The width of a text in the label's font at a height.
  int Width(const std::wstring& text, int height) {
    LOGFONTW logical = Font();
    logical.lfHeight = -height;
    const HFONT font = CreateFontIndirectW(&logical);
    const HDC dc = GetDC(Label());
    const HGDIOBJ former = SelectObject(dc, font);
    RECT place{};
    DrawTextW(dc, text.c_str(), -1, &place, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
    SelectObject(dc, former);
    ReleaseDC(Label(), dc);
    DeleteObject(font);
    return place.right;
  }
};

TEST_F(LineFonts, InEveryLocaleALineHasTheLargestSizeThatFits) {
  form().Hide();  // painting would take time
  std::size_t smaller = 0;
  const std::set<std::wstring> lines = AllLines();
  for (const std::wstring& line : lines) {
    SCOPED_TRACE(line);
    Write(line);
    const int height = Height();
    ASSERT_GT(height, 0);
    ASSERT_LE(height, kDesignHeight);
    ASSERT_LE(Width(line, height), kRoom);
    if (height < kDesignHeight) {
      ++smaller;
      ASSERT_GT(Width(line, height + 1), kRoom);
      ASSERT_STREQ(Font().lfFaceName, L"Arial");
      ASSERT_EQ(Font().lfWeight, FW_BOLD);
    }
  }
  EXPECT_GT(smaller, 0U);
  EXPECT_LT(smaller, lines.size() / 2);
  std::cout << "  " << smaller << " of " << lines.size() << " lines are written smaller\n";
}

TEST_F(LineFonts, InEnglishItIsTheDesignsOwn) {
  std::set<std::wstring> lines;
  AddLines({}, lines);
  for (const std::wstring& line : lines) {
    Write(line);
    EXPECT_EQ(Height(), kDesignHeight) << line;
  }
}

TEST_F(LineFonts, ALineThatFitsAgainGetsTheDesignsFont) {
  Write(kShort);
  const LRESULT design = SendMessageW(Label(), WM_GETFONT, 0, 0);
  EXPECT_EQ(Height(), kDesignHeight);
  Write(kWide);
  EXPECT_LT(Height(), kDesignHeight);
  Write(kShort);
  EXPECT_EQ(SendMessageW(Label(), WM_GETFONT, 0, 0), design);
}

TEST_F(LineFonts, TheOthersKeepTheirs) {
  Write(kWide);
  LOGFONTW font{};
  const HWND other = GetDlgItem(form().hwnd(), tidewell::frmMoonLayout::kLblMoon);
  GetObjectW(reinterpret_cast<HGDIOBJ>(SendMessageW(other, WM_GETFONT, 0, 0)), sizeof font, &font);
  EXPECT_EQ(font.lfHeight, -kDesignHeight);
}

TEST_F(LineFonts, NoneLeaks) {
  const SystemStandIn create(createFontIndirectSlot, &CountFont);
  const SystemStandIn remove(deleteObjectSlot, &CountDeletion);
  madeFonts = deletedFonts = 0;
  for (int i = 0; i < 10; ++i) {
    Write(kWide);
    Write(kWide + L"!");
    Write(kShort);
  }
  EXPECT_GT(madeFonts, 10);
  EXPECT_EQ(madeFonts, deletedFonts);
}

TEST_F(LineFonts, AFontThatTheSystemRefusedIsMadeForTheNextReport) {
  const SystemStandIn create(createFontIndirectSlot, &CountFont);
  const SystemStandIn measure(getTextExtentSlot, &Measure);
  for (bool* const refuse : {&refuseFonts, &refuseToMeasure}) {
    Write(kShort);
    *refuse = true;
    Write(kWide);
    EXPECT_EQ(Height(), kDesignHeight);
    *refuse = false;
    Write(kWide);
    EXPECT_LT(Height(), kDesignHeight);
  }
}

}  // namespace
