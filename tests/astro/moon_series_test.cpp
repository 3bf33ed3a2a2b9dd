#include "astro/moon_series.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "astro/mMoon.h"
#include "support/closeness.h"
#include "support/column_checksum.h"
#include "support/module_test.h"

using support::Same;

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

/// Numbers of the rows, from 1, that go to the wave without conversion.
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

enum class RowOrder { Printed, Reversed, NoGroups };

/// Sums a series for the arguments that MoonPosition has left, in plain doubles: each group by itself, in the printed
/// order or, to see that the order can be told, in another one.
template <std::size_t Rows, std::size_t Groups>
double Summed(double start, const MoonSeries<Rows, Groups>& series, double wave(double), RowOrder order) {
  const double T = Centuries;
  const double E = 1 - 0.002495 * T - 0.00000752 * std::pow(T, 2);
  const std::array factors = {1.0, E, std::pow(E, 2)};
  const auto value = [&](const MoonTerm& term) {
    const double argument =
        term.D * MoonElongation + term.M * SunMeanAnomaly + term.Mp * MoonMeanAnomaly + term.F * MoonArgLatitude;
    return term.coefficient * factors.at(static_cast<std::size_t>(term.E)) *
           wave(term.unconverted ? argument : DegToRad(argument));
  };
  double sum = order == RowOrder::NoGroups ? start : 0;
  std::size_t begin = 0;
  for (const std::size_t end : series.groupEnds) {
    std::vector<double> group;
    for (std::size_t row = begin; row < end; ++row) {
      group.push_back(value(series.terms.at(row)));
    }
    if (order == RowOrder::Reversed) {
      std::reverse(group.begin(), group.end());
    }
    double groupSum = order == RowOrder::NoGroups ? sum : begin == 0 ? start : 0;
    for (const double term : group) {
      groupSum += term;
    }
    sum = order == RowOrder::NoGroups ? groupSum : sum + groupSum;
    begin = end;
  }
  return sum;
}

double Sine(double radians) { return std::sin(radians); }
double Cosine(double radians) { return std::cos(radians); }

double LongitudeIn(RowOrder order) { return NormalizeAngle(Summed(MoonMeanLongitude, kLongitudeSeries, Sine, order)); }

double LatitudeIn(RowOrder order) {
  const double T = Centuries;
  const double node = MoonNodeLongitude;
  return Summed(0, kLatitudeSeries, Sine, order) *
         (1 - 0.0004664 * std::cos(DegToRad(node)) - 0.0000754 * std::cos(DegToRad(node + 275.05 - 2.3 * T)));
}

double ParallaxIn(RowOrder order) { return Summed(0.950724, kParallaxSeries, Cosine, order); }

using MoonSeriesTest = support::ModuleTest;

/// Holds a result to the printed order to the last bit, and that the other orders would show.
void ExpectPrintedOrder(const double& result, double resultIn(RowOrder)) {
  int reversedShows = 0;
  int missingGroupsShow = 0;
  for (int i = 0; i < 2000; ++i) {
    Centuries = -1 + 0.00199 * i;
    SunPosition(0);
    MoonPosition(0);
    ASSERT_TRUE(Same(resultIn(RowOrder::Printed), result)) << "T = " << Centuries;
    reversedShows += resultIn(RowOrder::Reversed) != result ? 1 : 0;
    missingGroupsShow += resultIn(RowOrder::NoGroups) != result ? 1 : 0;
  }
  EXPECT_GT(reversedShows, 0);
  EXPECT_GT(missingGroupsShow, 0);
}

}  // namespace

// Checksums formed independently from the printed tables.
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

TEST_F(MoonSeriesTest, LongitudeIsSummedInThePrintedOrder) { ExpectPrintedOrder(MoonLongitude, LongitudeIn); }
TEST_F(MoonSeriesTest, LatitudeIsSummedInThePrintedOrder) { ExpectPrintedOrder(MoonLatitude, LatitudeIn); }
TEST_F(MoonSeriesTest, ParallaxIsSummedInThePrintedOrder) { ExpectPrintedOrder(MoonParallax, ParallaxIn); }

}  // namespace mMoon
