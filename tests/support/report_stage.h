#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "report/surroundings.h"

namespace support {

/// Stands in for the main window and keeps what is written on it. `written` has the lines in the order of writing.
class RecordingForm final : public tidewell::ReportForm {
 public:
  forms::DrawingList& Drawing() override { return drawing; }
  void SetLabel1Caption(const std::wstring& caption) override { label1 = caption; }
  [[nodiscard]] bool SouthernView() const override { return southernView; }
  void SetMoonLine(std::size_t index, const std::wstring& text) override {
    lines.at(index) = text;
    written.emplace_back(index, text);
  }

  forms::DrawingList drawing;
  std::wstring label1 = L"Label1";  // its caption at design time
  bool southernView = false;
  std::array<std::wstring, 4> lines;
  std::vector<std::pair<std::size_t, std::wstring>> written;
};

/// While it lives, the report has a recording form, a clock and a locale. The clock gives one reading after another,
/// then repeats the last one.
class ReportStage {
 public:
  explicit ReportStage(std::vector<runtime::DateValue> readings) {
    clockReadings = std::move(readings);
    timesRead = 0;
    locale = {};
    tidewell::surroundings = {.frmMoon = &form, .Now = Now, .ReadLocale = [] { return locale; }};
  }
  ReportStage(const ReportStage&) = delete;
  ReportStage& operator=(const ReportStage&) = delete;
  ~ReportStage() { tidewell::surroundings = {}; }

  RecordingForm form;

  static inline std::vector<runtime::DateValue> clockReadings;
  static inline std::size_t timesRead = 0;
  static inline runtime::LocaleNames locale;

 private:
  static runtime::DateValue Now() {
    const std::size_t reading = timesRead++;
    return reading < clockReadings.size() ? clockReadings.at(reading) : clockReadings.back();
  }
};

}  // namespace support
