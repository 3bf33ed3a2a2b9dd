#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace support {

/// One row of a reference file. Its cells are found by the column's name.
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

/// A file of tests/data, its cells separated by tabs. Lines that begin with '#' are comments; the last one before the
/// first row names the columns. Throws if the file is missing or a cell is no number.
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
