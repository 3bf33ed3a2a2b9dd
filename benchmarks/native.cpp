// Measures the native report, other libraries, and the sum of fresh sines. With --answers it prints their answers
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

struct Library {
  const char* name;
  Answer (*work)(double jd);
};
constexpr Library kLibraries[] = {{"Swiss Ephemeris, files", SwissWithFiles},
                                  {"Swiss Ephemeris, Moshier", SwissMoshier}};

void PrintAnswers() {
  PrintReports("Tidewell");
  for (const Library& library : kLibraries) {
    for (const double jd : InstantsOfComparison()) {
      const Answer answer = library.work(jd);
      std::printf("%s\t%.9f\t%.9f\t%.9f\t%.9f\t%.9f\t%.9f\n", library.name, jd, answer.litFraction, answer.lastNew,
                  answer.nextNew, answer.lastFull, answer.nextFull);
    }
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
  for (const Library& library : kLibraries) {
    Register(std::string("report/") + library.name, InstantsOfComparison(), library.work);
  }
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
