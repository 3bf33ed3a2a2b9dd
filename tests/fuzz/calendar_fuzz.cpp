// The calendar, the angles and the astronomy over all bit patterns of their arguments.

#include <cmath>

#include "astro/mMoon.h"
#include "fuzz/fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, size);
  const auto angle = input.Any<double>();
  const auto jd = input.Any<double>();
  const auto day = input.Any<double>();
  const auto year = input.Any<std::int16_t>();
  const auto month = input.Any<std::int16_t>();
  const auto hour = input.Any<std::int16_t>();

  MayRaise([&] {
    const double normal = mMoon::NormalizeAngle(angle);
    Require(std::isnan(angle) || (normal >= 0 && normal <= 360), "a normalised angle lies in 0..360");
  });
  MayRaise([&] { mMoon::DegToRad(angle); });
  MayRaise([&] { mMoon::ArcSine(angle); });
  MayRaise([&] {
    mMoon::JulianToCivil(jd);
    Require(mMoon::CalMonth >= 1 && mMoon::CalMonth <= 12, "a month is 1..12");
    Require(mMoon::CalMinute >= 0 && mMoon::CalMinute <= 59, "a minute is 0..59");
    Require(mMoon::CalHour >= 0 && mMoon::CalHour <= 24, "an hour is 0..24");
  });
  MayRaise([&] {
    std::int16_t y = year;
    std::int16_t m = month;
    mMoon::CivilToJulian(y, m, mMoon::DayFraction(month, hour, year));
  });
  MayRaise([&] {
    std::int16_t y = year;
    std::int16_t m = month;
    mMoon::CivilToJulian(y, m, day);
  });
  MayRaise([&] {
    mMoon::Centuries = mMoon::JulianCenturies(jd);
    mMoon::SunPosition(jd);
    mMoon::MoonPosition(jd);
    mMoon::FindPhases(year, jd, day);
    Require(mMoon::Illumination >= 0 && mMoon::Illumination <= 1, "a lit fraction is 0..1");
  });

  static mMoon::TimeZoneReading zone;
  zone = {input.Any<std::int32_t>(), input.Any<std::int32_t>(), input.Any<std::int32_t>(), input.Any<std::int32_t>()};
  mMoon::ReadTimeZone = [] { return zone; };
  for (const mMoon::Boolean useDaylight : {mMoon::False, mMoon::True}) {
    mMoon::UseDaylightBias = useDaylight;
    MayRaise([] { mMoon::LocalTimeOffset(); });
  }
  return 0;
}
