#include "runtime/number_format.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "support/module_test.h"
#include "support/raises.h"
#include "support/tsv.h"

using support::Raises;

namespace runtime {

using FormatNumberTest = support::ModuleTest;

TEST_F(FormatNumberTest, RoundsInDecimalHalfAwayFromZero) {
  EXPECT_EQ(FormatNumber(9.99995, L"00.0000"), L"10.0000");  // the double is just below
  EXPECT_EQ(FormatNumber(9.99994, L"00.0000"), L"09.9999");
  EXPECT_EQ(FormatNumber(5.9996, L"00.000"), L"06.000");
  EXPECT_EQ(FormatNumber(2.5, L"0"), L"3");
  EXPECT_EQ(FormatNumber(0.5, L"0"), L"1");
  EXPECT_EQ(FormatNumber(1.0005, L"0.000"), L"1.001");
  EXPECT_EQ(FormatNumber(-1.0005, L"0.000"), L"-1.001");
  EXPECT_EQ(FormatNumber(0.0000005, L"0.000000"), L"0.000001");
  EXPECT_EQ(FormatNumber(0.00000049999, L"0.000000"), L"0.000000");
}

TEST_F(FormatNumberTest, TakesThe15SignificantDigitsFirst) {
  // With 15 digits 0.4999999999999996 is a half.
  EXPECT_EQ(FormatNumber(0.4999999999999996, L"0"), L"1");
  EXPECT_EQ(FormatNumber(0.499999999999999, L"0"), L"0");
  // The 15 digits come from the exact value. If the doubles were scaled by a power of ten first, both would be a half.
  EXPECT_EQ(FormatNumber(3.000499999999995, L"0.000"), L"3.000");  // the double is below
  EXPECT_EQ(FormatNumber(1.000499999999995, L"0.000"), L"1.001");  // the double is above
  // An exact half goes to the even digit.
  EXPECT_EQ(FormatNumber(100000000000000.5, L"0"), L"100000000000000");
  EXPECT_EQ(FormatNumber(100000000000001.5, L"0"), L"100000000000002");
}

TEST_F(FormatNumberTest, WritesAZeroAndWhatIsRoundedToZero) {
  EXPECT_EQ(FormatNumber(0, L"00.0000"), L"00.0000");
  EXPECT_EQ(FormatNumber(1e-300, L"0.000000"), L"0.000000");
  EXPECT_EQ(FormatNumber(-0.0001, L"00.000"), L"-00.000");
  EXPECT_EQ(FormatNumber(-0.0, L"00.000"), L"00.000");
}

TEST_F(FormatNumberTest, WritesTheDecimalSeparatorOfTheLocale) {
  DecimalSeparator = L",";
  EXPECT_EQ(FormatNumber(0.25, L"0.000000"), L"0,250000");
  DecimalSeparator = L"::";
  EXPECT_EQ(FormatNumber(1.5, L"00.0"), L"01::5");
  EXPECT_EQ(FormatNumber(1.5, L"00"), L"02");
}

TEST_F(FormatNumberTest, RefusesMoreThan15Digits) {
  EXPECT_EQ(FormatNumber(-999999999999999.0, L"0"), L"-999999999999999");
  EXPECT_EQ(FormatNumber(999999999.999999, L"0.000000"), L"999999999.999999");
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { (void)FormatNumber(1e15, L"0"); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { (void)FormatNumber(-1e9, L"0.000000"); }));
}

TEST_F(FormatNumberTest, RefusesWhatIsNoNumber) {
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { (void)FormatNumber(HUGE_VAL, L"0"); }));
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall,
                     [] { (void)FormatNumber(std::numeric_limits<double>::quiet_NaN(), L"0"); }));
}

// The reference file comes from the independent oracle in Python. Its columns are named after the patterns.
TEST_F(FormatNumberTest, AgreesWithTheReferenceFile) {
  const auto rows = support::ReadTsv("number_formats.tsv");
  ASSERT_GE(rows.size(), 2000U);
  for (const support::TsvRow& row : rows) {
    for (const std::string pattern : {"00", "00.0000", "00.000", "0.000000"}) {
      const std::string& text = row.Text(pattern);
      EXPECT_EQ(FormatNumber(row.Number("number"), std::wstring(pattern.begin(), pattern.end())),
                std::wstring(text.begin(), text.end()))
          << row.Text("number");
    }
  }
}

TEST(LeadingInteger, ReadsTheFirstTwoCharacters) {
  EXPECT_EQ(LeadingInteger(L"10.0000"), 10);
  EXPECT_EQ(LeadingInteger(L"09.9999"), 9);
  EXPECT_EQ(LeadingInteger(L"28"), 28);
  EXPECT_EQ(LeadingInteger(L"123.4"), 12);
  EXPECT_EQ(LeadingInteger(L"7"), 7);
  EXPECT_EQ(LeadingInteger(L"-00.250"), 0);
  EXPECT_EQ(LeadingInteger(L"-12.000"), -1);
}

TEST(LeadingInteger, RefusesOtherTexts) {
  for (const wchar_t* text : {L"", L"-", L"1x", L"x1", L"--"}) {
    EXPECT_TRUE(Raises(ErrorNumber::TypeMismatch, [&] { (void)LeadingInteger(text); }));
  }
}

}  // namespace runtime
