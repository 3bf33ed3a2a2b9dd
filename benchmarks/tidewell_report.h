#pragma once

#include <array>
#include <string>

namespace benchmarks {

/// What the report writes on the main window.
struct Report {
  std::wstring darkFraction;
  std::array<std::wstring, 4> lines;  ///< from the top
};

/// Makes the whole report for an instant of Universal Time, as a tick of the program's timer does: the drawing, the
/// four lines and the tray's tip. The result is overwritten by the next call.
const Report& ReportAt(double jd);

}  // namespace benchmarks
