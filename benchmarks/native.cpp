// Measures the native report, Swiss Ephemeris, and the sum of fresh sines. With --answers it prints their answers
// instead.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <string_view>

#include "benchmarks/comparison.h"
#include "benchmarks/swiss_ephemeris.h"
#include "benchmarks/tidewell_report.h"

namespace benchmarks {

namespace {

void PrintAnswers() {
  PrintReports("Tidewell");
  for (const double jd : InstantsOfComparison()) {
    const Answer answer = SwissEphemeris(jd);
    std::printf("Swiss Ephemeris\t%.9f\t%.9f\t%.9f\t%.9f\t%.9f\t%.9f\n", jd, answer.litFraction, answer.lastNew,
                answer.nextNew, answer.lastFull, answer.nextFull);
  }
}

template <typename Work>
void Register(const std::string& name, const Instants& instants, Work work) {
  benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
    for (auto _ : state) {
      for (const double jd : instants) {
        benchmark::DoNotOptimize(work(jd));
      }
    }
  })->Unit(benchmark::kMicrosecond);
}

void RegisterAll() {
  const auto report = [](double jd) { return &ReportAt(jd); };
  Register("report/Tidewell", InstantsOfComparison(), report);
  Register("report/fresh sines", InstantsOfComparison(), FreshSines);
  Register("report/Swiss Ephemeris", InstantsOfComparison(), SwissEphemeris);
  for (int year = 1900; year < 2100; year += 10) {
    Register("decade/" + std::to_string(year), InstantsOfYears(year, 10), report);
  }
}

}  // namespace

}  // namespace benchmarks

int main(int count, char** arguments) {
  if (count == 2 && std::string_view(arguments[1]) == "--answers") {
    benchmarks::PrintAnswers();
    return 0;
  }
  benchmarks::RegisterAll();
  benchmark::Initialize(&count, arguments);
  benchmark::RunSpecifiedBenchmarks();
}
