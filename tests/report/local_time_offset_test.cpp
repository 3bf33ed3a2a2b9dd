#include "report/local_time_offset.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "report/surroundings.h"
#include "support/module_test.h"
#include "support/raises.h"

using support::Raises;

namespace tidewell {

using namespace mMoon;
using namespace runtime;

namespace {

constexpr std::int32_t kInvalid = -1;
constexpr std::int32_t kUnknown = 0;
constexpr std::int32_t kStandard = 1;
constexpr std::int32_t kDaylight = 2;

TimeZoneReading zone;

const Boolean kAtTheStart = UseDaylightBias;

class LocalTimeOffsetTest : public support::ModuleTest {
 protected:
  LocalTimeOffsetTest() {
    surroundings.ReadTimeZone = [] { return zone; };
  }
};

}  // namespace

TEST_F(LocalTimeOffsetTest, IgnoresDaylightSavingFromTheStart) { EXPECT_EQ(kAtTheStart, False); }

TEST_F(LocalTimeOffsetTest, IsUniversalTimeUntilTheStartSetsTheReader) {
  support::ResetModule();
  EXPECT_EQ(LocalTimeOffset(), 0);
}

TEST_F(LocalTimeOffsetTest, IsTheStandardOffsetInSummerAndInWinter) {
  for (const std::int32_t result : {kInvalid, kUnknown, kStandard, kDaylight}) {
    zone = {.Result = result, .Bias = -330, .StandardBias = 0, .DaylightBias = -60};
    EXPECT_EQ(LocalTimeOffset(), 330);
    zone = {.Result = result, .Bias = 300, .StandardBias = 0, .DaylightBias = -60};
    EXPECT_EQ(LocalTimeOffset(), -300);
  }
}

TEST_F(LocalTimeOffsetTest, FollowsTheSeasonOnceDaylightSavingIsTurnedOn) {
  UseDaylightBias = True;
  zone = {.Result = kDaylight, .Bias = 300, .StandardBias = 7, .DaylightBias = -60};
  EXPECT_EQ(LocalTimeOffset(), -240);
  zone.Result = kStandard;
  EXPECT_EQ(LocalTimeOffset(), -307);
  zone.Result = kUnknown;
  EXPECT_EQ(LocalTimeOffset(), -307);
}

TEST_F(LocalTimeOffsetTest, IsZeroForAFailedCallOnceDaylightSavingIsTurnedOn) {
  UseDaylightBias = True;
  for (const std::int32_t result : {kInvalid, -2, 3, 100}) {
    zone = {.Result = result, .Bias = 300, .StandardBias = 7, .DaylightBias = -60};
    EXPECT_EQ(LocalTimeOffset(), 0) << result;
  }
}

TEST_F(LocalTimeOffsetTest, OverflowsWhenTheBiasesLeave32Bits) {
  constexpr auto kLowest = std::numeric_limits<std::int32_t>::min();
  constexpr auto kHighest = std::numeric_limits<std::int32_t>::max();
  zone = {.Result = kStandard, .Bias = kLowest, .StandardBias = 0, .DaylightBias = 0};
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { LocalTimeOffset(); }));
  zone.Bias = kHighest;
  EXPECT_EQ(LocalTimeOffset(), -kHighest);

  UseDaylightBias = True;
  zone = {.Result = kStandard, .Bias = kHighest, .StandardBias = 1, .DaylightBias = 0};
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { LocalTimeOffset(); }));
  zone = {.Result = kDaylight, .Bias = kLowest, .StandardBias = 0, .DaylightBias = -1};
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { LocalTimeOffset(); }));
  // The sum fits, but not its negative.
  zone = {.Result = kDaylight, .Bias = kLowest + 1, .StandardBias = 0, .DaylightBias = -1};
  EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { LocalTimeOffset(); }));
}

}  // namespace tidewell
