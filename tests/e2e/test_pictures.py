"""Pictures of the program for the documentation, in the folder pictures of the bench, always of the same moment."""

from bench.program import SOUTH
from bench.user import bring_to_front, moon, open_menu, show_about, wait_for_main
from bench.waiting import until

MARGIN = 8


def save(program, name, *places):
    """A picture of the smallest piece of the screen with all the places, and a margin."""
    left, top = (min(place[axis] for place in places) - MARGIN for axis in (0, 1))
    right, bottom = (min(max(place[axis] + place[axis + 2] for place in places) + MARGIN, end)
                     for axis, end in ((0, 1024), (1, 768)))
    program.display.save(program.pictures / f"{name}.png", left, top, right - left, bottom - top)


def test_take_the_pictures(bench, program):
    program.pictures = bench.folders.pictures
    bring_to_front(program)
    program.display.rest()
    north = moon(program)
    save(program, "main-north", program.main().screen)

    program.click(SOUTH)
    until(lambda: moon(program) != north, "southern picture")
    program.display.rest()
    save(program, "main-south", program.main().screen)
    program.click(SOUTH)
    until(lambda: moon(program) == north, "northern picture")

    icon = program.display.docked_icons()[0]
    save(program, "tray-icon", icon)
    menu = open_menu(program)
    program.driver.keys("Down")
    save(program, "tray-menu", menu.screen, icon)
    program.driver.keys("Escape")
    until(lambda: program.menu() is None, "menu closed")

    program.display.click(*program.icon_centre())
    wait_for_main(program, False)
    show_about(program)
    program.display.rest()
    program.tray_message(512)  # with the icon of the main window
    program.settle()
    save(program, "about", program.about().screen)
    program.display.save(program.pictures / "screen.png")
