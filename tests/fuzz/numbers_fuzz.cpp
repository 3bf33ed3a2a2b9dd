// The number patterns over all doubles.

#include <cmath>
#include <string>

#include "astro/number_format.h"
#include "fuzz/fuzz_input.h"

namespace {

struct Pattern {
  const wchar_t* text;
  std::size_t integerDigits;
  std::size_t decimals;
};

constexpr Pattern kPatterns[] = {{L"00", 2, 0}, {L"00.0000", 2, 4}, {L"00.000", 2, 3}, {L"0.000000", 1, 6}};

void Check(double value, const Pattern& pattern) {
  const std::wstring text = mMoon::FormatNumber(value, pattern.text);
  const std::wstring digits = text.substr(text.starts_with(L'-') ? 1 : 0);
  Require(text.starts_with(L'-') == (value < 0), "a minus sign exactly for a negative value");
  const std::size_t point = pattern.decimals == 0 ? digits.size() : digits.size() - pattern.decimals - 1;
  Require(point >= pattern.integerDigits, "as many integer digits as the pattern has");
  for (std::size_t i = 0; i < digits.size(); ++i) {
    Require(i == point ? digits[i] == L'.' : digits[i] >= L'0' && digits[i] <= L'9', "digits and one point");
  }
  if (std::fabs(value) < 1e9) {
    const double printed = std::stod(std::string(text.begin(), text.end()));
    const double half = 0.5 * std::pow(10, -static_cast<double>(pattern.decimals));
    Require(std::fabs(printed - value) <= half * (1 + 1e-9) + std::fabs(value) * 1e-14, "rounded to the nearest");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  const auto value = input.Any<double>();
  const double tame = input.Between(-2'000'000, 2'000'000) / 4096.0;
  for (const Pattern& pattern : kPatterns) {
    MayRaise([&] { Check(value, pattern); });
    Check(tame, pattern);
  }
  std::wstring text;
  for (const std::uint8_t byte : input.Bytes(3)) {
    text += static_cast<wchar_t>(byte);
  }
  MayRaise([&] {
    const std::int16_t number = mMoon::LeadingInteger(text);
    Require(number > -10 && number < 100, "two characters");
  });
  return 0;
}
