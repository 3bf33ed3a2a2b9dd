#include "astro/moon_series.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <complex>
#include <cstdlib>
#include <span>
#include <string>

#include "astro/mMoon.h"
#include "astro/phase_series.h"
#include "support/module_test.h"
#include "support/tsv.h"

namespace mMoon {

using namespace astro;

namespace {

/// Compares a column of a periodic series, a member of its terms, with tests/data/series_checksums.tsv: the sum of the
/// column, and the sum with each row multiplied by its number. They were formed independently from the printed tables.
///
/// The first coefficient of the phases counts without its part in T. Rows that depart from the print on purpose count
/// with their departure.
template <typename Terms, typename Member>
void ExpectPublishedColumn(const std::string& series, const std::string& column, const Terms& terms, Member member) {
  SCOPED_TRACE(series + ", column " + column);
  const auto millionths = [](double value) { return std::llround(value * 1e6); };  // their sums are exact
  long long sum = 0;
  long long weighted = 0;
  long long number = 0;
  for (const auto& term : terms) {
    const auto value = static_cast<double>(term.*member);
    EXPECT_EQ(static_cast<double>(millionths(value)) / 1e6, value) << "a digit after the sixth decimal";
    sum += millionths(value);
    weighted += ++number * millionths(value);
  }
  int found = 0;
  for (const support::TsvRow& published : support::ReadTsv("series_checksums.tsv")) {
    if (published.Text("series") == series) {
      ++found;
      EXPECT_EQ(published.Text("sum") == "weighted" ? weighted : sum, millionths(published.Number(column)));
    }
  }
  EXPECT_EQ(found, 2);
}

void ExpectPublishedColumns(const std::string& series, std::span<const MoonTerm> terms) {
  ExpectPublishedColumn(series, "k", terms, &MoonTerm::coefficient);
  ExpectPublishedColumn(series, "E power", terms, &MoonTerm::E);
  ExpectPublishedColumn(series, "D", terms, &MoonTerm::D);
  ExpectPublishedColumn(series, "M", terms, &MoonTerm::M);
  ExpectPublishedColumn(series, "M'", terms, &MoonTerm::Mp);
  ExpectPublishedColumn(series, "F", terms, &MoonTerm::F);
}

/// The cosine and the sine of a row's argument, as one phasor.
using Wave = std::complex<double>(const MoonTerm& term);

/// From the library's sine and cosine of the summed argument.
std::complex<double> PlainWave(const MoonTerm& term) {
  const double argument =
      term.D * MoonElongation + term.M * SunMeanAnomaly + term.Mp * MoonMeanAnomaly + term.F * MoonArgLatitude;
  return std::polar(1.0, term.unconverted ? argument : DegToRad(argument));
}

/// From the phasors of the four angles, as the program forms it.
std::complex<double> PhasorWave(const MoonTerm& term) {
  const auto multiple = [](double degrees, int n) {
    std::complex<double> phasor = 1;
    for (int i = 0; i < std::abs(n); ++i) {
      phasor *= std::polar(1.0, DegToRad(degrees));
    }
    return n < 0 ? std::conj(phasor) : phasor;
  };
  return term.unconverted ? PlainWave(term)
                          : multiple(MoonElongation, term.D) * multiple(SunMeanAnomaly, term.M) *
                                multiple(MoonMeanAnomaly, term.Mp) * multiple(MoonArgLatitude, term.F);
}

/// Adds each group of rows separately (the first starts at `start`), then adds the groups.
std::complex<double> Summed(double start, std::span<const MoonTerm> terms, std::span<const std::size_t> groupEnds,
                            Wave wave) {
  const double T = Centuries;
  const double E = 1 - 0.002495 * T - 0.00000752 * std::pow(T, 2);
  const std::array factors = {1.0, E, std::pow(E, 2)};
  std::complex<double> sum = 0;
  std::complex<double> group = {start, start};
  std::size_t begin = 0;
  for (const std::size_t end : groupEnds) {
    for (std::size_t i = begin; i < end; ++i) {
      const MoonTerm& term = terms[i];
      group += term.coefficient * factors.at(static_cast<std::size_t>(term.E)) * wave(term);
    }
    sum += group;
    group = 0;
    begin = end;
  }
  return sum;
}

/// How far longitude, latitude and parallax are from the sums of their series for the same arguments.
std::array<double, 3> Errors(Wave wave) {
  const auto summed = [&](double start, const auto& series) {
    return Summed(start, series.terms, series.groupEnds, wave);
  };
  const double node = MoonNodeLongitude;
  const double latitude =
      summed(0, kLatitudeSeries).imag() *
      (1 - 0.0004664 * std::cos(DegToRad(node)) - 0.0000754 * std::cos(DegToRad(node + 275.05 - 2.3 * Centuries)));
  return {std::remainder(NormalizeAngle(summed(MoonMeanLongitude, kLongitudeSeries).imag()) - MoonLongitude, 360.0),
          latitude - MoonLatitude, summed(0.950724, kParallaxSeries).real() - MoonParallax};
}

void ComputeAt(double T) {
  Centuries = T;
  SunPosition(0);
  MoonPosition(0);
}

using MoonSeriesTest = support::ModuleTest;

}  // namespace

TEST(MoonSeries, ColumnsAreThePublishedOnes) {
  ExpectPublishedColumns("longitude", kLongitudeSeries.terms);
  ExpectPublishedColumns("latitude", kLatitudeSeries.terms);
  ExpectPublishedColumns("parallax", kParallaxSeries.terms);
}

TEST(PhaseSeries, ColumnsAreThePublishedOnes) {
  ExpectPublishedColumn("phase", "k", kPhaseSeries, &PhaseTerm::coefficient);
  ExpectPublishedColumn("phase", "M", kPhaseSeries, &PhaseTerm::M);
  ExpectPublishedColumn("phase", "M'", kPhaseSeries, &PhaseTerm::Mp);
  ExpectPublishedColumn("phase", "F", kPhaseSeries, &PhaseTerm::F);
}

TEST(MoonSeries, GroupsEndWhereTheyDoInPrint) {
  EXPECT_EQ(kLongitudeSeries.groupEnds, (std::array<std::size_t, 6>{6, 13, 22, 31, 40, 50}));
  EXPECT_EQ(kLatitudeSeries.groupEnds, (std::array<std::size_t, 6>{10, 17, 25, 33, 42, 45}));
  EXPECT_EQ(kParallaxSeries.groupEnds, (std::array<std::size_t, 4>{7, 15, 23, 30}));
}

TEST(MoonSeries, OnlyRow26OfTheLongitudeIsUnconverted) {
  const auto unconverted = [](const auto& terms) { return std::ranges::count(terms, true, &MoonTerm::unconverted); };
  EXPECT_TRUE(kLongitudeSeries.terms.at(25).unconverted);
  EXPECT_EQ(unconverted(kLongitudeSeries.terms), 1);
  EXPECT_EQ(unconverted(kLatitudeSeries.terms) + unconverted(kParallaxSeries.terms), 0);
}

// In another order the last bits differ.
TEST_F(MoonSeriesTest, AreSummedInThePrintedOrder) {
  for (int i = 0; i < 2000; ++i) {
    ComputeAt(-1 + 0.00199 * i);
    EXPECT_EQ(Errors(PhasorWave), (std::array<double, 3>{}));
  }
}

// At 20,000 instants of 1900 to 2100, with a sine for each row.
TEST_F(MoonSeriesTest, AgreeWithTheirPlainSums) {
  for (int i = 0; i < 20'000; ++i) {
    ComputeAt(0.0001 * i);
    for (const double error : Errors(PlainWave)) {
      ASSERT_NEAR(error, 0, 2e-11) << "T = " << Centuries;
    }
  }
}

}  // namespace mMoon
