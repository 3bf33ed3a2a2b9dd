"""Checks the oracle against the worked values of the published rules.

Run: python3 test_oracle.py. Only failed checks print; the last line counts all.
Worked values are compared in their published digits.
"""

import math
import os
import sys
from decimal import Decimal

import moon_oracle as o
import moon_series as series

checks = 0
failures = []


def expect(name, got, want):
    """got must equal want."""
    global checks
    checks += 1
    if got != want:
        failures.append("%s: want %r, got %r" % (name, want, got))


def printed(name, got, want):
    """got, rounded to the decimals of the text want, must read want."""
    decimals = len(want.split(".")[1]) if "." in want else 0
    expect(name, "%.*f" % (decimals, got), want)


def near(name, got, want, tolerance=1e-9):
    """got must lie within tolerance of want (same units)."""
    global checks
    checks += 1
    if not abs(got - want) <= tolerance:
        failures.append("%s: want %.17g, got %.17g, off by %.3g" % (name, want, got, got - want))


def raises(name, error, function, *arguments):
    """function must raise the error."""
    global checks
    checks += 1
    try:
        function(*arguments)
    except error:
        return
    failures.append("%s: %s expected" % (name, error.__name__))


def calendar(jd, *names):
    cal = o.julian_to_civil(jd)
    return tuple(cal["Cal" + name] for name in names)


def test_calendar():
    expect("JD 2003-08-19.5", o.civil_to_julian(2003, 8, 19.5), 2452871.0)
    expect("JD 2000-01-01.5", o.civil_to_julian(2000, 1, 1.5), 2451545.0)
    expect("January moves", o.shift_january(2000, 1), (1999, 13))
    # The Gregorian correction applies before the reform too: 1582-10-04 is ten days
    # earlier than in the Julian calendar.
    expect("JD 1582-10-04", o.civil_to_julian(1582, 10, 4.0), 2299149.5)
    expect("JD 1582-10-15", o.civil_to_julian(1582, 10, 15.0), 2299160.5)
    expect("2299160.5", calendar(2299160.5, "Year", "Month", "Day"), (1582, 10, 15))
    expect("2299159.5", calendar(2299159.5, "Year", "Month", "Day"), (1582, 10, 4))
    expect("T of the epoch", o.julian_centuries(2415020.0), 0.0)
    expect("T of 2451545", o.julian_centuries(2451545.0), 1.0)
    expect("2452871", calendar(2452871.0, "Year", "Month", "Day", "Hour", "Minute"),
           (2003, 8, 19, 12, 0))
    # Just before a full hour.
    jd = 2452870.5 + (9 * 60 + 59.9997) / 1440
    expect("9 h 59.9997 min", calendar(jd, "Day", "Hour", "Minute"), (19, 10, 59))
    expect("9.99999 h", calendar(2452870.5 + 9.99999 / 24, "Day", "Hour", "Minute"), (19, 10, 59))
    expect("23.99999 h", calendar(2452870.5 + 23.99999 / 24, "Day", "Hour", "Minute"), (19, 24, 59))
    raises("16-bit minutes", OverflowError, o.day_fraction, 1, 547, 0)
    raises("16-bit year", OverflowError, o.civil_to_julian, -32768, 1, 1.0)


def test_angles():
    expect("360", o.normalize_angle(360), 360)
    expect("0", o.normalize_angle(0), 0)
    near("720.5", o.normalize_angle(720.5), 0.5)
    near("-0.25", o.normalize_angle(-0.25), 359.75)
    near("-1", o.normalize_angle(-1.0), 359.0)
    expect("-360", o.normalize_angle(-360), 0)
    raises("32-bit angle", OverflowError, o.normalize_angle, 3e9)
    expect("180 degrees", o.deg_to_rad(180), 3.1415926535)
    expect("ArcSine 0", o.arc_sine(0), 0)
    printed("ArcSine 0.5", o.arc_sine(0.5), "0.0100763")
    near("ArcSine 0.5 formed", o.arc_sine(0.5),
         math.atan(math.tan(math.pi / 6) * 3.1415926535 / 180), 1e-12)
    raises("ArcSine 1", ZeroDivisionError, o.arc_sine, 1.0)
    raises("ArcSine -1", ZeroDivisionError, o.arc_sine, -1.0)
    raises("ArcSine 1.5", ValueError, o.arc_sine, 1.5)


def test_number_texts():
    for value, whole, decimals, want in (
            (9.99995, 2, 4, "10.0000"), (9.99994, 2, 4, "09.9999"), (23.99999, 2, 4, "24.0000"),
            (5.9996, 2, 3, "06.000"), (12.325, 2, 3, "12.325"), (0.0000005, 1, 6, "0.000001"),
            (1.0, 1, 6, "1.000000"), (28.0, 2, 0, "28"), (3.0, 2, 0, "03"),
            (-0.5, 2, 3, "-00.500")):
        expect("text of %r" % value, o.format_fixed(value, whole, decimals), want)


