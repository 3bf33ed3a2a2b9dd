#!/usr/bin/env python3
"""Checks the tests: makes one small mistake at a time in the program, a mutant, and sees whether a test fails.

All of it happens in a copy of the tree in a temporary folder, so that the work tree stays as it is and each mutant costs
no more than one file compiled again. The mutants stand in mutants.py and window_mutants.py. Each is found to be

    killed          a test fails, or runs on without end; the test's name is shown
    does not build  the compiler, or an assertion at compile time, refuses it
    survived        all tests pass: one is missing, or mutants.EXPLAINED says why none can fail

The exit status is 1 when a mutant survived without an explanation, or when one was killed in spite of its explanation, 2
when the check itself cannot be made.
"""

import argparse
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
from collections import Counter
from pathlib import Path

from mutants import EXPLAINED, PORTABLE_MUTANTS
from window_mutants import WINDOW_MUTANTS

MUTANTS = PORTABLE_MUTANTS + WINDOW_MUTANTS

REPOSITORY = Path(__file__).resolve().parents[2]
BUILD_SECONDS = 1800
TEST_SECONDS = 60
WINDOWS_TEST_SECONDS = 600
END_TO_END_SECONDS = 3600


class CannotCheck(Exception):
    """The check itself fails: a wrong table, or tests that fail without any mutant."""


def run(command, folder, seconds):
    """Runs a command; returns its status, None for one that ran on without end, and its output."""
    process = subprocess.Popen(command, cwd=folder, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                               stdin=subprocess.DEVNULL, text=True, errors="replace", start_new_session=True)
    try:
        output, _ = process.communicate(timeout=seconds)
        return process.returncode, output
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, 9)
        output, _ = process.communicate()
        return None, output


def run_or_fail(command, folder, seconds, what):
    status, output = run(command, folder, seconds)
    if status != 0:
        raise CannotCheck(f"{what} failed:\n{output[-4000:]}")


def first_failure(output):
    """The name of the first test that failed, in GoogleTest's words or in pytest's."""
    found = re.search(r"^\[  FAILED  \] ([\w/.]+)", output, re.M) or re.search(r"^FAILED \S*?(\w+\.py::[^\s-]+)", output, re.M)
    return found[1] if found else "the test program ended"


class NativeTests:
    """The tests of the portable code, built for this machine without the sanitizers and hardly optimised."""

    programs = ("core_tests", "report_rules_tests", "tray_icon_tests", "zero_cosine_tests")

    def __init__(self, tree, jobs):
        self.tree = tree
        self.folder = tree / "build/mutants"
        self.build_command = ["cmake", "--build", self.folder, f"-j{jobs}", "--target", *self.programs]

    def configure(self):
        run_or_fail(["cmake", "-G", "Ninja", "-S", self.tree, "-B", self.folder, "-DCMAKE_BUILD_TYPE=", "-DTIDEWELL_TESTS=ON",
                     "-DCMAKE_CXX_FLAGS=-O0"], self.tree, BUILD_SECONDS, "configuring the native build")

    def build(self):
        return run(self.build_command, self.tree, BUILD_SECONDS)

    def failing_test(self):
        """The first test that fails, None when all pass."""
        for program in self.programs:
            status, output = run([self.folder / "tests" / program, "--gtest_brief=1", "--gtest_fail_fast"], self.folder,
                                 TEST_SECONDS)
            if status != 0:
                return "endless" if status is None else first_failure(output)
        return None


class WindowsTests:
    """The tests of the windows under Wine; what they let pass is tried with the end-to-end tests, which take longer."""

    programs = ("window_tests", "run_time_box_tests")

    def __init__(self, tree, jobs, end_to_end):
        self.tree = tree
        self.folder = tree / "build/windows-tests"
        targets = [*self.programs, *["Tidewell"] * end_to_end]
        self.build_command = ["cmake", "--build", self.folder, f"-j{jobs}", "--target", *targets]
        self.end_to_end = end_to_end

    def configure(self):
        run_or_fail(["cmake", "--preset", "windows-tests", "-DCMAKE_COMPILE_WARNING_AS_ERROR=OFF"], self.tree,
                    BUILD_SECONDS, "configuring the Windows build")

    def build(self):
        return run(self.build_command, self.tree, BUILD_SECONDS)

    def failing_test(self):
        for program in self.programs:
            status, output = run(["tools/under-wine.sh", self.folder / f"tests/{program}.exe", "--gtest_brief=1",
                                  "--gtest_fail_fast"], self.tree, WINDOWS_TEST_SECONDS)
            if status is None:
                run(["bash", "-c", "source tools/wine-env.sh; wineserver -k"], self.tree, TEST_SECONDS)
                return "endless"
            if status != 0:
                return first_failure(output)
        if not self.end_to_end:
            return None
        status, output = run(["/usr/bin/python3", "-B", "-m", "pytest", "-x", "-q", "tests/e2e",
                              f"--program={self.folder / 'Tidewell.exe'}", f"--bench-folder={self.tree / 'build/e2e'}"],
                             self.tree, END_TO_END_SECONDS)
        if status in (0, None):
            return None if status == 0 else "endless"
        if status != 1 or not re.search(r"^FAILED ", output, re.M):  # the bench itself has failed
            raise CannotCheck(f"the end-to-end tests could not be run:\n{output[-4000:]}")
        return first_failure(output)


