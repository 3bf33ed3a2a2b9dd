"""The main window and the About box: their controls, the picture, and the keyboard."""

import pytest

from bench.driver import LEFT_UP
from bench.program import RESTORE, SOUTH, THIRD
from bench.user import bring_to_front, focus, hide, minimise, moon, show_about
from bench.waiting import until

TWIPS = 15  # per pixel

# Text (with fields of the oracle's report); window class; left, top, width, height in twips; parent; enabled; visible.
MAIN = [
    ("", "TidewellFrame", 90, 3690, 3645, 855, "Tidewell", True, True),
    (RESTORE, "Button", 180, 180, 2595, 255, "", True, True),
    (THIRD, "Button", 3300, 480, 2955, 255, "", False, True),
    (SOUTH, "Button", 180, 480, 2955, 255, "", True, True),
    ("Close", "Button", 2700, 4680, 1065, 345, "Tidewell", True, True),
    ("{label1}", "Static", 90, 120, 1035, 255, "Tidewell", True, False),
    ("{lines[0]}", "Static", -210, 2520, 4275, 255, "Tidewell", True, True),
    ("{lines[1]}", "Static", -210, 2820, 4275, 255, "Tidewell", True, True),
    ("{lines[2]}", "Static", -210, 3120, 4275, 255, "Tidewell", True, True),
    ("{lines[3]}", "Static", -210, 3420, 4275, 255, "Tidewell", True, True),
]
ABOUT = [
    ("Tidewell 1.0", "Static", 180, 150, 3885, 480, "About Moon", True, True),
    ("Developed by Quorvane Systems", "Static", 180, 705, 3885, 660, "About Moon", True, True),
    ("OK", "Button", 2820, 1470, 1260, 345, "About Moon", True, True),
]

WHITE, BLACK = (255, 255, 255), (0, 0, 0)


def pixels(place):
    return [round(length / TWIPS) for length in place]


# ---- contents

@pytest.mark.parametrize("form, size, wanted", [
    ("Tidewell", [257, 342], MAIN),
    ("About Moon", [283, 137], ABOUT),
])
def test_the_windows_are_topmost_and_have_their_sizes_and_controls(program, form, size, wanted):
    show_about(program)  # only then is the box complete
    assert program.top(form).client[2:] == size
    assert program.top(form).exstyle & 0x8
    report = program.wanted_report()
    windows = {window.hwnd: window for window in program.windows()}
    found = [(window.text, window.class_, *window.place, windows[window.parent].text, window.enabled, window.visible)
             for window in program.inside(form) if window.place[1] < windows[window.parent].client[3]]
    assert found == [(text.format(**report), class_, *pixels(place), parent, enabled, visible)
                     for text, class_, *place, parent, enabled, visible in wanted]


def test_the_pictures_of_the_about_box_are_below_its_edge(program):
    show_about(program)
    below = [window for window in program.inside("About Moon") if window.place[1] >= 137]
    assert len(below) == 28
    assert {tuple(window.place[2:]) for window in below} == {(16, 16)}
    assert not any(window.visible for window in below)


# ---- picture

def test_a_click_on_the_southern_view_mirrors_the_icon_and_the_picture(program):
    count = len(program.calls())
    program.click(SOUTH)
    until(lambda: len(program.calls()) > count, "update")
    assert (program.calls()[count - 1].icon, program.calls()[-1].icon) == (18, 10)
    x, y = program.main().client_origin
    edges = [(x + 65, y + 85), (x + 185, y + 85)]  # of the Moon, left and right
    until(lambda: [program.display.grab(*edge, 1, 1).pixel(0, 0) for edge in edges] == [BLACK, WHITE], "mirrored Moon")


# ---- keyboard

@pytest.mark.parametrize("control", [RESTORE, SOUTH, "Close"])
def test_minimising_keeps_the_focus_and_the_picture(program, control):
    before = moon(program)
    bring_to_front(program)
    while (focused := focus(program)) != control:
        program.driver.keys("Tab")
        until(lambda: focus(program) != focused, "next control")
    minimise(program)
    program.tray_message(LEFT_UP)
    until(lambda: not program.main().minimised and focus(program), "restored window with the keyboard")
    assert focus(program) == control
    until(lambda: moon(program) == before, "the same picture")


def test_the_keyboard_alone_hides_and_ends_it(program):
    bring_to_front(program)
    program.driver.keys("Space", "Tab", "Tab", "Space")  # tick, go to Close, press it
    until(lambda: not program.main().shown, "hidden window")
    program.tray_message(LEFT_UP)
    until(lambda: focus(program) == "Close", "window back, with the same focus")
    program.driver.keys("Tab", "Space")
    until(lambda: program.control(RESTORE).checked == 0, "no tick")
    program.driver.keys("Shift+Tab", "Enter")
    assert program.wait_for_end() == 0


def test_enter_presses_close_only_with_the_focus_on_it(program):
    bring_to_front(program)
    program.driver.keys("Enter", "Escape")
    program.settle()
    program.ticks()
    assert not program.ended
    assert program.main().shown
    assert program.control(RESTORE).checked == 0
    program.driver.keys("Tab", "Tab", "Enter")
    assert program.wait_for_end() == 0


# ---- About box

@pytest.mark.parametrize("way", ["OK", "Escape", "Enter", "Alt+F4", "close box"])
def test_every_way_to_close_the_about_box_only_hides_it(program, way):
    show_about(program)
    if way == "OK":
        program.click("OK", "About Moon")
    elif way == "close box":
        program.click_close_box("About Moon")
    else:
        program.driver.keys(way)
    until(lambda: program.about() and not program.about().shown, "hidden About box")
    assert program.main().shown
    hide(program)
    show_about(program)
    assert not program.main().shown
    assert focus(program, "About Moon") == "OK"


def test_the_about_box_stays_where_it_was_dragged_to(program):
    """Each message of the icon makes it topmost, but must not move it."""
    show_about(program)
    x, y, _, _ = program.about().screen
    program.display.drag((x + 60, y + 10), (x + 160, y + 90))
    until(lambda: program.about().screen[:2] == [x + 100, y + 80], "About box in its new place")
    program.tray_message(512)
    program.settle()
    assert program.about().screen[:2] == [x + 100, y + 80]
