"""What a user does and sees, where that takes several steps: the menu, the windows, the options, the picture."""

from bench.display import RIGHT
from bench.driver import BM_CLICK
from bench.waiting import until, until_same

ENTRIES = ["About", "Show Main Window", "Exit"]


def open_menu(program):
    """Opens the menu by a real click on the icon."""
    program.display.click(*program.icon_centre(), RIGHT)
    return until(program.menu, "menu")


def place_of(entry, menu):
    """Where an entry of the open menu is on the screen."""
    x, y, width, height = menu.screen
    return x + width // 2, int(y + height / len(ENTRIES) * (ENTRIES.index(entry) + 0.5))


def choose(program, entry):
    """Opens the menu and clicks on an entry."""
    program.display.click(*place_of(entry, open_menu(program)))


def wait_for_main(program, shown):
    """Waits until the main window is shown, or hidden."""
    until(lambda: program.main().shown == shown, f"main window {'shown' if shown else 'hidden'}")


def bring_to_front(program, form="Tidewell"):
    """Gives a window the keyboard by a click on its title bar."""
    x, y, width, _ = program.top(form).screen
    program.display.click(x + width // 2, y + 10)
    until(lambda: program.foreground() == program.top(form).hwnd, "keyboard")


def focus(program, form="Tidewell"):
    """The text of the control with the keyboard, or None."""
    hwnd = program.driver.input(program.top(form).hwnd).focus
    return next((window.text for window in program.windows() if window.hwnd == hwnd), None)


def show_about(program):
    """Chooses "About" and waits until the box has the keyboard."""
    choose(program, "About")
    until(lambda: program.about().shown and program.foreground() == program.about().hwnd, "About box with the keyboard")


def tick(program, box):
    """Clicks an option; on return it is handled."""
    program.driver.send(program.control(box).hwnd, BM_CLICK)
    program.settle()


def moon(program):
    """The picture of the Moon: the 131 pixels square, at once the surroundings of its disc."""
    program.display.rest()
    program.driver.redraw(program.main().hwnd)
    x, y = program.main().client_origin
    return until_same(lambda: program.display.grab(x + 60, y + 20, 131, 131), "picture of the Moon")
