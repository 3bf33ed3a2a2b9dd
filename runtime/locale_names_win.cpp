#include <windows.h>

#include "runtime/locale_names.h"

namespace runtime {

namespace {

std::wstring LocaleText(LCTYPE type) {
  std::array<wchar_t, 80> text{};  // the longest of these texts may have 80 characters
  const int length = GetLocaleInfoW(LOCALE_USER_DEFAULT, type, text.data(), static_cast<int>(text.size()));
  return length > 0 ? text.data() : L"";
}

}  // namespace

LocaleNames ReadUserLocale() {
  LocaleNames locale;
  for (std::size_t month = 0; month < locale.abbreviatedMonths.size(); ++month) {
    locale.abbreviatedMonths.at(month) = LocaleText(LOCALE_SABBREVMONTHNAME1 + static_cast<LCTYPE>(month));
  }
  locale.am = LocaleText(LOCALE_S1159);
  locale.pm = LocaleText(LOCALE_S2359);
  locale.decimalSeparator = LocaleText(LOCALE_SDECIMAL);
  return locale;
}

}  // namespace runtime
