"""The virtual screen and the Wine prefix of the measurements, made by the end-to-end tests' bench. No other file here
uses that bench."""

import contextlib
import shutil
import subprocess
import sys
from pathlib import Path

REPOSITORY = Path(__file__).resolve().parent.parent
BUILD = REPOSITORY / "build"
sys.path.insert(0, str(REPOSITORY / "tests/e2e"))

from bench import tools  # noqa: E402
from bench.driver import WM_TIMER, Driver  # noqa: E402
from bench.folders import Folders  # noqa: E402
from bench.program import Bench  # noqa: E402
from bench.wine import windows_path, wine_on_a_screen  # noqa: E402

WINDOWS = BUILD / "bench-windows"
TIDEWELL, EMPTY = "Tidewell", "empty window"


class Stage:
    """Runs what is measured on Windows. Made by open_stage()."""

    def __init__(self, folders, display, wine):
        self.folders, self.display, self.wine = folders, display, wine
        # Both have one name, because Wine has settings by name.
        self.programs = {TIDEWELL: self._placed(WINDOWS / "Tidewell.exe", "tidewell"),
                         EMPTY: self._placed(WINDOWS / "benchmarks/empty_window.exe", "empty")}

    def _placed(self, exe, folder):
        folder = self.folders.programs / folder
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir()
        return shutil.copy(exe, folder / "Tidewell.exe")

    def output_of(self, name, *arguments):
        """Runs a tool of bench-windows; returns the fields of each line that it prints."""
        exe, log = WINDOWS / "benchmarks" / name, self.folders.logs / f"{name}.log"
        log.unlink(missing_ok=True)
        status = self.wine.start(exe, *arguments, log=log).wait()
        text = log.read_text()
        if status:
            raise RuntimeError(f"{name} ended with {status}: {text}")
        return [line.split("\t") for line in text.splitlines()]

    def windows_path(self, name):
        """The Windows path of a program."""
        return windows_path(self.programs[name])

    @contextlib.contextmanager
    def running(self, name):
        """Runs a program within the context; gives its process."""
        process = self.wine.start(self.programs[name], log=self.folders.logs / "program.log")
        try:
            yield process
        finally:
            process.kill()
            process.wait()

    @contextlib.contextmanager
    def with_movable_clock(self):
        """Runs Tidewell with a clock that moves only when told; gives the end-to-end tests' program."""
        built = tools.build(self.folders.tools)
        driver = Driver(self.wine, built["driver.exe"], self.folders.logs / "driver.log")
        shutil.rmtree(self.folders.programs / "001", ignore_errors=True)
        bench = Bench(self.programs[TIDEWELL], self.folders, built, self.display, self.wine, driver)
        try:
            yield bench.start(recorded=False)
        finally:
            bench.end_programs()
            driver.close()


@contextlib.contextmanager
def open_stage():
    """Gives the stage within the context."""
    folders = Folders(BUILD / "bench/wine")
    with wine_on_a_screen(folders) as (display, wine):
        yield Stage(folders, display, wine)


def printed_by(*command, **more):
    """The output of a program of the host."""
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True, **more).stdout
