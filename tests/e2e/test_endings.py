"""How the program ends, and how it does not."""

import pytest

from bench.driver import BM_CLICK, NIM_DELETE, WM_CLOSE, WM_ENDSESSION, WM_QUERYENDSESSION, WM_SYSCOMMAND
from bench.program import IMAGE
from bench.waiting import until

RESTORE = "Restore in System Tray"
SC_CLOSE = 0xF060


def press_close(program):
    program.driver.post(program.control("Close").hwnd, BM_CLICK)


def close_command(program):
    program.driver.post(program.main().hwnd, WM_SYSCOMMAND, SC_CLOSE)


def close_message(program):
    program.driver.post(program.main().hwnd, WM_CLOSE)


WAYS = [press_close, close_command, close_message]


@pytest.mark.parametrize("way", WAYS)
def test_closing_ends_the_program_and_takes_the_icon_away(program, way):
    way(program)
    assert program.wait_for_end() == 0
    assert [call.command for call in program.calls()].count(NIM_DELETE) == 1
    assert program.calls()[-1].command == NIM_DELETE
    until(lambda: not program.display.docked_icons(), "tray without icons")


@pytest.mark.parametrize("way", WAYS)
def test_closing_hides_the_window_while_the_box_is_ticked(program, way):
    program.driver.send(program.control(RESTORE).hwnd, BM_CLICK)
    way(program)
    until(lambda: not program.main().visible, "hidden window")
    assert not program.ended
    count = len(program.calls())
    program.clock.advance(minutes=1)
    program.hurry()
    until(lambda: len(program.calls()) > count, "update of the hidden program")
    assert program.calls()[-1].command != NIM_DELETE


def test_the_box_on_the_window_decides_not_the_stored_option(program):
    program.driver.send(program.control(RESTORE).hwnd, BM_CLICK)
    program.driver.send(program.control(RESTORE).hwnd, BM_CLICK)
    close_command(program)
    assert program.wait_for_end() == 0


def test_a_second_copy_ends_at_once_in_silence(bench, program):
    second = bench.wine.start(program.folder / IMAGE, log=program.folder / "second.log", cwd=program.folder)
    assert second.wait(timeout=60) == 0
    assert not program.ended
    assert len([window for window in program.windows() if window.text == "Tidewell" and not window.parent]) == 1
    assert len(program.calls()) <= 2, "the second copy made no icon"


def test_of_fifty_copies_started_at_once_one_stays(bench, start):
    folder = bench.folder(recorded=False)
    copies = [bench.wine.start(folder / IMAGE, log=folder / "copies.log", cwd=folder) for _ in range(50)]
    try:
        until(lambda: sum(copy.poll() is None for copy in copies) == 1, "single copy that goes on")
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


@pytest.mark.parametrize("hidden", [False, True])
def test_the_end_of_the_session_is_never_blocked(program, hidden):
    program.driver.send(program.control(RESTORE).hwnd, BM_CLICK)
    if hidden:
        close_command(program)
        until(lambda: not program.main().visible, "hidden window")
    window = program.main().hwnd
    assert program.driver.send(window, WM_QUERYENDSESSION) == 1
    program.driver.send(window, WM_ENDSESSION, 0)
    program.settle()
    assert not program.ended, "another program has stopped the end of the session"
    program.driver.post(window, WM_ENDSESSION, 1)
    assert program.wait_for_end() == 0
    assert program.calls()[-1].command == NIM_DELETE
