#!/usr/bin/env python3
"""Measures the accuracy: makes the plots and tables of docs/accuracy.md.

It takes about a minute. The program's values come from tests/oracle, which the tests compare with the program. An error
is the shown value minus the true one.
"""

import bisect
import collections
import functools
import math
import pathlib
import re
import subprocess
import sys
from datetime import datetime, timedelta

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
WORK = ROOT / "build" / "accuracy"
DOCS = ROOT / "docs"
sys.path.insert(0, str(ROOT / "tests" / "oracle"))

import moon_oracle as o  # noqa: E402 (needs the path)

# The screen does not show the Moon's position, and its long series would take nine tenths of the time.
o.sum_series = lambda *_, **__: 0.0
o.lunation = functools.cache(o.lunation)

JD_1900, JD_2000, JD_2101 = (o.civil_to_julian(year, 1, 1) for year in (1900, 2000, 2101))
DAY = timedelta(days=1)
MONTH = 29.530589 * DAY
YEAR = 365.2425  # days


def reference():
    """The phases and, in short steps, the lit fractions of a modern ephemeris."""
    WORK.mkdir(parents=True, exist_ok=True)
    tool, phases, lit_fractions = WORK / "ephemeris", WORK / "phases.tsv", WORK / "lit_fractions.tsv"
    source = ROOT / "tests" / "oracle" / "ephemeris.cpp"
    subprocess.run(["c++", "-std=c++20", "-O2", "-o", tool, source, "-lswe", "-lm"], check=True)
    subprocess.run([tool, phases, lit_fractions, "1.618034"], check=True)
    return rows(phases), rows(lit_fractions)


def rows(path):
    """The rows of a reference file as numbers."""
    _, *lines = path.read_text(encoding="utf-8").splitlines()
    return [[float(cell) for cell in line.split("\t")] for line in lines]


def table(head, lines):
    """A Markdown table; all columns but the first are numbers."""
    marks = ["---"] + ["---:"] * (len(head) - 1)
    return "\n".join("| " + " | ".join(line) + " |" for line in [head, marks, *lines])


def number(form, value):
    """A number as text; a plain 0 if it rounds to zero."""
    text = form % value
    return text if float(text) else "0"


def sizes(errors, form):
    """Mean, rms and largest error as texts."""
    mean = sum(errors) / len(errors)
    rms = math.sqrt(sum(e * e for e in errors) / len(errors))
    return [number(form, mean), form.replace("+", "") % rms, number(form, max(errors, key=abs))]


def put_into_document(tables):
    """Replaces the tables between the marks of docs/accuracy.md."""
    path = DOCS / "accuracy.md"
    text = path.read_text(encoding="utf-8")
    for name, lines in tables.items():
        print(f"\n{name}\n{lines}")
        block = re.compile(rf"(<!-- {name} -->\n).*?(<!-- end -->)", re.DOTALL)
        text, count = block.subn(lambda found, lines=lines: found[1] + lines + "\n" + found[2], text)
        assert count == 1, name
    path.write_text(text, encoding="utf-8")


def write_points(name, points):
    """A file of points for plots.gp."""
    (WORK / name).write_text("".join(" ".join(map(str, point)) + "\n" for point in points), encoding="utf-8")