def test_sun():
    for t, rows in (
            (0.0, (("SunMeanLongitude", "279.69668"), ("SunMeanAnomaly", "358.47583"),
                   ("EarthEccentricity", "0.01675104"), ("Obliquity", "23.452294"),
                   ("SunEquationOfCentre", "-0.052147"), ("SunTrueLongitude", "279.644533"),
                   ("SunTrueAnomaly", "358.423683"), ("SunApparentLongitude", "279.643548"),
                   ("SunRightAscension", "179.906057"), ("SunDeclination", "-0.0001195"))),
            (1.0, (("SunMeanLongitude", "280.465902"), ("SunMeanAnomaly", "357.525427"),
                   ("EarthEccentricity", "0.016709"), ("SunEquationOfCentre", "-0.084430"),
                   ("SunTrueLongitude", "280.381472"), ("SunTrueAnomaly", "357.440997"),
                   ("SunApparentLongitude", "280.371861"), ("Obliquity", "23.439280"),
                   ("SunRightAscension", "179.912814"), ("SunDeclination", "-0.0001192")))):
        sun = o.sun_position(t)
        for name, want in rows:
            printed("T = %g %s" % (t, name), sun[name], want)
    for t in (-3.7, -1.01, -0.003):
        sun = o.sun_position(t)
        for name in ("SunMeanLongitude", "SunMeanAnomaly"):
            expect("T = %g %s in range" % (t, name), 0 <= sun[name] <= 360, True)
    for i in range(-200, 201):
        sun = o.sun_position(i / 100)
        gap = sun["SunApparentLongitude"] - sun["SunTrueLongitude"]
        expect("aberration", -0.01048 - 1e-9 <= gap <= -0.0009 + 1e-9, True)
        ra = sun["SunRightAscension"]
        expect("180 by the raw number", ra > 90, math.cos(sun["SunTrueLongitude"]) < 0)


def test_moon():
    before = o.sun_position(1.0)["SunMeanAnomaly"]
    printed("M before", before, "357.525427")
    moon = o.moon_position(1.0, before)
    for name, want in (
            ("MoonMeanLongitude", "218.321432"), ("MoonMeanAnomaly", "134.969239"),
            ("MoonElongation", "445617.857236"), ("MoonArgLatitude", "483213.253381"),
            ("MoonNodeLongitude", "125.043355"), ("SunMeanAnomaly", "357.523742"),
            ("E", "0.997497"), ("MoonLongitude", "223.316561"), ("MoonLatitude", "5.171287"),
            ("MoonParallax", "0.908159"), ("MoonRightAscension", "180.015961"),
            ("MoonDeclination", "-0.0000576")):
        printed("T = 1 " + name, moon[name], want)
    near("M lowered", moon["SunMeanAnomaly"],
         before - 0.001778 * math.sin(math.radians(51.2 + 20.2)), 1e-9)

    moon = o.moon_position(0.0, o.sun_position(0.0)["SunMeanAnomaly"])
    for name, want in (
            ("MoonLongitude", "265.299461"), ("MoonLatitude", "0.460935"),
            ("MoonParallax", "0.986380"), ("MoonRightAscension", "0.192979"),
            ("MoonDeclination", "-0.0001186")):
        printed("T = 0 " + name, moon[name], want)
    printed("T = 0 D", moon["MoonElongation"], "350.74")
    printed("T = 0 F", moon["MoonArgLatitude"], "11.27")
    near("T = 0 L'", moon["MoonMeanLongitude"],
         270.434164 + 0.000233 * math.sin(math.radians(51.2)) + 0.003964 * math.sin(6.0486)
         + 0.001964 * math.sin(math.radians(259.183275)), 1e-6)
    moon = o.moon_position(1.2, 0.0)
    expect("D unreduced", moon["MoonElongation"] > 500000, True)
    expect("F unreduced", moon["MoonArgLatitude"] > 500000, True)


def test_series_checksums():
    """The typed tables against checksums formed from the printed ones."""
    path = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "data",
                        "series_checksums.tsv")
    columns = {}
    for name, table in (("longitude", series.LONGITUDE), ("latitude", series.LATITUDE),
                        ("parallax", series.PARALLAX)):
        columns[name, "k"] = [Decimal(row[0]) for row in table]
        columns[name, "E power"] = [row[1] for row in table]
        for letter in ("D", "M", "M'", "F"):
            columns[name, letter] = [
                sum(n for n, a in series.parse_argument(row[2]) if a == letter) for row in table]
    columns["phase", "k"] = [Decimal(row[0]) for row in series.PHASE]
    for letter in ("M", "M'", "F"):
        columns["phase", letter] = [
            sum(n for n, a in series.parse_argument(row[1]) if a == letter)
            for row in series.PHASE]
    seen = set()
    with open(path, encoding="utf-8") as lines:
        for line in lines:
            if line.startswith("#"):
                continue
            name, rows, column, plain, weighted = line.rstrip("\n").split("\t")
            values = columns[name, column]
            expect("rows of " + name, len(values), int(rows))
            expect("%s %s sum" % (name, column), Decimal(sum(values)), Decimal(plain))
            expect("%s %s weighted" % (name, column),
                   Decimal(sum(i * v for i, v in enumerate(values, 1))), Decimal(weighted))
            seen.add((name, column))
    expect("columns checked", seen, set(columns))


