"""Runs windows_check, which is meant for real Windows, under Wine."""

import shutil
import xml.etree.ElementTree

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
    """Runs the checks; returns the status, the screen, and the names of all, the skipped and the failed ones."""
    # In this zone the first tick changes the lines.
    status = bench.wine.start(folder / "windows_check.exe", f"--gtest_filter={checks}", log=folder / "output", cwd=folder,
                              environment={"TZ": "America/St_Johns"}).wait(timeout=600)
    report = xml.etree.ElementTree.parse(folder / "tidewell-check.xml")

    def names(path):
        return {f"{case.get('classname')}.{case.get('name')}" for case in report.iterfind(path)}
    return (status, (folder / "output").read_text(errors="replace"), names(".//testcase[@status='run']"),
            names(".//testcase[skipped]"), names(".//testcase[failure]"))


def test_all_checks_that_wine_can_do_pass(bench, folder):
    temporary = set(bench.wine.prefix.glob("drive_c/users/*/Temp/*"))
    status, screen, checks, skipped, _ = run(bench, folder, "-*QuietMinute")  # it takes too long
    assert status == 0, screen
    assert skipped == NOT_HERE, screen
    assert len(checks) > 30
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
    status, screen, checks, _, failed = run(bench, folder, "*AsDesigned")
    assert status == 1
    assert checks == {"Window.OfTheMoonIsAsDesigned", "Window.AboutIsAsDesigned"}
    assert failed == {"Window.OfTheMoonIsAsDesigned"}, screen
    assert '"Cloze"' in screen
