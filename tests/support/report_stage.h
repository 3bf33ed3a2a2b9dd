#pragma once

#include <cstddef>
#include <vector>

#include "support/recording_form.h"

namespace support {

/// Gives the report a recording form, a clock and a locale for its lifetime. The clock gives one reading after another,
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
