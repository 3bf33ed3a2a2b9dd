#pragma once

#include <string>
#include <vector>

namespace support {

/// Holds a column of a periodic series to the checksums of tests/data/series_checksums.tsv: number of rows, sum, and
/// sum weighted with the row numbers. Exact: coefficients count as whole millionths, multiples as whole numbers.
void ExpectPublishedColumn(const std::string& series, const std::string& column, const std::vector<double>& values);

}  // namespace support
