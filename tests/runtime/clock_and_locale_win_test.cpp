#include <gtest/gtest.h>
#include <windows.h>

#include <set>

#include "runtime/clock.h"
#include "runtime/code_page.h"
#include "runtime/locale_names.h"
#include "support/system_stand_in_win.h"

extern "C" decltype(&GetLocalTime) localTimeSlot asm("__imp__GetLocalTime@4");
extern "C" decltype(&GetTimeZoneInformation) zoneSlot asm("__imp__GetTimeZoneInformation@4");
extern "C" decltype(&GetLocaleInfoW) localeSlot asm("__imp__GetLocaleInfoW@16");

namespace {

void WINAPI AnEvening(SYSTEMTIME* time) {
  *time = {.wYear = 2026,
           .wMonth = 11,
           .wDayOfWeek = 2,
           .wDay = 24,
           .wHour = 21,
           .wMinute = 5,
           .wSecond = 9,
           .wMilliseconds = 999};
}

TEST(Clock, GivesTheLocalTimeInWholeSeconds) {
  const SystemStandIn standIn(localTimeSlot, &AnEvening);
  EXPECT_DOUBLE_EQ(runtime::SystemNow(), 46350 + 75909 / 86400.0);
}

DWORD WINAPI ASummer(TIME_ZONE_INFORMATION* zone) {
  *zone = {};
  zone->Bias = 210;
  zone->StandardBias = 5;
  zone->DaylightBias = -60;
  return TIME_ZONE_ID_DAYLIGHT;
}

TEST(Clock, ReadsTheZoneOfTheSystem) {
  const SystemStandIn standIn(zoneSlot, &ASummer);
  const runtime::TimeZoneReading reading = runtime::SystemTimeZone();
  EXPECT_EQ(reading.Result, 2);
  EXPECT_EQ(reading.Bias, 210);
  EXPECT_EQ(reading.StandardBias, 5);
  EXPECT_EQ(reading.DaylightBias, -60);
}

DWORD WINAPI RefuseZone(LPTIME_ZONE_INFORMATION) { return TIME_ZONE_ID_INVALID; }

TEST(Clock, KeepsTheLastZoneIfTheSystemRefuses) {
  const runtime::TimeZoneReading before = runtime::SystemTimeZone();
  ASSERT_NE(before.Bias, 0);
  const SystemStandIn standIn(zoneSlot, &RefuseZone);
  const runtime::TimeZoneReading reading = runtime::SystemTimeZone();
  EXPECT_EQ(reading.Result, -1);
  EXPECT_EQ(reading.Bias, before.Bias);
  EXPECT_EQ(reading.DaylightBias, before.DaylightBias);
}

int WINAPI RefuseLocale(LCID, LCTYPE, LPWSTR, int) { return 0; }

TEST(Locale, IsEnglishIfTheSystemRefuses) {
  const SystemStandIn standIn(localeSlot, &RefuseLocale);
  EXPECT_EQ(runtime::ReadUserLocale().abbreviatedMonths, runtime::LocaleNames().abbreviatedMonths);
}

TEST(Locale, HasTwelveMonthsAndASeparator) {
  const runtime::LocaleNames locale = runtime::ReadUserLocale();
  const std::set<std::wstring> months(locale.abbreviatedMonths.begin(), locale.abbreviatedMonths.end());
  EXPECT_EQ(months.size(), 12U);
  EXPECT_FALSE(months.contains(L""));
  EXPECT_FALSE(locale.decimalSeparator.empty());
}

TEST(Locale, IsReadEachTime) {
  const std::wstring before = runtime::ReadUserLocale().decimalSeparator;
  ASSERT_TRUE(SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, L"_"));
  const std::wstring changed = runtime::ReadUserLocale().decimalSeparator;
  SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, before.c_str());
  EXPECT_EQ(changed, L"_");
}

/// A title set with the ANSI call and read with the wide one goes through the system's own conversion.
TEST(CodePage, IsThatOfTheAnsiCalls) {
  const HWND window = CreateWindowW(L"STATIC", L"", 0, 0, 0, 1, 1, HWND_MESSAGE, nullptr, nullptr, nullptr);
  for (int value = 1; value < 256; ++value) {
    const char narrow[] = {static_cast<char>(value), '\0'};
    SetWindowTextA(window, narrow);
    wchar_t wide[3] = L"";
    GetWindowTextW(window, wide, 3);
    const wchar_t character = runtime::SystemCodePage().Decode(static_cast<std::byte>(value));
    EXPECT_TRUE(character == wide[0] || character == runtime::PrivateCharacter(static_cast<unsigned>(value))) << value;
  }
  DestroyWindow(window);
}

TEST(CodePage, CarriesEveryByteToTextAndBack) {
  const runtime::CodePage& page = runtime::SystemCodePage();
  for (int value = 0; value < 256; ++value) {
    const auto byte = static_cast<std::byte>(value);
    ASSERT_EQ(page.Encode(page.Decode(byte)), byte) << value;
  }
  EXPECT_EQ(page.Decode(std::byte{'A'}), L'A');
}

}  // namespace
