#include <swephexp.h>

#include <array>
#include <stdexcept>
#include <string>

#include "benchmarks/libraries.h"

namespace benchmarks {

namespace {

Answer SwissEphemeris(double jd, int source) {
  std::array<char, AS_MAXCH> message{};
  // Without its files the library uses another source. Only its result says so.
  const auto require = [&](int flags) {
    if (flags < 0 || (flags & source) == 0) {
      throw std::runtime_error(std::string("Swiss Ephemeris without its files? ") + message.data());
    }
  };
  const auto longitude = [&](double at, int body) {
    std::array<double, 6> place{};
    require(swe_calc_ut(at, body, source, place.data(), message.data()));
    return place[0];
  };
  std::array<double, 20> phenomena{};
  require(swe_pheno_ut(jd, SE_MOON, source, phenomena.data(), message.data()));
  Answer answer;
  answer.litFraction = phenomena[1];
  SearchPhases(
      jd, [&](double at) { return longitude(at, SE_MOON) - longitude(at, SE_SUN); }, answer);
  return answer;
}

}  // namespace

Answer SwissWithFiles(double jd) { return SwissEphemeris(jd, SEFLG_SWIEPH); }
Answer SwissMoshier(double jd) { return SwissEphemeris(jd, SEFLG_MOSEPH); }

}  // namespace benchmarks
