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
MARGIN = (5, 5)  # where the pointer rests, away from every window
LEFT, RIGHT = 1, 3


class Picture:
    """A piece of the screen, as red, green, blue bytes row by row."""

    def __init__(self, width, height, data):
        self.width, self.height, self.data = width, height, data

    def pixel(self, x, y):
        """The colour (red, green, blue) at a place."""
        at = (y * self.width + x) * 3
        return tuple(self.data[at:at + 3])

    def colours(self):
        """The set of colours in it."""
        return {tuple(self.data[at:at + 3]) for at in range(0, len(self.data), 3)}

    def __eq__(self, other):
        return (self.width, self.height, self.data) == (other.width, other.height, other.data)

    def __repr__(self):
        return f"Picture({self.width}x{self.height})"


class Display:
    """The screen; ends with close()."""

    def __init__(self, logs):
        self._logs = logs
        self._processes = []
        read, write = os.pipe()
        # Without -noreset the server starts anew when its last client leaves, and turns away who comes just then.
        self._start("Xvfb", "-displayfd", str(write), "-noreset", "-screen", "0", f"{WIDTH}x{HEIGHT}x24",
                    pass_fds=[write])
        os.close(write)
        with os.fdopen(read) as told:
            number = told.readline().strip()
        if not number:
            raise RuntimeError(f"Xvfb did not start, see {logs}/Xvfb.log")
        self.environment = {"DISPLAY": f":{number}"}
        # A tray must be there before Wine's shell looks for one.
        self._start("trayer", "--edge", "bottom", "--align", "right", "--widthtype", "pixel", "--width", "200",
                    "--height", "22", "--SetDockType", "true", environment=self.environment)
        until(lambda: '("panel" "trayer")' in self.tree(), "tray on the screen")
        self._server = Server(self.environment["DISPLAY"])
        self.rest()

    def _start(self, *command, pass_fds=(), environment=None):
        # In a session of its own, so that a Ctrl-C on the tests does not end it before Wine; but not for longer than the
        # tests live, however they end.
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
        """Moves the pointer."""
        self._run("xdotool", "mousemove", str(x), str(y))

    def rest(self):
        """Moves the pointer where it touches nothing."""
        self.point(*MARGIN)

    def click(self, x, y, button=LEFT):
        """A real click."""
        self._run("xdotool", "mousemove", str(x), str(y), "click", str(button))

    def clicks_in_a_row(self, pause, *clicks):
        """Real clicks (x, y, button) with a pause in seconds between them. Not by xdotool, whose start takes longer."""
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
        """Lets go of the left button, wherever the pointer is."""
        self._run("xdotool", "mouseup", str(LEFT))

    def drag(self, start, end):
        """Drags from one place to another."""
        self._run("xdotool", "mousemove", *map(str, start), "mousedown", str(LEFT),
                  "mousemove", *map(str, end), "mouseup", str(LEFT))

    def type(self, *keys):
        """Real key strokes, which go to the X window with the focus (xdotool's key names)."""
        self._run("xdotool", "key", *keys)

    # ---- pictures

    def grab(self, x=0, y=0, width=WIDTH, height=HEIGHT):
        """A piece of the screen."""
        data = self._run("import", "-silent", "-window", "root", "-crop", f"{width}x{height}+{x}+{y}", "+repage",
                         "-depth", "8", "rgb:-")
        assert len(data) == width * height * 3, f"{width}x{height}+{x}+{y} is not all on the screen"
        return Picture(width, height, data)

    def save(self, path, x=0, y=0, width=WIDTH, height=HEIGHT, scale=1):
        """A piece of the screen as a PNG file."""
        self._run("import", "-silent", "-window", "root", "-crop", f"{width}x{height}+{x}+{y}", "+repage",
                  "-filter", "point", "-resize", f"{scale}00%", "-strip", str(path))

    # ---- tray

    def docked_icons(self):
        """Places (x, y, width, height) of the icons in the tray that Wine's shell has put there."""
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
        """Moves the tray a pixel up and down again: a tray tells its icons where they are when it moves."""
        self._run("xdotool", "search", "--name", "^panel$",
                  "windowmove", "--relative", "--", "0", "-1", "windowmove", "--relative", "--", "0", "1")
