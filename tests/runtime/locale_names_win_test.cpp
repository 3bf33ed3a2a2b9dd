#include <gtest/gtest.h>

#include "runtime/locale_names.h"
#include "support/system_stand_in_win.h"

extern "C" decltype(&GetLocaleInfoW) localeSlot asm("__imp__GetLocaleInfoW@16");

namespace {

TEST(Locale, IsEnglishIfTheSystemRefuses) {
  const Refused<localeSlot, 0> refused;
  EXPECT_EQ(runtime::ReadUserLocale().abbreviatedMonths, runtime::LocaleNames().abbreviatedMonths);
}

TEST(Locale, IsReadEachTime) {
  const std::wstring before = runtime::ReadUserLocale().decimalSeparator;
  ASSERT_TRUE(SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, L"_"));
  const std::wstring changed = runtime::ReadUserLocale().decimalSeparator;
  SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, before.c_str());
  EXPECT_EQ(changed, L"_");
}

}  // namespace
