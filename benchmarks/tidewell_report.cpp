#include "benchmarks/tidewell_report.h"

#include <cstdio>

#include "benchmarks/comparison.h"
#include "report/moon_report.h"
#include "report/surroundings.h"

namespace benchmarks {

namespace {

constexpr double kDateValueZero = 2415018.5;  // 30 December 1899, 0 h, as a Julian day

/// Stands in for the main window.
class Form final : public tidewell::ReportForm {
 public:
  forms::DrawingList& Drawing() override { return drawing_; }
  void SetLabel1Caption(const std::wstring& caption) override { report.darkFraction = caption; }
  [[nodiscard]] bool SouthernView() const override { return false; }
  void SetMoonLine(std::size_t index, const std::wstring& text) override { report.lines.at(index) = text; }

  Report report;

 private:
  forms::DrawingList drawing_;
};

Form form;
double instant = 0;

}  // namespace

const Report& ReportAt(double jd) {
  instant = jd;
  tidewell::surroundings = {.frmMoon = &form, .Now = [] { return instant - kDateValueZero; }};
  mMoon::UpdateMoonReport();
  return form.report;
}

void PrintReports(const char* name) {
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
