#include "report/local_time_offset.h"

#include "report/surroundings.h"
#include "runtime/checked.h"

namespace mMoon {

using runtime::CheckedCast;

std::int32_t LocalTimeOffset() {
  const runtime::TimeZoneReading zone = tidewell::surroundings.ReadTimeZone();
  const auto offset = [&](std::int32_t seasonBias) {
    const auto bias = CheckedCast<std::int32_t>(std::int64_t{seasonBias} + zone.Bias);
    return CheckedCast<std::int32_t>(-std::int64_t{bias});
  };
  if (UseDaylightBias == runtime::False) {
    return offset(0);
  }
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
