#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace runtime {

/// The decimal separator of FormatNumber. The report sets it from the user's locale at each update.
inline std::wstring DecimalSeparator = L".";

/// Formats a number by a pattern of zeros such as L"00.0000": at least as many integer digits as zeros before the
/// point, exactly as many decimals as zeros after it.
///
/// The value is first taken to 15 significant decimal digits; these are rounded in decimal, half away from zero:
/// 9.99995 gives "10.0000" although the double lies just below. A negative value keeps its minus sign, even if all
/// digits round to zero.
///
/// Given:    value    a number of magnitude below 10^(15 - decimals)
///           pattern  zeros, optionally a point and up to seven more zeros; no more, because values below 1e-8 keep
///                    fewer than 15 digits
/// Returned: the text, with DecimalSeparator in place of the point
/// Errors:   6 Overflow for a greater number or an infinity, 5 Invalid procedure call or argument for a NaN
[[nodiscard]] std::wstring FormatNumber(double value, std::wstring_view pattern);

/// Reads the first two characters as a whole number: hours, days of age and icon numbers come from rounded text this
/// way. "-0" counts as 0. Error: 13 Type mismatch if the two characters are no whole number.
[[nodiscard]] std::int16_t LeadingInteger(std::wstring_view text);

}  // namespace runtime
