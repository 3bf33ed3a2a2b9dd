#include <libnova/libnova.h>

#include "benchmarks/libraries.h"

namespace benchmarks {

namespace {

/// Terms of the series below this are left out, radians: the sum is good to seconds of time.
constexpr double kPrecision = 1e-5;

}  // namespace

Answer Libnova(double jd) {
  Answer answer;
  answer.litFraction = ln_get_lunar_disk(jd);
  const auto elongation = [](double at) {
    ln_lnlat_posn moon;
    ln_lnlat_posn sun;
    ln_get_lunar_ecl_coords(at, &moon, kPrecision);
    ln_get_solar_ecl_coords(at, &sun);
    return moon.lng - sun.lng;
  };
  SearchPhases(jd, elongation, answer);
  return answer;
}

}  // namespace benchmarks
