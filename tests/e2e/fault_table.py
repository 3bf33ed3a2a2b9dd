#!/usr/bin/python3
"""Prints what becomes of Tidewell when calls fail: the counts of each verdict, and the bad ones.

    tests/e2e/fault_table.py --help
"""

import argparse
import sys
import time
from collections import Counter
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path[:0] = [str(HERE)]
sys.dont_write_bytecode = True

from bench import fault_choice, faults, tools  # noqa: E402
from bench.fault_verdict import VERDICTS, WORST, WRONG  # noqa: E402
from bench.folders import REPOSITORY, Folders  # noqa: E402
from bench.wine import wine_on_a_screen  # noqa: E402


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--long", action="store_true", help="all cases, not the quick choice alone")
    parser.add_argument("--only", default="", metavar="TEXT", help="the cases with this text in their names")
    parser.add_argument("--all", action="store_true", help="print the good ones, too")
    parser.add_argument("--program", type=Path, default=REPOSITORY / "build/windows/Tidewell.exe", metavar="EXE")
    parser.add_argument("--bench-folder", type=Path, default=REPOSITORY / "build/e2e", metavar="FOLDER")
    options = parser.parse_args()
    folders = Folders(options.bench_folder)
    counts, begun = Counter(), time.monotonic()
    with wine_on_a_screen(folders) as (_, one), wine_on_a_screen(Folders(folders.root / "second")) as (_, other):
        trials = faults.Trials(options.program, tools.build(folders.tools), [one, other])
        cases = (fault_choice.all_cases if options.long else fault_choice.quick_cases)(trials.references)
        for case, verdict, seen in trials.judge(case for case in cases if options.only in str(case)):
            counts[verdict] += 1
            if verdict in (WRONG, WORST) or options.all:
                print(f"{verdict}  {case}: {seen}", flush=True)
    print(f"{counts.total()} runs in {time.monotonic() - begun:.0f} s: "
          + ", ".join(f"{counts[verdict]} {verdict}" for verdict in VERDICTS))


if __name__ == "__main__":
    main()
