// Writes the Moon's phases of 1900 to 2100 from a modern ephemeris, the Swiss Ephemeris with its files of JPL DE431:
//
//   ephemeris PHASES LIT-FRACTIONS STEP
//
// All New and Full Moons go to the file PHASES, the lit fraction every STEP days to LIT-FRACTIONS. Julian days are in
// dynamical time (TT). Tidewell itself never contains that library.

#include <swephexp.h>

#include <array>
#include <cmath>
#include <fstream>
#include <stdexcept>
#include <string>

namespace {

/// The lunations of 1900 to 2100 and one on either side. As in the program, lunation 0 begins on 1 January 1900.
constexpr int kFirstLunation = -1;
constexpr int kLastLunation = 2487;

constexpr double kJanuary1900 = 2415020.5;
constexpr double kJanuary2101 = 2488434.5;

constexpr double kSecondsPerDay = 86400;
constexpr int kFlags = SEFLG_SWIEPH | SEFLG_SPEED;

std::array<char, AS_MAXCH> message;  // from the library

/// Fails if the library silently used a lesser ephemeris because its files are missing.
void Require(int flags) {
  if (flags < 0 || (flags & SEFLG_SWIEPH) == 0) {
    throw std::runtime_error(message.data());
  }
}

struct Elongation {
  double degrees;  ///< apparent geocentric longitude, Moon minus Sun
  double perDay;
};

Elongation ElongationAt(double tt) {
  std::array<double, 6> moon{};
  std::array<double, 6> sun{};
  Require(swe_calc(tt, SE_MOON, kFlags, moon.data(), message.data()));
  Require(swe_calc(tt, SE_SUN, kFlags, sun.data(), message.data()));
  return {.degrees = moon[0] - sun[0], .perDay = moon[3] - sun[3]};
}

/// The moment with this elongation (0: New Moon, 180: Full Moon) that is nearest to an estimate.
double PhaseNear(double tt, double phase) {
  for (int round = 0; round < 20; ++round) {
    const Elongation elongation = ElongationAt(tt);
    const double step = std::remainder(phase - elongation.degrees, 360.0) / elongation.perDay;
    tt += step;
    if (std::fabs(step) < 1e-9) {
      return tt;
    }
  }
  throw std::runtime_error("a phase is not found");
}

/// Dynamical minus Universal Time, in seconds. The library needs UT, for which TT less a minute is close enough.
double DeltaT(double tt) {
  return swe_deltat_ex(tt - 60 / kSecondsPerDay, SEFLG_SWIEPH, message.data()) * kSecondsPerDay;
}

double LitFraction(double tt) {
  std::array<double, 20> phenomena{};
  Require(swe_pheno(tt, SE_MOON, SEFLG_SWIEPH, phenomena.data(), message.data()));
  return phenomena[1];
}

void WritePhases(const char* path) {
  std::ofstream file(path);
  file << std::fixed << "lunation\tnew moon\tfull moon\tdelta T\n";
  for (int lunation = kFirstLunation; lunation <= kLastLunation; ++lunation) {
    const double mean = 2415020.76 + 29.530589 * lunation;
    const double newMoon = PhaseNear(mean, 0);
    file << lunation << '\t' << newMoon << '\t' << PhaseNear(mean + 29.530589 / 2, 180) << '\t' << DeltaT(newMoon)
         << '\n';
  }
}

void WriteLitFractions(const char* path, double step) {
  std::ofstream file(path);
  file << std::fixed << "jd\tlit\n";
  for (double tt = kJanuary1900; tt < kJanuary2101; tt += step) {
    file << tt << '\t' << LitFraction(tt) << '\n';
  }
}

}  // namespace

int main(int, char** arguments) {
  WritePhases(arguments[1]);
  WriteLitFractions(arguments[2], std::stod(arguments[3]));
}
