"""The check that people run on a real Windows, run under Wine."""

import shutil

from bench import tools
from bench.folders import REPOSITORY
from bench.waiting import until

BUILD = REPOSITORY / "build/windows-tests"

# What Wine cannot tell, and nothing else.
NOT_HERE = {
}


def test_all_that_wine_can_tell_is_well(bench):
    tools.build_target(BUILD, "windows_check")
    folder = bench.folders.root / "windows-check"
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir()
    shutil.copy(bench.exe, folder)
    shutil.copy(BUILD / "tests/windows_check.exe", folder)
    # A zone in which the lines before the first tick are others than those after it.
    run = bench.wine.start(folder / "windows_check.exe", "--quick", log=folder / "output", cwd=folder,
                           environment={"TZ": "America/St_Johns"})
    status = run.wait(timeout=300)
    report = (folder / "tidewell-check.txt").read_text(encoding="utf-8")
    assert status == 0, report
