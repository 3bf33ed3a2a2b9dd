#pragma once

#include <array>
#include <string>
#include <vector>

#include "forms/drawing_list.h"
#include "runtime/date_value.h"

namespace check {

/// What the user sees of one report.
struct Report {
  std::array<std::wstring, 4> lines;
  std::wstring label, tip;
  forms::DrawingList drawing;
};

/// Computes the reports for each second of an interval, with the zone's offset, or without, as before the first tick.
[[nodiscard]] std::vector<Report> ReportsFor(runtime::DateValue from, runtime::DateValue to, bool withOffset = true,
                                             bool southern = false);

/// The lines and the label, one after the other.
[[nodiscard]] std::wstring TextOf(const Report& report);

}  // namespace check
