"""Windows on the screen: wide ones, lost ones, and their icons."""

import pytest

from bench.driver import LEFT_UP, RIGHT_UP
from bench.waiting import until
from test_windows import show_about

ICON = {(0, 0, 128), (255, 255, 0)}  # the night sky and the Moon of the window's icon


@pytest.mark.parametrize("column", [LEFT_UP, RIGHT_UP])
def test_the_pointer_at_the_column_of_a_click_is_none(program, column):
    """A screen of high resolution, to which the program is not scaled, makes the About box that wide."""
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


def test_the_about_box_has_the_icon_of_the_main_window(program):
    """The small one, where a shrunk big one would be another picture."""
    show_about(program)

    def caption_icon(window):
        x, y, _, _ = window.screen
        grabbed = program.display.grab(x + 5, y + 4, 16, 16)
        return [grabbed.pixel(x, y) if grabbed.pixel(x, y) in ICON else None for y in range(16) for x in range(16)]
    of_main = caption_icon(program.main())
    assert set(of_main) >= ICON
    assert caption_icon(program.about()) == of_main
