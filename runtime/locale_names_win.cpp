#include <windows.h>

#include "runtime/locale_names.h"

namespace runtime {

namespace {

/// Reads a text of the user's locale; if the system refuses, the text stays as it is.
void Read(LCTYPE type, std::wstring& text) {
  std::array<wchar_t, 80> buffer{};  // the longest of these texts may have 80 characters
  if (GetLocaleInfoW(LOCALE_USER_DEFAULT, type, buffer.data(), static_cast<int>(buffer.size())) > 0) {
    text = buffer.data();
  }
}

}  // namespace

LocaleNames ReadUserLocale() {
  LocaleNames locale;
  for (std::size_t month = 0; month < locale.abbreviatedMonths.size(); ++month) {
    Read(LOCALE_SABBREVMONTHNAME1 + static_cast<LCTYPE>(month), locale.abbreviatedMonths.at(month));
  }
  Read(LOCALE_S1159, locale.am);
  Read(LOCALE_S2359, locale.pm);
  Read(LOCALE_SDECIMAL, locale.decimalSeparator);
  return locale;
}

}  // namespace runtime
