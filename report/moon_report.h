#pragma once

#include "runtime/boolean.h"

namespace mMoon {

/// The local time offset in minutes (local = UTC + offset), written by the main window. It starts at 0: the first
/// report shows Universal Time, unless restoring the southern view has set it.
inline double OffsetMinutes = 0;

/// The Julian day of 1 January, 0 h, in the year of the last search.
inline double YearStartJD = 0;

/// True once the lines of the coming phases are written. Nothing reads it.
inline runtime::Boolean NextPhasesShown = runtime::False;

/// Turns the present moment into everything the user sees: the picture, the four lines, the icon number and the tip
/// with the Moon's age. Takes the moment, locale and window from tidewell::surroundings, the offset from OffsetMinutes;
/// keeps nothing between calls.
///
/// Errors: those of the astronomy and the drawing; 6 Overflow if a minute with its offset does not fit 16 bits; 5
/// Invalid procedure call or argument outside the years 100 to 9999. Lines written before the error keep their new
/// text.
void UpdateMoonReport();

}  // namespace mMoon
