"""Writes the reference tables of tests/data from the oracle.

Run: python3 make_data.py [folder]. The files are always the same: the instants come
from fixed lists, from the phases and from a generator with a fixed seed.
series_checksums.tsv is not written here: it was formed from the printed tables.
"""

import datetime
import os
import sys
from fractions import Fraction

import moon_oracle as o

FOLDER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "data")
OFFSETS = (0, 330, -300, 345, 765, -570, 840, -720, 60, -480)


class Generator:
    """A 64-bit linear congruential generator (Knuth's MMIX constants)."""

    def __init__(self, seed):
        self.state = seed

    def below(self, n):
        """A whole number 0..n-1."""
        self.state = (self.state * 6364136223846793005 + 1442695040888963407) % 2 ** 64
        return (self.state >> 33) % n

    def between(self, low, high):
        """A whole number low..high, ends included."""
        return low + self.below(high - low + 1)


def month_length(year, month):
    """Days of a Gregorian month."""
    if month == 2:
        return 29 if year % 4 == 0 and (year % 100 != 0 or year % 400 == 0) else 28
    return 30 if month in (4, 6, 9, 11) else 31


def write(folder, name, header, rows):
    """Writes a tab-separated file; header lines get a '#'. Returns the number of rows."""
    with open(os.path.join(folder, name), "w", encoding="utf-8", newline="\n") as out:
        for line in header:
            out.write("# %s\n" % line)
        for row in rows:
            out.write("\t".join(str(cell) for cell in row) + "\n")
    print("%s: %d rows" % (name, len(rows)))
    return len(rows)


# ---------------------------------------------------------------- report lines

def clear_of_edges(now, offset, report):
    """Whether no text of the report depends on the last bits of a double.

    Each phase must be at least 0.3 ms from a full minute, the dark fraction 1e-9
    from where its sixth decimal changes, and the phase value 1e-7 from an icon's
    threshold.
    """
    bases = [now]
    if report["corrected"]:
        bases.append(now + o.SECOND_PASS_DAYS * o.DAY_SECONDS)
    dates = report["dates"]
    bases.append(min(dates["NextFull"], dates["NextNew"]) - o.LAST_PASS_DAYS * o.DAY_SECONDS)
    for base in bases:
        values = o.run_pass(base, offset)[2]
        for name in ("NewMoonJD", "FullMoonJD"):
            minutes = values[name] * 1440 % 1
            hours = (values[name] + 0.5) * 24 % 1
            if not 5e-6 < minutes < 1 - 5e-6 or abs(hours - 0.99995) < 1e-7:
                return False
    picture = report["picture"]
    edge = picture["p"] * 1e6 % 1
    if abs(edge - 0.5) < 1e-3:
        return False
    return all(abs(picture["value"] - t) > 1e-7 for t, _ in o.ICON_THRESHOLDS)


def phase_instants(years):
    """(Julian day, name) of the New and Full Moons found from a few days of each year."""
    for year in years:
        jan1 = o.civil_to_julian(year, 1, 1.0)
        for day in (3, 45, 58, 100, 171, 240, 301, 352):
            p = o.find_phases(year, jan1 + day, jan1, 0.0, 0.0, 0.0)
            yield p["NewMoonJD"], "New"
            yield p["FullMoonJD"], "Full"


