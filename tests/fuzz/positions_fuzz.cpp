// The Sun, the Moon and the phases at any moment.
// Input: centuries, reference day, Julian day of 1 January (doubles), year (16 bits).

#include "astro/mMoon.h"
#include "fuzz/fuzzing.h"

using namespace fuzzing;
using namespace mMoon;
using namespace runtime;

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  Input input(bytes, size);
  const auto centuries = input.Take<double>();
  const auto jd = input.Take<double>();
  const auto jdJan1 = input.Take<double>();
  const auto year = input.Take<std::int16_t>();
  Centuries = centuries;

  const auto error = ErrorOf([&] {
    SunPosition(0);
    MoonPosition(0);
  });
  RequireArithmetic(error);
  if (Within(-80, centuries, 80)) {  // 8000 years: the terms in T^2 and T^3 are still small
    Require(!error, "the moments of history have a Sun and a Moon");
    Require(Within(0.89, MoonParallax, 1.03), "the parallax");  // 53.9 to 61.5 minutes of arc
    Require(Within(-5.6, MoonLatitude, 5.6), "the latitude");
    Require(Within(-1e-6, MoonLongitude, 360 + 1e-6), "the longitude");
    Require(Within(-2.5, SunEquationOfCentre, 2.5), "the equation of the centre");
  }
  if (error) {
    return 0;
  }

  Illumination = -1;
  const auto phasesError = ErrorOf([&] { FindPhases(year, jd, jdJan1); });
  RequireArithmetic(phasesError);
  Require(phasesError || Within(0, Illumination, 1), "the lit fraction");
  Require(phasesError || WaningFlag == (NewMoonJD - jd < FullMoonJD - jd ? 1 : 0), "waning: the New Moon comes first");
  Require(phasesError || (std::isfinite(NewMoonJD) && std::isfinite(FullMoonJD)), "the phases have a day");
  return 0;
}
