"""Months in the tray: many updates and repaints must not leak."""

import datetime
import re
from pathlib import Path

from bench import LONG
from bench.driver import WM_TIMER

TOLERATED = 64 * 1024  # bytes; or one per cent, if that is more
FLEETING = 16  # files that may be open just then; a leak would make thousands
PORTION = 1_000
UPDATES, REPAINTS = (20_000, 70_000) if LONG else (2_000, 2_000)


def usage(program):
    """Private memory in bytes, and open files, as Linux counts them. Windows and GDI objects take memory too. Only
    written pages count: whether others are private depends on other processes."""
    host = Path(f"/proc/{program.process.pid}")
    private = re.findall(r"^Private_Dirty:\s+(\d+) kB", (host / "smaps").read_text(), re.MULTILINE)
    return 1024 * sum(map(int, private)), len(list((host / "fd").iterdir()))


def test_updates_of_a_year_and_repaints_leave_nothing_behind(start):
    """Nothing may grow after the first portion of each."""
    program = start(recorded=False)
    main = program.main().hwnd
    step = max(datetime.timedelta(minutes=1), datetime.timedelta(days=365) / UPDATES)

    def update():
        for _ in range(PORTION):
            program.clock.advance(seconds=step.total_seconds())
            program.driver.send(main, WM_TIMER, 1)
        assert program.report().lines == program.wanted_report()["lines"]

    def repaint():
        for _ in range(PORTION):
            program.driver.redraw(main)

    update()
    repaint()
    memory_before, files_before = usage(program)
    for _ in range(PORTION, UPDATES, PORTION):
        update()
    for _ in range(PORTION, REPAINTS, PORTION):
        repaint()
    memory, files = usage(program)
    assert memory - memory_before <= max(TOLERATED, memory_before // 100)
    assert files <= files_before + FLEETING
