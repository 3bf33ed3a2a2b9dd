#include "runtime/number_format.h"

#include <algorithm>
#include <cmath>

#include "runtime/checked.h"

namespace runtime {

namespace {

/// Returns a magnitude times ten to the power `decimals`, as a whole number: taken to 15 significant digits, half to
/// even, then rounded half away from zero.
double Scaled(double magnitude, std::size_t decimals) {
  double power = 1;
  for (auto place = decimals; place > 0; --place) {
    power *= 10;
  }
  if (magnitude >= 1e15 / power) {
    throw RuntimeError(ErrorNumber::Overflow);
  }
  double scale = 1;
  while (magnitude * scale < 1e14 && scale < 1e22) {  // powers of ten up to 1e22 are exact
    scale *= 10;
  }
  // product + error is magnitude * scale, exactly.
  const double product = magnitude * scale;
  const double error = std::fma(magnitude, scale, -product);
  double digits = std::floor(product);
  const double overHalf = product - digits - 0.5;
  if (overHalf > -error || (overHalf == -error && std::fmod(digits, 2) == 1)) {
    ++digits;
  }
  const double unit = scale / power;
  return std::floor((digits + unit / 2) / unit);
}

}  // namespace

std::wstring FormatNumber(double value, std::wstring_view pattern) {
  const auto point = std::min(pattern.find(L'.'), pattern.size());
  const auto decimals = point == pattern.size() ? 0 : pattern.size() - point - 1;

  std::string digits = std::to_string(static_cast<std::uint64_t>(Scaled(std::fabs(Tested(value)), decimals)));
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
  bool whole = !digits.empty();
  int value = 0;
  for (const wchar_t digit : digits) {
    whole = whole && digit >= L'0' && digit <= L'9';
    value = 10 * value + (digit - L'0');
  }
  if (!whole) {
    throw RuntimeError(ErrorNumber::TypeMismatch);
  }
  return static_cast<std::int16_t>(negative ? -value : value);
}

}  // namespace runtime
