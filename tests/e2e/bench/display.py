"""A virtual screen with a tray on it, its mouse and its pictures."""

import contextlib
import dataclasses
import os
import subprocess

from Xlib import X, XK
from Xlib.display import Display as Server
from Xlib.error import BadDrawable, BadWindow
from Xlib.ext import xtest

from bench.waiting import until

WIDTH, HEIGHT = 1024, 768
MARGIN = (5, 5)  # the pointer rests here: no window is near
LEFT, RIGHT = 1, 3


@dataclasses.dataclass
class Picture:
    """A part of the screen: red, green and blue bytes, row by row."""

    width: int
    height: int
    data: bytes = dataclasses.field(repr=False)

    def pixel(self, x, y):
        at = (y * self.width + x) * 3
        return tuple(self.data[at:at + 3])


class Display:
    """The screen; close() ends it."""

    def __init__(self, logs):
        self._logs = logs
        self._processes = []
        read, write = os.pipe()
        # Without -noreset the server restarts when its last client leaves, and refuses clients meanwhile.
        self._start("Xvfb", "-displayfd", str(write), "-noreset", "-screen", "0", f"{WIDTH}x{HEIGHT}x24",
                    pass_fds=[write])
        os.close(write)
        with os.fdopen(read) as told:
            number = told.readline().strip()
        if not number:
            raise RuntimeError(f"Xvfb did not start, see {logs}/Xvfb.log")
        self.environment = {"DISPLAY": f":{number}"}
        # The tray must exist before Wine's shell looks for one.
        self._start("trayer", "--edge", "bottom", "--align", "right", "--widthtype", "pixel", "--width", "200",
                    "--height", "22", "--SetDockType", "true", environment=self.environment)
        self._server = Server(self.environment["DISPLAY"])
        self._root = self._server.screen().root
        until(self._panel, "tray on the screen")
        self.rest()

    def _start(self, *command, pass_fds=(), environment=None):
        # In its own session a Ctrl-C does not end it before Wine. The death signal ends it with the tests.
        with open(self._logs / f"{command[0]}.log", "w") as log:
            self._processes.append(subprocess.Popen(
                ["setpriv", "--pdeathsig", "KILL", *command], stdin=subprocess.DEVNULL, stdout=log, stderr=log, pass_fds=pass_fds,
                env=os.environ | (environment or {}), start_new_session=True))

    def close(self):
        self._server.close()
        for process in reversed(self._processes):
            process.kill()
            process.wait()

    # ---- mouse

    def _send(self, event, detail=0, **place):
        xtest.fake_input(self._server, event, detail, **place)
        self._server.sync()

    def point(self, x, y):
        self._send(X.MotionNotify, x=x, y=y)

    def rest(self):
        """Moves the pointer off every window."""
        self.point(*MARGIN)

    def press(self, x, y, button=LEFT):
        """Presses a button and holds it, until let_go()."""
        self.point(x, y)
        self._send(X.ButtonPress, button)

    def let_go(self, button=LEFT):
        self._send(X.ButtonRelease, button)

    def click(self, x, y, button=LEFT):
        self.press(x, y, button)
        self.let_go(button)

    def drag(self, start, end):
        self.press(*start)
        self.point(*end)
        self.let_go()

    def type(self, text):
        """Types letters into the X window with the focus."""
        for letter in text:
            key = self._server.keysym_to_keycode(XK.string_to_keysym(letter))
            self._send(X.KeyPress, key)
            self._send(X.KeyRelease, key)

    # ---- pictures

    def grab(self, x=0, y=0, width=WIDTH, height=HEIGHT):
        data = self._root.get_image(x, y, width, height, X.ZPixmap, 0xFFFFFFFF).data  # blue, green, red, 0
        pixels = bytearray(width * height * 3)
        pixels[0::3], pixels[1::3], pixels[2::3] = data[2::4], data[1::4], data[0::4]
        return Picture(width, height, bytes(pixels))

    def save(self, path, x=0, y=0, width=WIDTH, height=HEIGHT, scale=1):
        """Saves a part of the screen as a PNG file."""
        subprocess.run(["import", "-silent", "-window", "root", "-crop", f"{width}x{height}+{x}+{y}", "+repage",
                        "-filter", "point", "-resize", f"{scale}00%", "-strip", path],
                       env=os.environ | self.environment, check=True, stdin=subprocess.DEVNULL)

    # ---- tray

    def _panel(self):
        """The tray's X window, or None."""
        for window in self._root.query_tree().children:
            with contextlib.suppress(BadWindow):  # it went meanwhile
                if window.get_wm_class() == ("panel", "trayer"):
                    return window
        return None

    def docked_icons(self):
        """Places (x, y, width, height) of the icons that Wine's shell has put into the tray."""
        def inside(window):
            for child in window.query_tree().children:
                yield child
                yield from inside(child)

        def place(window):
            corner, size = self._root.translate_coords(window, 0, 0), window.get_geometry()
            return corner.x, corner.y, size.width, size.height

        while True:
            try:
                return [place(window) for window in inside(self._panel())
                        if "explorer.exe" in (window.get_wm_class() or ())]
            except (BadWindow, BadDrawable):
                pass  # a window went meanwhile

    def shake_tray(self):
        """Moves the tray a pixel up and back: when it moves, it tells its icons where they are."""
        y = self._panel().get_geometry().y
        for moved in (y - 1, y):
            self._panel().configure(y=moved)
            self._server.sync()
