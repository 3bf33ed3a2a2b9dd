"""The mutants: small mistakes, one at a time, each of which a test should notice."""

from typing import NamedTuple


class Mutant(NamedTuple):
    name: str
    file: str
    find: str  # stands exactly once in the file
    replacement: str
    what: str
    windows: bool = False  # the file is part of the windows: their tests need Wine


ANGLES = "astro/angles.cpp"
CALENDAR = "astro/calendar.cpp"
CHECKED = "astro/checked.h"
MOON = "astro/moon.cpp"
SERIES = "astro/moon_series.h"
NUMBERS = "astro/number_format.cpp"
PHASES = "astro/phases.cpp"
SUN = "astro/sun.cpp"
ZONE = "astro/time_zone.cpp"
REPORT = "report/moon_report.cpp"
SETTINGS = "report/settings.cpp"
SETTINGS_H = "report/settings.h"
DRAWING = "tray/phase_drawing.cpp"
ICON_DATA = "tray/tray_icon_data.cpp"
MESSAGE = "tray/tray_message.cpp"

PORTABLE = [
    # --- Angles
    Mutant("turn-excludes-360", ANGLES, "!(angle > 360)", "!(angle >= 360)", "360 becomes 0"),
    Mutant("turn-excludes-0", ANGLES, "!(angle < 0)", "!(angle <= 0)", "0 is reduced, which gives 0"),
    Mutant("turn-loses-fraction", ANGLES, "(q - m) * 360 + f", "(q - m) * 360", "the fraction is not added back"),
    Mutant("turn-by-subtraction", ANGLES, "return (q - m) * 360 + f;", "return angle - Checked(m) * 360;",
           "exact where the division rounds"),
    Mutant("pi-last-digit", ANGLES, "3.1415926535", "3.1415926536", "pi rounded, not cut"),
    Mutant("degrees-multiplied-first", ANGLES, "(degrees / 360 + degrees / 360) * 3.1415926535",
           "degrees * 3.1415926535 / 180", "the product before the quotient"),
    Mutant("arcsine-not-converted", ANGLES, "Atn(DegToRad(t))", "Atn(t)", "the true arc sine"),
    # --- Calendar
    Mutant("day-fraction-wraps", CALENDAR, "Fit<std::int16_t>(hourMinutes + minute)",
           "static_cast<std::int16_t>(hourMinutes + minute)", "minutes beyond 16 bits wrap around"),
    Mutant("february-is-not-moved", CALENDAR, "if (month < 3) {", "if (month < 2) {", "January alone is moved"),
    Mutant("civil-reform-digit", CALENDAR, "2 - A + Int(A / 4)", "2 - A + Int((A + 1) / 4)", "centuries leap a century early"),
    Mutant("civil-sum-order", CALENDAR, "wholeDays + day + 1720994.5 + B", "wholeDays + day + B + 1720994.5",
           "the constants change places"),
    Mutant("century-of-365.25", CALENDAR, "/ kDaysPerCentury", "/ (kDaysPerCentury - 0.75)", "a Gregorian century"),
    Mutant("reform-a-day-early", CALENDAR, "kGregorianStart = 2299161", "kGregorianStart = 2299160", "14 October 1582"),
    Mutant("century-rule-edge", CALENDAR, "1867216.25", "1867216.26", "a day of every fourth century"),
    Mutant("year-starts-in-february", CALENDAR, "CalMonth > 2.5", "CalMonth > 1.5", "February counts with March"),
    Mutant("month-13", CALENDAR, "E < 13.5", "E < 14.5", "January becomes month 13"),
    Mutant("days-of-122.3", CALENDAR, "B - 122.1", "B - 122.3", "the first day of every fourth year"),
    Mutant("reform-day-excluded", CALENDAR, "CalWholeDays >= kGregorianStart", "CalWholeDays > kGregorianStart",
           "the first Gregorian day"),
    Mutant("hour-from-arithmetic", CALENDAR, 'CalHour = LeadingInteger(FormatNumber(hours, L"00.0000"));',
           "CalHour = RoundTo<std::int16_t>(Int(hours));", "the hour is not taken from the text"),
    Mutant("hour-text-shorter", CALENDAR, 'L"00.0000"', 'L"00.000"', "the text of the hour has a decimal less"),
    # --- Checked arithmetic
    Mutant("zero-divisor-passes", CHECKED, "if (divisor == 0) [[unlikely]] {", "if (divisor == 0 && a != 0) [[unlikely]] {",
           "0 / 0 is an invalid argument"),
    Mutant("int-truncates", CHECKED, "Tested(std::floor(x))", "Tested(std::trunc(x))", "rounds toward zero"),
    Mutant("half-goes-up", CHECKED, "std::nearbyint(value)", "std::round(value)", "half away from zero"),
    Mutant("nan-overflows", "astro/checked.cpp", "std::isnan(result) ? ErrorNumber::InvalidProcedureCall",
           "std::isnan(result) ? ErrorNumber::Overflow", "a NaN is an overflow"),
    # --- Zone
    Mutant("offset-sign", ZONE, "return Fit<std::int32_t>(-std::int64_t{zone.Bias});",
           "return Fit<std::int32_t>(std::int64_t{zone.Bias});", "the bias itself"),
    Mutant("offset-wraps", ZONE, "Fit<std::int32_t>(std::int64_t{seasonBias} + zone.Bias)",
           "static_cast<std::int32_t>(std::int64_t{seasonBias} + zone.Bias)", "the sum of biases wraps around"),
    Mutant("daylight-takes-standard", ZONE, "offset(zone.DaylightBias)", "offset(zone.StandardBias)", "summer is winter"),
    Mutant("unknown-season-is-standard", ZONE, "    default:\n      return 0;", "    default:\n      return offset(zone.StandardBias);",
           "a failed reading of the zone"),
    Mutant("daylight-from-the-start", ZONE, "Boolean UseDaylightBias = False;", "Boolean UseDaylightBias = True;",
           "daylight saving time is honoured"),
    # --- Numbers
    Mutant("half-goes-down", NUMBERS, ">= '5'", "> '5'", "a decimal half is cut"),
    Mutant("sixteen-digits", NUMBERS, "kSignificantDigits = 15", "kSignificantDigits = 16", "one digit more"),
    Mutant("minus-of-zero", NUMBERS, 'text(value < 0 ? L"-" : L"")', 'text(value <= -0.0005 ? L"-" : L"")',
           "a small negative number loses its sign"),
    Mutant("three-leading-characters", NUMBERS, "text.substr(0, 2)", "text.substr(0, 3)", "the third character counts"),
    # --- Sun
    Mutant("sun-longitude-t2", SUN, "0.0003025", "0.0003026", "a last digit"),
    Mutant("sun-anomaly-t3", SUN, "0.0000033", "0.0000034", "a last digit"),
    Mutant("sun-eccentricity-t2", SUN, "0.000000126", "0.000000127", "a last digit"),
    Mutant("sun-centre-t2", SUN, "0.000014", "0.000015", "a last digit"),
    Mutant("sun-aberration", SUN, "- 0.00569 -", "- 0.00568 -", "a last digit"),
    Mutant("sun-anomaly-not-reduced", SUN, "  SunMeanAnomaly = NormalizeAngle(SunMeanAnomaly);\n", "", "a step left out"),
    Mutant("sun-ascension-once-converted", SUN, "DegToRad(SinDeg(SunTrueLongitude) * CosDeg(Obliquity))",
           "SinDeg(SunTrueLongitude) * CosDeg(Obliquity)", "the sine is not converted again"),
    Mutant("sun-quadrant-in-degrees", SUN, "Cos(SunTrueLongitude) < 0", "CosDeg(SunTrueLongitude) < 0",
           "the quadrant of the angle"),
    Mutant("obliquity-t3", "astro/obliquity.h", "0.000000503", "0.000000504", "a last digit"),
    # --- Moon
    Mutant("moon-longitude-t3", MOON, "481267.8831, -0.001133, 0.0000019", "481267.8831, -0.001133, 0.0000018", "a last digit"),
    Mutant("moon-latitude-argument-sign", MOON, "-0.0000003}", "0.0000003}", "a sign"),
    Mutant("moon-node-t3", MOON, "0.0000022", "0.0000023", "a last digit"),
    Mutant("venus-in-degrees", MOON, "Sin(DegToRad(346.56 + 132.87 * T) - 0.0091731 * Pow(T, 2))",
           "SinDeg(346.56 + 132.87 * T - 0.0091731 * Pow(T, 2))", "the square is subtracted in degrees"),
    Mutant("sun-anomaly-not-lowered", MOON, "  Add(SunMeanAnomaly, -0.001778 * sinA);\n", "", "a step left out"),
    Mutant("venus-without-elongation", MOON, "  Add(MoonElongation, venus);\n", "", "a step left out"),
    Mutant("companion-sign", MOON, "275.05 - 2.3 * T", "275.05 + 2.3 * T", "a sign"),
    Mutant("elongation-reduced", MOON, "  MoonNodeLongitude = NormalizeAngle(MoonNodeLongitude);\n",
           "  MoonNodeLongitude = NormalizeAngle(MoonNodeLongitude);\n  MoonElongation = NormalizeAngle(MoonElongation);\n",
           "the elongation is brought into the turn"),
    Mutant("node-after-the-reduction", MOON, "  const Checked node = MoonNodeLongitude;\n  const Checked sinNode",
           "  const Checked node = NormalizeAngle(MoonNodeLongitude);\n  const Checked sinNode", "reduced too early"),
    Mutant("eccentricity-t2", MOON, "0.00000752", "0.00000753", "a last digit"),
    Mutant("groups-as-one", MOON, "    Checked group = 0;", "    Checked group = sum;\n    sum = 0;",
           "the rows are summed on without groups"),
    Mutant("latitude-factor", MOON, "0.0004664", "0.0004665", "a last digit"),
    Mutant("latitude-factor-companion", MOON, "0.0000754", "0.0000755", "a last digit"),
    Mutant("parallax-constant", MOON, "0.950724", "0.950725", "a last digit"),
    Mutant("moon-obliquity-not-reduced", MOON, "  Obliquity = NormalizeAngle(Obliquity);\n", "", "a step left out"),
    Mutant("moon-ascension-not-reduced", MOON, "NormalizeAngle(Cos(MoonLongitude) < 0 ? arctangent + 180 : arctangent)",
           "Cos(MoonLongitude) < 0 ? arctangent + 180 : arctangent", "a step left out"),
    Mutant("moon-quadrant-in-degrees", MOON, "Cos(MoonLongitude) < 0", "CosDeg(MoonLongitude) < 0", "the quadrant of the angle"),
    Mutant("moon-declination-once-converted", MOON, "ArcSine(DegToRad(sine))", "ArcSine(sine)", "the sine is not converted"),
    Mutant("longitude-group-end", SERIES, "{6, 13, 22, 31, 40, 50}", "{7, 13, 22, 31, 40, 50}", "a row in the group before"),
    Mutant("latitude-group-end", SERIES, "{10, 17, 25, 33, 42, 45}", "{10, 17, 26, 33, 42, 45}", "a row in the group before"),
    Mutant("longitude-rows-swapped", SERIES, "    {+0.000521,     4, -1,  0,  0,  1},\n    {+0.000486,    -1,  0,  2,  0,  0},\n",
           "    {+0.000486,    -1,  0,  2,  0,  0},\n    {+0.000521,     4, -1,  0,  0,  1},\n", "the last two rows"),
    Mutant("parallax-rows-swapped", SERIES, "    {-0.000029,    -2,  0,  0,  2,  0},\n    {-0.000029,     0,  1,  2,  0,  1},\n",
           "    {-0.000029,     0,  1,  2,  0,  1},\n    {-0.000029,    -2,  0,  0,  2,  0},\n", "two rows of one coefficient"),
    Mutant("longitude-last-row", SERIES, "{+0.000486,", "{+0.000487,", "a last digit"),
    Mutant("latitude-last-row", SERIES, "{-0.000283,", "{-0.000284,", "a last digit"),
    Mutant("parallax-last-row", SERIES, "{+0.000019,", "{+0.000018,", "a last digit"),
    Mutant("longitude-row-26-converted", SERIES, "4,  0,  0,  0,  0, true}", "4,  0,  0,  0,  0}", "as the other rows"),
    Mutant("longitude-row-41-as-printed", SERIES, "{-0.000811,     0,  3,  1,  0,  1}", "{-0.000811,     2,  1,  1,  0,  1}",
           "2D + M + M'"),
    Mutant("parallax-row-28-as-printed", SERIES, "{+0.000026,     2,  0, -2,  0,  2}", "{+0.000026,     2, -2,  0,  0,  2}",
           "2D - 2M"),
    # --- Phases
    Mutant("lit-fraction-as-printed", PHASES, "0.112 * SinDeg(D)", "0.110 * SinDeg(D)", "the printed coefficient"),
    Mutant("lit-fraction-unreduced", PHASES, "CosDeg(NormalizeAngle(i))", "CosDeg(i)", "the angle is not reduced"),
    Mutant("leap-year-length", PHASES, "/ 365 * 100", "/ 365.25 * 100", "a year of 365.25 days"),
    Mutant("half-lunation-goes-up", PHASES, "k - Int(k) > 0.5", "k - Int(k) >= 0.5", "an exact half"),
    Mutant("lunations-a-year", PHASES, "12.3685", "12.3686", "a last digit"),
    Mutant("lunations-a-century", PHASES, "k / 1236.85", "k / 1236.86", "a last digit"),
    Mutant("full-moon-before-the-new", PHASES, "  FullMoonJD = PhaseInstant(kNew + 0.5);\n  if", "  FullMoonJD = PhaseInstant(kNew - 0.5);\n  if",
           "the Full Moon half a lunation before"),
    Mutant("phase-mean-t3", PHASES, "0.000000155", "0.000000156", "a last digit"),
    Mutant("phase-sun-t2", PHASES, "sign == SunTermSign::Plus ? 0.0000333", "sign == SunTermSign::Plus ? 0.0000334",
           "a last digit of the moved New Moon"),
    Mutant("phase-moon-t3", PHASES, "0.00001236", "0.00001237", "a last digit"),
    Mutant("moved-new-moon-as-printed", PHASES, "PhaseInstant(kNew + 1, SunTermSign::Plus)", "PhaseInstant(kNew + 1)",
           "the published sign"),
    Mutant("new-moon-now-has-passed", PHASES, "if (NewMoonJD < jd) {", "if (NewMoonJD <= jd) {", "a New Moon at this moment"),
    Mutant("full-moon-now-has-passed", PHASES, "if (FullMoonJD < jd) {", "if (FullMoonJD <= jd) {", "a Full Moon at this moment"),
    Mutant("full-moon-moved-on", PHASES, "FullMoonJD = PhaseInstant(kNew + 0.5);\n  }\n",
           "FullMoonJD = PhaseInstant(kNew + 1.5);\n  }\n", "a passed Full Moon is moved"),
    Mutant("full-moon-not-again", PHASES, "FullMoonJD = PhaseInstant(kNew + 0.5);\n  }\n",
           "}\n", "the anomalies of the moved New Moon stay"),
    Mutant("waning-when-equal", PHASES, "Checked(NewMoonJD) - jd < Checked(FullMoonJD) - jd",
           "Checked(NewMoonJD) - jd <= Checked(FullMoonJD) - jd", "equal distances"),
    Mutant("lit-fraction-last", PHASES, "  WaningFlag = Checked(NewMoonJD)",
           "  Illumination = LitFraction();\n  WaningFlag = Checked(NewMoonJD)", "with the anomalies of the lunation"),
    Mutant("phase-row-10-as-printed", "astro/phase_series.h", "{-0.0004,  0,          0, -1,  2}",
           "{-0.0004,  0,         -1,  0,  2}", "M for M'"),
    Mutant("phase-row-1-per-t", "astro/phase_series.h", "-0.000393", "-0.000394", "a last digit"),
    Mutant("phase-rows-swapped", "astro/phase_series.h",
           "    {+0.0010,  0,          0, -1,  2},\n    {+0.0005,  0,          1,  2,  0},\n",
           "    {+0.0005,  0,          1,  2,  0},\n    {+0.0010,  0,          0, -1,  2},\n", "the last two rows"),
    # --- Report
    Mutant("past-needs-both", REPORT, "next.New <= now || next.Full <= now", "next.New <= now && next.Full <= now",
           "one passed phase is not looked for again"),
    Mutant("past-excludes-new-now", REPORT, "next.New <= now ||", "next.New < now ||", "a New Moon at this moment"),
    Mutant("past-excludes-full-now", REPORT, "|| next.Full <= now", "|| next.Full < now", "a Full Moon at this moment"),
    Mutant("six-days-later", REPORT, "PhaseDatesFor(now + 5)", "PhaseDatesFor(now + 6)", "the second pass"),
    Mutant("29-days-before", REPORT, "nearer - 30.0", "nearer - 29.0", "the last pass"),
    Mutant("30-days-before-the-new-moon", REPORT, "next.Full < next.New ? next.Full : next.New", "next.New", "not the nearer"),
    Mutant("corrected-lines-say-next", REPORT, 'WritePair(next, 2, L"New ", locale)', 'WritePair(next, 2, L"Next ", locale)',
           "the wording of the corrected lines"),
    Mutant("equal-dates-swapped", REPORT, "if (dates.Full < dates.New) {", "if (dates.Full <= dates.New) {",
           "the Full Moon stands above"),
    Mutant("lines-written-upper-first", REPORT,
           '    write(lower, L"Full", dates.Full);\n    write(upper, L"New", dates.New);\n',
           '    write(upper, L"New", dates.New);\n    write(lower, L"Full", dates.Full);\n', "the order of two lines"),
    Mutant("new-moon-converted-first", REPORT,
           "  const DateValue full = LocalDateOf(FullMoonJD);\n  return {.Full = full, .New = LocalDateOf(NewMoonJD)};",
           "  const DateValue date = LocalDateOf(NewMoonJD);\n  return {.Full = LocalDateOf(FullMoonJD), .New = date};",
           "the calendar variables keep the Full Moon"),
    Mutant("picture-left-out", REPORT, "  DrawMoonPhase(*Surroundings.frmMoon, Illumination, WaningFlag);\n", "",
           "a step left out"),
    Mutant("picture-of-every-pass", REPORT, "  ComputeFor(base);\n",
           "  ComputeFor(base);\n  DrawMoonPhase(*Surroundings.frmMoon, Illumination, WaningFlag);\n", "a step too many"),
    Mutant("phases-from-now", REPORT, "DayFraction(at.day, 0, 0)", "DayFraction(at.day, at.hour, at.minute)",
           "the reference day does not begin at 0 h"),
    Mutant("year-starts-before", REPORT, "JulianDayOf(at.year, 1, 1.0)", "JulianDayOf(at.year, 1, 0.0)", "31 December"),
    Mutant("offset-on-the-way-in", REPORT, "DayFraction(at.day, at.hour, at.minute)",
           "DayFraction(at.day, at.hour, at.minute) - OffsetMinutes / 1440", "the positions in Universal Time"),
    Mutant("minute-cut", REPORT, "RoundTo<std::int16_t>(CalMinute + Checked(OffsetMinutes))",
           "RoundTo<std::int16_t>(Int(CalMinute + Checked(OffsetMinutes)))", "the offset is not rounded"),
    Mutant("age-text-longer", REPORT, 'FormatNumber(Age, L"00.000")', 'FormatNumber(Age, L"00.0000")', "a decimal more"),
    Mutant("age-of-the-full-moon", REPORT, "Surroundings.Now() - last.New", "Surroundings.Now() - last.Full", "the wrong phase"),
    Mutant("age-from-the-earlier-reading", REPORT, "Surroundings.Now() - last.New", "now - last.New",
           "the clock is not read again"),
    Mutant("next-phases-not-marked", REPORT, "  NextPhasesShown = True;\n", "", "a step left out"),
    Mutant("next-phases-marked-from-the-start", REPORT, "  NextPhasesShown = False;\n", "", "a step left out"),
    Mutant("separator-not-read", REPORT, "  DecimalSeparator = locale.decimalSeparator;\n", "", "a step left out"),
    # --- Settings
    Mutant("options-swapped", SETTINGS, "  visit(record.RestoreInTray);\n  visit(record.AutoStart);\n",
           "  visit(record.AutoStart);\n  visit(record.RestoreInTray);\n", "two fields of one width"),
    Mutant("fields-swapped", SETTINGS, "  visit(record.Reserved9);\n  visit(record.Reserved10);\n",
           "  visit(record.Reserved10);\n  visit(record.Reserved9);\n", "two fields of different widths"),
    Mutant("third-state-is-true", SETTINGS_H, "state == 1 ? True", "state != 0 ? True", "any state but 0"),
    Mutant("stored-one-is-ticked", SETTINGS_H, "option == True ? 1", "option != False ? 1", "any option but 0"),
    # --- Drawing and tray
    Mutant("icon-15-limit", DRAWING, "100.238", "100.328", "two digits change places"),
    Mutant("icon-1-limit", DRAWING, "1.73}", "1.74}", "a last digit"),
    Mutant("icon-limit-included", DRAWING, "value > lower", "value >= lower", "the limit belongs to the icon above"),
    Mutant("terminator-bias", DRAWING, "kTerminatorBias = 0.49999", "kTerminatorBias = 0.499999", "a digit more"),
    Mutant("quarter-is-gibbous", DRAWING, "gibbous = p < 0.5", "gibbous = p <= 0.5", "the exact quarter"),
    Mutant("any-flag-wanes", DRAWING, "darkRight = waning == 1", "darkRight = waning != 0", "the dark half"),
    Mutant("any-flag-wanes-on-the-scale", DRAWING, "fraction = waning == 1 ?", "fraction = waning != 0 ?", "the icons' scale"),
    Mutant("south-of-any-flag", DRAWING, "waning = waning == 0 ? 1 : 0", "waning = waning == 1 ? 0 : 1",
           "another flag becomes 1"),
    Mutant("south-for-any-option", DRAWING, "Settings.SouthernView == True", "Settings.SouthernView != False",
           "any option but 0"),
    Mutant("lit-beyond-one", DRAWING, "std::fabs(1 - Checked(fraction))", "1 - Checked(fraction)", "a negative dark fraction"),
    Mutant("last-rim-left-out", DRAWING, "  drawing.Circle(kCentre, kRadius, kBlack);\n", "", "a step left out"),
    Mutant("rim-is-filled", DRAWING,
           "  drawing.SetFillStyle(forms::FillStyle::Transparent);\n  drawing.Circle(kCentre, kRadius, kBlack);\n",
           "  drawing.Circle(kCentre, kRadius, kBlack);\n", "a step left out"),
    Mutant("label-shorter", DRAWING, 'L"0.000000"', 'L"0.00000"', "a decimal less"),
    Mutant("fore-colour-left-out", DRAWING, "  drawing.SetForeColor(kRed);\n", "", "a step left out"),
    Mutant("drawing-not-cleared", DRAWING, "  form.Drawing().Cls();\n", "", "a step left out"),
    Mutant("pie-box", DRAWING, ".right = 191", ".right = 190", "a column less"),
    Mutant("scale-before-the-picture", DRAWING, "  DrawDarkFraction(form, p, waning);\n\n",
           "  PhaseToIconNumber(waning == 1 ? (p + 1) * 100 : (1 - p) * 100);\n  DrawDarkFraction(form, p, waning);\n\n",
           "the icon changes although the drawing fails"),
    Mutant("tip-padded-with-zeros", ICON_DATA, "szTip.fill(L' ')", "szTip.fill(L'\\0')", "the padding"),
    Mutant("icon-fields-swapped", ICON_DATA, "  visit(record.uFlags);\n  visit(record.uCallbackMessage);\n",
           "  visit(record.uCallbackMessage);\n  visit(record.uFlags);\n", "two fields of one width"),
    Mutant("message-in-pixels-divided", MESSAGE, "scaleMode == ScaleMode::Pixels ? Checked(X)", "false ? Checked(X)",
           "the scale is not looked at"),
    Mutant("message-not-rounded", MESSAGE, "RoundTo<std::int32_t>(pixels)", "RoundTo<std::int32_t>(Int(pixels))",
           "twips that are a little short"),
    Mutant("left-button-message", "tray/tray_message.h", "kLeftButtonUp = 514", "kLeftButtonUp = 513", "the press"),
]

