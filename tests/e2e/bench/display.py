"""A virtual screen with a tray on it, its mouse and its pictures."""

import os
import re
import subprocess
import time

from Xlib import X
from Xlib.display import Display as Server
from Xlib.ext import xtest

from bench.waiting import until

WIDTH, HEIGHT = 1024, 768
MARGIN = (5, 5)  # the pointer rests here: no window is near
LEFT, RIGHT = 1, 3


class Picture:
    """A part of the screen: red, green and blue bytes, row by row."""

    def __init__(self, width, height, data):
        self.width, self.height, self.data = width, height, data

    def pixel(self, x, y):
        at = (y * self.width + x) * 3
        return tuple(self.data[at:at + 3])

    def colours(self):
        return {tuple(self.data[at:at + 3]) for at in range(0, len(self.data), 3)}

    def __eq__(self, other):
        return (self.width, self.height, self.data) == (other.width, other.height, other.data)

    def __repr__(self):
        return f"Picture({self.width}x{self.height})"


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
        until(lambda: '("panel" "trayer")' in self.tree(), "tray on the screen")
        self._server = Server(self.environment["DISPLAY"])
        self.rest()

    def _start(self, *command, pass_fds=(), environment=None):
        # A session of its own keeps a Ctrl-C from ending it before Wine. The death signal ends it with the tests.
        with open(self._logs / f"{command[0]}.log", "w") as log:
            self._processes.append(subprocess.Popen(
                ["setpriv", "--pdeathsig", "KILL", *command], stdin=subprocess.DEVNULL, stdout=log, stderr=log, pass_fds=pass_fds,
                env=os.environ | (environment or {}), start_new_session=True))

    def close(self):
        self._server.close()
        for process in reversed(self._processes):
            process.kill()
            process.wait()

    def _run(self, *command):
        return subprocess.run(command, env=os.environ | self.environment, check=True, stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE).stdout

    def tree(self):
        """The X windows, as xwininfo lists them."""
        def look():
            try:
                return self._run("xwininfo", "-root", "-tree").decode(errors="replace")
            except subprocess.CalledProcessError:
                return None  # a window went while xwininfo was looking

        return until(look, "list of the X windows")

    # ---- mouse

    def point(self, x, y):
        self._run("xdotool", "mousemove", str(x), str(y))

    def rest(self):
        """Moves the pointer off every window."""
        self.point(*MARGIN)

    def click(self, x, y, button=LEFT):
        self._run("xdotool", "mousemove", str(x), str(y), "click", str(button))

    def clicks_in_a_row(self, pause, *clicks):
        """Clicks at (x, y, button) with a pause in seconds between them. xdotool would take longer to start."""
        for number, (x, y, button) in enumerate(clicks):
            if number:
                time.sleep(pause)
            xtest.fake_input(self._server, X.MotionNotify, x=x, y=y)
            xtest.fake_input(self._server, X.ButtonPress, button)
            xtest.fake_input(self._server, X.ButtonRelease, button)
            self._server.sync()

    def press(self, x, y):
        """Presses the left button and holds it, until let_go()."""
        self._run("xdotool", "mousemove", str(x), str(y), "mousedown", str(LEFT))

    def let_go(self):
        """Releases the left button."""
        self._run("xdotool", "mouseup", str(LEFT))

    def drag(self, start, end):
        self._run("xdotool", "mousemove", *map(str, start), "mousedown", str(LEFT),
                  "mousemove", *map(str, end), "mouseup", str(LEFT))

    def type(self, *keys):
        """Types keys, by xdotool's names, into the X window with the focus."""
        self._run("xdotool", "key", *keys)

    # ---- pictures

    def grab(self, x=0, y=0, width=WIDTH, height=HEIGHT):
        data = self._run("import", "-silent", "-window", "root", "-crop", f"{width}x{height}+{x}+{y}", "+repage",
                         "-depth", "8", "rgb:-")
        assert len(data) == width * height * 3, f"{width}x{height}+{x}+{y} is partly off the screen"
        return Picture(width, height, data)

    def save(self, path, x=0, y=0, width=WIDTH, height=HEIGHT, scale=1):
        """Saves a part of the screen as a PNG file."""
        self._run("import", "-silent", "-window", "root", "-crop", f"{width}x{height}+{x}+{y}", "+repage",
                  "-filter", "point", "-resize", f"{scale}00%", "-strip", str(path))

    # ---- tray

    def docked_icons(self):
        """Places (x, y, width, height) of the icons that Wine's shell has put into the tray."""
        lines = self.tree().splitlines()
        starts = [number for number, line in enumerate(lines) if '("panel" "trayer")' in line]
        if not starts:
            return []
        indent = len(lines[starts[0]]) - len(lines[starts[0]].lstrip())
        icons = []
        for line in lines[starts[0] + 1:]:
            if line.strip() and len(line) - len(line.lstrip()) <= indent:
                break
            if "explorer.exe" in line:
                width, height, x, y = re.search(r" (\d+)x(\d+)\+-?\d+\+-?\d+ +\+(-?\d+)\+(-?\d+)", line).groups()
                icons.append((int(x), int(y), int(width), int(height)))
        return icons

    def shake_tray(self):
        """Moves the tray a pixel up and back: when it moves, it tells its icons where they are."""
        self._run("xdotool", "search", "--name", "^panel$",
                  "windowmove", "--relative", "--", "0", "-1", "windowmove", "--relative", "--", "0", "1")
