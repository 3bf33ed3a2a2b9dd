#include "astro/phase_series.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/column_checksum.h"

namespace mMoon {

using namespace astro;

namespace {

std::vector<double> Column(auto member) {
  std::vector<double> values;
  values.reserve(kPhaseSeries.size());
  for (const PhaseTerm& term : kPhaseSeries) {
    values.push_back(static_cast<double>(term.*member));
  }
  return values;
}

}  // namespace

TEST(PhaseSeries, ColumnsAreThePublishedOnes) {
  support::ExpectPublishedColumn("phase", "k", Column(&PhaseTerm::coefficient));
  support::ExpectPublishedColumn("phase", "M", Column(&PhaseTerm::M));
  support::ExpectPublishedColumn("phase", "M'", Column(&PhaseTerm::Mp));
  support::ExpectPublishedColumn("phase", "F", Column(&PhaseTerm::F));
}

TEST(PhaseSeries, OnlyTheFirstRowChangesWithTime) {
  std::vector<double> want(kPhaseSeries.size(), 0);
  want.front() = -0.000393;
  EXPECT_EQ(Column(&PhaseTerm::perT), want);
}

// On purpose, against the print.
TEST(PhaseSeries, Rows10And12ShareTheirArgument) {
  const PhaseTerm& row10 = kPhaseSeries.at(9);
  const PhaseTerm& row12 = kPhaseSeries.at(11);
  EXPECT_EQ(row10.coefficient, -0.0004);
  EXPECT_EQ(row12.coefficient, 0.0010);
  for (const PhaseTerm* row : {&row10, &row12}) {
    EXPECT_EQ(row->M, 0);
    EXPECT_EQ(row->Mp, -1);
    EXPECT_EQ(row->F, 2);
  }
}

}  // namespace mMoon
