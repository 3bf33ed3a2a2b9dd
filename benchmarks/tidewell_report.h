#pragma once

#include <array>
#include <string>

namespace benchmarks {

/// What the report writes on the main window.
struct Report {
  std::wstring darkFraction;
  std::array<std::wstring, 4> lines;  ///< from the top
};

/// Makes the whole report at an instant of Universal Time, as the program's timer does: drawing, four lines, tip. The
/// next call overwrites the result.
const Report& ReportAt(double jd);

/// Prints the report at each instant of the comparison: name, Julian day, texts.
void PrintReports(const char* name);

}  // namespace benchmarks
