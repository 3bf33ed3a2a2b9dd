"""Measures the report: native and 32-bit, beside other libraries and fresh sines, and over the years."""

import bisect
import collections
import datetime
import os
import re
from statistics import median

from stage import BUILD, REPOSITORY, lines_of, printed_by

NATIVE = BUILD / "bench/benchmarks"
REFERENCE = "Swiss Ephemeris"
J2000 = 2451545  # Julian day of 1 January 2000, 12 h
LIT_TOLERANCE = 0.01
PHASE_TOLERANCE = 5  # minutes; astronomia answers in dynamical time, up to 1.6 minutes ahead
SHARE = 0.999  # of the phases must be within it; on purpose Tidewell shows a very few an hour late


def _printed(stage, *arguments):
    """The lines that all runners print, as lists of fields: a name, then times or answers."""
    modules = os.environ | {"NODE_PATH": BUILD / "bench/node/node_modules"}
    texts = [*(printed_by(NATIVE / name, *arguments) for name in ("tidewell_report", "swiss_ephemeris")),
             *(printed_by("node", REPOSITORY / "benchmarks/libraries.cjs", library, *arguments, env=modules)
               for library in ("astronomia", "astronomy-engine"))]
    return [*lines_of("".join(texts)), *stage.output_of("tidewell_report.exe", *arguments)]


# ---- are the answers right?

def _phase_of_line(line, near):
    """The kind (Full or New) and the Julian day of one of Tidewell's lines; its year has two digits."""
    what, when = line.split(" : ")
    day, month, year, *time = re.split("[- ]", when, maxsplit=3)
    century = round((2000 + (near - J2000) / 365.25 - int(year)) / 100)
    written = datetime.datetime.strptime(f"{day} {month} {100 * century + int(year)} {time[0]}", "%d %b %Y %I:%M %p")
    return what.split()[1], J2000 + (written - datetime.datetime(2000, 1, 1, 12)) / datetime.timedelta(days=1)


def check_answers(stage):
    """Compares all answers with Swiss Ephemeris. Returns by name the largest difference of the lit fraction, the median
    difference of the phases in minutes, and the share of phases within the tolerance."""
    lit, phases = collections.defaultdict(dict), collections.defaultdict(list)
    for name, jd, *answer in _printed(stage, "--answers"):
        if name.startswith("Tidewell"):
            lit[name][jd] = 1 - float(answer[0])
            phases[name] += [_phase_of_line(line, float(jd)) for line in answer[1:]]
        else:
            lit[name][jd] = float(answer[0])
            phases[name] += zip(("New", "New", "Full", "Full"), map(float, answer[1:]))

    true = {kind: sorted(jd for which, jd in phases[REFERENCE] if which == kind) for kind in ("New", "Full")}

    def minutes_from_truth(kind, jd):
        # The nearest phase of the kind: on purpose Tidewell's last Full Moon is not always the very last one.
        at = bisect.bisect(true[kind], jd)
        return min(abs(jd - other) * 1440 for other in true[kind][max(at - 1, 0):at + 1])

    found = {}
    for name in lit:
        lit_difference = max(abs(value - lit[REFERENCE][jd]) for jd, value in lit[name].items())
        differences = [minutes_from_truth(*phase) for phase in phases[name]]
        share = sum(difference <= PHASE_TOLERANCE for difference in differences) / len(differences)
        assert lit[name].keys() == lit[REFERENCE].keys(), f"{name}: other instants than {REFERENCE}"
        assert len(differences) == 4 * len(lit[name]), f"{name}: phases are missing"
        assert lit_difference <= LIT_TOLERANCE, f"{name}: lit fraction off by {lit_difference}"
        assert share >= SHARE, f"{name}: only {share} of the phases within {PHASE_TOLERANCE} minutes"
        found[name] = (lit_difference, median(differences), share)
    return found


# ---- how long do they take?

def measure_report(stage, rounds):
    """Returns by name the processor microseconds of one report, a value for each round of about 10 s. Within a round
    all take turns."""
    taken = collections.defaultdict(list)
    for _ in range(rounds):
        for name, microseconds in _printed(stage):
            taken[name].append(float(microseconds))
    return taken


def measure_decades(rounds):
    """The report's processor microseconds in each decade of 1900 to 2100. Takes the least of the rounds, since another
    process on the core can slow one by half."""
    times = [lines_of(printed_by(NATIVE / "tidewell_report", "--decades")) for _ in range(rounds)]
    return [min(float(microseconds) for _, microseconds in decade) for decade in zip(*times)]
