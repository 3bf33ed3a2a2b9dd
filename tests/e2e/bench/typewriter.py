"""Another program with the keyboard (native/typewriter.cpp)."""

from bench.waiting import until

TYPEWRITER = "typewriter.exe"


class Typewriter:
    """One window to type into."""

    def __init__(self, bench):
        self._bench, self._typed, self._clicks = bench, "", 0
        self._process = bench.wine.start(bench.tools[TYPEWRITER], log=bench.folders.logs / "typewriter.log")
        until(self.window, "window to type into")

    def window(self):
        """The window, or None."""
        return next((window for pid in self._bench.driver.processes(TYPEWRITER)
                     for window in self._bench.driver.windows(pid) if window.class_ == "Edit" and window.shown), None)

    def close(self):
        self._process.kill()
        self._process.wait()
        until(lambda: not self._bench.driver.processes(TYPEWRITER), "end of the typewriter")

    def take_the_keyboard(self):
        x, y, width, height = self.window().screen
        self._clicks += 1  # at another place each time: a double click would select the text
        self._bench.display.click(x + width // 2 + 20 * self._clicks, y + height // 2)
        until(self.has_the_keyboard, "keyboard at the typewriter")

    def has_the_keyboard(self):
        hwnd = self.window().hwnd
        state = self._bench.driver.input(hwnd)
        return state.focus == state.foreground == hwnd

    def type(self, text, press=None):
        """Types on the screen's keyboard, or by another function; waits for the whole text."""
        (press or self._bench.display.type)(text)
        self._typed += text
        until(lambda: self.window().text == self._typed, f"text {self._typed!r} in the other program")
