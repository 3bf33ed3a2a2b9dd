"""Months in the tray: many updates and repaints without growth."""

import datetime
import re
import time
from pathlib import Path
from types import SimpleNamespace

import pytest

from bench.driver import WM_TIMER

TOLERATED = 64 * 1024  # bytes, or one per cent


def usage(program):
    """Private memory in bytes and open files, as the host counts them: Wine itself tells nothing of either."""
    host = Path(f"/proc/{program.process.pid}")
    rows = dict(re.findall(r"^(Private_\w+):\s+(\d+) kB", (host / "smaps_rollup").read_text(), re.MULTILINE))
    return SimpleNamespace(private=1024 * sum(map(int, rows.values())), files=len(list((host / "fd").iterdir())))


def update_and_repaint(program, updates, repaints, warm_up):
    """Runs updates over a simulated year and repaints; memory and open files may not grow once the program is warm."""
    driver, main = program.driver, program.main().hwnd
    step = datetime.timedelta(days=365) / updates

    def update():
        program.clock.advance(seconds=max(60, step.total_seconds()))
        driver.send(main, WM_TIMER, 1)

    def timed(count, action):
        began = time.monotonic()
        for _ in range(count):
            action()
        return (time.monotonic() - began) / count

    first = timed(warm_up, update)
    timed(warm_up, lambda: driver.redraw(main))
    before = usage(program)
    last = timed(updates - warm_up, update)
    timed(repaints - warm_up, lambda: driver.redraw(main))
    after = usage(program)
    print(f"{updates} updates, {repaints} repaints: {before} before, {after} after, "
          f"time of an update at the end / at the start {last / first:.2f}")
    assert after.private - before.private <= max(TOLERATED, before.private // 100)
    assert after.files <= before.files
    assert "Next" in "".join(program.report().lines) or "New" in "".join(program.report().lines)


def test_two_thousand_updates_and_repaints(start):
    update_and_repaint(start(recorded=False), 2_000, 2_000, 1_000)


@pytest.mark.long
def test_a_year_of_updates_and_seventy_thousand_repaints(start):
    update_and_repaint(start(recorded=False), 20_000, 70_000, 1_000)
