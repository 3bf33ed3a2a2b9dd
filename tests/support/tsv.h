#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace support {

/// One row of a reference file, its cells found by the names of the header.
class TsvRow {
 public:
  TsvRow(const std::vector<std::string>& columns, std::vector<std::string> cells)
      : columns_(&columns), cells_(std::move(cells)) {}

  [[nodiscard]] const std::string& Text(std::string_view column) const;
  [[nodiscard]] double Number(std::string_view column) const;
  [[nodiscard]] int Whole(std::string_view column) const;

 private:
  const std::vector<std::string>* columns_;
  std::vector<std::string> cells_;
};

/// A file of tests/data: lines of cells parted by tabs. Lines that begin with '#' are remarks; the last of them before
/// the first row names the columns. A file that is missing or a cell that is no number ends the test with an exception.
class Tsv {
 public:
  explicit Tsv(const std::string& name);
  Tsv(const Tsv&) = delete;
  Tsv& operator=(const Tsv&) = delete;

  [[nodiscard]] const std::vector<std::string>& Columns() const { return columns_; }
  [[nodiscard]] const std::vector<TsvRow>& Rows() const { return rows_; }

 private:
  std::vector<std::string> columns_;
  std::vector<TsvRow> rows_;
};

}  // namespace support
