#pragma once

#include <cstddef>
#include <string>

#include "astro/mMoon.h"
#include "forms/date_value.h"
#include "forms/locale_names.h"
#include "tray/phase_drawing.h"

namespace mMoon {

/// What the report writes on the main window.
class ReportForm : public PhaseForm {
 public:
  /// Writes one of the four lines, lblMoon(0) to lblMoon(3) from the top.
  virtual void SetMoonLine(std::size_t index, const std::wstring& text) = 0;

 protected:
  ~ReportForm() = default;
};

/// What the report takes from outside the module. The start of the program fills it before the first report.
struct ReportSurroundings {
  ReportForm* frmMoon = nullptr;
  forms::DateValue (*Now)() = nullptr;  ///< local clock time
  forms::LocaleNames (*ReadLocale)() = nullptr;
};
extern ReportSurroundings Surroundings;

/// The local time offset in minutes (local = UTC + offset), written by the main window. 0 until it has been: the first
/// report shows Universal Time.
extern double OffsetMinutes;

/// The Julian day of 1 January, 0 h, of the year that was computed last.
extern double YearStartJD;

/// True once the lines of the coming phases stand. Nothing reads it.
extern Boolean NextPhasesShown;

/// Turns the present moment into everything the user sees: the picture, the four lines of the last and the next New and
/// Full Moon, the icon number and the tray's tip with the Moon's age. It keeps nothing between calls.
///
/// Errors: those of the astronomy and the drawing; 6 Overflow when a minute with its offset leaves 16 bits; 5 Invalid
/// procedure call or argument outside the years 100 to 9999. Lines written before the error keep their new text.
void UpdateMoonReport();

}  // namespace mMoon
