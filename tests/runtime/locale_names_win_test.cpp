#include <gtest/gtest.h>
#include <windows.h>

#include "runtime/locale_names.h"

namespace {

TEST(Locale, IsReadEachTime) {
  const std::wstring before = runtime::ReadUserLocale().decimalSeparator;
  ASSERT_TRUE(SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, L"_"));
  const std::wstring changed = runtime::ReadUserLocale().decimalSeparator;
  SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, before.c_str());
  EXPECT_EQ(changed, L"_");
}

}  // namespace
