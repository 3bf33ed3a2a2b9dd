"""The fixtures of the end-to-end tests. Run them with

    /usr/bin/python3 -m pytest tests/e2e

after building the program. TIDEWELL_LONG=1 in the environment adds the long runs.
"""

import re
import shutil
import sys
from pathlib import Path

import pytest

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))
sys.dont_write_bytecode = True

from bench import tools  # noqa: E402
from bench.driver import Driver  # noqa: E402
from bench.folders import REPOSITORY, Folders  # noqa: E402
from bench.program import Bench  # noqa: E402
from bench.typewriter import Typewriter  # noqa: E402
from bench.wine import wine_on_a_screen  # noqa: E402


def pytest_addoption(parser):
    parser.addoption("--program", default=str(REPOSITORY / "build/windows/Tidewell.exe"),
                     help="the Tidewell.exe to test")


@pytest.fixture(scope="session")
def bench(request):
    """The bench: screen, tray, Wine, driver, and start() for the program."""
    exe = Path(request.config.getoption("program")).resolve()
    tools.build_program(exe)
    assert exe.exists(), f"{exe} does not exist: build it, or pass another with --program"
    folders = Folders(REPOSITORY / "build/e2e")
    with wine_on_a_screen(folders) as (display, wine):
        shutil.rmtree(folders.programs)
        shutil.rmtree(folders.failures)
        folders.programs.mkdir()
        folders.failures.mkdir()
        built = tools.build(folders.tools)
        driver = Driver(wine, built["driver.exe"], folders.logs / "driver.log")
        yield Bench(exe, folders, built, display, wine, driver)
        driver.close()


@pytest.fixture
def start(bench):
    """Bench.start; the programs end with the test."""
    yield bench.start
    bench.end_programs()


@pytest.fixture
def program(start):
    """A running Tidewell: Universal Time, English, an ordinary day."""
    return start()


@pytest.fixture
def typewriter(bench, request):
    """Another program, with the keyboard and "abc" typed into it."""
    if "program" in request.fixturenames:
        request.getfixturevalue("program").icon_centre()  # the tray gives the keyboard to a new icon
    other = Typewriter(bench)
    other.take_the_keyboard()
    other.type("abc")
    yield other
    other.close()


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_makereport(item, call):
    report = (yield).get_result()
    the_bench = item.funcargs.get("bench")
    if report.failed and report.when != "teardown" and the_bench:
        try:
            the_bench.picture_of_failure(re.sub(r"[^\w.-]+", "-", f"{item.path.stem}-{item.name}"))
            report.sections.append(("bench", f"see {the_bench.folders.failures}"))
        except Exception as problem:  # it must not hide the test's failure
            report.sections.append(("bench", f"no picture: {problem!r}"))
