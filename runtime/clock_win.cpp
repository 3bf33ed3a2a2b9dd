#include <windows.h>

#include "runtime/clock.h"

namespace runtime {

DateValue SystemNow() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  return AddTime(DateSerial(now.wYear, now.wMonth, now.wDay), now.wHour, now.wMinute, now.wSecond);
}

TimeZoneReading SystemTimeZone() {
  static TimeZoneReading last{};
  TIME_ZONE_INFORMATION zone{};
  last.Result = static_cast<std::int32_t>(GetTimeZoneInformation(&zone));
  if (last.Result >= 0) {
    last.Bias = static_cast<std::int32_t>(zone.Bias);
    last.StandardBias = static_cast<std::int32_t>(zone.StandardBias);
    last.DaylightBias = static_cast<std::int32_t>(zone.DaylightBias);
  }
  return last;
}

}  // namespace runtime
