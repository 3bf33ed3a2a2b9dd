"""Months in the tray: many updates and repaints must not leak."""

import datetime
import os
import re
from pathlib import Path
from types import SimpleNamespace

import pytest

from bench.driver import WM_TIMER
from bench.oracle import wanted_report

TOLERATED = 64 * 1024  # bytes; or one per cent, if that is more
FLEETING = 16  # handles that may be open just then; a leak would make thousands


def usage(program):
    """Private memory in bytes and open files as Linux counts them, and handles as Windows does. Only written memory
    counts: whether a page that is only read is private depends on other processes."""
    host = Path(f"/proc/{program.process.pid}")
    private = re.findall(r"^Private_Dirty:\s+(\d+) kB", (host / "smaps").read_text(), re.MULTILINE)
    return SimpleNamespace(private=1024 * sum(map(int, private)), files=len(list((host / "fd").iterdir())),
                           **vars(program.driver.handles(program.pid)))


def processor_seconds(program):
    """The processor time of the program."""
    fields = Path(f"/proc/{program.process.pid}/stat").read_text().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def update_and_repaint(program, updates, repaints, portion=1_000):
    """Runs updates over a simulated year, and repaints, in portions. Nothing may grow after the first portion of each.
    Returns the processor seconds of the first and of the last portion of updates."""
    driver, main = program.driver, program.main().hwnd
    step = max(datetime.timedelta(minutes=1), datetime.timedelta(days=365) / updates)

    def update():
        began = processor_seconds(program)
        for _ in range(portion):
            program.clock.advance(seconds=step.total_seconds())
            driver.send(main, WM_TIMER, 1)
        assert program.report().lines == wanted_report(program.clock.at, program.zone)["lines"]
        return processor_seconds(program) - began

    def repaint():
        for _ in range(portion):
            driver.redraw(main)

    first = update()
    repaint()
    before = usage(program)
    for _ in range(portion, updates, portion):
        last = update()
    for _ in range(portion, repaints, portion):
        repaint()
    after = usage(program)
    print(f"{updates} updates, {repaints} repaints: {before} before, {after} after; "
          f"seconds of {portion} updates: {first:.2f} first, {last:.2f} last")
    assert after.private - before.private <= max(TOLERATED, before.private // 100)
    for counted in ("files", "kernel", "gdi", "windows"):
        assert vars(after)[counted] <= vars(before)[counted] + FLEETING, counted
    return first, last


def test_two_thousand_updates_and_repaints(start):
    update_and_repaint(start(recorded=False), 2_000, 2_000)


@pytest.mark.long
def test_a_year_of_updates_and_seventy_thousand_repaints(start):
    first, last = update_and_repaint(start(recorded=False), 20_000, 70_000)
    # Not a timing margin: a cost that grows with the past would be twenty times as high.
    assert last < 3 * first
