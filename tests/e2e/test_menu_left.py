"""The user opens the menu and goes to another program."""

import os

import pytest

from bench.display import LEFT, RIGHT
from bench.driver import LEFT_UP
from bench.user import open_menu
from bench.waiting import until
from test_keyboard import typewriter  # noqa: F401

TRIES = 20 if os.environ.get("TIDEWELL_LONG") == "1" else 3


def test_a_menu_ends_when_another_program_gets_the_foreground(program, typewriter):  # noqa: F811
    open_menu(program)
    until(lambda: program.foreground() == program.about().hwnd, "menu in the foreground")
    program.settle()
    assert program.menu()
    program.driver.to_front(typewriter.hwnd)
    until(lambda: program.menu() is None, "menu closed")
    assert typewriter.has_the_keyboard()


@pytest.mark.parametrize("gap", [0, 5, 20, 50, 300])
def test_a_click_elsewhere_right_after_the_click_on_the_icon_leaves_no_dead_icon(program, typewriter, gap):  # noqa: F811
    """The click elsewhere may take the foreground before the menu comes, or just after."""
    icon = (*program.icon_centre(), RIGHT)
    x, y, width, height = typewriter.place
    for number in range(2 * TRIES):  # the main window is shown and hidden in turn
        elsewhere = (x + 30 + 20 * (number % 4), y + height // 2, LEFT)
        program.display.clicks_in_a_row(gap / 1000, icon, elsewhere)
        shown = program.main().shown

        def toggled():
            if program.menu():
                program.driver.keys("Escape")
            program.tray_message(LEFT_UP)
            program.settle()
            return program.main().shown != shown
        until(toggled, f"icon that answers, in try {number}", bound=10)
