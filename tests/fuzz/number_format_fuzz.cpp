// Compares the program's number patterns with the 15 digits of the C library, for any double.
// Input: the double, the separator (8 bits).

#include <array>
#include <string>
#include <string_view>

#include "fuzz/fuzzing.h"
#include "runtime/number_format.h"

using namespace fuzzing;
using namespace runtime;

namespace {

struct Pattern {
  std::wstring_view text;
  std::size_t integers, decimals;
};
constexpr std::array<Pattern, 4> kPatterns = {
    {{L"00", 2, 0}, {L"00.0000", 2, 4}, {L"00.000", 2, 3}, {L"0.000000", 1, 6}}};

/// More decimals than the 15 digits of the smallest double need.
constexpr std::size_t kPlaces = 345;

/// The digits of a number times 10^kPlaces. All have the same length.
using Scaled = std::string;

Scaled ScaledOf(std::string_view integers, std::string_view decimals) {
  std::string digits(integers);
  digits.append(decimals);
  digits.append(kPlaces - decimals.size(), '0');
  return std::string(2 * kPlaces - digits.size(), '0') + digits;
}

/// The 15 significant digits of a magnitude.
Scaled FifteenDigits(double magnitude) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.14e", magnitude);
  const std::string digits = std::string(1, text[0]) + std::string(&text[2], 14);
  const int exponent = std::atoi(&text[17]);
  const auto zeros = static_cast<std::size_t>(std::abs(exponent));
  if (exponent < 0) {
    return ScaledOf("", std::string(zeros - 1, '0') + digits);
  }
  return exponent >= 14 ? ScaledOf(digits + std::string(zeros - 14, '0'), "")
                        : ScaledOf(digits.substr(0, zeros + 1), digits.substr(zeros + 1));
}

Scaled Difference(const Scaled& larger, const Scaled& smaller) {
  Scaled difference = larger;
  int borrow = 0;
  for (std::size_t i = difference.size(); i-- > 0;) {
    const int digit = larger[i] - smaller[i] - borrow;
    borrow = digit < 0 ? 1 : 0;
    difference[i] = static_cast<char>('0' + digit + 10 * borrow);
  }
  return difference;
}

void Formatted(double value, const Pattern& pattern) {
  std::wstring text;
  const auto error = ErrorOf([&] { text = FormatNumber(value, pattern.text); });
  if (!std::isfinite(value)) {
    Require(error == (std::isnan(value) ? ErrorNumber::InvalidProcedureCall : ErrorNumber::Overflow),
            "a NaN is error 5, an infinity error 6");
    return;
  }
  if (std::fabs(value) >= std::pow(10, 15 - static_cast<int>(pattern.decimals))) {
    Require(error == ErrorNumber::Overflow, "more than 15 digits are error 6");
    return;
  }
  Require(!error, "any other number has a text");

  Require(text.starts_with(L'-') == (value < 0), "only a negative value has a minus sign");
  std::string unsignedText(text.begin() + (value < 0 ? 1 : 0), text.end());
  const std::string separator(DecimalSeparator.begin(), DecimalSeparator.end());
  std::string decimals;
  if (pattern.decimals > 0) {
    const auto at = unsignedText.find(separator);
    Require(at != std::string::npos, "the separator stands in the text");
    decimals = unsignedText.substr(at + separator.size());
    unsignedText.resize(at);
  }
  Require(decimals.size() == pattern.decimals, "as many decimals as the pattern has");
  Require(unsignedText.size() >= pattern.integers, "at least as many integer digits as the pattern has");
  Require(unsignedText.size() == pattern.integers || unsignedText[0] != '0', "no zeros beyond the pattern's");
  Require((unsignedText + decimals).find_first_not_of("0123456789") == std::string::npos, "digits");

  const Scaled printed = ScaledOf(unsignedText, decimals);
  const Scaled exact = FifteenDigits(std::fabs(value));
  const Scaled half = ScaledOf("", std::string(pattern.decimals, '0') + "5");
  Require(printed >= exact ? Difference(printed, exact) <= half : Difference(exact, printed) < half,
          "the printed number is the nearest one, a half going away from zero");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  Input input(bytes, size);
  const auto value = input.Take<double>();
  constexpr std::array<const wchar_t*, 4> kSeparators = {L".", L",", L"'", L"::"};
  DecimalSeparator = kSeparators.at(input.Take<std::uint8_t>() % kSeparators.size());
  for (const Pattern& pattern : kPatterns) {
    Formatted(value, pattern);
  }
  if (std::fabs(value) < 1e12) {
    // The text's first two characters: two digits, or a minus sign and one digit.
    const int number = LeadingInteger(FormatNumber(value, L"00.000"));
    Require(value < 0 ? Within(-9, number, 0) : Within(0, number, 99), "the leading number has two characters");
  }
  return 0;
}
