#include "benchmarks/swiss_ephemeris.h"

#include <swephexp.h>

#include <array>
#include <cmath>
#include <stdexcept>
#include <string>

namespace benchmarks {

namespace {

/// Finds the phases around an instant, to a second or better: the library has no search of its own. `elongation` gives
/// the Moon's longitude minus the Sun's at a Julian day, in degrees, in any turn.
template <typename Elongation>
void SearchPhases(double jd, Elongation elongation, Answer& answer) {
  constexpr double kMeanRate = 360 / 29.530589;  // degrees a day
  constexpr double kCloseEnough = 0.001;         // days; after so small a step the error is far smaller

  const double now = std::fmod(elongation(jd) + 720, 360);
  // The secant method. The first step uses the mean rate.
  const auto when = [&](double wanted) {
    double rate = kMeanRate;
    double at = jd + (wanted - now) / rate;
    double missing = std::remainder(wanted - elongation(at), 360);
    for (;;) {
      const double step = missing / rate;
      at += step;
      if (std::fabs(step) < kCloseEnough) {
        return at;
      }
      const double left = std::remainder(wanted - elongation(at), 360);
      rate = (missing - left) / step;
      missing = left;
    }
  };
  answer.lastNew = when(0);
  answer.nextNew = when(360);
  answer.lastFull = when(now < 180 ? -180 : 180);
  answer.nextFull = when(now < 180 ? 180 : 540);
}

}  // namespace

Answer SwissEphemeris(double jd) {
  std::array<char, AS_MAXCH> message{};
  // Without its files the library uses a lesser ephemeris. Only the returned flags say so.
  const auto require = [&](int flags) {
    if (flags < 0 || (flags & SEFLG_SWIEPH) == 0) {
      throw std::runtime_error(std::string("Swiss Ephemeris without its files? ") + message.data());
    }
  };
  const auto longitude = [&](double at, int body) {
    std::array<double, 6> place{};
    require(swe_calc_ut(at, body, SEFLG_SWIEPH, place.data(), message.data()));
    return place[0];
  };
  std::array<double, 20> phenomena{};
  require(swe_pheno_ut(jd, SE_MOON, SEFLG_SWIEPH, phenomena.data(), message.data()));
  Answer answer;
  answer.litFraction = phenomena[1];
  SearchPhases(
      jd, [&](double at) { return longitude(at, SE_MOON) - longitude(at, SE_SUN); }, answer);
  return answer;
}

}  // namespace benchmarks
