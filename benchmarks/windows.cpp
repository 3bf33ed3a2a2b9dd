// Measures the report in 32-bit Windows code, as shipped, and the sum of fresh sines. Prints a name and the processor
// time of one report in nanoseconds. With --answers it prints the report instead.

#include <windows.h>

#include <cstdint>
#include <cstdio>
#include <string_view>

#include "benchmarks/comparison.h"
#include "benchmarks/tidewell_report.h"

namespace benchmarks {

namespace {

/// The system counts in steps of 10 ms, which matter little in so long a run.
constexpr double kEnough = 1e9;  // ns

/// The processor time of this process in user mode, in nanoseconds.
double ProcessorTime() {
  FILETIME created;
  FILETIME ended;
  FILETIME kernel;
  FILETIME user;
  GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user);
  return 100.0 * static_cast<double>(std::uint64_t{user.dwHighDateTime} << 32 | user.dwLowDateTime);
}

template <typename Work>
void Measure(const char* name, Work work) {
  const Instants instants = InstantsOfComparison();
  const double began = ProcessorTime();
  double taken = 0;
  int passes = 0;
  do {
    for (const double jd : instants) {
      work(jd);
    }
    ++passes;
    taken = ProcessorTime() - began;
  } while (taken < kEnough);
  std::printf("%s\t%.1f\n", name, taken / passes / kInstants);
}

}  // namespace

}  // namespace benchmarks

int main(int count, char** arguments) {
  if (count == 2 && std::string_view(arguments[1]) == "--answers") {
    benchmarks::PrintReports("Tidewell, 32-bit");
    return 0;
  }
  [[maybe_unused]] static volatile double kept;  // keeps the work from being optimised away
  benchmarks::Measure("Tidewell, 32-bit", [](double jd) { benchmarks::ReportAt(jd); });
  benchmarks::Measure("fresh sines, 32-bit", [](double jd) { kept = benchmarks::FreshSines(jd); });
}
