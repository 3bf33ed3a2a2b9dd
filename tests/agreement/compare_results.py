"""Compares what two builds of module_results print.

    compare_results.py --want COMMAND... --got COMMAND...

Numbers may differ by 1e-12 of the wanted value, and by 1e-12 where that is below 1; angles are degrees and compared
modulo a turn; texts must be the same. Prints the largest difference of each result.
"""

import argparse
import itertools
import math
import subprocess
import sys
import tempfile

TOLERANCE = 1e-12
INSTANTS, REPORTS = 10000, 500
SHOWN = 20


def lines_of(command):
    """The output of a command. It goes through a file: a Wine server that outlives it would keep a pipe open."""
    with tempfile.TemporaryFile() as output:
        subprocess.run(command, stdout=output, check=True)
        output.seek(0)
        return output.read().decode("ascii").splitlines()


def difference(kind, want, got):
    """The difference of two values as a part of the tolerance's scale."""
    distance = got - want
    if kind == "angle":
        distance = math.remainder(distance, 360)
    return abs(distance) / max(1.0, abs(want))


def compare(want_lines, got_lines):
    """Returns (failures, largest difference by name)."""
    failures, largest = [], {}
    for want_line, got_line in itertools.zip_longest(want_lines, got_lines, fillvalue=""):
        want_cells, got_cells = want_line.split("\t"), got_line.split("\t")
        if want_cells[0] != got_cells[0] or len(want_cells) != len(got_cells):
            failures.append("another line: want %.60s, got %.60s" % (want_line, got_line))
            continue
        for want_cell, got_cell in zip(want_cells[1:], got_cells[1:]):
            kind, name, want = want_cell.split(" ", 2)
            got = got_cell.split(" ", 2)[2]
            if kind == "text":
                bad, shown = want != got, "texts"
            else:
                relative = difference(kind, float(want), float(got))
                largest[name] = max(largest.get(name, 0.0), relative)
                bad, shown = not relative <= TOLERANCE, "difference %.3g" % relative
            if bad:
                failures.append("%s at %s: want %s, got %s, %s" % (name, want_cells[0], want, got, shown))
    return failures, largest


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--want", nargs="+", required=True)
    parser.add_argument("--got", nargs="+", required=True)
    arguments = parser.parse_args()
    want_lines, got_lines = lines_of(arguments.want), lines_of(arguments.got)
    failures, largest = compare(want_lines, got_lines)
    if len(want_lines) != INSTANTS + REPORTS:
        failures.append("want %d lines, got %d" % (INSTANTS + REPORTS, len(want_lines)))
    for name, value in sorted(largest.items(), key=lambda item: -item[1]):
        print("largest difference of %-24s %.3g" % (name, value))
    for failure in failures[:SHOWN]:
        print("FAIL", failure)
    print("%d lines compared, tolerance %g, largest difference %.3g, %d failures" % (
        len(want_lines), TOLERANCE, max(largest.values(), default=math.nan), len(failures)))
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