def test_phases():
    jan1 = o.civil_to_julian(2003, 1, 1.0)
    expect("1 January 2003", jan1, 2452640.5)

    def clock(jd):
        return calendar(jd, "Year", "Month", "Day", "Hour", "Minute")

    p = o.find_phases(2003, 2452870.5, jan1, 0.0, 0.0, 0.0)
    printed("19 Aug per cent", p["YearPercent"], "63.0137")
    printed("19 Aug k0", p["k0"], "1281.7493")
    expect("19 Aug k", p["kNew"], 1282)
    printed("19 Aug New", p["NewMoonJD"], "2452879.2269")
    printed("19 Aug Full", p["FullMoonJD"], "2452893.1913")
    expect("19 Aug New clock", clock(p["NewMoonJD"]), (2003, 8, 27, 17, 26))
    expect("19 Aug Full clock", clock(p["FullMoonJD"]), (2003, 9, 10, 16, 35))
    expect("19 Aug waning", p["WaningFlag"], 1)
    first = p

    p = o.find_phases(2003, 2452880.5, jan1, 0.0, 0.0, 0.0)
    expect("29 Aug k", p["kNew"], 1282)
    printed("29 Aug New", p["NewMoonJD"], "2452908.6319")
    expect("29 Aug New clock", clock(p["NewMoonJD"]), (2003, 9, 26, 3, 9))
    expect("29 Aug Full", p["FullMoonJD"], first["FullMoonJD"])
    expect("29 Aug waxing", p["WaningFlag"], 0)
    expect("29 Aug anomalies of kNew + 1", p["MoonMeanAnomaly"], o.lunation(1283)[2])

    p = o.find_phases(2003, 2452894.5, jan1, 0.0, 0.0, 0.0)
    printed("12 Sep k0", p["k0"], "1282.5626")
    expect("12 Sep k", p["kNew"], 1283)
    printed("12 Sep New", p["NewMoonJD"], "2452908.6319")
    printed("12 Sep Full", p["FullMoonJD"], "2452922.8113")
    expect("12 Sep Full clock", clock(p["FullMoonJD"]), (2003, 10, 10, 7, 28))
    expect("12 Sep waning", p["WaningFlag"], 1)

    expect("half down", o.lunation_number(1282.5), 1282)
    expect("half down below zero", o.lunation_number(-2.5), -3)
    expect("just above half", o.lunation_number(math.nextafter(1282.5, 2000)), 1283)
    near("dark", o.lit_fraction(0.0, 0.0, 0.0), 0.0, 1e-15)
    near("lit", o.lit_fraction(180.0, 0.0, 0.0), 1.0, 1e-15)
    expect("leap year's end", o.find_phases(
        2004, o.civil_to_julian(2004, 12, 31.0), o.civil_to_julian(2004, 1, 1.0),
        0.0, 0.0, 0.0)["YearPercent"], 100.0)

    # A Full Moon already past stays. The day's own year never leads there in
    # 1950..2050, so this year is one too low.
    p = o.find_phases(2002, 2452894.5, jan1, 0.0, 0.0, 0.0)
    expect("Full in the past", p["FullMoonJD"] < 2452894.5, True)
    expect("past Full stays", p["FullMoonJD"], o.lunation(p["kNew"] + 0.5)[0])
    expect("past New moves one lunation", p["NewMoonJD"],
           o.lunation(p["kNew"] + 1, m_t2_sign=+1)[0])


