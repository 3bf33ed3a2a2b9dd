"""Requests to the helper program inside Windows (native/driver.cpp)."""

import contextlib
import functools
import json
import select
import subprocess
from types import SimpleNamespace

from bench.waiting import BOUND

# Messages and codes of Windows.
WM_CLOSE, WM_TIMER, WM_MOUSEMOVE, WM_POWERBROADCAST = 0x10, 0x113, 0x200, 0x218
WM_TIMECHANGE, WM_SYSCOMMAND, WM_QUERYENDSESSION, WM_ENDSESSION = 0x1E, 0x112, 0x11, 0x16
WM_QUIT, WM_DISPLAYCHANGE = 0x12, 0x7E
BM_CLICK, BM_GETSTATE, BM_SETSTATE, BST_PUSHED = 0xF5, 0xF2, 0xF3, 4
SC_MOVE, SC_MINIMIZE, SC_CLOSE, SC_KEYMENU, SC_RESTORE = 0xF010, 0xF020, 0xF060, 0xF100, 0xF120
LEFT_DOWN, LEFT_UP, RIGHT_DOWN, RIGHT_UP = 513, 514, 516, 517
SW_HIDE, SW_SHOWMINIMIZED, SW_MAXIMIZE, SW_MINIMIZE, SW_SHOWMINNOACTIVE, SW_FORCEMINIMIZE = 0, 2, 3, 6, 7, 11
LEFT_DOUBLE, RIGHT_DOUBLE = 515, 518
RDW_ALL = 1 | 4 | 0x80 | 0x100 | 0x400  # invalidate, erase, the children, at once, the frame
SWP_NOZORDER, SWP_NOACTIVATE = 4, 16
NIM_ADD, NIM_MODIFY, NIM_DELETE = 0, 1, 2
VK = {"Tab": 9, "Enter": 13, "Shift": 16, "Alt": 18, "Escape": 27, "Space": 32, "Up": 38, "Right": 39, "Down": 40,
      "F4": 115}


class DriverError(AssertionError):
    """The driver refused a request or did not answer."""


class Driver:
    """The helper. It runs for the whole session; close() ends it."""

    def __init__(self, wine, path, log):
        self._launch = functools.partial(wine.start, path, log=log, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self._process = self._launch()
        # The first request about windows starts Wine's shell. It must not inherit a program's environment.
        self.ask("tips")

    def close(self):
        self._process.kill()
        self._process.wait()

    def ask(self, *words):
        """Sends a request; returns the answer."""
        request = " ".join(map(str, words))
        line = b""
        with contextlib.suppress(OSError):
            self._process.stdin.write(request.encode() + b"\n")
            self._process.stdin.flush()
            if select.select([self._process.stdout], [], [], BOUND)[0]:
                line = self._process.stdout.readline()
        if not line:
            self.close()
            self._process = self._launch()  # a late answer must not be taken for the next request's
            raise DriverError(f"no answer to: {request}")
        answer = json.loads(line)
        if isinstance(answer, dict) and "error" in answer:
            raise DriverError(f"{request}: {answer['error']}")
        return answer

    def __getattr__(self, request):
        """driver.post(hwnd, message) sends the request "post HWND MESSAGE"; see kRequests in native/driver.cpp."""
        return functools.partial(self.ask, request)

    def windows(self, pid):
        """Every window of a process, parents before children; see Program.windows()."""
        return [SimpleNamespace(**window) for window in self.ask("windows", pid)]

    def input(self, hwnd):
        """The focus of a window's thread, the foreground window, and in_menu: whether the thread is in a menu."""
        return SimpleNamespace(**self.ask("input", hwnd))

    def redraw(self, hwnd):
        """Repaints a window and its children, at once."""
        return self.ask("redraw", hwnd, 0, 0, RDW_ALL)

    def place(self, hwnd, x, y, width, height):
        """Moves and sizes a window, even off the screen."""
        return self.ask("place", hwnd, 0, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE)

    def hold(self, path, share=0):
        """Keeps a file (a Windows path) open until release(); exclusively, unless a share mode is given."""
        return self.ask("hold", share, path)

    def keys(self, *strokes):
        """Presses keys inside Windows: names of VK or characters; + joins keys held together."""
        for stroke in strokes:
            self.ask("keys", *(VK.get(key) or ord(key.upper()) for key in stroke.split("+")))
