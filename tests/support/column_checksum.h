#pragma once

#include <string>
#include <vector>

namespace support {

/// Compares a column of a periodic series with tests/data/series_checksums.tsv: number of rows, sum, and sum weighted
/// with the row numbers. The sums are exact, in millionths.
void ExpectPublishedColumn(const std::string& series, const std::string& column, const std::vector<double>& values);

}  // namespace support
