// Prints the Moon's phases of 1900 to 2100 from a modern ephemeris, the Swiss Ephemeris:
//   ephemeris         all New and Full Moons
//   ephemeris STEP    the lit fraction every STEP days
// The program is never linked with that library. Julian days are in dynamical time (TT).

#include <swephexp.h>

#include <array>
#include <cmath>
#include <cstdio>
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

/// Fails if the library silently used a lesser ephemeris because its files are missing.
void Require(int flags, const char* message) {
  if (flags < 0 || (flags & SEFLG_SWIEPH) == 0) {
    throw std::runtime_error(message);
  }
}

struct Elongation {
  double degrees;  ///< apparent geocentric longitude, Moon minus Sun
  double perDay;
};

Elongation ElongationAt(double tt) {
  std::array<double, 6> moon{};
  std::array<double, 6> sun{};
  std::array<char, AS_MAXCH> message{};
  Require(swe_calc(tt, SE_MOON, kFlags, moon.data(), message.data()), message.data());
  Require(swe_calc(tt, SE_SUN, kFlags, sun.data(), message.data()), message.data());
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
  std::array<char, AS_MAXCH> message{};
  return swe_deltat_ex(tt - 60 / kSecondsPerDay, SEFLG_SWIEPH, message.data()) * kSecondsPerDay;
}

double LitFraction(double tt) {
  std::array<double, 20> phenomena{};
  std::array<char, AS_MAXCH> message{};
  Require(swe_pheno(tt, SE_MOON, SEFLG_SWIEPH, phenomena.data(), message.data()), message.data());
  return phenomena[1];
}

void PrintHead(const char* what, const char* columns) {
  (void)ElongationAt(kJanuary1900);  // opens the library's files
  std::array<char, AS_MAXCH> version{};
  double from = 0;
  double to = 0;
  int ephemeris = 0;
  (void)swe_get_current_file_data(1, &from, &to, &ephemeris);
  std::printf("# %s\n", what);
  std::printf("# Made by tools/accuracy/accuracy.py with the Swiss Ephemeris %s, its files of JPL DE%d.\n",
              swe_version(version.data()), ephemeris);
  std::printf("# %s\n", columns);
}

void PrintPhases() {
  PrintHead(
      "New and Full Moons of 1900 to 2100 and a lunation on either side: Julian days in dynamical time, a lunation a "
      "row;\n# delta T: dynamical minus Universal Time, seconds (a forecast for the future).",
      "lunation\tnew moon\tfull moon\tdelta T");
  for (int lunation = kFirstLunation; lunation <= kLastLunation; ++lunation) {
    const double mean = 2415020.76 + 29.530589 * lunation;
    const double newMoon = PhaseNear(mean, 0);
    const double fullMoon = PhaseNear(mean + 29.530589 / 2, 180);
    std::printf("%d\t%.6f\t%.6f\t%.1f\n", lunation, newMoon, fullMoon, DeltaT(newMoon));
  }
}

void PrintLitFractions(double step) {
  PrintHead("The lit fraction of the Moon's disc, 1900 to 2100: Julian days in dynamical time.", "jd\tlit");
  for (double tt = kJanuary1900; tt < kJanuary2101; tt += step) {
    std::printf("%.6f\t%.6f\n", tt, LitFraction(tt));
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 1) {
    PrintLitFractions(std::stod(argv[1]));
  } else {
    PrintPhases();
  }
}
