"""Months in the tray: many updates and repaints without growth."""

import datetime
import os
import re
from pathlib import Path
from types import SimpleNamespace

import pytest

from bench.driver import WM_TIMER
from bench.oracle import wanted_report

TOLERATED = 64 * 1024  # bytes, or one per cent
FLEETING = 16  # handles that may happen to be open while they are counted; a leak would make thousands


def usage(program):
    """Private memory in bytes and open files, as the host counts them, and handles, as Windows does. Of the memory what
    the program has written: how many of the pages that it only reads are private depends on who else reads them."""
    host = Path(f"/proc/{program.process.pid}")
    private = re.findall(r"^Private_Dirty:\s+(\d+) kB", (host / "smaps").read_text(), re.MULTILINE)
    return SimpleNamespace(private=1024 * sum(map(int, private)), files=len(list((host / "fd").iterdir())),
                           **vars(program.driver.handles(program.pid)))


def processor_seconds(program):
    """The time that the program itself has computed, whatever else the machine does."""
    fields = Path(f"/proc/{program.process.pid}/stat").read_text().rpartition(")")[2].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def update_and_repaint(program, updates, repaints, portion=1_000):
    """Runs updates over a simulated year, and repaints, in portions. After the first portion of each nothing may grow.
    Returns the seconds that the updates of the first and of the last portion took the program to compute."""
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
    # No margin of speed: what looked through its past would take twenty times as long.
    assert last < 3 * first
