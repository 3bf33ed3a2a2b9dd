"""The movable clock reaches the program wherever the bench lies, or the bench says so."""

import shutil

import pytest

from bench.clock import Clock
from bench.driver import WM_TIMER
from bench.program import READINGS_PER_LOOK, START
from bench.waiting import until


def test_the_clock_may_lie_in_a_folder_with_blanks(bench, tmp_path):
    folder = tmp_path / "a folder with blanks"
    folder.mkdir()
    preload = folder / "clock_preload.so"
    shutil.copy(bench.tools["clock_preload.so"], preload)
    clock = Clock(folder / "its clock", START)
    program = bench.wine.start(bench.tools["driver.exe"], "locale", log=folder / "log",
                               environment=clock.environment(preload))
    until(lambda: program.poll() == 0, "end of the program")
    assert clock.readings


def test_a_program_with_another_clock_is_not_tested(bench, start, monkeypatch, tmp_path):
    monkeypatch.setitem(bench.tools, "clock_preload.so", tmp_path / "nowhere.so")
    with pytest.raises(AssertionError, match="another clock"):
        start()


def test_a_tick_reads_the_clock_as_often_as_the_bench_counts(program):
    def readings_of_a_tick():
        before = program.clock.readings
        program.driver.send(program.main().hwnd, WM_TIMER, 1)
        return program.clock.readings - before
    # The timer's own tick may come in between.
    assert min(readings_of_a_tick() for _ in range(5)) == READINGS_PER_LOOK
