#include "runtime/number_format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

#include "runtime/checked.h"

namespace runtime {

namespace {

constexpr int kSignificantDigits = 15;

/// The 15 significant digits of a finite number that is not negative, with the place of the decimal point: the number
/// is 0.digits times ten to the power `pointPlace`.
struct DecimalDigits {
  std::string digits;
  int pointPlace;
};

DecimalDigits ToDecimal(double magnitude) {
  std::array<char, 32> text{};
  (void)std::snprintf(text.data(), text.size(), "%.*e", kSignificantDigits - 1, magnitude);
  const std::string_view written = text.data();  // d.dddddddddddddde+xx
  const auto exponentMark = written.find('e');
  DecimalDigits result;
  result.digits = written.substr(0, 1);
  result.digits += written.substr(2, exponentMark - 2);
  const auto exponentText = written.substr(exponentMark + (written[exponentMark + 1] == '+' ? 2 : 1));
  int exponent = 0;
  std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
  result.pointPlace = exponent + 1;
  return result;
}

/// The number times ten to the power `decimals` as a whole number's digits, rounded half away from zero. Empty where
/// nothing is left of it.
std::string ScaledDigits(const DecimalDigits& number, int decimals) {
  const int kept = number.pointPlace + decimals;
  if (kept < 0) {
    return {};
  }
  std::string digits = number.digits;
  const bool roundsUp = kept < kSignificantDigits && digits[static_cast<std::size_t>(kept)] >= '5';
  digits.resize(static_cast<std::size_t>(kept), '0');
  if (!roundsUp) {
    return digits;
  }
  const auto lastNotNine = std::find_if(digits.rbegin(), digits.rend(), [](char digit) { return digit != '9'; });
  std::fill(digits.rbegin(), lastNotNine, '0');
  if (lastNotNine == digits.rend()) {
    return "1" + digits;
  }
  ++*lastNotNine;
  return digits;
}

}  // namespace

std::wstring FormatNumber(double value, std::wstring_view pattern) {
  const auto point = std::min(pattern.find(L'.'), pattern.size());
  const auto decimals = point == pattern.size() ? 0 : pattern.size() - point - 1;

  std::string digits = ScaledDigits(ToDecimal(std::fabs(Tested(value))), static_cast<int>(decimals));
  if (digits.size() < point + decimals) {
    digits.insert(0, point + decimals - digits.size(), '0');
  }

  std::wstring text(value < 0 ? L"-" : L"");
  text.append(digits.begin(), digits.end() - static_cast<std::ptrdiff_t>(decimals));
  if (decimals > 0) {
    text.append(DecimalSeparator);
    text.append(digits.end() - static_cast<std::ptrdiff_t>(decimals), digits.end());
  }
  return text;
}

std::int16_t LeadingInteger(std::wstring_view text) {
  std::wstring_view digits = text.substr(0, 2);
  const bool negative = digits.starts_with(L'-');
  if (negative) {
    digits.remove_prefix(1);
  }
  const bool whole =
      !digits.empty() && std::all_of(digits.begin(), digits.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; });
  if (!whole) {
    throw RuntimeError(ErrorNumber::TypeMismatch);
  }
  int value = 0;
  for (const wchar_t digit : digits) {
    value = 10 * value + (digit - L'0');
  }
  return static_cast<std::int16_t>(negative ? -value : value);
}

}  // namespace runtime
