"""Windows that are very wide, partly visible, or lost off the screen."""

import pytest

from bench.display import HEIGHT, WIDTH
from bench.driver import LEFT_UP, RIGHT_UP, SC_RESTORE, WM_DISPLAYCHANGE, WM_SYSCOMMAND
from bench.user import choose, hide, minimise, show_about, wait_for_main
from bench.waiting import until


@pytest.mark.parametrize("column", [LEFT_UP, RIGHT_UP])
def test_a_pointer_whose_x_equals_the_number_of_a_click_does_nothing(program, column):
    """The icon's events are mouse moves with the event's number as x. On a high-DPI screen the About box is wide enough
    for a real mouse move with that x."""
    show_about(program)
    x, y, _, height = program.about().screen
    program.driver.place(program.about().hwnd, 100, y, 800, height)
    until(lambda: program.about().screen[2] == 800, "wide About box")
    x, y = program.about().client_origin
    for row in (1, 2, 50, 100):
        program.display.point(x + column, y + row)
        program.settle()
        assert program.main().shown
        assert program.menu() is None
    assert program.about().shown


# ---- lost windows: the driver moves a window off the screen and reports a change of the screen

LOST = (5000, 4000)


def lose(program, form):
    window = program.top(form)
    program.driver.place(window.hwnd, *LOST, *window.screen[2:])
    assert program.top(form).screen[:2] == list(LOST)


def change_the_screen(program, form="Tidewell"):
    program.driver.send(program.top(form).hwnd, WM_DISPLAYCHANGE, 32, HEIGHT << 16 | WIDTH)


def centred(window):
    x, y, width, height = window.screen
    return abs(2 * x + width - WIDTH) <= 1 and abs(2 * y + height - HEIGHT) <= 1


@pytest.mark.parametrize("show", ["click", "menu"])
def test_a_lost_hidden_main_window_is_shown_in_the_middle(program, show):
    hide(program)
    lose(program, "Tidewell")
    change_the_screen(program)
    assert program.main().screen[:2] == list(LOST), "while it is hidden its screen may come back"
    program.tray_message(LEFT_UP) if show == "click" else choose(program, "Show Main Window")
    wait_for_main(program, True)
    assert centred(program.main())


def test_a_lost_about_box_is_shown_in_the_middle(program):
    lose(program, "About Moon")
    show_about(program)
    assert centred(program.about())


@pytest.mark.parametrize("form", ["Tidewell", "About Moon"])
def test_a_window_that_loses_its_screen_moves_to_the_middle(program, form):
    show_about(program)
    lose(program, form)
    change_the_screen(program, form)
    assert centred(program.top(form))


def test_a_lost_minimised_window_is_restored_in_the_middle(program):
    lose(program, "Tidewell")
    minimise(program)
    minimised = program.main().screen
    change_the_screen(program)
    assert program.main().screen == minimised
    program.driver.post(program.main().hwnd, WM_SYSCOMMAND, SC_RESTORE)
    until(lambda: not program.main().minimised, "restored window")
    program.settle()
    assert centred(program.main())


def test_a_partly_visible_window_stays(program):
    x, y, width, height = program.main().screen
    program.driver.place(program.main().hwnd, WIDTH - 20, y, width, height)
    change_the_screen(program)
    for shown in (False, True):
        program.tray_message(LEFT_UP)
        wait_for_main(program, shown)
    assert program.main().screen[:2] == [WIDTH - 20, y]
