"""What the measurements share: the virtual screen and the Wine prefix, made by the end-to-end tests' bench. No other
file here imports it."""

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
from bench.program import IMAGE, Bench  # noqa: E402
from bench.wine import windows_path, wine_on_a_screen  # noqa: E402

WINDOWS = BUILD / "bench-windows"
TIDEWELL, EMPTY = "Tidewell", "empty window"
SWP_HIDE = 0x80 | 0x10 | 4 | 2 | 1  # hide, and neither activate nor order, move or size


def lines_of(text):
    """The fields of each line."""
    return [line.split("\t") for line in text.splitlines()]


def printed_by(*command, **more):
    """The output of a program of the host."""
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True, **more).stdout


class Stage:
    """Runs the Windows programs. Made by open_stage()."""

    def __init__(self, bench):
        self.bench = bench
        # Both have the same name: Wine keeps settings by name.
        self.programs = {TIDEWELL: bench.folder(recorded=False) / IMAGE, EMPTY: bench.folder(recorded=False) / IMAGE}
        shutil.copy(WINDOWS / "benchmarks/empty_window.exe", self.programs[EMPTY])

    def output_of(self, name, *arguments):
        """Runs a tool of bench-windows; returns the fields of each line that it prints."""
        log = self.bench.folders.logs / f"{name}.log"
        log.unlink(missing_ok=True)
        status = self.bench.wine.start(WINDOWS / "benchmarks" / name, *arguments, log=log).wait()
        text = log.read_text()
        if status:
            raise RuntimeError(f"{name} ended with {status}: {text}")
        return lines_of(text)

    def race(self, name):
        """Starts and closes a program; returns the milliseconds of both, and the window's size."""
        [[started, closed, *size]] = self.output_of("stopwatch.exe", windows_path(self.programs[name]))
        return float(started), float(closed), size

    @contextlib.contextmanager
    def running(self, name):
        """Runs a program within the context; gives its process."""
        process = self.bench.wine.start(self.programs[name], log=self.bench.folders.logs / "program.log")
        try:
            yield process
        finally:
            process.kill()
            process.wait()

    def hide(self):
        """Hides the window of the program that runs."""
        [pid] = self.bench.driver.processes(IMAGE)
        [window] = [window for window in self.bench.driver.windows(pid) if window.visible and not window.parent]
        self.bench.driver.ask("place", window.hwnd, 0, 0, 0, 0, 0, SWP_HIDE)


@contextlib.contextmanager
def open_stage():
    """Gives the stage within the context."""
    folders = Folders(BUILD / "bench/wine")
    built = tools.build(folders.tools)
    with wine_on_a_screen(folders) as (display, wine), \
            contextlib.closing(Driver(wine, built["driver.exe"], folders.logs / "driver.log")) as driver:
        shutil.rmtree(folders.programs)
        folders.programs.mkdir()
        yield Stage(Bench(WINDOWS / IMAGE, folders, built, display, wine, driver))
