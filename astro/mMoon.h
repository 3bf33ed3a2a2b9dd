#pragma once

#include <cstdint>

/// The astronomy of the program: plain numeric routines on doubles, with no user interface, no clock and no Windows.
///
/// It is classical low-precision astronomy of the 1900 epoch, after Jean Meeus, Astronomical Formulae for Calculators
/// (AFC). Departures from the printed formulae are marked "on purpose" and explained in docs/departures.md. "Exact to"
/// gives the largest error against the Swiss Ephemeris, 1900 to 2100, in dynamical time.
///
/// Conventions:
///   - Julian day: days, the day starting at noon (a value ending in .5 is midnight), on the universal-time scale. No
///     correction between dynamical and universal time is applied anywhere.
///   - T: Julian centuries of 36525 days since JD 2415020.0.
///   - Angles are in degrees unless stated otherwise.
///   - "Int" rounds toward minus infinity.
///   - A routine with several results leaves them in module variables, which the caller reads at once. There is one
///     thread, and no routine is re-entered.
///   - Errors (runtime/runtime_error.h): any step may raise 6 Overflow or 5 Invalid procedure call or argument; each
///     routine names its others. Variables assigned before the failing step keep their new values.
namespace mMoon {

// --- Calendar and time -----------------------------------------------------------------------------------------------

/// The results of JulianToCivil, overwritten by every call.
inline std::int32_t CalWholeDays = 0;  ///< Int(jd + 0.5)
inline double CalDayPart = 0;          ///< fraction of the civil day, 0..1
inline double CalYear = 0;             ///< whole number
inline double CalMonth = 0;            ///< whole number, 1..12
inline double CalDay = 0;              ///< whole number, day of the month
inline std::int16_t CalHour = 0;       ///< 0..23, 24 possible: see JulianToCivil
inline std::int16_t CalMinute = 0;     ///< 0..59

/// Returns the fractional day of the month, day + (hour * 60 + minute) / 1440, in days.
/// Error: 6 Overflow if the minutes do not fit 16 bits.
double DayFraction(std::int16_t day, std::int16_t hour, std::int16_t minute);

/// Turns a civil date of the Gregorian calendar into a Julian day (AFC, ch. 3).
///
/// Given:    year, month  calendar year and month
///           day          day of the month with the time of day as its fraction
/// Returned: Julian day
/// Written:  year, month  for January and February the year before and month 13 or 14, on purpose: pass copies to keep
///                        your own
/// Error:    6 Overflow if year or month do not fit 16 bits
///
/// On purpose every date gets the Gregorian correction; only JulianToCivil knows the cut-over of 1582.
double CivilToJulian(std::int16_t& year, std::int16_t& month, double day);

/// Returns the Julian centuries of 36525 days since JD 2415020.0.
double JulianCenturies(double jd);

/// Turns a Julian day into a civil date and time (AFC, ch. 3) and leaves it in the seven Cal variables. Days before
/// JD 2299160.5 are dates of the Julian calendar.
///
/// On purpose the hour comes from a text rounded to four decimals, the minute from unrounded arithmetic: in the last
/// 0.18 s before a full hour the hour is already the next one (24 possible) while the minute is still 59.
///
/// Error: 6 Overflow if the whole days do not fit 32 bits.
void JulianToCivil(double jd);

// --- Angles ----------------------------------------------------------------------------------------------------------

/// Brings an angle in degrees into 0..360. Angles in 0..360, both ends included, come back untouched: 360 stays 360.
/// Error: 6 Overflow if the whole degrees do not fit 32 bits.
double NormalizeAngle(double angle);

/// Turns degrees into radians, on purpose with a pi of ten decimals, 3.1415926535, for every conversion of the module.
double DegToRad(double angle);

/// Returns arctan(DegToRad(x / sqrt(1 - x^2))), in radians. On purpose the tangent is converted to radians before the
/// arctangent: the result is not the arc sine of x.
/// Errors: 11 Division by zero if |x| = 1; 5 Invalid procedure call or argument if |x| > 1.
double ArcSine(double x);

// --- The Sun ---------------------------------------------------------------------------------------------------------

/// Julian centuries of the moment to compute for; written by the caller of SunPosition and MoonPosition.
inline double Centuries = 0;

inline double SunMeanLongitude = 0;      ///< degrees, 0..360
inline double SunMeanAnomaly = 0;        ///< degrees, 0..360; corrected by MoonPosition, overwritten by FindPhases
inline double EarthEccentricity = 0;     ///< eccentricity of the Earth's orbit, no dimension
inline double SunEquationOfCentre = 0;   ///< degrees
inline double SunTrueAnomaly = 0;        ///< degrees, not normalised
inline double SunTrueLongitude = 0;      ///< degrees, not normalised
inline double SunApparentLongitude = 0;  ///< degrees, not normalised
inline double Obliquity = 0;             ///< of the ecliptic, degrees; written again, normalised, by MoonPosition
inline double SunRightAscension = 0;     ///< an arctangent in radians, plus 0 or 180
inline double SunDeclination = 0;        ///< radians

/// Computes the Sun's position for Centuries (AFC, ch. 18) into the variables above. Call it before each MoonPosition.
/// Given: jd, never read: the moment is the one in Centuries.
/// Exact to 0.010 degree in apparent longitude.
/// Error: 11 Division by zero when the cosine of the true longitude is exactly 0.
void SunPosition(double jd);

// --- The Moon --------------------------------------------------------------------------------------------------------

inline double MoonMeanLongitude = 0;   ///< L', degrees, 0..360
inline double MoonMeanAnomaly = 0;     ///< M', degrees, 0..360; overwritten by FindPhases
inline double MoonElongation = 0;      ///< D, degrees, left unreduced on purpose: over 500,000 for dates of our time
inline double MoonArgLatitude = 0;     ///< F, degrees, left unreduced on purpose
inline double MoonNodeLongitude = 0;   ///< longitude of the ascending node, degrees, 0..360
inline double MoonLongitude = 0;       ///< ecliptic longitude, degrees, 0..360
inline double MoonLatitude = 0;        ///< ecliptic latitude, degrees
inline double MoonParallax = 0;        ///< equatorial horizontal parallax, degrees, about 0.95
inline double MoonRightAscension = 0;  ///< an arctangent in radians plus 0 or 180, brought into 0..360
inline double MoonDeclination = 0;     ///< radians

/// Computes the Moon's position for Centuries and the SunMeanAnomaly that SunPosition left (AFC, ch. 30) into the
/// variables above; adds a correction to SunMeanAnomaly and writes Obliquity again.
/// Given: jd, never read: the moment is the one in Centuries.
/// Exact to 0.013 degree in longitude (of the mean equinox), 0.0034 in latitude and 0.0003 in parallax.
/// Error: 11 Division by zero when the cosine of the longitude is exactly 0.
void MoonPosition(double jd);

// --- Phases ----------------------------------------------------------------------------------------------------------

inline double Illumination = 0;      ///< lit fraction of the disc, 0 (New) to 1 (Full), until a caller changes it
inline double YearPercent = 0;       ///< per cent of a 365-day year that has passed at the reference day
inline double NewMoonJD = 0;         ///< Julian day of the New Moon found
inline double FullMoonJD = 0;        ///< Julian day of the Full Moon found
inline std::int16_t WaningFlag = 0;  ///< 1 if the New Moon found comes before the Full Moon, until a caller changes it

/// Finds the lit fraction at the moment of the last SunPosition and MoonPosition, and a New Moon and a Full Moon near a
/// reference day (AFC, ch. 31 and 32).
///
/// Given:   year     calendar year of the reference day
///          jd       Julian day of the reference day
///          jdJan1   Julian day of 1 January of that year at 0 h
///          SunMeanAnomaly, MoonMeanAnomaly, MoonElongation of the moment, degrees
/// Written: the variables above; SunMeanAnomaly and MoonMeanAnomaly now belong to the last lunation evaluated
/// Exact to 3.4 minutes in the instants and 0.0034 in the lit fraction.
///
/// A New Moon before jd is moved one lunation on. On purpose a Full Moon before jd is returned as it is: the caller
/// sees the past date and asks again from a later day.
void FindPhases(std::int16_t year, double jd, double jdJan1);

}  // namespace mMoon
