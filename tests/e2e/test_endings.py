"""What ends the program, even inside a modal loop, and what does not."""

import functools

import pytest

from bench.driver import (NIM_DELETE, NIM_MODIFY, RIGHT_UP, SC_CLOSE, SC_KEYMENU, SC_MOVE, WM_CLOSE, WM_ENDSESSION,
                          WM_QUERYENDSESSION, WM_QUIT, WM_SYSCOMMAND)
from bench.program import IMAGE, RESTORE, SOUTH, SOUTHERN_VIEW, TRUE
from bench.user import (bring_to_front, fail, open_menu, see_the_box_and_end, see_the_end, show_about, tick,
                        wait_for_main)
from bench.waiting import until


def alt_f4(program):
    bring_to_front(program)
    program.driver.keys("Alt+F4")


def close(program):
    program.driver.post(program.main().hwnd, WM_CLOSE)


WAYS = {
    "Close": lambda program: program.click("Close"),
    "close box": lambda program: program.click_close_box(),
    "Alt+F4": alt_f4,
    "close command": lambda program: program.driver.post(program.main().hwnd, WM_SYSCOMMAND, SC_CLOSE),
    "close message": close,
}


def hide_by_closing(program, way=close):
    way(program)
    wait_for_main(program, False)
    program.settle()
    assert not program.ended


@pytest.mark.parametrize("way", WAYS.values(), ids=WAYS)
def test_closing_ends_the_program_and_takes_the_icon_away(program, way):
    way(program)
    see_the_end(program)
    assert [call.command for call in program.calls()].count(NIM_DELETE) == 1


def test_a_click_while_the_shell_removes_the_icon_does_nothing(program):
    count = len(program.calls())
    (program.folder / "tray-clicks").touch()
    close(program)
    assert program.wait_for_end() == 0
    assert [call.command for call in program.calls()[count:]] == [NIM_DELETE]


@pytest.mark.parametrize("way", WAYS.values(), ids=WAYS)
def test_with_the_box_ticked_closing_hides_the_window(program, way):
    """Whatever is stored."""
    tick(program, RESTORE)
    (program.folder / "vesk.dat").write_bytes(b"")
    tick(program, SOUTH)  # this reads the file
    hide_by_closing(program, way)
    assert program.display.docked_icons()
    program.display.click(*program.icon_centre())
    wait_for_main(program, True)
    assert program.control(RESTORE).checked == 1


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


def test_wm_quit_takes_the_icon_away(program):
    program.click(SOUTH)
    program.settle()
    program.driver.post(program.main().hwnd, WM_QUIT)
    see_the_end(program)


# ---- inside the modal loops of the system: a move, a menu

def drag(program, form="Tidewell"):
    x, y, width, _ = program.top(form).screen
    program.display.press(x + width // 2, y + 10)
    program.display.point(x + width // 2 + 30, y + 40)
    until(lambda: program.top(form).screen[:2] != [x, y], "window that follows the pointer")


def move_by_keyboard(program):
    bring_to_front(program)
    x, y, _, _ = program.main().screen
    program.driver.post(program.main().hwnd, WM_SYSCOMMAND, SC_MOVE)
    program.settle()
    program.driver.keys("Right", "Right")
    until(lambda: program.main().screen[:2] != [x, y], "window that follows the keys")


def drag_about(program):
    show_about(program)
    drag(program, "About Moon")


def open_system_menu(program):
    bring_to_front(program)
    program.driver.post(program.main().hwnd, WM_SYSCOMMAND, SC_KEYMENU, ord(" "))
    until(program.menu, "system menu")


def enter_system_menu(program):
    """By Alt alone: the menu has the keyboard, but is closed."""
    bring_to_front(program)
    program.driver.keys("Alt")
    until(lambda: program.driver.input(program.main().hwnd).in_menu, "keyboard at the menu")


STATES = [drag, move_by_keyboard, drag_about, open_menu, open_system_menu, enter_system_menu]


def end_session(program):
    program.driver.signal(program.main().hwnd, WM_ENDSESSION, 1)


@pytest.fixture
def busy(program, request):
    """A program in one of the states."""
    request.param(program)
    yield program
    program.display.let_go()


@pytest.mark.parametrize("way", [close, end_session])
@pytest.mark.parametrize("busy", STATES, indirect=True)
def test_it_ends_inside_a_modal_loop(busy, way, start):
    way(busy)
    see_the_end(busy)
    busy.display.let_go()
    start()  # nothing is left that would stop the next start


@pytest.mark.parametrize("busy", [drag, move_by_keyboard], indirect=True)
def test_exit_ends_it_during_a_move(busy):
    busy.tray_message(RIGHT_UP)
    until(busy.menu, "menu of the icon")
    busy.driver.keys("Up", "Enter")
    assert busy.wait_for_end() == 0


@pytest.mark.parametrize("busy", STATES, indirect=True)
def test_an_error_shows_its_box_inside_a_modal_loop(busy):
    fail(busy)
    busy.display.let_go()
    see_the_box_and_end(busy, "Run-time error '5':\n\nInvalid procedure call or argument")
