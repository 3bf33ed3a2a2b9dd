#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "support/tsv.h"

namespace support {

/// Compares a column of a periodic series, a member of its terms, with tests/data/series_checksums.tsv, formed
/// independently from the printed tables: number of rows, sum, and sum weighted with the row numbers. The sums are
/// exact, in millionths.
template <typename Terms, typename Member>
void ExpectPublishedColumn(const std::string& series, const std::string& column, const Terms& terms, Member member) {
  const auto millionths = [](double value) { return std::llround(value * 1e6); };
  SCOPED_TRACE(series + ", column " + column);
  long long sum = 0;
  long long weightedSum = 0;
  long long rows = 0;
  for (const auto& term : terms) {
    const auto value = static_cast<double>(term.*member);
    EXPECT_EQ(static_cast<double>(millionths(value)) / 1e6, value) << "a digit after the sixth decimal";
    sum += millionths(value);
    weightedSum += ++rows * millionths(value);
  }
  int found = 0;
  for (const TsvRow& published : ReadTsv("series_checksums.tsv")) {
    if (published.Text("series") == series && published.Text("column") == column) {
      ++found;
      EXPECT_EQ(rows, published.Whole("rows"));
      EXPECT_EQ(sum, millionths(published.Number("sum")));
      EXPECT_EQ(weightedSum, millionths(published.Number("weighted sum")));
    }
  }
  EXPECT_EQ(found, 1);
}

}  // namespace support
