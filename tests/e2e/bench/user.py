"""What a user does and sees, in several steps: menu, windows, options, picture, message box."""

from bench.display import RIGHT
from bench.driver import BM_CLICK, WM_TIMER
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


def bring_to_front(program):
    """Clicks the main window's title bar; waits until it has the keyboard."""
    x, y, width, _ = program.main().screen
    program.display.click(x + width // 2, y + 10)
    until(lambda: program.foreground() == program.main().hwnd, "keyboard")


def focus(program, form="Tidewell"):
    """The text of the control with the keyboard, or None."""
    hwnd = program.driver.input(program.top(form).hwnd).focus
    return next((window.text for window in program.windows() if window.hwnd == hwnd), None)


def show_about(program):
    """Chooses "About" and waits until the box has the keyboard."""
    choose(program, "About")
    until(lambda: program.about().shown and program.foreground() == program.about().hwnd, "About box with the keyboard")


def tick(program, box):
    """Clicks an option; returns when it is handled."""
    program.driver.send(program.control(box).hwnd, BM_CLICK)
    program.settle()


def moon(program):
    """The square of 131 pixels around the Moon's disc."""
    program.display.rest()
    program.driver.redraw(program.main().hwnd)
    x, y = program.main().client_origin
    return until_same(lambda: program.display.grab(x + 60, y + 20, 131, 131), "picture of the Moon")


def see_the_box_and_end(program, text):
    """Expects one message box, in front of all windows while the timer ticks; its "OK" ends the program."""
    until(lambda: (box := program.message_box()) and text in box.texts, f"message box that says {text!r}")
    box = program.message_box()
    assert box.text == "Tidewell"
    main = program.main()
    if main:
        for _ in range(3):
            program.driver.send(main.hwnd, WM_TIMER, 1)

    def front_to_back():
        return [window.class_ for window in program.windows() if not window.parent and window.shown]

    def alone_and_in_front():
        front, *behind = front_to_back()
        return front == "#32770" and set(behind) <= {"TidewellMoon", "TidewellAbout"}

    until(alone_and_in_front, "box alone and in front")
    until(lambda: not program.display.docked_icons(), "tray without icons")
    ok = [window for window in program.windows() if window.parent == box.hwnd and window.class_ == "Button"]
    assert len(ok) == 1
    x, y, width, height = ok[0].screen
    program.display.click(x + width // 2, y + height // 2)
    assert program.wait_for_end() == 1
