"""Takes the pictures for the README; tools/pictures.sh copies them into docs/."""

import datetime

from bench.user import bring_to_front
from bench.waiting import until, until_same

A_CRESCENT = datetime.datetime(2026, 11, 15, 20, 0, 10)
TIP = (255, 46)  # pixels left of and above the icon's lower right corner; they hold the tip


def test_take_the_pictures(bench, start):
    program = start(at=A_CRESCENT)
    bring_to_front(program)
    program.display.rest()
    # No margin: around the window the screen is black.
    program.display.save(bench.folders.pictures / "main.png", *program.main().screen)

    program.display.point(*program.icon_centre())
    until(program.driver.tips, "tip")
    x, y, width, height = program.display.docked_icons()[0]
    place = (x + width - TIP[0], y + height - TIP[1], *TIP)
    until_same(lambda: program.display.grab(*place), "tip")
    program.display.save(bench.folders.pictures / "tray.png", *place, scale=2)