def check_table():
    """Each mutant must have a name of its own and a text that stands exactly once in its file, and change it."""
    wrong = [f"{name}: the name stands {count} times" for name, count in Counter(m.name for m in MUTANTS).items() if count > 1]
    for mutant in MUTANTS:
        text = (REPOSITORY / mutant.file).read_text(encoding="utf-8")
        count = text.count(mutant.find)
        if count != 1:
            wrong.append(f"{mutant.name}: its text stands {count} times in {mutant.file}")
        if mutant.find == mutant.replacement:
            wrong.append(f"{mutant.name}: changes nothing")
    wrong += [f"{name}: explained, but no mutant" for name in EXPLAINED if name not in {m.name for m in MUTANTS}]
    if wrong:
        raise CannotCheck("the table of mutants is wrong:\n  " + "\n  ".join(wrong))


def try_mutant(mutant, tests):
    """Makes the mistake, builds and tests, and mends it again. Returns what became of the mutant and by which test."""
    path = tests.tree / mutant.file
    good = path.read_text(encoding="utf-8")
    if good.count(mutant.find) != 1:
        raise CannotCheck(f"{mutant.name}: the copied {mutant.file} has changed")
    path.write_text(good.replace(mutant.find, mutant.replacement), encoding="utf-8")
    try:
        status, output = tests.build()
        if status != 0:
            error = re.search(r"error: (.*)", output)
            return "does not build", error[1] if error else "(no compiler error)"
        failing = tests.failing_test()
        return ("killed", failing) if failing else ("survived", EXPLAINED.get(mutant.name, "NO EXPLANATION"))
    finally:
        path.write_text(good, encoding="utf-8")


def try_mutants(mutants, tests):
    """Tries the mutants that belong to the tests. Returns the number of those that are not as they should be."""
    started = time.monotonic()
    tests.configure()
    status, output = tests.build()
    if status != 0:
        raise CannotCheck(f"building without a mutant failed:\n{output[-4000:]}")
    failing = tests.failing_test()
    if failing:
        raise CannotCheck(f"the tests fail without a mutant: {failing}")
    print(f"built and tested without a mutant in {time.monotonic() - started:.0f} s", flush=True)

    results = Counter()
    wrong = 0
    for mutant in mutants:
        began = time.monotonic()
        result, remark = try_mutant(mutant, tests)
        if result == "survived" and mutant.name not in EXPLAINED:
            wrong += 1
        if result != "survived" and mutant.name in EXPLAINED:
            wrong += 1
            remark += ", in spite of its explanation"
        results[result] += 1
        print(f"{result:14} {time.monotonic() - began:5.1f} s  {mutant.name:34} {mutant.file}: {mutant.what}\n"
              f"{'':25}{remark}", flush=True)
    counts = ", ".join(f"{count} {result}" for result, count in sorted(results.items()))
    print(f"{len(mutants)} mutants: {counts}; {time.monotonic() - started:.0f} s\n", flush=True)
    return wrong


def chosen(arguments):
    mutants = [m for m in MUTANTS if m.windows == arguments.windows]
    if arguments.only:
        mutants = [m for m in mutants if any(part in m.name for part in arguments.only)]
    if arguments.sample and arguments.sample < len(mutants):
        mutants = [mutants[i * len(mutants) // arguments.sample] for i in range(arguments.sample)]  # spread evenly
    return sorted(mutants, key=lambda mutant: mutant.file)  # the file that is mended is the next one to be changed


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("--check", action="store_true", help="only check that the table of mutants fits the program")
    parser.add_argument("--sample", type=int, metavar="N", help="try N mutants, always the same, spread over the table")
    parser.add_argument("--only", nargs="+", metavar="PART", help="try the mutants whose name contains one of the parts")
    parser.add_argument("--windows", action="store_true", help="try those of the windows instead, under Wine")
    parser.add_argument("--end-to-end", action="store_true", help="with --windows: try what survives with the e2e tests")
    parser.add_argument("-j", type=int, default=2, metavar="JOBS", help="compile this many files at a time (2)")
    arguments = parser.parse_args()

    try:
        check_table()
        if arguments.check:
            print(f"{len(MUTANTS)} mutants fit the program")
            return 0
        with tempfile.TemporaryDirectory(prefix="tidewell-mutants-") as scratch:
            tree = Path(scratch) / "tree"
            shutil.copytree(REPOSITORY, tree, symlinks=True,
                            ignore=lambda folder, names: {".git", "build"} & set(names) if Path(folder) == REPOSITORY
                            else {"__pycache__"} & set(names))
            if arguments.windows:
                tests = WindowsTests(tree, arguments.j, arguments.end_to_end)
            else:
                tests = NativeTests(tree, arguments.j)
            wrong = try_mutants(chosen(arguments), tests)
    except CannotCheck as problem:
        print(f"mutate: {problem}", file=sys.stderr)
        return 2
    if wrong:
        print(f"{wrong} mutants are not as they should be")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
