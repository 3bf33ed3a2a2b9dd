"""Requests to the helper program inside Windows (native/driver.cpp, which lists them)."""

import contextlib
import functools
import json
import queue
import subprocess
import threading
from types import SimpleNamespace

from bench.waiting import BOUND

# Messages and codes of Windows that tests use.
WM_CLOSE, WM_TIMER, WM_MOUSEMOVE, WM_POWERBROADCAST = 0x10, 0x113, 0x200, 0x218
WM_TIMECHANGE, WM_SYSCOMMAND, WM_QUERYENDSESSION, WM_ENDSESSION = 0x1E, 0x112, 0x11, 0x16
WM_QUIT, WM_DISPLAYCHANGE = 0x12, 0x7E
BM_CLICK, BM_GETSTATE, BM_SETSTATE, BST_PUSHED = 0xF5, 0xF2, 0xF3, 4
SC_MOVE, SC_MINIMIZE, SC_CLOSE, SC_KEYMENU, SC_RESTORE = 0xF010, 0xF020, 0xF060, 0xF100, 0xF120
LEFT_DOWN, LEFT_UP, RIGHT_DOWN, RIGHT_UP = 513, 514, 516, 517
SW_HIDE, SW_SHOWMINIMIZED, SW_MINIMIZE, SW_SHOWMINNOACTIVE, SW_FORCEMINIMIZE = 0, 2, 6, 7, 11
LEFT_DOUBLE, RIGHT_DOUBLE = 515, 518
NIM_ADD, NIM_MODIFY, NIM_DELETE = 0, 1, 2
VK = {"Tab": 9, "Enter": 13, "Shift": 16, "Control": 17, "Alt": 18, "Escape": 27, "Space": 32, "Left": 37, "Up": 38,
      "Right": 39, "Down": 40, "F4": 115, "F10": 121}


class DriverError(AssertionError):
    """The driver could not do what was asked."""


class Driver:
    """The helper, running for the whole session; ends with close()."""

    def __init__(self, wine, path, log):
        self._launch = functools.partial(wine.start, path, log=log, stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self._start()
        # The first request that concerns windows starts Wine's shell, free of the environment of any program.
        self.ask("tips")

    def _start(self):
        self._process, self._answers = self._launch(), queue.Queue()
        threading.Thread(target=self._listen, args=(self._process.stdout, self._answers), daemon=True).start()

    @staticmethod
    def _listen(output, answers):
        for line in output:
            answers.put(line)
        answers.put(None)

    def close(self):
        self._process.kill()
        self._process.wait()

    def ask(self, *words):
        """One request; returns the answer."""
        request = " ".join(map(str, words))
        line = None
        with contextlib.suppress(OSError, queue.Empty):
            self._process.stdin.write(request.encode() + b"\n")
            self._process.stdin.flush()
            line = self._answers.get(timeout=BOUND)
        if line is None:
            self.close()
            self._start()  # so that a late answer is not taken for that of the next request
            raise DriverError(f"no answer to: {request}")
        answer = json.loads(line)
        if isinstance(answer, dict) and "error" in answer:
            raise DriverError(f"{request}: {answer['error']}")
        return answer

    def processes(self, name):
        """Ids of the processes that run an image, like Tidewell.exe."""
        return self.ask("processes", name)

    def windows(self, pid):
        """Every window of a process, parents before children, as objects (see Window in program.py)."""
        return [SimpleNamespace(**{"class_" if key == "class" else key: value for key, value in window.items()})
                for window in self.ask("windows", pid)]

    def send(self, hwnd, message, wparam=0, lparam=0):
        """SendMessage: the window has handled it on return."""
        return self.ask("send", hwnd, message, wparam, lparam)

    def post(self, hwnd, message, wparam=0, lparam=0):
        """PostMessage: for what may block, like a menu."""
        return self.ask("post", hwnd, message, wparam, lparam)

    def signal(self, hwnd, message, wparam=0, lparam=0):
        """SendNotifyMessage: before all that is posted, into an open menu too, and without waiting."""
        return self.ask("signal", hwnd, message, wparam, lparam)

    def broadcast(self, name):
        """Posts a registered message, like TaskbarCreated, to all top-level windows."""
        return self.ask("broadcast", name)

    def notify(self, command, hwnd, icon=1):
        """Shell_NotifyIcon for the icon of another program's window."""
        return self.ask("notify", command, hwnd, icon)

    def input(self, hwnd):
        """The focus of a window's thread and the foreground window, as handles, and in_menu: whether it is in a menu."""
        return SimpleNamespace(**self.ask("input", hwnd))

    def accessible(self, hwnd):
        """The MSAA name of a window."""
        return SimpleNamespace(**self.ask("accessible", hwnd))

    def tips(self):
        """Texts of the tool tips on the screen."""
        return self.ask("tips")

    def handles(self, pid):
        """How many kernel handles, gdi objects and windows a process has."""
        return SimpleNamespace(**self.ask("handles", pid))

    def redraw(self, hwnd):
        """Makes a window and its children paint themselves anew."""
        return self.ask("redraw", hwnd)

    def to_front(self, hwnd):
        """Brings a window of another program to the foreground."""
        return self.ask("front", hwnd)

    def place(self, hwnd, x, y, width, height):
        """Moves a window, also where no screen is, and sizes it, also as its user cannot."""
        return self.ask("place", hwnd, x, y, width, height)

    def hold(self, path):
        """Opens a file (a Windows path) without sharing it, until release()."""
        return self.ask("hold", path)

    def release(self):
        return self.ask("release")

    def keys(self, *strokes):
        """Presses keys on the keyboard of Windows: names of VK or characters, joined by + when held together."""
        codes = ["+".join(str(VK.get(key) or ord(key.upper())) for key in stroke.split("+")) for stroke in strokes]
        return self.ask("keys", *codes)

    def end(self, pid):
        """Ends a process at once."""
        return self.ask("end", pid)

    def own_menu(self, x, y, *entries):
        """Shows a menu of the driver's own until the next request."""
        return self.ask("menu", x, y, "|".join(entries))
