"""Writes the tables that the tests compare the program with: python3 make_data.py FOLDER.

The build runs it. The instants are always the same: fixed ones and random ones with a fixed seed.
"""

import math
import random
import sys
from datetime import datetime, timedelta
from pathlib import Path

import moon_oracle as o

OFFSETS = (0, 330, -300, 345, 765, -570, 840, -720, 60, -480)


def some_time(chance, first_year, last_year):
    """A random date and time, in whole seconds."""
    first, end = datetime(first_year, 1, 1), datetime(last_year + 1, 1, 1)
    return (first + chance.random() * (end - first)).replace(microsecond=0)


def write(path, columns, rows):
    """Writes a table, its columns separated by tabs. The first line names them."""
    path.write_text("".join("\t".join(map(str, row)) + "\n" for row in [columns, *rows]), encoding="utf-8")


# ---------------------------------------------------------------- report lines

def clear_of_edges(report):
    """True if no text of the report depends on the last bits of a double.

    Each phase must be at least 0.3 ms from a full minute and from where the text of its hours rounds up, the dark
    fraction 1e-9 from where its sixth decimal changes, and the phase value 1e-7 from an icon's threshold.
    """
    for values in report["passes"]:
        for name in ("NewMoonJD", "FullMoonJD"):
            hours = (values[name] + 0.5) * 24 % 1
            if not 5e-6 < values[name] * 1440 % 1 < 1 - 5e-6 or abs(hours - 0.99995) < 1e-7:
                return False
    picture = report["picture"]
    return (abs(picture["p"] * 1e6 % 1 - 0.5) > 1e-3
            and all(abs(picture["value"] - threshold) > 1e-7 for threshold in o.ICON_THRESHOLDS))


def report_instants():
    """(local clock, offset, southern) for each report."""
    chance = random.Random(1950)
    for _ in range(1200):
        yield some_time(chance, 1950, 2050), chance.choice(OFFSETS), chance.randrange(2)

    # Just before a phase, at it, or some hours after it. A phase has passed from its shown minute on.
    for _ in range(300):
        jd, _, _ = o.lunation(chance.randrange(2 * 620, 2 * 1860) / 2)
        offset = chance.choice(OFFSETS)
        gap = timedelta(seconds=chance.choice((-60, -1, 0, 1, 1800, 2 * 3600, 5 * 3600, 9 * 3600)))
        yield o.local_date(jd, offset) + gap, offset, chance.randrange(2)

    # The New Moon of 8 September 1991, 10:59:59.8 UT, is shown as 11:59. No other phase of 1950..2050 has an hours text
    # that rounds up.
    for text in "1991-09-01T12:00:00", "1991-09-08T10:59:00", "1991-09-08T11:30:00", "1991-09-15T09:00:00":
        for offset in (0, 330, -720):
            yield datetime.fromisoformat(text), offset, 0

    # Instants for rules whose effects are rare.
    for text, offset in (
            ("1999-12-31T23:59:59", 0), ("2000-02-29T23:59:59", 0), ("2004-12-31T23:59:59", 0),
            # The finder takes slightly too many lunations a year. After a thousand years a second pass that begins a
            # day earlier or later finds another one.
            ("3107-02-15T04:31:00", 0), ("3107-04-15T15:02:00", 0), ("3128-08-18T08:46:00", 0),
            ("3303-05-09T03:38:00", 0), ("3303-07-07T06:41:00", 0),
            # Half a minute of offset, with even and odd minutes.
            ("2003-08-19T12:00:00", 330.5), ("2026-11-21T03:40:00", 330.5),
            ("2003-08-19T12:00:00", -300.5), ("2026-11-21T03:40:00", -300.5),
            # "Last New Moon" is one still to come: within a day, some days, in more than ten.
            ("2031-06-20T11:50:57", 840), ("2042-12-12T07:01:17", 765), ("2005-07-03T22:36:38", 765),
            ("2007-12-30T12:54:39", 765), ("1963-01-10T01:54:08", 765), ("2007-11-24T08:22:10", 570)):
        yield datetime.fromisoformat(text), offset, 0


def report_lines(path):
    """The report at local clock instants, the tip without its padding."""
    rows = []
    for local, offset, southern in report_instants():
        report = o.report(*local.timetuple()[:6], offset, bool(southern))
        if clear_of_edges(report):
            rows.append([local.isoformat(), offset, southern, *report["lines"], report["tip"].rstrip(),
                         report["label1"], report["icon"]])
    write(path, ["local", "offset", "southern", "line0", "line1", "line2", "line3", "tip", "label1", "icon"], rows)


# ---------------------------------------------------------------- module values

def module_values(path):
    """The variables of the module after one pass."""
    chance = random.Random(1800)
    instants = [some_time(chance, 1800, 2200).timetuple()[:5] for _ in range(250)]
    names = list(o.module_values(*instants[0]))
    write(path, ["year", "month", "day", "hour", "minute", *names],
          [[*parts, *o.module_values(*parts).values()] for parts in instants])


# ---------------------------------------------------------------- phases

def phase_arguments():
    """(year, jd, jd_jan1) for the finder of phases."""
    # Far from 1900 a wrong digit in any coefficient of the powers of T shows.
    for year in (-25000, -4712, 0, 1700, 1951, 2099, 9999, 25000):
        january = math.floor(2415020.5 + 365.25 * (year - 1900)) + 0.5
        yield from ((year, january + day, january) for day in range(0, 360, 7))
    yield from (
        (1979, 2444122.0484092655, 2443874.5),  # the number of the lunation is exactly 985.5
        (1979, 2444122.0484102655, 2443874.5),
        (1850, 2396923.5, 2396758.5),  # before 1900 the lunations have negative numbers
        (2003, 2452894.5, 2452660.5),  # 20 days late: it finds a Full Moon that has passed
        (2004, 2453370.5, 2453005.5),  # 31 December of a leap year is 100 % of the year
        (2002, 2452870.5, 2452275.5),  # more than 100 %
        (2003, 1e25, 1e25))  # so far away that both distances are equal


def phases(path):
    """What the finder of phases leaves."""
    names = ["YearPercent", "NewMoonJD", "FullMoonJD", "WaningFlag", "SunMeanAnomaly", "MoonMeanAnomaly"]
    found = [(*arguments, o.find_phases(*arguments, 0, 0, 0)) for arguments in phase_arguments()]
    write(path, ["year", "jd", "jdJan1", *names],
          [[*arguments, *(values[name] for name in names)] for *arguments, values in found])


# ---------------------------------------------------------------- number formats

def number_formats(path):
    """Numbers in each of the program's patterns. Half of them are decimals that end in 5, in any place."""
    patterns = {"00": (2, 0), "00.0000": (2, 4), "00.000": (2, 3), "0.000000": (1, 6)}
    chance = random.Random(15)
    numbers = [chance.uniform(-1, 1) * 10 ** chance.uniform(-12, 9) for _ in range(1000)]
    numbers += [(10 * chance.randrange(-10 ** 6, 10 ** 6) + 5) / 10 ** chance.randrange(1, 12) for _ in range(1000)]
    write(path, ["number", *patterns],
          [[number, *(o.format_fixed(number, *digits) for digits in patterns.values())] for number in numbers])


if __name__ == "__main__":
    for table in (report_lines, module_values, phases, number_formats):
        table(Path(sys.argv[1], table.__name__ + ".tsv"))
