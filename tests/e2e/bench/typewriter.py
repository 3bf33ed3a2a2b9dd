"""Another program with the keyboard (native/typewriter.cpp)."""

from bench.waiting import until

TYPEWRITER = "typewriter.exe"


class Typewriter:
    """One window to type into."""

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
        self._clicks += 1  # at another place each time: a double click would select the text
        self._bench.display.click(x + width // 2 + 20 * self._clicks, y + height // 2)
        until(self.has_the_keyboard, "keyboard at the typewriter")

    def has_the_keyboard(self):
        state = self._bench.driver.input(self.hwnd)
        return state.focus == state.foreground == self.hwnd

    def type(self, text, press=None):
        """Types on the screen's keyboard, or by another function; waits for the whole text."""
        (press or self._bench.display.type)(text)
        self.typed += text
        until(lambda: self.text == self.typed, f"text {self.typed!r} in the other program")
