#pragma once

#include <cstddef>
#include <vector>

#include "support/recording_form.h"

namespace support {

/// Puts a recording form, a clock and a locale around the report for its lifetime. The clock shows its readings one
/// after the other, and the last one for good.
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
