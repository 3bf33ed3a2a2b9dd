"""What a user sees when the program starts, comes back, fails and ends."""

import datetime
import shutil

import pytest

from bench.driver import (SC_MINIMIZE, SW_FORCEMINIMIZE, SW_HIDE, SW_MINIMIZE, SW_SHOWMINIMIZED, SW_SHOWMINNOACTIVE,
                          WM_CLOSE, WM_SYSCOMMAND)
from bench.program import IMAGE, RESTORE, SOUTH
from bench.settings_file import SOUTHERN_VIEW, TRUE
from bench.user import bring_to_front, choose, focus, moon, wait_for_main
from bench.waiting import until
from bench.wine import windows_path

DISK_FULL = "Run-time error '61':\n\nDisk full"


@pytest.mark.parametrize("control", [RESTORE, SOUTH, "Close"])
def test_minimising_keeps_the_focus(program, control):
    bring_to_front(program)
    while focus(program) != control:
        before = focus(program)
        program.driver.keys("Tab")
        until(lambda: focus(program) != before, "next control")
    program.driver.post(program.main().hwnd, WM_SYSCOMMAND, SC_MINIMIZE)
    until(lambda: program.main().minimised, "minimised window")
    choose(program, "Show Main Window")
    until(lambda: not program.main().minimised and focus(program), "restored window with the keyboard")
    assert focus(program) == control


def move_into_the_corner(program):
    """Moves the main window out from under the message box."""
    x, y, width, _ = program.main().screen
    program.display.drag((x + width // 2, y + 10), (width // 2 + 20, 30))
    until(lambda: program.main().screen[0] == 20, "main window in the corner")


def test_under_an_error_box_the_main_window_is_disabled_and_painted(bench, start):
    folder = bench.folder()
    (folder / "vesk.dat").symlink_to("/dev/full")
    program = start(folder=folder)
    move_into_the_corner(program)
    picture = moon(program)
    program.click(SOUTH)
    box = until(program.message_box, "message box")
    main = program.main()
    assert main.screen[0] + main.screen[2] < box.screen[0], "the box covers the window"
    assert main.shown
    assert not main.enabled
    assert moon(program) == picture
    assert DISK_FULL in box.texts


def test_a_report_that_fails_after_its_picture_paints_the_picture(program):
    move_into_the_corner(program)
    picture = moon(program)
    program.clock.set(program.local(datetime.datetime(9999, 12, 30, 12, 0, 10)))
    program.hurry()
    until(program.message_box, "message box")
    x, y = program.main().client_origin
    until(lambda: program.display.grab(x + 60, y + 20, 131, 131) != picture, "another picture")


@pytest.fixture
def started_as(bench):
    """started_as(OPTION) starts Tidewell by "start OPTION"; returns its process id."""
    launchers = []

    def start(option):
        folder = bench.folder(recorded=False)
        launchers.append(bench.wine.start("start", "/wait", option, windows_path(folder / IMAGE),
                                          log=folder / "program.log", cwd=folder))
        return min(until(lambda: bench.driver.processes(IMAGE), "process of the program"))

    yield start
    for launcher in launchers:
        for pid in bench.driver.processes(IMAGE):
            bench.driver.end(pid)
        launcher.wait()


def main_of(bench, pid):
    return next((w for w in bench.driver.windows(pid) if w.class_ == "TidewellMoon" and w.visible), None)


@pytest.mark.parametrize("wish", [SW_HIDE, SW_SHOWMINIMIZED, SW_MINIMIZE, SW_SHOWMINNOACTIVE, SW_FORCEMINIMIZE])
def test_a_hidden_or_minimised_start_goes_into_the_tray(start, wish):
    program = start(wish=wish)
    program.settle()
    assert not program.main().shown
    program.display.click(*program.icon_centre())
    wait_for_main(program, True)
    assert not program.main().minimised
    until(lambda: program.foreground() == program.main().hwnd, "main window in the foreground")


def test_so_does_one_with_the_southern_view(bench, start):
    """It changes the icon before it adds it."""
    folder = bench.folder()
    (folder / "vesk.dat").write_bytes(bytes(SOUTHERN_VIEW) + TRUE)
    program = start(folder, wish=SW_SHOWMINNOACTIVE)
    assert [call.succeeded for call in program.calls()[:2]] == [False, True]
    program.settle()
    assert not program.main().shown


def test_no_library_is_loaded_from_the_programs_folder(bench, start):
    """Except its imports: Windows loads them before the program can act."""
    folder = bench.folder()
    shutil.copy(folder / "shell32.dll", folder / "planted.dll")
    start(folder)
    assert not (folder / "planted-loaded").exists()


def test_start_min_goes_into_the_tray(bench, started_as):
    pid = started_as("/min")
    until(bench.display.docked_icons, "icon in the tray")
    main = next(w for w in bench.driver.windows(pid) if w.class_ == "TidewellMoon")
    bench.driver.post(main.hwnd, WM_CLOSE)
    assert not main.visible
    until(lambda: not bench.driver.processes(IMAGE), "end of the program")


def test_a_maximised_start_shows_the_window_in_its_size(bench, started_as):
    pid = started_as("/max")
    main = until(lambda: main_of(bench, pid), "main window")
    until(lambda: main_of(bench, pid).client[2:] == [257, 342], "window of its own size")
    assert not main_of(bench, pid).minimised
    bench.driver.send(main.hwnd, WM_CLOSE)
    until(lambda: not bench.driver.processes(IMAGE), "end of the program")


def test_an_error_before_the_window_is_shown_shows_no_window(bench, start):
    """The error comes from a click that arrives while the shell adds the icon."""
    folder = bench.folder()
    (folder / "vesk.dat").symlink_to("/dev/full")
    (folder / "tray-clicks").touch()
    program = start(folder=folder, wait=False)
    box = until(program.message_box, "message box")
    assert not [window for window in program.windows() if window.class_ == "TidewellMoon" and window.visible]
    assert DISK_FULL in box.texts
