#!/usr/bin/env python3
"""Checks the tests: makes one small mistake at a time in the program, a mutant, and sees whether a test fails.

mutants.py holds mistakes made by hand. operators.py generates others; each week another sample of them is tried. The
mistakes are made in a copy of the tree. Each mutant is

    killed          a test or a static assertion fails, or a test never ends
    does not build  and is not counted
    equivalent      all tests pass, and mutants.EQUIVALENT says why
    survived        all tests pass: one is missing

The exit status is 1 if a mutant made by hand is not killed, too many generated ones survive, or the check itself fails.
"""

import argparse
import datetime
import random
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from collections import Counter
from pathlib import Path

from mutants import EQUIVALENT, by_hand
from operators import REPOSITORY, generated

BUILD_SECONDS = 1800
END_TO_END_SECONDS = 3600


def run(command, folder, seconds):
    """Runs a command; returns its status (None after a timeout, which kills its children too) and its output."""
    done = subprocess.run(["timeout", "--signal=KILL", str(seconds), *command], cwd=folder, stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace")
    return None if done.returncode == -signal.SIGKILL else done.returncode, done.stdout


def run_or_fail(command, folder, what):
    status, output = run(command, folder, BUILD_SECONDS)
    if status != 0:
        sys.exit(f"{what} failed:\n{output[-4000:]}")


def first_failure(output):
    """The name of the first failed test in GoogleTest's or pytest's output."""
    found = re.search(r"^\[  FAILED  \] ([\w/.]+)|^FAILED \S*?(\w+\.py::[^\s-]+)", output, re.M)
    return found[1] or found[2] if found else "the test program ended"


class Tests:
    """The tests in a copy of the tree: those of the portable code on this machine, or those of the windows under Wine.
    The slower end-to-end tests, if wanted, try only the mutants that survive these."""

    def __init__(self, tree, windows, end_to_end):
        self.tree, self.end_to_end = tree, windows and end_to_end
        if windows:
            self.folder = "build/windows-tests"
            self.programs = ["tests/window_tests.exe", "tests/end_on_error_tests.exe"]
            self.runner, self.seconds = ["tools/under-wine.sh"], 600
            self.wanted_share = 0.75  # lower, because the sample is small
            options = ["--preset", "windows-tests", "-DCMAKE_COMPILE_WARNING_AS_ERROR=OFF", "-DTIDEWELL_TIDY=OFF"]
        else:
            self.folder, self.programs = "build/mutants", ["tests/core_tests"]
            self.runner, self.seconds = [], 60
            self.wanted_share = 0.95
            options = ["-G", "Ninja", "-DCMAKE_BUILD_TYPE=", "-DTIDEWELL_TESTS=ON", "-DCMAKE_CXX_FLAGS=-O0"]
        run_or_fail(["cmake", *options, "-B", self.folder], tree, "configuring the build")

    def build(self):
        return run(["cmake", "--build", self.folder, "-j2", "--target", *self.programs], self.tree, BUILD_SECONDS)

    def failing_test(self):
        """The first test that fails, or None."""
        for program in self.programs:
            status, output = run([*self.runner, f"{self.folder}/{program}", "--gtest_brief=1", "--gtest_fail_fast"],
                                 self.tree, self.seconds)
            if status is None:
                run(["bash", "-c", "source tools/wine-env.sh; wineserver -k"], self.tree, 60)
                return "endless"
            if status != 0:
                return first_failure(output)
        if not self.end_to_end:
            return None
        for step in (["--preset", "windows", "-DCMAKE_COMPILE_WARNING_AS_ERROR=OFF"], ["--build", "build/windows", "-j2"]):
            run_or_fail(["cmake", *step], self.tree, "building the program")
        status, output = run(["/usr/bin/python3", "-B", "-m", "pytest", "-x", "-q", "tests/e2e"], self.tree,
                             END_TO_END_SECONDS)
        if status in (0, None):
            return None if status == 0 else "endless"
        if status != 1 or not re.search(r"^FAILED ", output, re.M):  # the bench itself has failed
            sys.exit(f"the end-to-end tests could not be run:\n{output[-4000:]}")
        return first_failure(output)


def try_mutant(mutant, tests):
    """Makes the mistake, builds, tests, and undoes it. Returns the result and the test or the reason."""
    path = tests.tree / mutant.file
    good = path.read_text(encoding="utf-8")
    path.write_text(good[:mutant.begin] + mutant.replacement + good[mutant.end:], encoding="utf-8")
    try:
        status, output = tests.build()
        if status != 0:
            error = re.search(r"error: (.*)", output)
            asserted = "static assertion failed" in output
            return "killed" if asserted else "does not build", error[1] if error else "no compiler error"
        failing = tests.failing_test()
        if failing:
            return "killed", failing
        reason = next((reason for pattern, reason in EQUIVALENT.items() if re.match(pattern, mutant.name)), None)
        return ("equivalent", reason) if reason else ("survived", "")
    finally:
        path.write_text(good, encoding="utf-8")


def try_mutants(mutants, tests):
    """Tries the mutants, prints each result and returns how many there are of each kind."""
    results = Counter()
    for mutant in sorted(mutants, key=lambda each: each.file):  # one file after another compiles less
        began = time.monotonic()
        result, remark = try_mutant(mutant, tests)
        results[result] += 1
        print(f"{result:14} {time.monotonic() - began:5.1f} s  {mutant.name}\n{'':25}{remark}", flush=True)
    return results


def chosen(arguments):
    """The mutants to try: (those made by hand, generated ones)."""
    def fits(mutant):
        return mutant.windows == arguments.windows and arguments.only in mutant.name
    chance = random.Random(arguments.seed)
    hand = [mutant for mutant in by_hand() if fits(mutant)]
    if arguments.by_hand is not None:
        hand = chance.sample(hand, min(arguments.by_hand, len(hand)))
    lines = {}  # one mutant a line, or the tables of numbers would be most of the sample
    for mutant in filter(fits, generated()):
        lines.setdefault(mutant.name.partition(" -> ")[0], []).append(mutant)
    count = min(arguments.generated, len(lines))
    return hand, [chance.choice(lines[line]) for line in chance.sample(sorted(lines), count)]


def check_tests(arguments):
    """Tries the chosen mutants in a copy of the tree; returns the exit status."""
    by_hand_chosen, generated_chosen = chosen(arguments)
    with tempfile.TemporaryDirectory(prefix="tidewell-mutants-") as scratch:
        tree = Path(scratch) / "tree"
        shutil.copytree(REPOSITORY, tree, symlinks=True, ignore=shutil.ignore_patterns(".git", "build", "__pycache__"))
        tests = Tests(tree, arguments.windows, arguments.end_to_end)
        status, output = tests.build()
        failing = tests.failing_test() if status == 0 else f"the build: {output[-4000:]}"
        if failing:
            sys.exit(f"fails without a mutant: {failing}")
        print(f"seed {arguments.seed}", flush=True)
        hand, made = try_mutants(by_hand_chosen, tests), try_mutants(generated_chosen, tests)
    built = made["killed"] + made["survived"]
    share = made["killed"] / built if built else 1
    print(f"by hand: {dict(hand)}\ngenerated, seed {arguments.seed}: {dict(made)}; {share:.0%} killed, "
          f"at least {tests.wanted_share:.0%} wanted")
    return int(hand["killed"] != len(by_hand_chosen) or share < tests.wanted_share)


def main():
    year, week, _ = datetime.date.today().isocalendar()
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("--seed", type=int, default=100 * year + week, help="decides the sample (year and week)")
    parser.add_argument("--by-hand", type=int, metavar="N", help="try N of those made by hand (all)")
    parser.add_argument("--generated", type=int, default=60, metavar="N", help="try N of the generated ones (60)")
    parser.add_argument("--only", default="", metavar="PART", help="choose from those whose name contains the part")
    parser.add_argument("--windows", action="store_true", help="try those of the windows instead, under Wine")
    parser.add_argument("--end-to-end", action="store_true", help="with --windows: try what survives with the e2e tests")
    return check_tests(parser.parse_args())


if __name__ == "__main__":
    sys.exit(main())
