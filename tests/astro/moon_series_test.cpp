#include "astro/moon_series.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <complex>
#include <cstdlib>
#include <vector>

#include "astro/mMoon.h"
#include "support/closeness.h"
#include "support/column_checksum.h"
#include "support/module_test.h"

using support::Near;
using support::NearAngle;

namespace mMoon {

using namespace astro;

namespace {

template <std::size_t Rows, std::size_t Groups>
void ExpectPublishedColumns(const std::string& name, const MoonSeries<Rows, Groups>& series) {
  const auto expectColumn = [&](const char* column, auto member) {
    std::vector<double> values;
    for (const MoonTerm& term : series.terms) {
      values.push_back(static_cast<double>(term.*member));
    }
    support::ExpectPublishedColumn(name, column, values);
  };
  expectColumn("k", &MoonTerm::coefficient);
  expectColumn("E power", &MoonTerm::E);
  expectColumn("D", &MoonTerm::D);
  expectColumn("M", &MoonTerm::M);
  expectColumn("M'", &MoonTerm::Mp);
  expectColumn("F", &MoonTerm::F);
}

/// The rows, counted from 1, whose argument is not converted to radians.
template <std::size_t Rows, std::size_t Groups>
std::vector<std::size_t> UnconvertedRows(const MoonSeries<Rows, Groups>& series) {
  std::vector<std::size_t> rows;
  for (std::size_t row = 0; row < Rows; ++row) {
    if (series.terms.at(row).unconverted) {
      rows.push_back(row + 1);
    }
  }
  return rows;
}

/// Adds each group of rows separately (the first starts at `start`), then adds the groups. `reversed` reverses the rows
/// of each group, to show that their order changes the sum.
template <std::size_t Rows, std::size_t Groups, class Wave>
double Summed(double start, const MoonSeries<Rows, Groups>& series, Wave wave, bool reversed) {
  const double T = Centuries;
  const double E = 1 - 0.002495 * T - 0.00000752 * std::pow(T, 2);
  const std::array factors = {1.0, E, std::pow(E, 2)};
  double sum = 0;
  double groupSum = start;
  std::size_t begin = 0;
  for (const std::size_t end : series.groupEnds) {
    for (std::size_t i = begin; i < end; ++i) {
      const MoonTerm& term = series.terms.at(reversed ? begin + end - 1 - i : i);
      groupSum += term.coefficient * factors.at(static_cast<std::size_t>(term.E)) * wave(term);
    }
    sum += groupSum;
    groupSum = 0;
    begin = end;
  }
  return sum;
}

/// The sums of the three series.
struct Sums {
  double longitude, latitude, parallax;
};

/// Sums the series for the arguments that MoonPosition has left. `wave` gets the row and whether it is a cosine.
template <class Wave>
Sums SumsOf(Wave wave, bool reversed = false) {
  const auto sine = [&](const MoonTerm& term) { return wave(term, false); };
  const auto cosine = [&](const MoonTerm& term) { return wave(term, true); };
  const double T = Centuries;
  const double node = MoonNodeLongitude;
  return {
      .longitude = NormalizeAngle(Summed(MoonMeanLongitude, kLongitudeSeries, sine, reversed)),
      .latitude = Summed(0, kLatitudeSeries, sine, reversed) *
                  (1 - 0.0004664 * std::cos(DegToRad(node)) - 0.0000754 * std::cos(DegToRad(node + 275.05 - 2.3 * T))),
      .parallax = Summed(0.950724, kParallaxSeries, cosine, reversed)};
}

/// The library's sine or cosine of the summed argument.
double PlainWave(const MoonTerm& term, bool cosine) {
  const double argument =
      term.D * MoonElongation + term.M * SunMeanAnomaly + term.Mp * MoonMeanAnomaly + term.F * MoonArgLatitude;
  const double radians = term.unconverted ? argument : DegToRad(argument);
  return cosine ? std::cos(radians) : std::sin(radians);
}

/// The same from the phasors of the four angles, as the program forms it.
double PhasorWave(const MoonTerm& term, bool cosine) {
  if (term.unconverted) {
    return std::sin(term.D * MoonElongation);
  }
  const auto multiple = [](double degrees, int n) {
    const auto once = std::polar(1.0, DegToRad(degrees));
    std::complex<double> phasor = 1;
    for (int i = 0; i < std::abs(n); ++i) {
      phasor *= once;
    }
    return n < 0 ? std::conj(phasor) : phasor;
  };
  const auto phasor = multiple(MoonElongation, term.D) * multiple(SunMeanAnomaly, term.M) *
                      multiple(MoonMeanAnomaly, term.Mp) * multiple(MoonArgLatitude, term.F);
  return cosine ? phasor.real() : phasor.imag();
}

void ComputeAt(double T) {
  Centuries = T;
  SunPosition(0);
  MoonPosition(0);
}

using MoonSeriesTest = support::ModuleTest;

}  // namespace

TEST(MoonSeries, ColumnsAreThePublishedOnes) {
  ExpectPublishedColumns("longitude", kLongitudeSeries);
  ExpectPublishedColumns("latitude", kLatitudeSeries);
  ExpectPublishedColumns("parallax", kParallaxSeries);
}

TEST(MoonSeries, GroupsEndWhereTheyDoInPrint) {
  EXPECT_EQ(kLongitudeSeries.groupEnds, (std::array<std::size_t, 6>{6, 13, 22, 31, 40, 50}));
  EXPECT_EQ(kLatitudeSeries.groupEnds, (std::array<std::size_t, 6>{10, 17, 25, 33, 42, 45}));
  EXPECT_EQ(kParallaxSeries.groupEnds, (std::array<std::size_t, 4>{7, 15, 23, 30}));
}

TEST(MoonSeries, OnlyRow26OfTheLongitudeIsUnconverted) {
  EXPECT_EQ(UnconvertedRows(kLongitudeSeries), std::vector<std::size_t>{26});
  EXPECT_TRUE(UnconvertedRows(kLatitudeSeries).empty());
  EXPECT_TRUE(UnconvertedRows(kParallaxSeries).empty());
}

// In the printed order only the waves round differently from the program's. In another order the additions do, too.
TEST_F(MoonSeriesTest, AreSummedInThePrintedOrder) {
  std::array<std::array<double, 3>, 2> squares{};
  for (int i = 0; i < 2000; ++i) {
    ComputeAt(-1 + 0.00199 * i);
    for (const bool reversed : {false, true}) {
      const Sums sums = SumsOf(PhasorWave, reversed);
      auto& [longitude, latitude, parallax] = squares.at(reversed ? 1 : 0);
      longitude += std::pow(support::AngleDifference(sums.longitude, MoonLongitude), 2);
      latitude += std::pow(sums.latitude - MoonLatitude, 2);
      parallax += std::pow(sums.parallax - MoonParallax, 2);
    }
  }
  for (const std::size_t series : {0U, 1U, 2U}) {
    EXPECT_LT(4 * squares[0].at(series), squares[1].at(series));
  }
}

// At 20,000 instants of 1900 to 2100, with a sine for each row.
TEST_F(MoonSeriesTest, AgreeWithTheirPlainSums) {
  for (int i = 0; i < 20'000; ++i) {
    ComputeAt(0.0001 * i);
    const Sums sums = SumsOf(PlainWave);
    ASSERT_TRUE(NearAngle(sums.longitude, MoonLongitude, 2e-11)) << "T = " << Centuries;
    ASSERT_TRUE(Near(sums.latitude, MoonLatitude, 2e-11)) << "T = " << Centuries;
    ASSERT_TRUE(Near(sums.parallax, MoonParallax, 2e-11)) << "T = " << Centuries;
  }
}

}  // namespace mMoon
