"""Takes all measurements and writes docs/performance.md: the goals, then all figures. ./bench runs it."""

import datetime
import platform
import re
import sys
from pathlib import Path
from statistics import median
from types import SimpleNamespace

from program_cost import CLOSE, HIDDEN, PROCESSOR, SHOWN, START, WAKE_UPS, measure_program, measure_updates
from report_speed import REFERENCE, check_answers, measure_decades, measure_report
from stage import BUILD, EMPTY, REPOSITORY, TIDEWELL, WINDOWS, open_stage, printed_by

def ratio(values, partners):
    """The median of the rounds' ratios. It suffers less than a ratio of medians if the machine's speed changes."""
    return median(value / partner for value, partner in zip(values, partners, strict=True))


# ---- tables

def table(head, rows, alignment="---:"):
    """A table; by default all columns but the first are numbers."""
    lines = [head, ["---", *[alignment] * (len(head) - 1)], *rows]
    return "\n".join("| " + " | ".join(map(str, line)) + " |" for line in lines)


def goals_table(m):
    def native(partner):
        return ratio(m.report["Tidewell"], m.report[partner])

    def beside_empty(figure):
        return ratio(m.program[figure][TIDEWELL], m.program[figure][EMPTY])

    farthest_decade = max(abs(time / median(m.decades) - 1) for time in m.decades)
    goals = [  # what, reached, at most, how it is written
        ("executable", (WINDOWS / "Tidewell.exe").stat().st_size, 180_000, "{:,} bytes"),
        ("report, native, to astronomia", native("astronomia"), 0.8, "{:.3g}"),
        ("report, native, to astronomy-engine", native("astronomy-engine"), 1 / 30, "{:.3g}"),
        ("report, native, to Swiss Ephemeris", native("Swiss Ephemeris"), 1 / 10, "{:.3g}"),
        ("report, 32-bit, to fresh sines", ratio(m.report["Tidewell, 32-bit"], m.report["fresh sines, 32-bit"]), 2.2,
         "{:.3g}"),
        ("start, to the empty window", beside_empty(START), 1.3, "{:.3g}"),
        ("close, to the empty window", beside_empty(CLOSE), 2, "{:.3g}"),
        ("private memory, to the empty window", max(beside_empty(SHOWN), beside_empty(HIDDEN)), 1.1, "{:.3g}"),
        ("quiet minute, to the empty window", beside_empty(PROCESSOR), 1.2, "{:.3g}"),
        ("report, 1900 to 2100, decade farthest from the median", 100 * farthest_decade, 10, "{:.2g} %"),
    ]
    return table(["figure", "reached", "goal", ""],
                 [[what, form.format(reached), "at most " + form.format(limit),
                   "met" if reached <= limit else "**not met**"] for what, reached, limit, form in goals], "---")


def report_table(report, first):
    """The figures of all native or all 32-bit programs, whichever `first` is, relative to `first`."""
    names = sorted((name for name in report if name.endswith("32-bit") == first.endswith("32-bit")),
                   key=lambda name: median(report[name]))
    return table(["", "µs a report", f"{first} = 1"],
                 [[name, f"{median(report[name]):,.1f}", f"{median(report[name]) / median(report[first]):.2f}"]
                  for name in names])


def answers_table(answers):
    return table(["", "lit fraction, at most", "phases, median", "within 5 minutes"],
                 [[name, f"{lit:.5f}", f"{minutes:.2f} min", f"{100 * share:.2f} %"]
                  for name, (lit, minutes, share) in answers.items() if name != REFERENCE])


def empty_window_table(figures):
    return table(["", TIDEWELL, EMPTY, "ratio"],
                 [[what, *(f"{median(figures[what][name]):,.2f}" for name in (TIDEWELL, EMPTY)),
                   f"{median(figures[what][TIDEWELL]) / median(figures[what][EMPTY]):.2f}"]
                  for what in (START, CLOSE, SHOWN, HIDDEN, PROCESSOR, WAKE_UPS)])


# ---- the page

def machine():
    models = re.findall(r"^model name\s*: (.*)$", Path("/proc/cpuinfo").read_text(), re.MULTILINE)
    compilers = [printed_by(compiler, "-dumpfullversion").strip() for compiler in ("g++", "i686-w64-mingw32-g++-win32")]
    return ", ".join([models[0], f"{len(models)} processors", platform.freedesktop_os_release()["PRETTY_NAME"],
                      printed_by("wine", "--version").split()[0],
                      f"GCC {compilers[0]},\nfor Windows {compilers[1]}",
                      f"node {printed_by('node', '--version').strip()}"])


def page(m):
    milliseconds, private = m.updates
    slower, larger = milliseconds[-1] / milliseconds[0], private[-1] / private[0]
    return f"""# What Tidewell costs

Made by `./bench` on {datetime.date.today()}.

Machine: {machine()}.

All programs take turns in rounds. A goal's ratio is the median of the rounds' ratios; all other figures are medians, so
their ratio may differ. Compare only ratios: the times depend on the machine.

## Goals

{goals_table(m)}

## One report

The processor time of a report: the lit fraction, the last and the next phases. *Fresh sines* are the 387 sines that
plain sums would take. Natively with -O2 (Swiss Ephemeris with a secant search of ours):

{report_table(m.report, "Tidewell")}

The 32-bit program, under Wine:

{report_table(m.report, "Tidewell, 32-bit")}

Differences from Swiss Ephemeris, for a phase from its nearest one. Tidewell writes whole minutes and
[departs](departures.md) on purpose; astronomia answers in dynamical time.

{answers_table(m.answers)}

## The program

Beside an empty window of the same size, timers and DLLs, under Wine. Private memory is what the program has written.

{empty_window_table(m.program)}

The last 1,000 of {len(private)},000 updates in a simulated year took {slower:.2f} times as long as the first, with
{larger:.3f} times the private memory.
"""


def main():
    quick = "--quick" in sys.argv
    rounds = 1 if quick else 15
    with open_stage() as stage:
        measurements = SimpleNamespace(
            answers=check_answers(stage),
            report=measure_report(stage, rounds),
            decades=measure_decades(rounds),
            program=measure_program(stage, quick),
            updates=measure_updates(stage, quick))
    target = BUILD / "bench/performance.md" if quick else REPOSITORY / "docs/performance.md"
    target.write_text(page(measurements))
    print(f"bench: {target.relative_to(REPOSITORY)} is written")


main()
