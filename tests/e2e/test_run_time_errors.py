"""Each run-time error shows one box, and leaves no icon and no process."""

import datetime
import functools
import resource

import pytest

from bench.driver import NIM_DELETE, WM_CLOSE, WM_TIMER
from bench.program import SOUTH
from bench.user import open_menu, see_the_box_and_end, wait_for_main
from bench.waiting import until
from bench.wine import windows_path


def test_a_folder_named_as_the_settings_file(bench, start):
    folder = bench.folder()
    (folder / "vesk.dat").mkdir()
    program = start(folder=folder, wait=False)
    see_the_box_and_end(program, "Run-time error '75':\n\nPath/File access error")
    assert (folder / "vesk.dat").is_dir()
    assert program.calls() == [], "it failed before it added the icon"


def test_a_settings_file_that_another_program_holds(bench, start):
    folder = bench.folder()
    (folder / "vesk.dat").write_bytes(b"kept")
    bench.driver.hold(windows_path(folder / "vesk.dat"))
    program = start(folder=folder, wait=False)
    see_the_box_and_end(program, "Run-time error '70':\n\nPermission denied")
    bench.driver.release()
    assert (folder / "vesk.dat").read_bytes() == b"kept"


def test_a_settings_file_that_links_to_itself(bench, start):
    folder = bench.folder()
    (folder / "vesk.dat").symlink_to("vesk.dat")
    program = start(folder=folder, wait=False)
    see_the_box_and_end(program, "Run-time error '57':\n\nDevice I/O error")


def test_a_full_disk(bench, start):
    folder = bench.folder()
    (folder / "vesk.dat").symlink_to("/dev/full")
    program = start(folder=folder)
    program.click(SOUTH)
    see_the_box_and_end(program, "Run-time error '61':\n\nDisk full")


def test_a_failed_write_leaves_the_file_as_it_was(bench, start, monkeypatch):
    # Python ignores SIGXFSZ. If the program inherits that, the write fails instead of killing it.
    monkeypatch.setattr(bench.wine, "start", functools.partial(bench.wine.start, restore_signals=False))
    folder = bench.folder()
    before = bytes(number % 251 for number in range(20_000))
    (folder / "vesk.dat").write_bytes(before)
    program = start(folder=folder)
    resource.prlimit(program.process.pid, resource.RLIMIT_FSIZE, (0, 0))
    program.click(SOUTH)
    see_the_box_and_end(program, "Run-time error '57':\n\nDevice I/O error")
    assert (folder / "vesk.dat").read_bytes() == before


def test_a_start_at_the_end_of_the_calendar(start):
    program = start(at=datetime.datetime(9999, 12, 30, 12, 0, 10), wait=False)
    see_the_box_and_end(program, "Run-time error '5':\n\nInvalid procedure call or argument")


def leave_shown(program):
    assert program.main().shown


def hide(program):
    program.display.click(*program.icon_centre())
    wait_for_main(program, False)


@pytest.mark.parametrize("prepare", [leave_shown, hide, open_menu])
def test_the_end_of_the_calendar_while_it_runs(program, prepare):
    prepare(program)
    program.clock.set(program.local(datetime.datetime(9999, 12, 30, 12, 0, 10)))
    program.hurry()
    see_the_box_and_end(program, "Run-time error '5':\n\nInvalid procedure call or argument")
    assert program.calls()[-1].command == NIM_DELETE


@pytest.fixture
def failed(program):
    """A program that shows the box of an error."""
    program.clock.set(program.local(datetime.datetime(9999, 12, 30, 12, 0, 10)))
    program.hurry()
    until(program.message_box, "message box")
    return program


def test_under_the_box_the_settings_file_is_free(failed):
    failed.driver.hold(windows_path(failed.folder / "vesk.dat"))


def test_under_the_box_the_window_cannot_be_closed(failed):
    failed.driver.send(failed.main().hwnd, WM_CLOSE)
    assert failed.main().shown


def test_under_the_box_the_report_stands_still(failed):
    report = failed.report()
    failed.clock.set(failed.local(datetime.datetime(2030, 1, 1)))
    failed.driver.send(failed.main().hwnd, WM_TIMER, 1)
    assert failed.report() == report
