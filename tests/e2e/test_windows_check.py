"""Runs windows_check, which is meant for real Windows, under Wine."""

import re
import shutil

import pytest

from bench import tools
from bench.folders import REPOSITORY

BUILD = REPOSITORY / "build/windows-tests"

# Checks that Wine cannot do. All others must pass.
NOT_HERE = {"Menu.HasItsEntries", "Cost.OfManyUpdates"}


@pytest.fixture
def folder(bench):
    tools.build_target(BUILD, "windows_check")
    folder = bench.folders.root / "windows-check"
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir()
    shutil.copy(bench.exe, folder)
    shutil.copy(BUILD / "tests/windows_check.exe", folder)
    return folder


def run(bench, folder, checks):
    """Runs the checks; returns the status, the report, and the outcome of each check."""
    # In this zone the first tick changes the lines.
    status = bench.wine.start(folder / "windows_check.exe", f"--gtest_filter={checks}", log=folder / "output",
                              cwd=folder, environment={"TZ": "America/St_Johns"}).wait(timeout=600)
    report = (folder / "tidewell-check.txt").read_text(encoding="utf-8")
    return status, report, dict(re.findall(r"^([\w.]+): (ok|FAILED|not here)", report, re.MULTILINE))


def test_all_checks_that_wine_can_do_pass(bench, folder):
    temporary = set(bench.wine.prefix.glob("drive_c/users/*/Temp/*"))
    status, report, outcomes = run(bench, folder, "-*QuietMinute")  # it takes too long
    assert status == 0, report
    assert {name for name, outcome in outcomes.items() if outcome != "ok"} == NOT_HERE, report
    assert len(outcomes) > 30
    assert {path.stem for path in folder.glob("*.png")} == {
        "tidewell-about", "tidewell-menu", "tidewell-tray", "tidewell-window"}
    # It leaves nothing else behind.
    assert {path.name for path in folder.iterdir() if not path.name.startswith("tidewell-")} == {
        "Tidewell.exe", "windows_check.exe", "output"}
    assert set(bench.wine.prefix.glob("drive_c/users/*/Temp/*")) == temporary
    assert not bench.driver.processes("Tidewell.exe") + bench.driver.processes("windows_check.exe")


def test_a_failure_is_reported(bench, folder):
    """Checks a program with a wrong word on a button."""
    program = folder / "Tidewell.exe"
    right, wrong = "Close".encode("utf-16-le"), "Cloze".encode("utf-16-le")
    program.write_bytes(program.read_bytes().replace(right, wrong))
    status, report, outcomes = run(bench, folder, "*AsDesigned")
    assert status == 1
    assert outcomes == {"Window.OfTheMoonIsAsDesigned": "FAILED", "Window.AboutIsAsDesigned": "ok"}, report
    assert report.startswith("Windows ") and '"Cloze"' in report
