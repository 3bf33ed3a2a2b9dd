// Measures the program's whole report, and the sum of fresh sines. Built natively, and as 32-bit code for Windows.
//
// tidewell_report            prints their times over the instants of the comparison
// tidewell_report --decades  prints the report's time in each decade of 1900 to 2100
// tidewell_report --answers  prints the report at each instant: name, Julian day, dark fraction, four lines

#include <array>
#include <cmath>
#include <string>
#include <string_view>

#include "benchmarks/comparison.h"
#include "report/moon_report.h"
#include "report/surroundings.h"

namespace {

using namespace benchmarks;  // NOLINT(google-build-using-namespace): used throughout

constexpr double kDateValueZero = 2415018.5;  // 30 December 1899, 0 h, as a Julian day

/// Stands in for the main window.
class Form final : public tidewell::ReportForm {
 public:
  forms::DrawingList& Drawing() override { return drawing_; }
  void SetLabel1Caption(const std::wstring& caption) override { darkFraction = caption; }
  [[nodiscard]] bool SouthernView() const override { return false; }
  void SetMoonLine(std::size_t index, const std::wstring& text) override { lines.at(index) = text; }

  std::wstring darkFraction;
  std::array<std::wstring, 4> lines;

 private:
  forms::DrawingList drawing_;
};

Form form;
double instant = 0;

/// Makes the report on the form at an instant of Universal Time, as the program's timer does: drawing, lines, tip.
void ReportAt(double jd) {
  instant = jd;
  tidewell::surroundings = {.frmMoon = &form, .Now = [] { return instant - kDateValueZero; }};
  mMoon::UpdateMoonReport();
}

/// Adds sines and does nothing else: the least that a report costs if it calls the library for each sine. The arguments
/// are as large as those of the series, thousands of radians. None repeats, so the processor learns no pattern.
double FreshSines(double jd) {
  constexpr int kSinesOfPlainReport = 387;  // the average over the instants
  double sum = 0;
  for (int i = 0; i < kSinesOfPlainReport; ++i) {
    sum += std::sin((jd - 2415020) * 1e-6 * i * i);
  }
  return sum;
}

}  // namespace

int main(int count, char** arguments) {
  const std::string_view what = count == 2 ? arguments[1] : "";
  const std::string bits = sizeof(void*) == 4 ? ", 32-bit" : "";
  if (what == "--answers") {
    for (const double jd : InstantsOfComparison()) {
      ReportAt(jd);
      std::printf("Tidewell%s\t%.9f\t%ls", bits.c_str(), jd, form.darkFraction.c_str());
      for (const std::wstring& line : form.lines) {
        std::printf("\t%ls", line.c_str());
      }
      std::printf("\n");
    }
  } else if (what == "--decades") {
    for (int year = 1900; year < 2100; year += 10) {
      Measure(std::to_string(year), InstantsOfYears(year, 10), 0.02, ReportAt);
    }
  } else {
    [[maybe_unused]] static volatile double kept;  // keeps the work from being optimised away
    Measure("Tidewell" + bits, InstantsOfComparison(), 1, ReportAt);
    Measure("fresh sines" + bits, InstantsOfComparison(), 1, [](double jd) { kept = FreshSines(jd); });
  }
}
