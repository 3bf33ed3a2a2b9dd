// Measures the native report, other libraries, and the sum of fresh sines. With --answers it prints their answers
// instead.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <string_view>

#include "benchmarks/answers.h"
#include "benchmarks/fresh_sines.h"
#include "benchmarks/instants.h"
#include "benchmarks/libraries.h"

namespace benchmarks {

namespace {

struct Library {
  const char* name;
  Answer (*work)(double jd);
};
constexpr Library kLibraries[] = {
    {"Swiss Ephemeris, files", SwissWithFiles}, {"Swiss Ephemeris, Moshier", SwissMoshier}, {"libnova", Libnova}};

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
  const auto growth = [&](int firstYear, int lastYear) {
    Register("growth/" + std::to_string(firstYear) + "-" + std::to_string(lastYear),
             InstantsOfYears(firstYear, lastYear - firstYear), report);
  };
  for (int year = 1900; year < 2100; year += 10) {
    growth(year, year + 10);
  }
  growth(101, 200);
  for (int year = 200; year < 9900; year += 100) {
    growth(year, year + 100);
  }
  growth(9900, 9998);
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
