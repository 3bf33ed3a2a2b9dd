#!/usr/bin/env python3
"""Counts the tests, data and mutants, prints the numbers and writes them into docs/testing.md.

There each number stands between marks that name it:  <!--mutants.portable-->174<!---->. All are counted from the
sources, without a build and without Wine; counts_test.py fails where the document says other ones.
"""

import os
import re
import subprocess
import sys
from collections import Counter
from pathlib import Path

TESTS = Path(__file__).resolve().parent
DOCUMENT = TESTS.parent / "docs/testing.md"
PYTEST = ["/usr/bin/python3", "-B", "-m", "pytest", "--collect-only", "-q"]

NUMBER = re.compile(r"<!--([\w./ -]+)-->[^<]*<!---->")
WINDOWS_HALF = re.compile(r"_win_test\.cpp$|/frm\w+_test\.cpp$")
GOOGLE_TEST = re.compile(r"^TEST(?:_F)?\(", re.MULTILINE)
MANY_FROM_ONE = re.compile(r"^(?:TEST_P|TYPED_TEST\w*|INSTANTIATE_\w+)\(", re.MULTILINE)
PYTHON_TEST = re.compile(r"^    def test_", re.MULTILINE)


class CannotCount(Exception):
    """Something is there whose number the sources do not tell."""


def google_tests(text):
    """The number of tests in a C++ source."""
    if MANY_FROM_ONE.search(text):
        raise CannotCount("tests that are made from a list: counts.py must learn to count them")
    return len(GOOGLE_TEST.findall(text))


def program_tests():
    """The tests of the C++ programs by folder, and those of each half."""
    counts = Counter()
    for path in TESTS.glob("*/*_test.cpp"):
        half = "windows" if WINDOWS_HALF.search(path.as_posix()) else "portable"
        number = google_tests(path.read_text())
        counts.update({half: number, f"{path.parent.name}.{half}": number})
    return counts


def collected(folder, long):
    """The tests that pytest finds in a folder, and those of each file, with the long runs or without."""
    environment = os.environ | {"TIDEWELL_LONG": "1" if long else "0"}
    found = subprocess.run([*PYTEST, TESTS / folder], env=environment, check=True, stdout=subprocess.PIPE, text=True).stdout
    counts = Counter(re.findall(r"^(\S+\.py)::", found, re.MULTILINE))
    return {folder: counts.total()} | {f"{folder}/{Path(name).name}": number for name, number in counts.items()}


def data_rows():
    """The rows of each table of tests/data."""
    return {f"data/{path.name}": sum(1 for line in path.read_text().splitlines() if line and not line.startswith("#"))
            for path in (TESTS / "data").glob("*.tsv")}


def mutants():
    sys.path.insert(0, str(TESTS / "mutation"))
    from mutants import EXPLAINED, PORTABLE_MUTANTS
    from window_mutants import WINDOW_MUTANTS
    return {"mutants.portable": len(PORTABLE_MUTANTS), "mutants.windows": len(WINDOW_MUTANTS),
            "mutants.explained": len(EXPLAINED)}


def numbers():
    """All numbers by their names."""
    counts = dict(program_tests())
    counts |= collected("e2e", long=False) | collected("release", long=True)
    counts["e2e.long"] = collected("e2e", long=True)["e2e"]
    counts |= data_rows() | mutants()
    counts["fuzz"] = len(list((TESTS / "fuzz").glob("*_fuzz.cpp")))
    for name in ("resources/icons_test.py", "tools/build_test.py"):
        counts[name] = len(PYTHON_TEST.findall((TESTS / name).read_text()))
    return counts


def with_numbers(text, counts):
    """The text of the document with the numbers in it."""
    unknown = sorted(set(NUMBER.findall(text)) - set(counts))
    if unknown:
        raise CannotCount(f"numbers that nobody counts: {', '.join(unknown)}")
    return NUMBER.sub(lambda found: f"<!--{found[1]}-->{counts[found[1]]:,}<!---->", text)


def main():
    counts = numbers()
    for name, number in sorted(counts.items()):
        print(f"{number:7,}  {name}")
    DOCUMENT.write_text(with_numbers(DOCUMENT.read_text(), counts))


if __name__ == "__main__":
    main()
