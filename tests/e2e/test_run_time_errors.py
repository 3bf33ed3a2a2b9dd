"""Each run-time error shows one box, and leaves no icon and no process."""

import datetime

import pytest

from bench.driver import NIM_DELETE, WM_CLOSE, WM_TIMER
from bench.program import SOUTH
from bench.user import bring_to_the_corner, fail, hide, moon, see_the_box_and_end
from bench.waiting import until
from bench.wine import windows_path

DISK_FULL = "Run-time error '61':\n\nDisk full"
INVALID_CALL = "Run-time error '5':\n\nInvalid procedure call or argument"


def test_a_settings_file_that_another_program_holds(bench, start):
    folder = bench.folder(settings=b"kept")
    bench.driver.hold(windows_path(folder / "vesk.dat"))
    program = start(folder=folder, wait=False)
    see_the_box_and_end(program, "Run-time error '70':\n\nPermission denied")
    bench.driver.release()
    assert (folder / "vesk.dat").read_bytes() == b"kept"
    assert program.calls() == [], "it failed before it added the icon"


@pytest.fixture
def full_disk(bench):
    """A folder whose settings file is on a full disk."""
    folder = bench.folder()
    (folder / "vesk.dat").symlink_to("/dev/full")
    return folder


def test_under_the_box_the_main_window_is_disabled_and_painted(full_disk, start):
    program = start(full_disk)
    bring_to_the_corner(program)
    picture = moon(program)
    program.click(SOUTH)
    box = until(program.message_box, "message box")
    main = program.main()
    assert main.screen[0] + main.screen[2] < box.screen[0], "the box covers the window"
    assert main.shown
    assert not main.enabled
    assert moon(program) == picture
    see_the_box_and_end(program, DISK_FULL)


def test_an_error_before_the_window_is_shown_shows_no_window(full_disk, start):
    """The error comes from a click that arrives while the shell adds the icon."""
    (full_disk / "tray-clicks").touch()
    program = start(full_disk, wait=False)
    box = until(program.message_box, "message box")
    assert not [window for window in program.windows() if window.class_ == "TidewellMoon" and window.visible]
    assert DISK_FULL in box.texts


# ---- the end of the calendar

def test_a_start_at_the_end_of_the_calendar(start):
    program = start(at=datetime.datetime(9999, 12, 30, 12, 0, 10), wait=False)
    see_the_box_and_end(program, INVALID_CALL)


def test_the_end_of_the_calendar_while_it_is_hidden(program):
    hide(program)
    fail(program)
    see_the_box_and_end(program, INVALID_CALL)


def test_a_report_that_fails_after_its_picture_paints_the_picture(program):
    bring_to_the_corner(program)
    picture = moon(program)
    fail(program)
    x, y = program.main().client_origin
    until(lambda: program.display.grab(x + 60, y + 20, 131, 131) != picture, "another picture")


def test_under_the_box_nothing_goes_on(program):
    fail(program)
    until(lambda: program.calls()[-1].command == NIM_DELETE, "icon removed")
    report, calls = program.report(), len(program.calls())
    program.clock.set(program.local(datetime.datetime(2030, 1, 1)))
    program.driver.send(program.main().hwnd, WM_TIMER, 1)
    program.driver.send(program.main().hwnd, WM_CLOSE)
    program.driver.broadcast("TaskbarCreated")
    program.settle()
    assert program.main().shown
    assert program.report() == report
    assert len(program.calls()) == calls, "a new shell gets no icon"
    assert not program.display.docked_icons()
    program.driver.hold(windows_path(program.folder / "vesk.dat"))  # the settings file is free
