#include "report/local_time_offset.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <limits>
#include <utility>
#include <vector>

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

class LocalTimeOffsetTest : public support::ModuleTest {
 protected:
  LocalTimeOffsetTest() {
    surroundings.ReadTimeZone = [] { return zone; };
  }
};

}  // namespace

TEST_F(LocalTimeOffsetTest, IgnoresDaylightSavingFromTheStart) { EXPECT_EQ(UseDaylightBias, False); }

TEST_F(LocalTimeOffsetTest, IsUniversalTimeUntilTheStartSetsTheReader) {
  support::ResetModule();
  EXPECT_EQ(LocalTimeOffset(), 0);
}

TEST_F(LocalTimeOffsetTest, FollowsTheSeasonOnlyOnceDaylightSavingIsTurnedOn) {
  // What the system may answer, and the offset with daylight saving.
  for (const auto& [result, withDaylight] : std::vector<std::pair<std::int32_t, std::int32_t>>{
           {kUnknown, -307}, {kStandard, -307}, {kDaylight, -240}, {kInvalid, 0}, {-2, 0}, {3, 0}, {100, 0}}) {
    zone = {.Result = result, .Bias = 300, .StandardBias = 7, .DaylightBias = -60};
    UseDaylightBias = False;
    EXPECT_EQ(LocalTimeOffset(), -300) << result;
    UseDaylightBias = True;
    EXPECT_EQ(LocalTimeOffset(), withDaylight) << result;
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
  for (const TimeZoneReading& extreme : std::initializer_list<TimeZoneReading>{
           {.Result = kStandard, .Bias = kHighest, .StandardBias = 1, .DaylightBias = 0},
           {.Result = kDaylight, .Bias = kLowest, .StandardBias = 0, .DaylightBias = -1},
           // The sum fits, but not its negative.
           {.Result = kDaylight, .Bias = kLowest + 1, .StandardBias = 0, .DaylightBias = -1}}) {
    zone = extreme;
    EXPECT_TRUE(Raises(ErrorNumber::Overflow, [] { LocalTimeOffset(); }));
  }
}

}  // namespace tidewell
