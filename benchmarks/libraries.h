#pragma once

#include "benchmarks/phase_search.h"

namespace benchmarks {

/// Each returns the work of one report for a Julian day.
Answer Libnova(double jd);
/// Error: std::runtime_error where the ephemeris files do not serve.
Answer SwissWithFiles(double jd);
Answer SwissMoshier(double jd);

}  // namespace benchmarks
