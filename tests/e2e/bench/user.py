"""What a user does and sees, in several steps: menu, windows, options, picture, message box."""

import datetime

from bench.display import RIGHT
from bench.driver import BM_CLICK, NIM_DELETE, SC_MINIMIZE, WM_SYSCOMMAND, WM_TIMER
from bench.waiting import until, until_same

ENTRIES = ["About", "Show Main Window", "Exit"]


def open_menu(program):
    """Opens the menu with a real click on the icon."""
    program.display.click(*program.icon_centre(), RIGHT)
    return until(program.menu, "menu")


def place_of(entry, menu):
    """The centre of an entry of the open menu."""
    x, y, width, height = menu.screen
    return x + width // 2, int(y + height / len(ENTRIES) * (ENTRIES.index(entry) + 0.5))


def choose(program, entry):
    """Opens the menu and clicks on an entry."""
    program.display.click(*place_of(entry, open_menu(program)))


def wait_for_main(program, shown):
    until(lambda: program.main().shown == shown, f"main window {'shown' if shown else 'hidden'}")


def hide(program):
    """Clicks on the icon."""
    program.display.click(*program.icon_centre())
    wait_for_main(program, False)


def minimise(program):
    program.driver.post(program.main().hwnd, WM_SYSCOMMAND, SC_MINIMIZE)
    until(lambda: program.main().minimised, "minimised window")


def bring_to_front(program):
    """Clicks the main window's title bar; waits until it has the keyboard."""
    program.icon_centre()  # first: the tray gives the keyboard to a new icon
    x, y, width, _ = program.main().screen
    program.display.click(x + width // 2, y + 10)
    until(lambda: program.foreground() == program.main().hwnd, "keyboard")


def bring_to_the_corner(program):
    """Moves the main window to where no message box covers it."""
    x, y, width, _ = program.main().screen
    program.display.drag((x + width // 2, y + 10), (width // 2 + 20, 30))
    until(lambda: program.main().screen[0] == 20, "main window in the corner")


def focus(program, form="Tidewell"):
    """The text of the control with the keyboard, or None."""
    hwnd = program.driver.input(program.top(form).hwnd).focus
    return next((window.text for window in program.windows() if window.hwnd == hwnd), None)


def show_about(program):
    """Chooses "About" and waits until the box has the keyboard."""
    choose(program, "About")
    until(lambda: program.about().shown and program.foreground() == program.about().hwnd, "About box with the keyboard")


def pass_a_minute(program):
    program.clock.advance(minutes=1)
    program.hurry()


def fail(program):
    """Causes a run-time error, at the end of the calendar; returns its box."""
    program.clock.set(program.local(datetime.datetime(9999, 12, 30, 12, 0, 10)))
    program.hurry()
    return until(program.message_box, "message box")


def tick(program, box):
    """Clicks an option; returns when it is handled."""
    program.driver.send(program.control(box).hwnd, BM_CLICK)
    program.settle()


def picture(program, x, y, width, height):
    """A part of the screen, once it no longer changes."""
    program.display.rest()
    return until_same(lambda: program.display.grab(x, y, width, height), "picture")


def moon(program):
    """The square of 131 pixels around the Moon's disc."""
    program.driver.redraw(program.main().hwnd)
    x, y = program.main().client_origin
    return picture(program, x + 60, y + 20, 131, 131)


def see_the_end(program):
    """Waits for the program's end with status 0; its last call removes the icon."""
    assert program.wait_for_end() == 0
    assert program.calls()[-1].command == NIM_DELETE
    assert program.calls()[-1].succeeded
    until(lambda: not program.display.docked_icons(), "tray without icons")


def see_the_box_and_end(program, text):
    """Expects one message box, in front of all windows while the timer ticks; its "OK" ends the program."""
    until(lambda: (box := program.message_box()) and text in box.texts, f"message box that says {text!r}")
    box = program.message_box()
    assert box.text == "Tidewell"
    main = program.main()
    if main:
        for _ in range(3):
            program.driver.send(main.hwnd, WM_TIMER, 1)

    def alone_and_in_front():
        front, *behind = [window.class_ for window in program.windows() if not window.parent and window.shown]
        return front == "#32770" and set(behind) <= {"TidewellMoon", "TidewellAbout"}

    until(alone_and_in_front, "box alone and in front")
    until(lambda: not program.display.docked_icons(), "tray without icons")
    [ok] = [window for window in program.windows() if window.parent == box.hwnd and window.class_ == "Button"]
    x, y, width, height = ok.screen
    program.display.click(x + width // 2, y + height // 2)
    assert program.wait_for_end() == 1