def test_picture():
    d = o.draw_moon_phase(1.0, 0, False)
    expect("Full", (d["p"], d["value"], d["icon"]), (0.0, 100.0, 14))
    expect("Full aspect", d["aspect"], 0.5 / 0.49999)
    expect("Full waning", o.draw_moon_phase(1.0, 1, False)["icon"], 14)
    d = o.draw_moon_phase(0.0, 0, False)
    expect("New", (d["p"], d["value"], d["icon"], d["label1"]), (1.0, 0.0, 0, "1.000000"))
    printed("New aspect", d["aspect"], "%.9f" % (0.5 / 0.50001))
    expect("New waning", o.draw_moon_phase(0.0, 1, False)["icon"], 28)
    raises("p = 0.49999", ZeroDivisionError, o.terminator_aspect, 0.49999)
    expect("0.49999 lies between the steps of 1 - fraction", (0.49999 * 2.0 ** 53) % 1, 0.5)
    d = o.draw_moon_phase(0.5, 0, False)
    expect("quarter", (d["p"], d["value"], d["icon"]), (0.5, 50.0, 7))
    near("quarter aspect", d["aspect"], 50000.0, 1e-3)
    expect("southern quarter", (lambda s: (s["waning"], s["value"], s["icon"]))(
        o.draw_moon_phase(0.5, 0, True)), (1, 150.0, 21))
    expect("odd flag draws as waxing", o.draw_moon_phase(0.25, 5, False)["value"], 25.0)
    expect("odd flag in the south", o.draw_moon_phase(0.25, 5, True)["waning"], 0)
    for value, icon in ((198.22, 27), (100.238, 14), (1.73, 0), (float("nan"), 0),
                        (200.0, 28), (100.24, 15), (99.66, 13), (1.74, 1)):
        expect("icon of %r" % value, o.phase_to_icon_number(value), icon)
    expect("28 rising thresholds",
           [n for _, n in reversed(o.ICON_THRESHOLDS)], list(range(1, 29)))
    expect("thresholds fall", [t for t, _ in o.ICON_THRESHOLDS],
           sorted((t for t, _ in o.ICON_THRESHOLDS), reverse=True))


def test_report():
    day = 86400
    for age, want in ((9.5, "Moon's Age - 9 Days 12:00"), (0.25, "Moon's Age - 0 Days 6:00"),
                      (12.325, "Moon's Age - 12 Days 7:48"),
                      (5.9996, "Moon's Age - 6 Days 23:59"), (-0.5, "Moon's Age - 0 Days 12:00")):
        tip = o.tip_text(round(age * day))
        expect("tip of %r" % age, tip, want.ljust(64))
        expect("length of the tip", len(tip), 64)

    def line(jd, offset):
        return o.date_line("Next New Moon : ", o.local_date(jd, offset))

    # 20:00 and 02:00 UT, two seconds late: no double is the exact hour.
    late = 2 / day
    evening = o.civil_to_julian(2026, 11, 9 + 20 / 24) + late
    morning = o.civil_to_julian(2026, 11, 9 + 2 / 24) + late
    expect("+330", line(evening, 330), "Next New Moon : 10-Nov-26 1:30 AM")
    expect("-300", line(morning, -300), "Next New Moon : 08-Nov-26 9:00 PM")
    expect("line", o.date_line("Next Full Moon : ", o.date_seconds(2026, 11, 24, 21, 5)),
           "Next Full Moon : 24-Nov-26 9:05 PM")
    expect("midnight and noon", [o.date_line("", o.date_seconds(2000, 2, 29, h)) for h in (0, 12)],
           ["29-Feb-00 12:00 AM", "29-Feb-00 12:00 PM"])
    minutes = [o.date_parts(o.local_date(evening + minute / 1440, offset))[4]
               for minute in (0, 1, 2) for offset in (0.5, 330.5, -300.5)]
    expect("half to even", minutes, [0, 30, 0, 2, 32, 0, 2, 32, 2])

    expect("Full above", [t[:15] for t in o.pair_of_lines("Next", 1, 2)],
           ["Next Full Moon ", "Next New Moon :"])
    expect("New above", [t[:15] for t in o.pair_of_lines("Next", 2, 1)],
           ["Next New Moon :", "Next Full Moon "])
    expect("equal: New above", o.pair_of_lines("Last", 60, 60)[0][:14], "Last New Moon ")

    # After the New Moon of 27 August 2003, 17:26 UT, the finder's phase has passed.
    before = o.report(2003, 8, 27, 17, 25, 0, 0, False)
    after = o.report(2003, 8, 27, 17, 27, 0, 0, False)
    expect("before", before["lines"][2], "Next New Moon : 27-Aug-03 5:26 PM")
    expect("after", after["lines"][2:], ["New Full Moon : 10-Sep-03 4:35 PM",
                                         "New New Moon : 26-Sep-03 3:09 AM"])
    # At 10:59:59.8 UT the hours' text rounds up, but not the minute.
    expect("carried hour", o.report(1991, 9, 1, 12, 0, 0, 0, False)["lines"][2],
           "Next New Moon : 08-Sep-91 11:59 AM")
    expect("at the minute", o.report(2003, 8, 27, 17, 26, 0, 0, False)["corrected"], True)


for name, test in sorted(globals().items()):
    if name.startswith("test_"):
        test()
for failure in failures:
    print("FAIL", failure)
print("%d checks, %d failed" % (checks, len(failures)))
sys.exit(1 if failures else 0)
