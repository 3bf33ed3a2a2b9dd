"""Runs the program from start to end while calls fail (native/scenario.cpp, native/faults.cpp)."""

import concurrent.futures
import itertools
import shutil
import subprocess
from dataclasses import dataclass, field

from bench.failures import argument_bytes
from bench.program import IMAGE, RECORD, RECORD_SIZE
from bench.waiting import BOUND

# A complete settings file with no option set, and with other programs' bytes in it.
_OTHERS = bytes(number % 251 for number in range(20_000))
FILE_WITHOUT_OPTIONS = _OTHERS[:RECORD] + bytes(RECORD_SIZE) + _OTHERS[RECORD + RECORD_SIZE:]

SCENARIOS = {"shown": 0, "hidden": 0, "error": 1}  # with the exit status of a run without a fault


@dataclass
class Case:
    """A run: the scenario, and the functions that fail together, each with its Failure, from call number `first` to
    call number `last`; `last` 0: for ever."""

    scenario: str
    name: str = "nothing"
    failing: dict = field(default_factory=dict)
    first: int = 0
    last: int = 0

    def __str__(self):
        return f"{self.scenario}: {self.name}"

    def ends_on(self):
        return {number for failure in self.failing.values() for number in failure.ends_on}


@dataclass
class Run:
    """What was seen of a run."""

    status: object  # or "stuck"
    log: list
    file: bytes
    astray: bool  # a settings file in the root of the drive
    journal: list

    def told(self, key):
        """What the log says under a key."""
        return [line[1:] for line in self.log if line[0] == key]

    def looks(self):
        """What a user saw, as {moment: {field: value}}. A step has two moments: "now" and, minutes after, "later"."""
        return {name: dict(item.partition("=")[::2] for item in items) for name, *items in self.told("see")}


class Worker:
    """A Wine prefix in which one program runs at a time."""

    def __init__(self, exe, tools, wine):
        self._wine, self._argument_bytes = wine, argument_bytes(tools["symbols"])
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
        failing = [f"{name} {self._argument_bytes.get(name, 0)} {failure.result} {failure.error}"
                   for name, failure in case.failing.items()]
        (self._folder / "scenario").write_text("\n".join([case.scenario, f"{case.first} {case.last}", *failing]))
        process = self._wine.start(self._folder / IMAGE, log=self._folder / "program.log", cwd=self._folder)
        try:
            status = process.wait(timeout=BOUND)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()
            status = "stuck"
        return Run(status, [line.split("\t") for line in self._lines("log")],
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
        cases, count = list(cases), len(self._workers)
        parts = [cases[number::count] for number in range(count)]
        with concurrent.futures.ThreadPoolExecutor() as pool:
            runs = pool.map(lambda worker, part: [(case, worker.run(case)) for case in part], self._workers, parts)
            return [*itertools.chain(*runs)]
