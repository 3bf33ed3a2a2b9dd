"""Writes docs/performance.md from the measurements: the goals, then all figures."""

import datetime
import platform
import re
from pathlib import Path
from statistics import median

from stage import BUILD, EMPTY, TIDEWELL, WINDOWS, printed_by

# ---- figures

def ratio(values, partners):
    """The median of the rounds' ratios: a changing speed of the machine matters less to it than to a ratio of medians."""
    return median(value / partner for value, partner in zip(values, partners, strict=True))


def beside_empty(figures):
    return ratio(figures[TIDEWELL], figures[EMPTY])


# ---- tables

def table(head, rows, alignment="---:"):
    """A table; by default all columns but the first are numbers."""
    lines = [head, ["---", *[alignment] * (len(head) - 1)], *rows]
    return "\n".join("| " + " | ".join(map(str, line)) + " |" for line in lines)


def goals_table(m):
    def native(partner):
        return ratio(m.report["Tidewell"], m.report[partner])

    farthest_decade = max(abs(time / median(m.decades) - 1) for time in m.decades)
    goals = [  # what, reached, at most, how it is written
        ("executable", (WINDOWS / "Tidewell.exe").stat().st_size, 180_000, "{:,} bytes"),
        ("report, native, to astronomia", native("astronomia"), 0.8, "{:.3g}"),
        ("report, native, to astronomy-engine", native("astronomy-engine"), 1 / 30, "{:.3g}"),
        ("report, native, to Swiss Ephemeris", native("Swiss Ephemeris"), 1 / 10, "{:.3g}"),
        ("report, 32-bit, to fresh sines", ratio(m.report["Tidewell, 32-bit"], m.report["fresh sines, 32-bit"]), 2.2,
         "{:.3g}"),
        ("start, to the empty window", beside_empty(m.start_and_close[0]), 1.3, "{:.3g}"),
        ("close, to the empty window", beside_empty(m.start_and_close[1]), 2, "{:.3g}"),
        ("private memory, to the empty window", max(map(beside_empty, m.memory)), 1.1, "{:.3g}"),
        ("quiet minute, to the empty window", beside_empty(m.quiet[0]), 1.2, "{:.3g}"),
        ("report, a decade of 1900 to 2100, off the median one", 100 * farthest_decade, 10, "{:.2g} %"),
    ]
    return table(["figure", "reached", "goal", ""],
                 [[what, form.format(reached), "at most " + form.format(limit),
                   "met" if reached <= limit else "**not met**"] for what, reached, limit, form in goals], "---")


def report_table(report, first):
    """The report's figures of one kind, native or 32-bit, whichever `first` is; they are relative to `first`."""
    names = sorted((name for name in report if name.endswith("32-bit") == first.endswith("32-bit")),
                   key=lambda name: median(report[name]))
    return table(["", "µs a report", f"{first} = 1"],
                 [[name, f"{median(report[name]):,.1f}", f"{median(report[name]) / median(report[first]):.2f}"]
                  for name in names])


def answers_table(answers):
    return table(["", "lit fraction, at most", "phases, median", "within 5 minutes"],
                 [[name, f"{lit:.5f}", f"{minutes:.2f} min", f"{100 * share:.2f} %"]
                  for name, (lit, minutes, share) in answers.items()])


def empty_window_table(m):
    megabyte = 2 ** 20
    figures = [("start to visible window, ms", m.start_and_close[0], 1),
               ("close to ended, ms", m.start_and_close[1], 1),
               ("private memory shown, MB", m.memory[0], megabyte),
               ("private memory hidden, MB", m.memory[1], megabyte),
               ("processor time of a quiet minute, ms", m.quiet[0], 1),
               ("wake-ups of a quiet minute", m.quiet[1], 1)]
    return table(["", TIDEWELL, EMPTY, "ratio"],
                 [[what, *(f"{median(of[name]) / unit:,.2f}" for name in (TIDEWELL, EMPTY)),
                   f"{median(of[TIDEWELL]) / median(of[EMPTY]):.2f}"]
                  for what, of, unit in figures])


def updates_text(updates):
    milliseconds, private = updates
    return (f"{len(private)},000 updates over a simulated year: the last 1,000 took the program "
            f"{milliseconds[-1] / milliseconds[0]:.2f} times the processor time\n"
            f"of the first, and its private memory after them was {private[-1] / private[0]:.3f} times that "
            "after the first.")


# ---- the page

def machine():
    models = re.findall(r"^model name\s*: (.*)$", Path("/proc/cpuinfo").read_text(), re.MULTILINE)
    system = platform.freedesktop_os_release()["PRETTY_NAME"]
    compilers = [printed_by(_compiler(folder), "-dumpfullversion").strip() for folder in (BUILD / "bench", WINDOWS)]
    return ", ".join([models[0], f"{len(models)} processors", system, printed_by("wine", "--version").split()[0],
                      f"GCC {compilers[0]},\nfor Windows {compilers[1]}",
                      f"node {printed_by('node', '--version').strip()}"])


def _compiler(folder):
    description = next(folder.glob("CMakeFiles/*/CMakeCXXCompiler.cmake")).read_text()
    return re.search(r'^set\(CMAKE_CXX_COMPILER "(.*)"\)', description, re.MULTILINE)[1]


def page(m):
    return f"""# What Tidewell costs

Made by `./bench` on {datetime.date.today()}; not to be edited by hand.

Machine: {machine()}.

In each round everything runs once, in turn. All figures are medians of the rounds. A goal's ratio is the median of the
rounds' ratios, so it may differ a little from the ratio of two medians below. The times depend on the machine: only the
ratios mean something.

## Goals

{goals_table(m)}

## One report

One report is the lit fraction now and the last and next New Moon and Full Moon; the tables show its processor time.
*Fresh sines* are 387 calls of the library's sine, as many as a report of plain sums would make. Natively with -O2,
beside libraries from Debian and npm (Swiss Ephemeris with its files, and a secant search of ours for the phases):

{report_table(m.report, "Tidewell")}

As the 32-bit program that is shipped, under Wine:

{report_table(m.report, "Tidewell, 32-bit")}

All give the same answer. The next table shows the differences from Swiss Ephemeris. Tidewell writes whole minutes, and
on purpose a phase in the last 0.18 s of an hour an hour late. The Full Moon that it names is compared with the nearest
real one. astronomia answers in dynamical time, 0.5 to 1.5 minutes ahead.

{answers_table(m.answers)}

## Many updates

{updates_text(m.updates)}

## The program

Compared with an empty window of the same size, timers and DLLs, built the same way. Both run under Wine, in turn. In a
quiet minute nobody touches them, and their windows are shown; the processor time is that of their own processes.
Private memory is what the program has written.

{empty_window_table(m)}
"""
