"""What ends the program, and what does not."""

import functools

import pytest

from bench.driver import NIM_DELETE, NIM_MODIFY, SC_CLOSE, WM_CLOSE, WM_ENDSESSION, WM_QUERYENDSESSION, WM_SYSCOMMAND
from bench.program import IMAGE, RESTORE, SOUTH
from bench.settings_file import SOUTHERN_VIEW, TRUE
from bench.user import bring_to_front, see_the_end, tick, wait_for_main
from bench.waiting import until


def alt_f4(program):
    bring_to_front(program)
    program.driver.keys("Alt+F4")


WAYS = {
    "Close": lambda program: program.click("Close"),
    "close box": lambda program: program.click_close_box(),
    "Alt+F4": alt_f4,
    "close command": lambda program: program.driver.post(program.main().hwnd, WM_SYSCOMMAND, SC_CLOSE),
    "close message": lambda program: program.driver.post(program.main().hwnd, WM_CLOSE),
}


def hide_by_closing(program, way="close message"):
    WAYS[way](program)
    wait_for_main(program, False)
    program.settle()
    assert not program.ended


@pytest.mark.parametrize("way", WAYS)
def test_closing_ends_the_program_and_takes_the_icon_away(program, way):
    WAYS[way](program)
    see_the_end(program)
    assert [call.command for call in program.calls()].count(NIM_DELETE) == 1


def test_a_click_while_the_shell_removes_the_icon_does_nothing(program):
    count = len(program.calls())
    (program.folder / "tray-clicks").touch()
    WAYS["close message"](program)
    assert program.wait_for_end() == 0
    assert [call.command for call in program.calls()[count:]] == [NIM_DELETE]


@pytest.mark.parametrize("way", WAYS)
def test_with_the_box_ticked_closing_hides_the_window(program, way):
    tick(program, RESTORE)
    hide_by_closing(program, way)
    assert program.display.docked_icons()
    program.display.click(*program.icon_centre())
    wait_for_main(program, True)
    assert program.control(RESTORE).checked == 1


def test_a_ticked_box_hides_the_window_whatever_is_stored(program):
    tick(program, RESTORE)
    (program.folder / "vesk.dat").write_bytes(b"")
    tick(program, SOUTH)  # this reads the file
    hide_by_closing(program)


def test_of_fifty_simultaneous_copies_one_stays(bench, start):
    folders = [bench.folder(recorded=False) for _ in range(2)]
    copies = [bench.wine.start(folder / IMAGE, log=folder / "copies.log", cwd=folder) for folder in 25 * folders]
    try:
        until(lambda: sum(copy.poll() is None for copy in copies) == 1, "single running copy")
        assert sorted(copy.poll() for copy in copies if copy.poll() is not None) == [0] * 49
        [pid] = bench.driver.processes(IMAGE)
        windows = functools.partial(bench.driver.windows, pid)
        [main] = until(lambda: [w for w in windows() if w.text == "Tidewell" and w.shown], "main window")
        until(lambda: len(bench.display.docked_icons()) == 1, "one icon")
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
        hide_by_closing(program)
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
    """With the southern view stored, the program tries to change the icon before it adds it."""
    program = start(bench.folder(settings=bytes(SOUTHERN_VIEW) + TRUE, marks=["tray-ends-session"]), wait=False)
    assert program.wait_for_end() == 0
    assert [call.command for call in program.calls()] == [NIM_MODIFY]