def measure_instants(phases):
    """Errors of the New and Full Moons in minutes, by cause."""
    series = {"New": [], "Full": []}
    all_causes, points, carried = [], [], []
    for k, new, full, delta_t in phases:
        for kind, lunation, tt in (("New", k, new), ("Full", k + 0.5, full)):
            if not JD_1900 <= tt < JD_2101:
                continue
            found = o.lunation(lunation)[0]
            error = (found - tt) * 1440
            series[kind].append(error)
            universal = datetime(1900, 1, 1) + (tt - delta_t / 86400 - JD_1900) * DAY
            shown = (o.local_date(found, 0) - universal) / timedelta(minutes=1)
            if shown > 30:
                carried.append(str(o.local_date(found, 0).date()))
                continue
            all_causes.append((delta_t / 60, shown))
            points.append((2000 + (tt - JD_2000) / YEAR, kind, error, shown, delta_t / 60))
    write_points("instants.dat", points)

    minutes = "%+.2f"
    lines = [
        ["the series: New Moons", *sizes(series["New"], minutes)],
        ["the series: Full Moons", *sizes(series["Full"], minutes)],
        ["the series, its altered term as published", *sizes(errors_as_published(phases), minutes)],
        ["dynamical time taken for Universal Time", *sizes([d for d, _ in all_causes], minutes)],
        ["**the shown time**: both causes, seconds cut off", *sizes([s for _, s in all_causes], minutes)],
    ]
    print(f"{len(series['New'])} New Moons, {len(series['Full'])} Full Moons; hour carried: {carried}")
    return table(["minutes, shown minus true", "mean", "rms", "largest"], lines)


def errors_as_published(phases):
    """Errors of the instants in minutes with the tenth term as published."""
    altered = o.series.PHASE[9]
    o.series.PHASE[9] = (altered[0], "2F - M")
    errors = [(o.lunation.__wrapped__(lunation)[0] - tt) * 1440 for k, new, full, _ in phases
              for lunation, tt in ((k, new), (k + 0.5, full)) if JD_1900 <= tt < JD_2101]
    o.series.PHASE[9] = altered
    return errors


def lit_at(jd):
    """The program's lit fraction at a Julian day."""
    t = o.julian_centuries(jd)
    moon = o.moon_position(t, o.sun_position(t)["SunMeanAnomaly"])
    return o.lit_fraction(moon["MoonElongation"], moon["SunMeanAnomaly"], moon["MoonMeanAnomaly"])


def measure_lit_fraction(phases, samples):
    """Errors of the lit fraction."""
    new_moons = [row[1] for row in phases]
    errors = [lit_at(tt) - lit for tt, lit in samples]
    write_points("lit.dat", [(tt - new_moons[bisect.bisect(new_moons, tt) - 1], error)
                             for (tt, _), error in zip(samples[::9], errors[::9])])
    return table(["lit fraction, 0 to 1", "mean", "rms", "largest"], [["the series", *sizes(errors, "%+.4f")]])


def measure_clock(phases):
    """A plot of how lit fraction and icon change if the local clock counts as Universal Time: each hour of 19 years."""
    new_moons = [row[1] for row in phases]
    full_moons = [row[2] for row in phases]
    start, hours = o.civil_to_julian(2020, 1, 1), 19 * 365 * 24
    lit, icons = [], []
    for hour in range(-14, hours + 15):
        jd = start + hour / 24
        lit.append(lit_at(jd))
        waning = bisect.bisect(full_moons, jd) == bisect.bisect(new_moons, jd)
        icons.append(o.phase_to_icon_number(100 * (2 - lit[-1] if waning else lit[-1])) % 28)
    points = []
    for offset in range(-12, 15):
        pairs = range(14, hours + 14)
        _, rms, largest = sizes([lit[at + offset] - lit[at] for at in pairs], "%+.3f")
        steps = [abs((icons[at + offset] - icons[at] + 14) % 28 - 14) for at in pairs]
        assert max(steps) <= 1
        points.append((offset, rms, largest.lstrip("+-"), 100 * sum(steps) / len(steps)))
    write_points("clock.dat", points)


def reports(first_year, last_year, offset):
    """(start, end, report, true dates) for each span in which the lines do not change. The "true" dates are the
    program's own dates of the phases: this leaves out errors with other causes.
    """
    shown = {kind: [o.local_date(o.lunation(k + half)[0], offset) for k in range(-3, 2492)]
             for kind, half in (("New", 0), ("Full", 0.5))}
    both = sorted(shown["New"] + shown["Full"])
    first = datetime(first_year, 1, 1)
    for number in range((datetime(last_year + 1, 1, 1) - first).days):
        day = first + number * DAY
        changes = [day, *both[bisect.bisect_right(both, day):bisect.bisect_left(both, day + DAY)], day + DAY]
        for now, until in zip(changes, changes[1:]):
            true = {}
            for kind, dates in shown.items():
                at = bisect.bisect_right(dates, now)
                true["Last" + kind], true["Next" + kind] = dates[at - 1], dates[at]
            yield now, until, o.report(*now.timetuple()[:6], offset, False), true


