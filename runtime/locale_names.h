#pragma once

#include <array>
#include <string>

namespace runtime {

/// The texts of the user's locale that dates and numbers are written with.
struct LocaleNames {
  std::array<std::wstring, 12> abbreviatedMonths = {L"Jan", L"Feb", L"Mar", L"Apr", L"May", L"Jun",
                                                    L"Jul", L"Aug", L"Sep", L"Oct", L"Nov", L"Dec"};
  std::wstring am = L"AM";  ///< empty if the locale has no such marker
  std::wstring pm = L"PM";
  std::wstring decimalSeparator = L".";
};

/// Reads the texts of the user's locale as they are set now. A text that the system refuses stays English.
[[nodiscard]] LocaleNames ReadUserLocale();

}  // namespace runtime
