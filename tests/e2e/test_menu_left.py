"""The user opens the menu and goes to another program."""

import os

import pytest

from bench.display import LEFT, RIGHT
from bench.driver import LEFT_UP
from bench.user import open_menu
from bench.waiting import until

TRIES = 20 if os.environ.get("TIDEWELL_LONG") == "1" else 3


def test_a_menu_closes_when_another_program_gets_the_foreground(program, typewriter):
    open_menu(program)
    until(lambda: program.foreground() == program.about().hwnd, "menu in the foreground")
    program.settle()
    assert program.menu()
    program.driver.to_front(typewriter.hwnd)
    until(lambda: program.menu() is None, "menu closed")
    assert typewriter.has_the_keyboard()


@pytest.mark.parametrize("gap", [0, 5, 20, 50, 300])
def test_the_icon_still_answers_after_a_right_click_and_a_quick_click_elsewhere(program, typewriter, gap):
    """The second click may take the foreground just before or just after the menu opens."""
    icon = (*program.icon_centre(), RIGHT)
    x, y, width, height = typewriter.place
    for number in range(2 * TRIES):  # hides and shows the main window in turn
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
