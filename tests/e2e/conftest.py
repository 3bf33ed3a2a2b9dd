"""The fixtures of the end-to-end tests. Run them with

    /usr/bin/python3 -m pytest tests/e2e

after building the program. With TIDEWELL_LONG=1 in the environment the long runs take part too.
"""

import os
import re
import shutil
import sys
from pathlib import Path

import pytest

HERE = Path(__file__).resolve().parent
sys.path[:0] = [str(HERE), str(HERE.parent / "oracle")]
sys.dont_write_bytecode = True

from bench import tools  # noqa: E402
from bench.driver import Driver  # noqa: E402
from bench.folders import REPOSITORY, Folders  # noqa: E402
from bench.program import Bench  # noqa: E402
from bench.wine import wine_on_a_screen  # noqa: E402

THE_BENCH = pytest.StashKey()


def pytest_addoption(parser):
    parser.addoption("--program", default=str(REPOSITORY / "build/windows/Tidewell.exe"),
                     help="the Tidewell.exe to test")
    parser.addoption("--bench-folder", default=str(REPOSITORY / "build/e2e"),
                     help="where the bench keeps its Wine prefix and its results; two runs at a time need two folders")


def pytest_configure(config):
    config.addinivalue_line("markers", "long: a long run, only with TIDEWELL_LONG=1 in the environment")


def pytest_collection_modifyitems(config, items):
    if os.environ.get("TIDEWELL_LONG") != "1":
        long = [item for item in items if item.get_closest_marker("long")]
        items[:] = [item for item in items if item not in long]
        config.hook.pytest_deselected(items=long)  # not skipped: a skip tells of something that this machine lacks


@pytest.fixture(scope="session")
def bench(request):
    """The bench: screen, tray, Wine, driver, and start() for the program."""
    exe = Path(request.config.getoption("program")).resolve()
    tools.build_program(exe)
    assert exe.exists(), f"{exe} is not there: build it, or name another one with --program"
    folders = Folders(request.config.getoption("bench_folder"))
    with wine_on_a_screen(folders) as (display, wine):
        shutil.rmtree(folders.programs)
        shutil.rmtree(folders.failures)
        folders.programs.mkdir()
        folders.failures.mkdir()
        built = tools.build(folders.tools)
        driver = Driver(wine, built["driver.exe"], folders.logs / "driver.log")
        request.config.stash[THE_BENCH] = the_bench = Bench(exe, folders, built, display, wine, driver)
        yield the_bench
        driver.close()


@pytest.fixture
def start(bench):
    """start(zone=..., locale=..., at=..., ...) starts a Tidewell that ends with the test; see Bench.start."""
    yield bench.start
    bench.end_programs()


@pytest.fixture
def program(start):
    """A running Tidewell as most tests want it: Universal Time, English, an ordinary day."""
    return start()


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_makereport(item, call):
    outcome = yield
    report = outcome.get_result()
    the_bench = item.config.stash.get(THE_BENCH, None)
    if report.failed and report.when != "teardown" and the_bench:
        name = re.sub(r"[^\w.-]+", "-", f"{item.path.stem}-{item.name}").strip("-")
        try:
            the_bench.picture_of_failure(name)
            told = f"the screen and the windows are in {the_bench.folders.failures / name}"
        except Exception as problem:  # which must not hide the failure itself
            told = f"no picture: {problem!r}"
        report.sections.append(("bench", told))
