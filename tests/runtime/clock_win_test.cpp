#include <gtest/gtest.h>

#include "runtime/clock.h"
#include "support/system_stand_in_win.h"

extern "C" decltype(&GetLocalTime) localTimeSlot asm("__imp__GetLocalTime@4");
extern "C" decltype(&GetTimeZoneInformation) zoneSlot asm("__imp__GetTimeZoneInformation@4");

namespace {

void WINAPI AnEvening(SYSTEMTIME* time) {
  *time = {.wYear = 2026,
           .wMonth = 11,
           .wDayOfWeek = 2,
           .wDay = 24,
           .wHour = 21,
           .wMinute = 5,
           .wSecond = 9,
           .wMilliseconds = 999};
}

TEST(Clock, GivesTheLocalTimeInWholeSeconds) {
  const SystemStandIn standIn(localTimeSlot, &AnEvening);
  EXPECT_DOUBLE_EQ(runtime::SystemNow(), 46350 + 75909 / 86400.0);
}

DWORD WINAPI ASummer(TIME_ZONE_INFORMATION* zone) {
  *zone = {};
  zone->Bias = 210;
  zone->StandardBias = 5;
  zone->DaylightBias = -60;
  return TIME_ZONE_ID_DAYLIGHT;
}

void ExpectTheSummer(const runtime::TimeZoneReading& reading, int result) {
  EXPECT_EQ(reading.Result, result);
  EXPECT_EQ(reading.Bias, 210);
  EXPECT_EQ(reading.StandardBias, 5);
  EXPECT_EQ(reading.DaylightBias, -60);
}

TEST(Clock, ReadsTheZoneOfTheSystemAndKeepsItIfTheSystemRefuses) {
  const SystemStandIn standIn(zoneSlot, &ASummer);
  ExpectTheSummer(runtime::SystemTimeZone(), 2);
  const Refused<zoneSlot, TIME_ZONE_ID_INVALID> refused;
  ExpectTheSummer(runtime::SystemTimeZone(), -1);
}

}  // namespace
