"""The pictures for the README, in the folder pictures of the bench; tools/pictures.sh puts them into docs/."""

import datetime

from bench.display import HEIGHT, WIDTH
from bench.driver import RIGHT_UP, WM_MOUSEMOVE
from bench.program import SOUTH
from bench.user import bring_to_front, moon, show_about, wait_for_main
from bench.waiting import until

A_CRESCENT = datetime.datetime(2026, 11, 15, 20, 0, 10)  # which shows what the southern view mirrors
MENU_HEIGHT = 57


def save(bench, name, place):
    """A piece of the screen, without a margin: what is around it is black here."""
    bench.display.save(bench.folders.pictures / f"{name}.png", *place)


def test_take_the_pictures(bench, start):
    program = start(at=A_CRESCENT)
    bring_to_front(program)
    north = moon(program)
    save(bench, "main", program.main().screen)

    program.click(SOUTH)
    until(lambda: moon(program) != north, "southern picture")
    save(bench, "southern", program.main().screen)
    program.click(SOUTH)
    until(lambda: moon(program) == north, "northern picture")

    # From above the icon, where Windows opens the menu upwards: Wine would lay it over the icon.
    x, y = program.icon_centre()
    program.display.point(x, program.display.docked_icons()[0][1] - MENU_HEIGHT)
    program.tray_message(RIGHT_UP)
    left, top = until(program.menu, "menu").screen[:2]
    program.driver.keys("Down")
    save(bench, "tray", (left, top, WIDTH - left, HEIGHT - top))
    program.driver.keys("Escape")
    until(lambda: program.menu() is None, "menu closed")

    program.display.click(x, y)
    wait_for_main(program, False)
    show_about(program)
    program.display.rest()
    program.tray_message(WM_MOUSEMOVE)  # with the icon of the main window
    program.settle()
    save(bench, "about", program.about().screen)
