"""The keyboard stays with the program that has it until the user asks for a window of Tidewell."""

import pytest

from bench.driver import LEFT_DOWN, LEFT_UP, RIGHT_DOWN, RIGHT_UP, SW_SHOWMINNOACTIVE
from bench.user import bring_to_front, choose, open_menu, show_about, wait_for_main
from bench.waiting import until
from bench.wine import windows_path

TYPEWRITER = "typewriter.exe"


class Typewriter:
    """Another program with the keyboard: one window to type into."""

    def __init__(self, bench):
        self._bench = bench
        self._process = bench.wine.start(bench.tools[TYPEWRITER], log=bench.folders.logs / "typewriter.log")
        self.hwnd = until(lambda: self._windows(), "window to type into")[0].hwnd
        self.typed = ""
        self._clicks = 0

    def _windows(self):
        return [window for pid in self._bench.driver.processes(TYPEWRITER)
                for window in self._bench.driver.windows(pid) if window.class_ == "Edit" and window.shown]

    def close(self):
        self._process.kill()
        self._process.wait()
        until(lambda: not self._bench.driver.processes(TYPEWRITER), "end of the typewriter")

    @property
    def place(self):
        return self._windows()[0].screen

    @property
    def text(self):
        return self._windows()[0].text

    def take_the_keyboard(self):
        x, y, width, height = self.place
        self._clicks += 1  # each at another place, or two of them make a double click, which selects the text
        self._bench.display.click(x + width // 2 + 20 * self._clicks, y + height // 2)
        until(self.has_the_keyboard, "keyboard at the typewriter")

    def has_the_keyboard(self):
        state = self._bench.driver.input(self.hwnd)
        return state.focus == state.foreground == self.hwnd

    def type(self, text, press=None):
        """Types on the real keyboard of the screen, or on another one; what has been typed so far must stand there."""
        (press or self._bench.display.type)(*text)
        self.typed += text
        until(lambda: self.text == self.typed, f"text {self.typed!r} in the other program")


@pytest.fixture
def typewriter(bench, program):
    """The other program, with the keyboard, beside a running Tidewell."""
    other = Typewriter(bench)
    other.take_the_keyboard()
    other.type("abc")
    yield other
    other.close()


def hover(program):
    x, y = program.icon_centre()
    for step in (-3, 0, 3):
        program.display.point(x + step, y)


def button_down(program):
    program.tray_message(LEFT_DOWN)
    program.tray_message(RIGHT_DOWN)


def update(program):
    count = len(program.calls())
    program.clock.advance(minutes=1)
    program.hurry()
    until(lambda: len(program.calls()) > count, "update")


EVENTS = [hover, button_down, update]


@pytest.mark.parametrize("event", EVENTS)
@pytest.mark.parametrize("about", ["hidden", "shown"])
def test_the_icon_leaves_the_keyboard_alone(program, typewriter, event, about):
    if about == "shown":
        show_about(program)
        typewriter.take_the_keyboard()
    event(program)
    program.tray_message(512)  # what the shell has sent before is handled before
    program.settle()
    typewriter.type("def")
    assert typewriter.has_the_keyboard()


def test_the_pointer_crosses_the_about_box_without_taking_the_keyboard(program, typewriter):
    show_about(program)
    typewriter.take_the_keyboard()
    x, y, width, height = program.about().screen
    for step in range(5, width - 5, 20):
        program.display.point(x + step, y + height // 2)
    program.settle()
    typewriter.type("def")
    assert typewriter.has_the_keyboard()


def test_the_menu_about_and_the_main_window_come_to_the_foreground(program, typewriter):
    open_menu(program)
    until(lambda: program.foreground() == program.about().hwnd, "menu in the foreground")
    program.driver.keys("Escape")
    until(lambda: program.menu() is None, "menu closed")
    typewriter.take_the_keyboard()
    show_about(program)
    typewriter.take_the_keyboard()
    choose(program, "Show Main Window")
    until(lambda: program.foreground() == program.main().hwnd, "main window with the keyboard")


def test_a_main_window_that_the_icon_hides_leaves_the_keyboard_where_it_is(program, typewriter):
    program.tray_message(LEFT_UP)
    wait_for_main(program, False)
    program.settle()
    typewriter.type("def")


def test_a_main_window_that_the_icon_hides_gives_the_keyboard_to_the_program_below(program, typewriter):
    """Typed on the keyboard of Windows: without a window manager Wine does not hand on the focus of the screen."""
    bring_to_front(program)
    for text in ("def", "ghi"):
        program.tray_message(LEFT_UP)
        wait_for_main(program, False)
        until(typewriter.has_the_keyboard, "keyboard at the program below")
        typewriter.type(text, program.driver.keys)
        program.tray_message(LEFT_UP)
        until(lambda: program.main().shown and program.foreground() == program.main().hwnd, "main window in front")


def test_a_menu_that_is_left_gives_the_keyboard_back(program, typewriter):
    program.tray_message(RIGHT_UP)
    until(program.menu, "menu")
    program.driver.keys("Escape")
    until(lambda: program.menu() is None, "menu closed")
    until(typewriter.has_the_keyboard, "keyboard back at the other program")
    typewriter.type("def")


def test_a_minimised_start_from_a_shortcut_leaves_the_keyboard_alone(bench, start):
    folder = bench.folder()
    (folder / "tray-refuses").touch()  # Wine's tray gives the keyboard to an icon that it has added
    other = Typewriter(bench)
    try:
        other.take_the_keyboard()
        program = start(folder, wish=SW_SHOWMINNOACTIVE)
        until(lambda: program.main().minimised, "minimised window")
        other.type("abc")
        assert other.has_the_keyboard()
    finally:
        other.close()