def report_instants():
    """(local date in seconds, offset, southern) for each report."""
    g = Generator(19500101)
    turn = 0

    def settings():
        nonlocal turn
        turn += 1
        return OFFSETS[turn % len(OFFSETS)], (turn // len(OFFSETS) + turn) % 2

    fixed = [
        (1950, 1, 1, 0, 0, 0), (1959, 12, 31, 23, 59, 59), (1960, 2, 29, 12, 0, 0),
        (1969, 7, 20, 20, 17, 40), (1972, 2, 29, 23, 59, 0), (1979, 12, 31, 23, 59, 0),
        (1980, 1, 1, 0, 0, 1), (1988, 2, 28, 6, 30, 0), (1988, 2, 29, 6, 30, 0),
        (1988, 3, 1, 6, 30, 0), (1999, 12, 31, 23, 59, 59), (2000, 1, 1, 0, 0, 0),
        (2000, 1, 1, 12, 0, 0), (2000, 2, 29, 0, 0, 0), (2000, 2, 29, 23, 59, 59),
        (2000, 12, 31, 12, 0, 0), (2003, 8, 19, 12, 0, 0), (2003, 8, 29, 9, 15, 20),
        (2003, 9, 12, 21, 45, 10), (2004, 2, 29, 18, 5, 0), (2004, 12, 31, 23, 59, 59),
        (2012, 12, 31, 0, 1, 0), (2016, 1, 31, 3, 3, 3), (2020, 2, 29, 16, 20, 0),
        (2024, 1, 15, 8, 0, 0), (2024, 2, 14, 19, 30, 0), (2024, 12, 31, 22, 0, 0),
        (2026, 11, 20, 12, 34, 56), (2036, 2, 29, 1, 2, 3), (2044, 2, 29, 11, 59, 0),
        (2049, 12, 31, 23, 0, 0), (2050, 1, 31, 5, 5, 5), (2050, 12, 31, 23, 59, 59),
    ]
    for number, parts in enumerate(fixed):
        offset, southern = settings()
        yield o.date_seconds(*parts), offset, southern
        if number % 4 == 0:
            yield o.date_seconds(*parts), offset, 1 - southern

    # Hours, minutes and a second before and after a phase on the local clock. A gap of 0 is
    # the minute shown, which counts as passed.
    gaps = (-3600, 3600, -60, 61, -1, 0, 7200, -5 * 3600, 5 * 3600, -12 * 3600, 9 * 3600, 1800,
            -1800)
    for number, (jd, _) in enumerate(phase_instants(range(1950, 2051, 7))):
        if number % 2 == number // 16 % 2:
            offset, southern = settings()
            yield o.local_date(jd, offset) + gaps[number // 2 % len(gaps)], offset, southern

    # The New Moon of 8 September 1991, 10:59:59.8 UT, is shown as 11:59: the only one of
    # 1950..2050 whose text of the hours rounds up.
    for parts in ((1991, 8, 27, 7, 30, 0), (1991, 9, 1, 12, 0, 0), (1991, 9, 8, 10, 59, 0),
                  (1991, 9, 8, 11, 30, 0), (1991, 9, 8, 12, 15, 0), (1991, 9, 15, 9, 0, 0)):
        for offset in (0, 330, -720):
            yield o.date_seconds(*parts), offset, 0

    for _ in range(60):
        year, month = g.between(1950, 2050), g.between(1, 12)
        parts = (year, month, g.between(1, month_length(year, month)),
                 g.below(24), g.below(60), g.below(60))
        offset, southern = settings()
        yield o.date_seconds(*parts), offset, southern
    for _ in range(16):
        year, month = g.between(1950, 2050), g.between(1, 2)
        parts = (year, month, g.between(1, month_length(year, month)),
                 g.below(24), g.below(60), g.below(60))
        offset, southern = settings()
        yield o.date_seconds(*parts), offset, southern


def chosen_instants():
    """Like report_instants: instants at which a rule shows that hardly shows elsewhere."""
    for parts, offset in (
            # The number of lunations a year is a little too large. After a thousand years a day more or less takes
            # the second pass to another lunation.
            ((3107, 2, 15, 4, 31, 0), 0), ((3107, 4, 15, 15, 2, 0), 0), ((3128, 8, 18, 8, 46, 0), 0),
            ((3303, 5, 9, 3, 38, 0), 0), ((3303, 7, 7, 6, 41, 0), 0),
            # Half a minute of offset, with even and odd minutes.
            ((2003, 8, 19, 12, 0, 0), 330.5), ((2026, 11, 21, 3, 40, 0), 330.5), ((2003, 8, 19, 12, 0, 0), -300.5),
            ((2026, 11, 21, 3, 40, 0), -300.5),
            # The last New Moon is still to come: within a day, within some days, in more than ten.
            ((2031, 6, 20, 11, 50, 57), 840), ((2042, 12, 12, 7, 1, 17), 765), ((2005, 7, 3, 22, 36, 38), 765),
            ((2007, 12, 30, 12, 54, 39), 765), ((1963, 1, 10, 1, 54, 8), 765), ((2007, 11, 24, 8, 22, 10), 570)):
        yield o.date_seconds(*parts), offset, 0


def lines_with(second_pass, last_pass, arguments):
    """The lines of a report with other distances, in days, of the second and last pass."""
    kept = o.SECOND_PASS_DAYS, o.LAST_PASS_DAYS
    o.SECOND_PASS_DAYS, o.LAST_PASS_DAYS = second_pass, last_pass
    try:
        return o.report(*arguments)["lines"]
    finally:
        o.SECOND_PASS_DAYS, o.LAST_PASS_DAYS = kept


def report_lines(folder):
    """Writes tests/data/report_lines.tsv, prints what it covers, and asserts that every rule shows in a row."""
    rows, count = [], {}
    instants = [instant for instant in report_instants() if 1950 <= o.date_parts(instant[0])[0] <= 2050]
    for now, offset, southern in (*instants, *chosen_instants()):
        parts = o.date_parts(now)
        arguments = *parts, offset, bool(southern)
        r = o.report(*arguments)
        if not clear_of_edges(now, offset, r):
            print("left out, too near an edge:", parts, offset)
            continue
        age = (now - r["dates"]["LastNew"]) / o.DAY_SECONDS
        rows.append(["%04d-%02d-%02dT%02d:%02d:%02d" % parts, offset, southern,
                     *r["lines"], r["tip"].rstrip(), r["label1"], r["icon"]])
        for key, hit in (
                ("corrected", r["corrected"]), ("southern", southern),
                ("corrected in January or February", r["corrected"] and parts[1] < 3),
                ("corrected, Full above", r["corrected"] and "Full" in r["lines"][2]),
                ("corrected, New above", r["corrected"] and "New New" in r["lines"][2]),
                ("January or February", parts[1] < 3),
                ("29 February", parts[1:3] == (2, 29)), ("31 December", parts[1:3] == (12, 31)),
                ("Full above New, coming", "Full" in r["lines"][2]),
                ("Full above New, last", "Full" in r["lines"][0]),
                ("5 days are not 4", r["lines"] != lines_with(4, 30, arguments)),
                ("5 days are not 6", r["lines"] != lines_with(6, 30, arguments)),
                ("30 days are not 29", r["lines"] != lines_with(5, 29, arguments)),
                ("30 days are not 31", r["lines"] != lines_with(5, 31, arguments)),
                ("offset of half a minute", offset % 1 == 0.5),
                ("age of -1 to 0 days", -1 < age < 0), ("age of -9.9 to -1 days", -9.9 < age < -1),
                ("age below -10 days", age < -10)):
            count[key] = count.get(key, 0) + bool(hit)
    write(folder, "report_lines.tsv", [
        "The report at local clock instants: English months and AM/PM, the tip without its padding.",
        "offset: minutes, local time minus Universal Time. icon: 0..28 as the phase ladder gives it.",
        "No row hangs on the last bits of a double: see clear_of_edges in make_data.py.",
        "local\toffset\tsouthern\tline0\tline1\tline2\tline3\ttip\tlabel1\ticon"], rows)
    count["icons seen"] = len({row[-1] for row in rows})
    for key, value in count.items():
        print("  %s: %d" % (key, value))
        assert value > 0, key


# ---------------------------------------------------------------- module values

def module_instants():
    """Calendar dates and times, 1800..2200."""
    yield from (
        (1800, 1, 1, 0, 0), (1899, 12, 31, 12, 0), (1900, 1, 1, 12, 0), (1900, 2, 28, 23, 59),
        (1900, 3, 1, 0, 0), (2000, 1, 1, 12, 0), (2000, 2, 29, 6, 30), (2003, 8, 19, 12, 0),
        (2003, 8, 19, 0, 0), (2003, 8, 29, 0, 0), (2003, 9, 12, 0, 0), (2004, 12, 31, 23, 59),
        (2100, 2, 28, 12, 0), (2200, 12, 31, 23, 59))
    g = Generator(24150200)
    for year in range(1800, 2201, 2):
        month = g.between(1, 12)
        yield year, month, g.between(1, month_length(year, month)), g.below(24), g.below(60)
    for _ in range(30):
        year, month = g.between(1950, 2050), g.between(1, 12)
        yield (year, month, g.between(1, month_length(year, month)), g.below(24),
               2 * g.below(30) + 1)


def module_values(folder):
    """Writes tests/data/module_values.tsv."""
    rows, names = [], None
    for parts in module_instants():
        values = o.module_values(*parts)
        names = list(values)
        rows.append(list(parts) + [repr(v) for v in values.values()])
    write(folder, "module_values.tsv", [
        "Every module value of one computation at a calendar date and time (taken for UT).",
        "Degrees, Julian days, Julian centuries; SunRightAscension and MoonRightAscension are",
        "radians plus 0 or 180, SunDeclination and MoonDeclination radians, Illumination 0..1.",
        "A name that several routines write carries the routine: @Sun, @Moon, @Phases.",
        "JD0 is the day at 0 h, YearStartJD 1 January at 0 h of the same year.",
        "Shortest digits that give the double back. Compare with a tolerance, angles modulo a turn.",
        "\t".join(["year", "month", "day", "hour", "minute"] + names)], rows)


# ---------------------------------------------------------------- Julian days

def exact_julian_day(year, month, day, hour, minute):
    """Julian day of a Gregorian date as an exact fraction.

    Independent of the formula: adds the lengths of years and months from 2000-01-01
    (JD 2451544.5 at 0 h).
    """
    def leap_days(y):
        # Leap days of the years 0..y-1, each quotient rounded up.
        return -(-y // 4) + (-y // 100) - (-y // 400)

    days = 365 * (year - 2000) + leap_days(year) - leap_days(2000)
    days += sum(month_length(year, m) for m in range(1, month)) + day - 1
    return Fraction(4903089, 2) + days + Fraction(hour * 60 + minute, 1440)


def exact_civil(jd):
    """(year, month, day, hours) of a double Julian day; the hours are an exact fraction.

    Independent of the formula: counts whole days through the Gregorian calendar from
    1582-10-15 on, through the Julian before.
    """
    day_number = Fraction(jd) + Fraction(1, 2)
    whole = day_number.numerator // day_number.denominator
    hours = (day_number - whole) * 24
    if whole >= 2299161:
        date = datetime.date.fromordinal(whole - 1721425)
        return date.year, date.month, date.day, hours
    # Julian calendar: JD -0.5 + whole; 1 January 4713 BC (-4712) is day 0.
    cycles, rest = divmod(whole, 1461)
    year = -4712 + 4 * cycles
    length = 366
    while rest >= length:
        rest -= length
        year += 1
        length = 365
    month = 1
    while True:
        n = 29 if month == 2 and year % 4 == 0 else month_length(1999, month)
        if rest < n:
            return year, month, rest + 1, hours
        rest -= n
        month += 1


def julian_dates():
    """300 calendar dates: fixed ones, odd hours and minutes, the reform of 1582, random ones."""
    yield from (
        (2003, 8, 19, 12, 0), (2000, 1, 1, 12, 0), (1900, 1, 1, 0, 0), (1899, 12, 31, 12, 0),
        (1858, 11, 17, 0, 0), (1970, 1, 1, 0, 0), (1600, 2, 29, 0, 0), (1700, 2, 28, 0, 0),
        (1700, 3, 1, 0, 0), (1800, 2, 28, 23, 59), (1800, 3, 1, 0, 1), (1900, 2, 28, 0, 0),
        (1900, 3, 1, 0, 0), (2000, 2, 28, 0, 0), (2000, 2, 29, 0, 0), (2000, 3, 1, 0, 0),
        (2100, 2, 28, 0, 0), (2100, 3, 1, 0, 0), (2400, 2, 29, 12, 0), (9999, 12, 31, 23, 59),
        (1, 1, 1, 0, 0), (0, 3, 1, 0, 0), (0, 2, 29, 0, 0), (-1, 12, 31, 0, 0), (-100, 3, 1, 6, 0),
        (-400, 2, 29, 18, 0), (-1000, 7, 12, 12, 0), (-4000, 1, 1, 0, 0))
    for month, day in ((9, 30), (10, 1), (10, 3), (10, 4), (10, 5), (10, 9), (10, 10), (10, 13),
                       (10, 14), (10, 15), (10, 16), (10, 31), (11, 1), (12, 31)):
        yield 1582, month, day, 0, 0
        yield 1582, month, day, 23, 59
    for hour in range(24):
        yield 2003, 8, 19, hour, 0
    for hour, minute in ((0, 1), (0, 59), (5, 7), (9, 59), (11, 59), (12, 1), (12, 34), (13, 13),
                         (15, 45), (17, 26), (19, 59), (20, 0), (21, 36), (22, 10), (23, 59)):
        yield 2026, 11, 24, hour, minute
    for year in range(1950, 2051, 5):
        yield year, 1, 1, 0, 0
        yield year, 12, 31, 23, 59
    g = Generator(15821015)
    for n in range(163):
        year = g.between(1, 3000) if n % 3 == 0 else g.between(1583, 2400)
        month = g.between(1, 12)
        yield year, month, g.between(1, month_length(year, month)), g.below(24), g.below(60)


def julian_days(folder):
    """Writes tests/data/julian_days.tsv and checks each row in exact arithmetic.

    Days before the calendar reform come back as dates of the Julian calendar.
    """
    rows, odd, worst = [], 0, Fraction(0)
    for parts in julian_dates():
        year, month, day, hour, minute = parts
        jd = o.civil_to_julian(year, month, o.day_fraction(day, hour, minute))
        exact = exact_julian_day(*parts)
        error = abs(Fraction(jd) - exact)
        worst = max(worst, error)
        assert error <= Fraction(1, 2 ** 30), (parts, jd)
        rows.append(["date", *parts, repr(jd)] + civil_row(jd))
        odd += (hour, minute) != (rows[-1][-2], rows[-1][-1])
    print("Julian days: furthest from the exact one %.3g days; %d of %d come back with another "
          "hour or minute" % (worst, odd, len(rows)))
    # Days just before a full hour, and others of interest.
    base = 2452870.5
    extra = [base + (9 * 60 + 59.9997) / 1440, base + 9.99999 / 24, base + 23.99999 / 24,
             base + 23.9999 / 24, base + 9.9999 / 24, base + 9.99994 / 24, base + 9.99996 / 24,
             base + 0.99999 / 24, base + 0.5, 2299159.5, 2299160.0, 2299160.4999, 2299160.49999999,
             2299160.5, 2299161.0, 2415020.0, 2451545.0, 0.0, -0.5, 1721057.5, 1721423.5]
    for jd in extra:
        rows.append(["day", "", "", "", "", "", repr(jd)] + civil_row(jd))
    write(folder, "julian_days.tsv", [
        "Calendar dates (always Gregorian, also before 1582) with their Julian day, and the",
        "calendar parts that come back from it (Julian calendar below JD 2299160.5).",
        "kind 'date': the day comes from the date; kind 'day': the day is given, no date.",
        "The parts that come back belong to exactly this double: up to half of all full minutes",
        "come back one minute low, and a time close below a full hour has the hour one higher",
        "with minute 59 (hour 24 at midnight). Held against exact rational arithmetic.",
        "kind\tyear\tmonth\tday\thour\tminute\tjd\tCalYear\tCalMonth\tCalDay\tCalHour\tCalMinute"],
        rows)


def civil_row(jd):
    """The five parts of a Julian day, checked in exact arithmetic."""
    cal = o.julian_to_civil(jd)
    year, month, day, hours = exact_civil(jd)
    got = [cal["CalYear"], cal["CalMonth"], cal["CalDay"], cal["CalHour"], cal["CalMinute"]]
    ten_thousandths = hours * 10000
    hour = int((ten_thousandths + Fraction(1, 2)) // 10000)
    minute = int(hours * 60 // 1) % 60
    if got != [year, month, day, hour, minute]:
        # Rounding may take the double's hours across a full hour or minute.
        print("  differs from exact arithmetic:", repr(jd), got, [year, month, day, hour, minute],
              float(hours))
    return got


def write_all(folder):
    """Writes every table into a folder."""
    report_lines(folder)
    module_values(folder)
    julian_days(folder)


if __name__ == "__main__":
    write_all(sys.argv[1] if len(sys.argv) > 1 else FOLDER)
