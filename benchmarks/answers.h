#pragma once

#include <cstdio>

#include "benchmarks/instants.h"
#include "benchmarks/tidewell_report.h"

namespace benchmarks {

/// Prints Tidewell's report at each instant of the comparison: name, Julian day, texts.
inline void PrintReports(const char* name) {
  for (const double jd : InstantsOfComparison()) {
    const Report& report = ReportAt(jd);
    std::printf("%s\t%.9f\t%ls", name, jd, report.darkFraction.c_str());
    for (const std::wstring& line : report.lines) {
      std::printf("\t%ls", line.c_str());
    }
    std::printf("\n");
  }
}

}  // namespace benchmarks
