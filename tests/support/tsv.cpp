#include "support/tsv.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace support {

namespace {

std::vector<std::string> SplitAtTabs(std::string_view line) {
  std::vector<std::string> cells;
  while (true) {
    const auto tab = line.find('\t');
    cells.emplace_back(line.substr(0, tab));
    if (tab == std::string_view::npos) {
      return cells;
    }
    line.remove_prefix(tab + 1);
  }
}

template <class Value>
Value Parsed(const std::string& text) {
  Value value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) {
    throw std::runtime_error("no number: '" + text + "'");
  }
  return value;
}

/// The folder of the tables. The environment names it on a machine other than the build's.
std::string DataFolder() {
  const char* const named = std::getenv("TIDEWELL_TEST_DATA");
  return named != nullptr ? named : TIDEWELL_TEST_DATA;
}

}  // namespace

const std::string& TsvRow::Text(std::string_view column) const {
  const auto found = std::find(columns_->begin(), columns_->end(), column);
  if (found == columns_->end()) {
    throw std::runtime_error("no column: " + std::string(column));
  }
  return cells_.at(static_cast<std::size_t>(found - columns_->begin()));
}

double TsvRow::Number(std::string_view column) const { return Parsed<double>(Text(column)); }

int TsvRow::Whole(std::string_view column) const { return Parsed<int>(Text(column)); }

Tsv::Tsv(const std::string& name) {
  const std::string path = DataFolder() + "/" + name;
  std::ifstream file(path);
  if (!file) {
    throw std::runtime_error("cannot read " + path);
  }
  for (std::string line; std::getline(file, line);) {
    if (line.ends_with('\r')) {
      line.pop_back();
    }
    if (line.starts_with("# ")) {
      columns_ = SplitAtTabs(std::string_view(line).substr(2));
    } else if (!line.empty()) {
      rows_.emplace_back(columns_, SplitAtTabs(line));
    }
  }
}

}  // namespace support
