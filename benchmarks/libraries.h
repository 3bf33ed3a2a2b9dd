#pragma once

#include "benchmarks/phase_search.h"

namespace benchmarks {

/// Each does the work of one report at a Julian day.
Answer Libnova(double jd);
/// Throws std::runtime_error if the library cannot use the ephemeris files.
Answer SwissWithFiles(double jd);
Answer SwissMoshier(double jd);

}  // namespace benchmarks
