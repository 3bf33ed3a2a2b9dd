#pragma once

#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

namespace benchmarks {

using Instants = std::vector<double>;  // Julian days

/// 1,000 instants, spread evenly over some years. The step is no multiple of any period of the Moon.
inline Instants InstantsOfYears(double firstYear, double years) {
  constexpr int kInstants = 1000;
  constexpr double kStartOf1900 = 2415020.5;
  constexpr double kDaysPerYear = 365.2425;
  Instants instants;
  for (int i = 0; i < kInstants; ++i) {
    instants.push_back(kStartOf1900 + kDaysPerYear * (firstYear - 1900 + years * (i + 0.5) / kInstants));
  }
  return instants;
}

/// The instants of every comparison: one about every five weeks, 1950 to 2050. libraries.cjs forms the same ones.
inline Instants InstantsOfComparison() { return InstantsOfYears(1950, 100); }

/// The processor time of this process in seconds. Under Wine it grows in steps of 10 ms.
inline double ProcessorTime() {
  timespec time;
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

/// Prints a name and the processor time of one work(jd) in microseconds. Repeats all instants for at least `seconds`.
template <typename Work>
void Measure(const std::string& name, const Instants& instants, double seconds, Work work) {
  const double began = ProcessorTime();
  double taken = 0;
  double reports = 0;
  do {
    for (const double jd : instants) {
      work(jd);
    }
    reports += static_cast<double>(instants.size());
    taken = ProcessorTime() - began;
  } while (taken < seconds);
  std::printf("%s\t%.4f\n", name.c_str(), 1e6 * taken / reports);
}

}  // namespace benchmarks
