#include "runtime/checked.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

#include "support/raises.h"

using support::Raises;

namespace runtime {

namespace {

constexpr double kLargest = std::numeric_limits<double>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

}  // namespace

TEST(Checked, ComputesLikeADouble) {
  const Checked x = 1.5;
  EXPECT_EQ(x + 2.25, 3.75);
  EXPECT_EQ(2.25 - x, 0.75);
  EXPECT_EQ(3 * x, 4.5);
  EXPECT_EQ(x / 3, 0.5);
  EXPECT_EQ(-x, -1.5);
  EXPECT_EQ(Checked(1e-300) * 1e-300, 0) << "underflow is no error";
}

TEST(Checked, OverflowsInEveryOperation) {
  const Checked large = kLargest;
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [&] { (void)(large + large); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [&] { (void)(-large - large); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [&] { (void)(large * 2); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [&] { (void)(large / 0.5); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [&] { (void)Pow(large, 2); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { (void)(Checked(kInfinity) + 1); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { (void)Int(kInfinity); }));
}

TEST(Checked, DivisionByZeroIsRaisedWhateverTheDividend) {
  for (const double dividend : {1.0, -1.0, 0.0, kNaN}) {
    EXPECT_TRUE(Raises(ErrorNumber::DivisionByZero, [&] { (void)(Checked(dividend) / 0.0); })) << dividend;
    EXPECT_TRUE(Raises(ErrorNumber::DivisionByZero, [&] { (void)(dividend / Checked(-0.0)); })) << dividend;
    EXPECT_TRUE(Raises(ErrorNumber::DivisionByZero, [&] { (void)(Checked(dividend) / 0); })) << dividend;
  }
}

TEST(Checked, InvalidOperationsAreInvalidArguments) {
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { (void)Sqr(-1e-300); }));
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { (void)Sin(kInfinity); }));
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { (void)Cos(kInfinity); }));
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { (void)Tan(kInfinity); }));
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { (void)Pow(-8, 0.5); }));
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { (void)(Checked(kInfinity) - kInfinity); }));
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { (void)(Checked(kNaN) + 1); }));
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { (void)Atn(kNaN); }));
}

TEST(Checked, AddChangesTheVariableOnlyIfItSucceeds) {
  double variable = 1;
  Add(variable, 0.5);
  EXPECT_EQ(variable, 1.5);
  variable = kLargest;
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [&] { Add(variable, kLargest); }));
  EXPECT_EQ(variable, kLargest);
}

TEST(Int, RoundsTowardMinusInfinity) {
  EXPECT_EQ(Int(2.5), 2);
  EXPECT_EQ(Int(-2.5), -3);
  EXPECT_EQ(Int(-3), -3);
  EXPECT_EQ(Int(-1e-300), -1);
}

TEST(RoundTo, RoundsHalfToEven) {
  EXPECT_EQ(RoundTo<std::int16_t>(0.5), 0);
  EXPECT_EQ(RoundTo<std::int16_t>(1.5), 2);
  EXPECT_EQ(RoundTo<std::int16_t>(2.5), 2);
  EXPECT_EQ(RoundTo<std::int16_t>(-0.5), 0);
  EXPECT_EQ(RoundTo<std::int16_t>(-1.5), -2);
}

TEST(RoundTo, OverflowsOutside16And32Bits) {
  EXPECT_EQ(RoundTo<std::int16_t>(32767.4), 32767);
  EXPECT_EQ(RoundTo<std::int16_t>(-32768.5), -32768);
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { RoundTo<std::int16_t>(32767.5); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { RoundTo<std::int16_t>(-32768.6); }));
  EXPECT_EQ(RoundTo<std::int32_t>(2147483647.4), 2147483647);
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { RoundTo<std::int32_t>(2147483647.5); }));
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { RoundTo<std::int32_t>(-2147483649.0); }));
  EXPECT_TRUE(Raises(ErrorNumber::InvalidProcedureCall, [] { RoundTo<std::int32_t>(kNaN); }));
}

}  // namespace runtime
