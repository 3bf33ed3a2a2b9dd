#include "astro/checked.h"
#include "astro/mMoon.h"

namespace mMoon {

TimeZoneReading (*ReadTimeZone)() = [] { return TimeZoneReading{}; };

Boolean UseDaylightBias = False;

std::int32_t LocalTimeOffset() {
  const TimeZoneReading zone = ReadTimeZone();
  if (UseDaylightBias == False) {
    return Fit<std::int32_t>(-std::int64_t{zone.Bias});
  }
  const auto offset = [&](std::int32_t seasonBias) {
    const auto bias = Fit<std::int32_t>(std::int64_t{seasonBias} + zone.Bias);
    return Fit<std::int32_t>(-std::int64_t{bias});
  };
  switch (zone.Result) {
    case 0:
    case 1:
      return offset(zone.StandardBias);
    case 2:
      return offset(zone.DaylightBias);
    default:
      return 0;
  }
}

}  // namespace mMoon
