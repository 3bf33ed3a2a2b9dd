"""Runs windows_check, which is meant for real Windows, under Wine."""

import re
import shutil

from bench import tools
from bench.folders import REPOSITORY

BUILD = REPOSITORY / "build/windows-tests"

# Checks that Wine cannot do. All others must pass.
NOT_HERE = {"Menu.HasItsEntries", "Cost.OfManyUpdates"}


def test_all_checks_that_wine_can_do_pass(bench):
    tools.build_target(BUILD, "windows_check")
    folder = bench.folders.root / "windows-check"
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir()
    shutil.copy(bench.exe, folder)
    shutil.copy(BUILD / "tests/windows_check.exe", folder)
    temporary = set(bench.wine.prefix.glob("drive_c/users/*/Temp/*"))
    # The quiet minute takes too long. In this zone the first tick changes the lines.
    status = bench.wine.start(folder / "windows_check.exe", "--gtest_filter=-*QuietMinute", log=folder / "output",
                              cwd=folder, environment={"TZ": "America/St_Johns"}).wait(timeout=600)
    report = (folder / "tidewell-check.txt").read_text(encoding="utf-8")
    assert status == 0, report
    outcomes = dict(re.findall(r"^([\w.]+): (ok|FAILED|not here)", report, re.MULTILINE))
    assert {name for name, outcome in outcomes.items() if outcome != "ok"} == NOT_HERE, report
    assert len(outcomes) > 30
    assert {path.stem for path in folder.glob("*.png")} == {
        "tidewell-about", "tidewell-menu", "tidewell-tray", "tidewell-window"}
    # It leaves nothing else behind.
    assert {path.name for path in folder.iterdir() if not path.name.startswith("tidewell-")} == {
        "Tidewell.exe", "windows_check.exe", "output"}
    assert set(bench.wine.prefix.glob("drive_c/users/*/Temp/*")) == temporary
    assert not bench.driver.processes("Tidewell.exe") + bench.driver.processes("windows_check.exe")
