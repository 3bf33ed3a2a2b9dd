"""The keyboard stays with the program that has it until the user asks for a window of Tidewell."""

import pytest

from bench.driver import LEFT_DOWN, LEFT_UP, RIGHT_DOWN, RIGHT_UP, SW_SHOWMINNOACTIVE
from bench.user import bring_to_front, choose, open_menu, pass_a_minute, show_about, wait_for_main
from bench.waiting import until


def hover(program):
    """Over the icon and over the About box, if it is shown."""
    x, y = program.icon_centre()
    places = [(x + step, y) for step in (-3, 0, 3)]
    if program.about().shown:
        x, y, width, height = program.about().screen
        places += [(x + step, y + height // 2) for step in range(5, width - 5, 20)]
    for place in places:
        program.display.point(*place)


def button_down(program):
    program.tray_message(LEFT_DOWN)
    program.tray_message(RIGHT_DOWN)


@pytest.mark.parametrize("about", [False, True])
@pytest.mark.parametrize("event", [hover, button_down, pass_a_minute])
def test_the_icon_and_the_windows_do_not_take_the_keyboard(program, typewriter, event, about):
    if about:
        show_about(program)
        typewriter.take_the_keyboard()
    event(program)
    program.tray_message(512)  # arrives after all that the shell has sent
    program.settle()
    typewriter.type("def")
    assert typewriter.has_the_keyboard()


def test_the_menu_and_the_windows_come_to_the_foreground(program, typewriter):
    open_menu(program)
    until(lambda: program.foreground() == program.about().hwnd, "menu in the foreground")
    program.driver.keys("Escape")
    until(lambda: program.menu() is None, "menu closed")
    typewriter.take_the_keyboard()
    show_about(program)
    typewriter.take_the_keyboard()
    choose(program, "Show Main Window")
    until(lambda: program.foreground() == program.main().hwnd, "main window with the keyboard")


def test_hiding_an_inactive_main_window_does_not_move_the_keyboard(program, typewriter):
    program.tray_message(LEFT_UP)
    wait_for_main(program, False)
    program.settle()
    typewriter.type("def")


def test_hiding_the_active_main_window_gives_the_keyboard_to_the_program_below(program, typewriter):
    """Types inside Windows: without a window manager Wine does not move the focus of the screen."""
    bring_to_front(program)
    for text in ("def", "ghi"):
        program.tray_message(LEFT_UP)
        wait_for_main(program, False)
        until(typewriter.has_the_keyboard, "keyboard at the program below")
        typewriter.type(text, lambda letters: program.driver.keys(*letters))
        program.tray_message(LEFT_UP)
        until(lambda: program.main().shown and program.foreground() == program.main().hwnd, "main window in front")


def test_leaving_the_menu_gives_the_keyboard_back(program, typewriter):
    program.tray_message(RIGHT_UP)
    until(program.menu, "menu")
    program.driver.keys("Escape")
    until(lambda: program.menu() is None, "menu closed")
    until(typewriter.has_the_keyboard, "keyboard back at the other program")
    typewriter.type("def")


def test_a_minimised_start_does_not_take_the_keyboard(bench, start, typewriter):
    folder = bench.folder(marks=["tray-refuses"])  # Wine's tray would give the keyboard to a new icon
    program = start(folder, show=SW_SHOWMINNOACTIVE)
    until(lambda: program.main().minimised, "minimised window")
    typewriter.type("def")
    assert typewriter.has_the_keyboard()