MAIN = "report/frmMoon.cpp"
ABOUT = "tray/frmAbout.cpp"
REPLAY = "forms/replay_win.cpp"
RUN_TIME_END = "forms/run_time_end_win.cpp"

WINDOWS = [
    Mutant("main-not-topmost", MAIN, "  forms::MakeTopmost(hwnd());\n", "", "a step left out", True),
    Mutant("southern-view-without-click", MAIN, "    Check1_Click(2);", "", "the offset is not read at the start", True),
    Mutant("southern-view-not-restored", MAIN, "    controls_->Check1.at(2).SetState(1);\n", "", "the box stays unticked", True),
    Mutant("first-icon-modified", MAIN, "frmAbout_.UpdateMoonIcon(0, IcoNum)", "frmAbout_.UpdateMoonIcon(1, IcoNum)",
           "the icon is not added", True),
    Mutant("timer-every-tick", MAIN, "  LastUpdate = now;\n", "", "each tick updates", True),
    Mutant("other-timer-counts", MAIN, "if (wParam == kTimer1) {", "if (wParam != 0) {", "Timer2 updates, too", True),
    Mutant("clock-change-not-noticed", MAIN, "LastUpdate = 0;", "", "a step left out", True),
    Mutant("resume-not-noticed", MAIN, "      return wParam == PBT_APMRESUMEAUTOMATIC;", "      return false;", "after sleep", True),
    Mutant("locale-not-noticed", MAIN, "== L\"intl\"", "== L\"int1\"", "a changed locale", True),
    Mutant("offset-not-read", MAIN, "  OffsetMinutes = LocalTimeOffset();\n", "", "a step left out", True),
    Mutant("click-does-not-read", MAIN, "void frmMoon::Check1_Click(int Index) {\n  ReadSettings();",
           "void frmMoon::Check1_Click(int Index) {",
           "another writer's change is lost", True),
    Mutant("click-does-not-write", MAIN, "  WriteSettings();\n", "", "the option is not stored", True),
    Mutant("click-stores-the-other-option", MAIN, "      Settings.RestoreInTray = option;", "      Settings.AutoStart = option;",
           "two options change places", True),
    Mutant("stored-option-decides", MAIN, "if (controls_->Check1.at(0).State() == 1) {",
           "if (StateFromOption(Settings.RestoreInTray) == 1) {", "not the box as it stands", True),
    Mutant("session-end-hides", MAIN, "if (wParam != FALSE) {\n        frmAbout_.EndProgram();",
           "if (wParam != FALSE) {\n        Unload();", "the end of the session hides the window", True),
    Mutant("cancelled-session-end", MAIN, "      if (wParam != FALSE) {", "      if (wParam != FALSE || lParam == 0) {",
           "ends although the session goes on", True),
    Mutant("picture-28", ABOUT, "IcoNum >= layout::kPicMoonCount", "IcoNum > layout::kPicMoonCount", "one icon too far", True),
    Mutant("negative-icon", ABOUT, "  if (IcoNum < 0) {\n    throw RuntimeError(ErrorNumber::ControlArrayElementDoesNotExist);\n"
           "  }\n", "  if (IcoNum < 0) {\n    IcoNum = 0;\n  }\n", "no error", True),
    Mutant("icon-not-added-again", ABOUT, "  if (!NotifyShell(command) && command == TrayCommand::Modify && iconWanted_ "
           "&& !forms::Ending()) {\n    NotifyShell(TrayCommand::Add);\n  }\n", "  NotifyShell(command);\n", "a failed change is not made good", True),
    Mutant("task-bar-not-noticed", ABOUT, "  if (message == taskbarCreated_ && taskbarCreated_ != 0) {\n    TaskbarCreated();\n",
           "  if (message == taskbarCreated_ && taskbarCreated_ != 0) {\n", "the icon is not added to a new task bar", True),
    Mutant("icon-left-behind", ABOUT, "  UpdateMoonIcon(static_cast<std::int32_t>(TrayCommand::Delete), IcoNum);\n", "",
           "the icon is not deleted", True),
    Mutant("about-really-closes", ABOUT, "  Cancel = true;\n  ShowWindow(hwnd(), SW_HIDE);", "  Cancel = true;",
           "About is not hidden", True),
    Mutant("about-not-topmost", ABOUT, "  forms::MakeTopmost(hwnd());\n", "", "a step left out", True),
    Mutant("left-release-only-shows", ABOUT, "mainForm_.Visible() ? mainForm_.Hide() : mainForm_.Show();", "mainForm_.Show();",
           "the main window is not hidden", True),
    Mutant("right-release-does-nothing", ABOUT, "    case kRightButtonUp:\n      PopupMenu();\n", "    case kRightButtonUp:\n",
           "the menu does not open", True),
    Mutant("escape-does-nothing", ABOUT, "id == layout::kCmdOK || id == IDCANCEL", "id == layout::kCmdOK", "Escape", True),
    Mutant("brush-never-deleted", REPLAY, "const unique_brush brush(CreateSolidBrush(pie.fill));\n"
           "    const SelectScope selectPen(dc_, pen.get());\n    const SelectScope selectBrush(dc_, brush.get());",
           "const HBRUSH brush = CreateSolidBrush(pie.fill);\n    const SelectScope selectPen(dc_, pen.get());\n"
           "    const SelectScope selectBrush(dc_, brush);", "each repaint leaves a brush behind", True),
    Mutant("box-behind-the-window", RUN_TIME_END, "    EnumThreadWindows(GetCurrentThreadId(), LetTheBoxCover, 0);\n",
           "    if (!endedBy) EnumThreadWindows(GetCurrentThreadId(), LetTheBoxCover, 0);\n", "a step left out", True),
    Mutant("menu-under-the-box", RUN_TIME_END, "  EndMenu();\n", "", "the menu keeps the mouse", True),
    Mutant("box-in-the-handler", RUN_TIME_END, "    BeforeRunTimeEnd();\n  }\n",
           "    BeforeRunTimeEnd();\n  }\n  ReportRunTimeError();\n", "the box opens in the middle of a menu", True),
    Mutant("menu-twice", ABOUT, "  menuOpen_ = true;\n", "", "the menu opens over itself", True),
]

MUTANTS = PORTABLE + WINDOWS

# Survivors that no test can kill, or that none needs to, each with its reason.
EXPLAINED = {
    "civil-sum-order": "B is a small whole number: adding it rounds nothing, before or after the large constant",
    "scale-before-the-picture": "no fraction of a disc lets the picture fail behind its first step",
}
