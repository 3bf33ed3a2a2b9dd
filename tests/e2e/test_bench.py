"""The bench itself: its movable clock."""

import datetime
import shutil

import pytest

from bench.clock import Clock
from bench.driver import NIM_ADD, NIM_MODIFY, WM_TIMER
from bench.program import READINGS_PER_LOOK, START
from bench.waiting import until


def test_the_clock_stands_still_until_moved(program):
    program.ticks()
    assert [call.command for call in program.calls()] == [NIM_ADD, NIM_MODIFY]
    program.move_clock(datetime.datetime(2031, 7, 8, 9, 10, 11))
    assert "31" in program.report().lines[3]
    program.ticks()
    assert len(program.calls()) == 3


def test_the_clock_works_in_a_folder_with_blanks(bench, tmp_path):
    folder = tmp_path / "a folder with blanks"
    folder.mkdir()
    preload = folder / "clock_preload.so"
    shutil.copy(bench.tools["clock_preload.so"], preload)
    clock = Clock(folder / "its clock", START)
    program = bench.wine.start(bench.tools["driver.exe"], "locale", log=folder / "log",
                               environment=clock.environment(preload))
    until(lambda: program.poll() == 0, "end of the program")
    assert clock.readings


def test_the_bench_refuses_a_program_with_another_clock(bench, start, monkeypatch, tmp_path):
    monkeypatch.setitem(bench.tools, "clock_preload.so", tmp_path / "nowhere.so")
    with pytest.raises(AssertionError, match="the test's clock"):
        start()


def test_a_tick_reads_the_clock_as_often_as_the_bench_assumes(program):
    def readings_of_a_tick():
        before = program.clock.readings
        program.driver.send(program.main().hwnd, WM_TIMER, 1)
        return program.clock.readings - before
    # The timer's own tick may come in between.
    assert min(readings_of_a_tick() for _ in range(5)) == READINGS_PER_LOOK
