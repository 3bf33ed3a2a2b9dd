"""Runs the program from start to end while calls fail (native/scenario.cpp, native/faults.cpp)."""

import concurrent.futures
import itertools
import shutil
import subprocess
from dataclasses import dataclass

from bench.failures import SPECIAL, Failure, argument_bytes
from bench.program import IMAGE
from bench.settings_file import FILE_WITHOUT_OPTIONS
from bench.waiting import BOUND

SCENARIOS = {"shown": 0, "hidden": 0, "error": 1}  # with the exit status of a run without a fault


@dataclass
class Case:
    """A run: the scenario, and the functions that fail together, from call number `first` to call number `last`; `last`
    0: for ever."""

    scenario: str
    name: str = "nothing"
    functions: object = ()
    first: int = 0
    last: int = 0
    failure: object = None  # instead of the usual one

    def __str__(self):
        return f"{self.scenario}: {self.name}"

    def failures(self):
        return {function: self.failure or SPECIAL.get(function, Failure()) for function in self.functions}

    def ends_on(self):
        return {number for failure in self.failures().values() for number in failure.ends_on}


@dataclass
class Run:
    """What was seen of a run."""

    scenario: str
    status: object  # or "stuck"
    log: list
    file: bytes
    astray: bool  # a settings file in the root of the drive
    journal: list

    def told(self, key):
        """What the log says under a key."""
        return [line[1:] for line in self.log if line[0] == key]

    def looks(self):
        """What a user saw, as {moment: {field: value}}. A step has two moments: "now" and, a minute after, "later"."""
        return {name: dict(item.partition("=")[::2] for item in items) for name, *items in self.told("see")}


class Worker:
    """A Wine prefix in which one program runs at a time."""

    def __init__(self, exe, tools, wine):
        self._wine = wine
        self._root = wine.prefix / "drive_c"  # if the program loses its folder, it writes here, not on our disk
        self._folder = self._root / "faults"
        shutil.rmtree(self._folder, ignore_errors=True)
        self._folder.mkdir()
        shutil.copy(exe, self._folder / IMAGE)
        shutil.copy(tools["shell32.dll"], self._folder)

    def run(self, case):
        """Runs a case to its end."""
        for path in (*(self._folder / name for name in ("log", "journal", "tray-calls")), self._root / "vesk.dat"):
            path.unlink(missing_ok=True)
        (self._folder / "vesk.dat").write_bytes(FILE_WITHOUT_OPTIONS)
        failing = [f"{name} {argument_bytes().get(name, 0)} {failure.result} {failure.error}"
                   for name, failure in case.failures().items()]
        (self._folder / "scenario").write_text("\n".join([case.scenario, f"{case.first} {case.last}", *failing]))
        process = self._wine.start(self._folder / IMAGE, log=self._folder / "program.log", cwd=self._folder)
        try:
            status = process.wait(timeout=BOUND)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()
            status = "stuck"
        return Run(case.scenario, status, [line.split("\t") for line in self._lines("log")],
                   (self._folder / "vesk.dat").read_bytes(), (self._root / "vesk.dat").exists(), self._lines("journal"))

    def _lines(self, name):
        path = self._folder / name
        return path.read_text(encoding="cp1252", errors="replace").splitlines() if path.exists() else []


class Trials:
    """Runs of a program, several side by side."""

    def __init__(self, exe, tools, wines):
        self._workers = [Worker(exe, tools, wine) for wine in wines]
        self.references = {scenario: self._workers[0].run(Case(scenario)) for scenario in SCENARIOS}

    def run(self, cases):
        """(case, run) for each case."""
        cases = list(cases)

        def run_part(number):
            return [(case, self._workers[number].run(case)) for case in cases[number::len(self._workers)]]

        with concurrent.futures.ThreadPoolExecutor() as pool:
            return [*itertools.chain(*pool.map(run_part, range(len(self._workers))))]
