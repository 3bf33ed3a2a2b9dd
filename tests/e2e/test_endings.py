"""What ends the program, and what does not."""

import pytest

from bench.driver import NIM_DELETE, NIM_MODIFY, SC_CLOSE, WM_CLOSE, WM_ENDSESSION, WM_QUERYENDSESSION, WM_SYSCOMMAND
from bench.program import IMAGE, RESTORE, SOUTH
from bench.settings_file import RESTORE_IN_TRAY, SOUTHERN_VIEW, TRUE
from bench.user import bring_to_front, open_menu, tick
from bench.waiting import until


def press_close(program):
    program.click("Close")


def click_close_box(program):
    program.click_close_box()


def alt_f4(program):
    bring_to_front(program)
    program.driver.keys("Alt+F4")


def close_command(program):
    program.driver.post(program.main().hwnd, WM_SYSCOMMAND, SC_CLOSE)


def close_message(program):
    program.driver.post(program.main().hwnd, WM_CLOSE)


WAYS = [press_close, click_close_box, alt_f4, close_command, close_message]


def wait_for_hiding(program):
    until(lambda: not program.main().shown, "hidden window")
    program.settle()
    assert not program.ended


@pytest.mark.parametrize("way", WAYS)
def test_closing_ends_the_program_and_takes_the_icon_away(program, way):
    way(program)
    assert program.wait_for_end() == 0
    assert [call.command for call in program.calls()].count(NIM_DELETE) == 1
    assert program.calls()[-1].command == NIM_DELETE
    until(lambda: not program.display.docked_icons(), "tray without icons")


def test_a_click_while_the_shell_removes_the_icon_does_nothing(program):
    count = len(program.calls())
    (program.folder / "tray-clicks").touch()
    close_message(program)
    assert program.wait_for_end() == 0
    assert [call.command for call in program.calls()[count:]] == [NIM_DELETE]


def test_closing_ends_it_with_the_menu_open(program):
    open_menu(program)
    close_message(program)
    assert program.wait_for_end() == 0
    assert program.calls()[-1].command == NIM_DELETE


@pytest.mark.parametrize("way", WAYS)
def test_with_the_box_ticked_closing_hides_the_window(program, way):
    tick(program, RESTORE)
    way(program)
    wait_for_hiding(program)
    assert program.display.docked_icons()
    program.display.click(*program.icon_centre())
    until(lambda: program.main().shown, "window back")
    assert program.control(RESTORE).checked == 1


def test_a_stored_tick_alone_does_not_hide_the_window(start, bench):
    folder = bench.folder()
    (folder / "vesk.dat").write_bytes(bytes(RESTORE_IN_TRAY) + TRUE + bytes(6))
    program = start(folder)
    assert program.control(RESTORE).checked == 0
    close_command(program)
    assert program.wait_for_end() == 0


def test_a_ticked_box_hides_the_window_whatever_is_stored(program):
    tick(program, RESTORE)
    (program.folder / "vesk.dat").write_bytes(b"")
    tick(program, SOUTH)  # this reads the file
    close_command(program)
    wait_for_hiding(program)


@pytest.mark.parametrize("same_folder", [True, False])
def test_a_second_copy_ends_at_once_and_silently(bench, program, same_folder):
    folder = program.folder if same_folder else bench.folder(recorded=False)
    second = bench.wine.start(folder / IMAGE, log=folder / "second.log", cwd=folder)
    try:
        until(lambda: second.poll() == 0, "end of the second copy")
    finally:
        second.kill()
    assert not program.ended
    assert len([window for window in program.windows() if window.text == "Tidewell" and not window.parent]) == 1
    assert len(program.calls()) == 2, "the second copy made no icon"
    assert len(program.display.docked_icons()) == 1


def test_of_fifty_simultaneous_copies_one_stays(bench, start):
    folder = bench.folder(recorded=False)
    copies = [bench.wine.start(folder / IMAGE, log=folder / "copies.log", cwd=folder) for _ in range(50)]
    try:
        until(lambda: sum(copy.poll() is None for copy in copies) == 1, "single running copy")
        assert sorted(copy.poll() for copy in copies if copy.poll() is not None) == [0] * 49
        pid = bench.driver.processes(IMAGE)
        assert len(pid) == 1
        until(lambda: [w for w in bench.driver.windows(pid[0]) if w.text == "Tidewell" and w.shown], "main window")
        until(lambda: len(bench.display.docked_icons()) == 1, "one icon")
        main = [w for w in bench.driver.windows(pid[0]) if w.text == "Tidewell" and not w.parent][0]
        bench.driver.post(main.hwnd, WM_CLOSE)
        until(lambda: all(copy.poll() == 0 for copy in copies), "end of the last copy")
    finally:
        for copy in copies:
            if copy.poll() is None:
                copy.kill()


@pytest.mark.parametrize("ticked, hidden", [(False, False), (True, False), (True, True)])
def test_the_end_of_the_session_is_never_blocked(program, ticked, hidden):
    if ticked:
        tick(program, RESTORE)
    if hidden:
        close_command(program)
        wait_for_hiding(program)
    windows = program.main().hwnd, program.about().hwnd
    for window in windows:
        assert program.driver.send(window, WM_QUERYENDSESSION) == 1
    for window in windows:
        program.driver.send(window, WM_ENDSESSION, 0)  # another program has cancelled it
    program.settle()
    assert not program.ended
    program.driver.send(windows[0], WM_ENDSESSION, 1)
    assert program.calls()[-1].command == NIM_DELETE, "the system may kill it after its answer"
    assert program.wait_for_end() == 0


def test_the_end_of_the_session_during_the_start_adds_no_icon(bench, start):
    """The stored option comes first, so the program changes the icon before it adds it."""
    folder = bench.folder()
    (folder / "vesk.dat").write_bytes(bytes(SOUTHERN_VIEW) + TRUE)
    (folder / "tray-ends-session").touch()
    program = start(folder, wait=False)
    assert program.wait_for_end() == 0
    assert [call.command for call in program.calls()] == [NIM_MODIFY]
