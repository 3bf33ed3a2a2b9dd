#pragma once

#include <gtest/gtest.h>

#include <charconv>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace support {

/// One row of a reference file. Its cells are found by the column's name; a wrong name throws.
struct TsvRow {
  std::map<std::string, std::string> cells;

  [[nodiscard]] const std::string& Text(const std::string& column) const { return cells.at(column); }
  [[nodiscard]] int Whole(const std::string& column) const { return std::stoi(Text(column)); }
  /// NaN for other text. No strtod: not every runtime's is exact.
  [[nodiscard]] double Number(const std::string& column) const {
    const std::string& text = Text(column);
    double number = std::numeric_limits<double>::quiet_NaN();
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
  }
};

/// Reads a file of the test data. Tabs separate its cells, the first line names the columns.
[[nodiscard]] inline std::vector<TsvRow> ReadTsv(const std::string& name) {
  // On a machine other than the build's, the environment names the folder.
  const char* const folder = std::getenv("TIDEWELL_TEST_DATA");
  std::ifstream file(std::string(folder != nullptr ? folder : TIDEWELL_TEST_DATA) + "/" + name);
  EXPECT_TRUE(file) << "cannot read " << name;
  const auto cellsOf = [](const std::string& line) {
    std::istringstream text(line);
    std::vector<std::string> cells;
    for (std::string cell; std::getline(text, cell, '\t');) {
      cells.push_back(cell);
    }
    return cells;
  };
  std::string line;
  std::getline(file, line);
  const std::vector<std::string> columns = cellsOf(line);
  std::vector<TsvRow> rows;
  while (std::getline(file, line)) {
    TsvRow& row = rows.emplace_back();
    for (const std::string& cell : cellsOf(line)) {
      row.cells.emplace(columns.at(row.cells.size()), cell);
    }
  }
  return rows;
}

}  // namespace support
