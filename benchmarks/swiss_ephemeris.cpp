// Measures Swiss Ephemeris: prints the time of the work of one report. With --answers it prints the answers at the
// instants of the comparison instead: name, Julian day, lit fraction, last New, next New, last Full, next Full.

#include <swephexp.h>

#include <array>
#include <cmath>
#include <stdexcept>
#include <string>

#include "benchmarks/comparison.h"

namespace {

constexpr char kName[] = "Swiss Ephemeris";

std::array<char, AS_MAXCH> message;

/// Without its files the library uses a lesser ephemeris. Only the returned flags say so.
void Require(int flags) {
  if (flags < 0 || (flags & SEFLG_SWIEPH) == 0) {
    throw std::runtime_error(std::string("Swiss Ephemeris without its files? ") + message.data());
  }
}

double Longitude(double jd, int body) {
  std::array<double, 6> place{};
  Require(swe_calc_ut(jd, body, SEFLG_SWIEPH, place.data(), message.data()));
  return place[0];
}

/// The Moon's longitude minus the Sun's, -360..360 degrees.
double Elongation(double jd) { return Longitude(jd, SE_MOON) - Longitude(jd, SE_SUN); }

/// Finds the instant near `jd` with the elongation `wanted`, to a second or better. The library has no such search.
/// `now` is the elongation at `jd`. The secant method, with the mean rate for the first step.
double When(double wanted, double jd, double now) {
  constexpr double kCloseEnough = 0.001;  // days; after so small a step the error is far smaller
  double rate = 360 / 29.530589;          // degrees a day
  double at = jd + (wanted - now) / rate;
  double missing = std::remainder(wanted - Elongation(at), 360);
  for (;;) {
    const double step = missing / rate;
    at += step;
    if (std::fabs(step) < kCloseEnough) {
      return at;
    }
    const double left = std::remainder(wanted - Elongation(at), 360);
    rate = (missing - left) / step;
    missing = left;
  }
}

/// Does the work of one report: the lit fraction, the last and the next New Moon, the last and the next Full Moon.
std::array<double, 5> Answer(double jd) {
  std::array<double, 20> phenomena{};
  Require(swe_pheno_ut(jd, SE_MOON, SEFLG_SWIEPH, phenomena.data(), message.data()));
  const double now = std::fmod(Elongation(jd) + 720, 360);
  const double lastFull = now < 180 ? -180 : 180;
  return {phenomena[1], When(0, jd, now), When(360, jd, now), When(lastFull, jd, now), When(lastFull + 360, jd, now)};
}

}  // namespace

int main(int count, char** /*arguments*/) {
  if (count == 1) {
    benchmarks::Measure(kName, benchmarks::InstantsOfComparison(), 1, Answer);
    return 0;
  }
  for (const double jd : benchmarks::InstantsOfComparison()) {
    std::printf("%s\t%.9f", kName, jd);
    for (const double value : Answer(jd)) {
      std::printf("\t%.9f", value);
    }
    std::printf("\n");
  }
}
