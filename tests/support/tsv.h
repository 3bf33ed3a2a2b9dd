#pragma once

#include <gtest/gtest.h>

#include <charconv>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <system_error>
#include <vector>

namespace support {

/// One row of a reference file. Its cells are found by the column's name; a wrong name throws.
class TsvRow {
 public:
  std::map<std::string, std::string> cells;

  [[nodiscard]] const std::string& Text(const std::string& column) const { return cells.at(column); }
  [[nodiscard]] int Whole(const std::string& column) const { return static_cast<int>(Number(column)); }
  [[nodiscard]] double Number(const std::string& column) const {
    const std::string& text = Text(column);
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    EXPECT_TRUE(error == std::errc() && *end == '\0') << "no number: '" << text << "'";
    return number;
  }
};

/// Reads a file of tests/data, its cells separated by tabs. Lines that begin with '#' are comments; the last one before
/// the first row names the columns.
[[nodiscard]] inline std::vector<TsvRow> ReadTsv(const std::string& name) {
  // On a machine other than the build's, the environment names the folder.
  const char* const folder = std::getenv("TIDEWELL_TEST_DATA");
  std::ifstream file(std::string(folder != nullptr ? folder : TIDEWELL_TEST_DATA) + "/" + name);
  EXPECT_TRUE(file) << "cannot read " << name;
  std::vector<std::string> columns;
  std::vector<TsvRow> rows;
  for (std::string line; std::getline(file, line);) {
    const bool names = line.starts_with("# ");
    std::istringstream text(line.substr(names ? 2 : 0));
    std::vector<std::string> cells;
    for (std::string cell; std::getline(text, cell, '\t');) {
      cells.push_back(cell);
    }
    if (names) {
      columns = cells;
      continue;
    }
    TsvRow& row = rows.emplace_back();
    for (const std::string& cell : cells) {
      row.cells.emplace(columns.at(row.cells.size()), cell);
    }
  }
  return rows;
}

}  // namespace support
