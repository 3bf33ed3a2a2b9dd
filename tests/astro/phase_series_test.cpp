#include "astro/phase_series.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/column_checksum.h"

namespace mMoon {

using namespace astro;

TEST(PhaseSeries, ColumnsAreThePublishedOnes) {
  const auto expectColumn = [](const char* column, auto member) {
    std::vector<double> values;
    for (const PhaseTerm& term : kPhaseSeries) {
      values.push_back(static_cast<double>(term.*member));
    }
    support::ExpectPublishedColumn("phase", column, values);
  };
  expectColumn("k", &PhaseTerm::coefficient);
  expectColumn("M", &PhaseTerm::M);
  expectColumn("M'", &PhaseTerm::Mp);
  expectColumn("F", &PhaseTerm::F);
}

}  // namespace mMoon
