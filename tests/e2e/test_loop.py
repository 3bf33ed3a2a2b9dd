"""The program ends at once, even inside a modal loop, and leaves nothing behind."""

import pytest

from bench.driver import RIGHT_UP, SC_KEYMENU, SC_MOVE, WM_CLOSE, WM_ENDSESSION, WM_QUIT, WM_SYSCOMMAND
from bench.program import SOUTH
from bench.user import bring_to_front, fail, open_menu, see_the_box_and_end, see_the_end, show_about
from bench.waiting import until


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


def close(program):
    program.driver.post(program.main().hwnd, WM_CLOSE)


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
