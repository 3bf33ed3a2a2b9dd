#pragma once

#include <cstddef>
#include <string>

#include "runtime/clock.h"
#include "runtime/locale_names.h"
#include "runtime/runtime_error.h"
#include "tray/phase_drawing.h"

namespace tidewell {

/// What the report writes on the main window.
class ReportForm : public PhaseForm {
 public:
  /// Writes one of the four lines, lblMoon(0) to lblMoon(3) from the top.
  virtual void SetMoonLine(std::size_t index, const std::wstring& text) = 0;

 protected:
  ~ReportForm() = default;
};

/// What the program takes from outside. The start fills it once. Until then the zone is Universal Time, the locale
/// English, and the clock and the form raise run-time error 51.
struct Surroundings {
  ReportForm* frmMoon = nullptr;
  runtime::DateValue (*Now)() = []() -> runtime::DateValue { Refuse(); };  ///< local clock time
  runtime::TimeZoneReading (*ReadTimeZone)() = [] { return runtime::TimeZoneReading{}; };
  runtime::LocaleNames (*ReadLocale)() = [] { return runtime::LocaleNames{}; };

  /// The form that the report is written on. Error: 51 Internal error while there is none.
  [[nodiscard]] ReportForm& Form() const {
    if (frmMoon == nullptr) {
      Refuse();
    }
    return *frmMoon;
  }

 private:
  [[noreturn]] static void Refuse() { throw runtime::RuntimeError(runtime::ErrorNumber::InternalError); }
};

/// The one that the program reads.
inline Surroundings surroundings;

}  // namespace tidewell
