#include <windows.h>

#include "runtime/clock.h"

namespace runtime {

DateValue SystemNow() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  return AddTime(DateSerial(now.wYear, now.wMonth, now.wDay), now.wHour, now.wMinute, now.wSecond);
}

TimeZoneReading SystemTimeZone() {
  TIME_ZONE_INFORMATION zone{};
  const DWORD result = GetTimeZoneInformation(&zone);
  return {.Result = static_cast<std::int32_t>(result),
          .Bias = static_cast<std::int32_t>(zone.Bias),
          .StandardBias = static_cast<std::int32_t>(zone.StandardBias),
          .DaylightBias = static_cast<std::int32_t>(zone.DaylightBias)};
}

}  // namespace runtime
