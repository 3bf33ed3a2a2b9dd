#include "support/column_checksum.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/tsv.h"

namespace support {

namespace {

constexpr double kMillion = 1e6;

long long Millionths(double value) {
  const long long millionths = std::llround(value * kMillion);
  // No digit after the sixth decimal.
  EXPECT_EQ(static_cast<double>(millionths) / kMillion, value);
  return millionths;
}

}  // namespace

void ExpectPublishedColumn(const std::string& series, const std::string& column, const std::vector<double>& values) {
  SCOPED_TRACE(series + ", column " + column);
  long long sum = 0;
  long long weightedSum = 0;
  long long row = 0;
  for (const double value : values) {
    sum += Millionths(value);
    weightedSum += ++row * Millionths(value);
  }
  int found = 0;
  const Tsv file("series_checksums.tsv");
  for (const TsvRow& published : file.Rows()) {
    if (published.Text("series") == series && published.Text("column") == column) {
      ++found;
      EXPECT_EQ(row, published.Whole("rows"));
      EXPECT_EQ(sum, std::llround(published.Number("sum") * kMillion));
      EXPECT_EQ(weightedSum, std::llround(published.Number("weighted sum") * kMillion));
    }
  }
  EXPECT_EQ(found, 1);
}

}  // namespace support