def effects_of(report, true):
    """Each unusual effect by name, and whether the report has it."""
    dates = report["dates"]
    # A date is that of the named phase, or one lunation later.
    later = {name: round((dates[name] - true[name]) / MONTH) for name in true}
    assert set(later.values()) <= {0, 1}, report
    # If a "Next" line leaves out the coming phase, the "Last" line has it.
    assert later["NextFull"] <= later["LastFull"] and later["NextNew"] <= later["LastNew"], report
    return {
        "\u201cLast Full Moon\u201d is one still to come": later["LastFull"] == 1,
        "\u201cNext Full Moon\u201d leaves out the coming one": later["NextFull"] == 1,
        "the coming lines are corrected and begin with \u201cNew\u201d": report["corrected"],
        "the wrong edge of the picture is dark": (report["passes"][0]["WaningFlag"] == 1) !=
                                                 (true["NextNew"] < true["NextFull"]),
        "\u201cLast New Moon\u201d is one still to come": later["LastNew"] == 1,
        "\u201cNext New Moon\u201d leaves out the coming one": later["NextNew"] == 1,
    }


def measure_day_start():
    """How often a report is unusual, as shares of all time, in some zones; a plot of two years."""
    zones = {-480: "UTC-8", 0: "UTC", 540: "UTC+9"}
    plotted_years = (2026, 2027)
    shares, spans, edge, off = {}, collections.defaultdict(list), 0, 0
    for zone in zones:
        days, total = collections.Counter(), 0
        for now, until, report, true in reports(1900, 2100, zone):
            lasts = (until - now) / DAY
            total += lasts
            effects = effects_of(report, true)
            for row, (name, holds) in enumerate(effects.items()):
                days[name] += lasts * holds
                if zone == 0 and holds and now.year in plotted_years:
                    if spans[row] and spans[row][-1][1] == now:
                        spans[row][-1][1] = until
                    else:
                        spans[row].append([now, until])
            if effects["the wrong edge of the picture is dark"]:
                picture = report["picture"]
                edge = max(edge, min(picture["p"], 1 - picture["p"]))
                away = (picture["icon"] - o.phase_to_icon_number(200 - picture["value"]) + 14) % 28 - 14
                off = max(off, abs(away))
        for name in days:
            shares.setdefault(name, []).append(days[name] / total)
    write_points("days.dat", [(year, *((moment - datetime(year, 1, 1)) / DAY for moment in span), row)
                              for year in plotted_years for row in spans for span in spans[row]])
    print(f"the wrong edge: at most {edge:.3f} of the disc, {off} tray pictures")
    return table(["share of all time", *zones.values(), "days a year at UTC"],
                 [[name, *(f"{100 * part:.1f} %" for part in parts), f"{parts[1] * YEAR:.0f}"]
                  for name, parts in shares.items()])


def main():
    subprocess.run([ROOT / "tools" / "setup.sh", "accuracy"], check=True)
    phases, lit_fractions = reference()
    put_into_document({
        "instants": measure_instants(phases),
        "lit fraction": measure_lit_fraction(phases, lit_fractions),
        "day's start": measure_day_start(),
    })
    measure_clock(phases)
    subprocess.run(["gnuplot", "-e", f"docs='{DOCS}'", HERE / "plots.gp"], cwd=WORK, check=True)
    # The plots have few colours, so a palette saves space.
    subprocess.run(["mogrify", "-strip", "+dither", "-colors", "24", "-define", "png:exclude-chunks=date,time",
                    *sorted(DOCS.glob("accuracy-*.png"))], check=True)


if __name__ == "__main__":
    main()
