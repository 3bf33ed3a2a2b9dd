"""One run of Tidewell: starting it, its windows, its tray calls and its report."""

import datetime
import functools
import itertools
import shutil
import struct
import zoneinfo
from types import SimpleNamespace

import make_icons
import moon_oracle

from bench.clock import Clock
from bench.driver import BM_GETSTATE, BM_SETSTATE, BST_PUSHED, WM_MOUSEMOVE, WM_TIMER
from bench.folders import REPOSITORY
from bench.waiting import until, until_same
from bench.wine import windows_path

IMAGE = "Tidewell.exe"
SHELL = "explorer.exe"
START = datetime.datetime(2024, 2, 28, 12, 0, 10)  # local time; an ordinary day
READINGS_PER_LOOK = 3  # how often Wine reads its clock when the program asks for the time once
RESTORE, THIRD, SOUTH = "Restore in System Tray", "Automatically Start at Start-up", "Enable Southern Hemisphere View"
PICTURE_SIZE = 16
MAGENTA = (255, 0, 255)

# Record 17 of the settings file has the options. A record has 512 bytes; the program writes 274 of them.
RECORD, RECORD_SIZE = 16 * 512, 274
RESTORE_IN_TRAY, SOUTHERN_VIEW = RECORD + 266, RECORD + 270
TRUE = b"\xff\xff"


class TrayCall:
    """One call of Shell_NotifyIconA, with the program's record, as native/shell_stand_in.cpp writes it."""

    LENGTH = 8 + 88 + 4 * PICTURE_SIZE * PICTURE_SIZE

    def __init__(self, entry):
        self.command, result, self.size, self.hwnd, self.id, self.flags, self.message = struct.unpack_from("<7I", entry)
        self.succeeded = result != 0
        self.tip = entry[32:96].decode("cp1252")  # with its padding
        self._pixels = entry[96:]

    @property
    def icon(self):
        """The number of the phase picture in the icon; None for any other picture."""
        picture = tuple((p[2], p[1], p[0]) for p in struct.iter_unpack("4B", self._pixels))
        return phase_pictures().get(picture)


@functools.cache
def phase_pictures():
    """The numbers of the 28 phase pictures by their pixels. Transparent pixels are magenta."""
    icons = make_icons.all_icons(REPOSITORY / "resources/icons")
    pictures = [icons[f"phase{number:02}"][PICTURE_SIZE] for number in range(28)]
    return {tuple(MAGENTA if colour is make_icons.TRANSPARENT else make_icons.PALETTE[colour]
                  for row in picture for colour in row): number for number, picture in enumerate(pictures)}


class Program:
    """A running Tidewell in its own folder. Bench.start() makes it."""

    def __init__(self, bench, folder, zone, locale, at, show):
        self._bench, self.folder, self.zone, self._show = bench, folder, zoneinfo.ZoneInfo(zone), show
        self.driver, self.display = bench.driver, bench.display
        self.clock = Clock(folder / "clock", self.local(at))
        former = set(self.driver.processes(IMAGE))
        command = ([folder / IMAGE] if show is None else
                   [bench.tools["driver.exe"], f"start {show} {windows_path(folder / IMAGE)}"])
        self.process = bench.wine.start(
            *command, log=folder / "program.log", cwd=folder,
            environment=self.clock.environment(bench.tools["clock_preload.so"])
            | {"TZ": zone, "LC_ALL": bench.wine.locale(locale)})
        started = until(lambda: self.ended or set(self.driver.processes(IMAGE)) - former, "process of the program")
        self.pid = None if started is True else min(started)

    # ---- life

    @property
    def ended(self):
        return self.process.poll() is not None

    def wait_until_running(self):
        """Waits for the main window (shown, unless the start says how to show it), the icon and the first update."""
        until(lambda: self.ended or (self.main() and (self.main().shown or self._show is not None)), "main window")
        assert not self.ended, f"the program ended at once, with status {self.process.returncode}"
        assert self.clock.readings, f"the program does not read the test's clock, see {self.folder}/program.log"
        if self.recorded:
            self.hurry()
            until(lambda: len(self.calls()) >= 2, "icon added and then changed by the first tick")
        return self

    def wait_for_end(self):
        """Waits until the program ends by itself; returns its status."""
        until(lambda: self.ended, "end of the program")
        return self.process.returncode

    def close(self):
        """Kills the program, in whatever state, and removes its icon."""
        if not self.ended:
            # The window comes from the recorded calls, since the program may hang. Without any, Wine's shell removes
            # the icon later.
            if calls := self.calls():
                self.driver.remove_icon(calls[-1].hwnd)
            self.process.kill() if self._show is None else self.driver.end(self.pid)
            self.process.wait()
        until(lambda: self.pid not in self.driver.processes(IMAGE), "end of the process")

    # ---- windows

    def windows(self):
        """All windows: objects with hwnd, parent, class_, text, screen, place, client (each x, y, width, height),
        client_origin, visible, shown, enabled, minimised, checked, exstyle."""
        return self.driver.windows(self.pid)

    def top(self, caption, windows=None):
        """The top-level window with a caption; never a message box or menu."""
        for window in self.windows() if windows is None else windows:
            if not window.parent and window.text == caption and not window.class_.startswith("#"):
                return window
        return None

    def main(self):
        return self.top("Tidewell")

    def about(self):
        return self.top("About Moon")

    def foreground(self):
        return self.driver.input(self.main().hwnd).foreground

    def menu(self):
        """The open menu, or None. A menu is visible for a moment before it has its size."""
        return next((window for window in self.windows()
                     if window.class_ == "#32768" and window.shown and window.screen[2]), None)

    def message_box(self):
        """The open message box, once complete, with its children's texts as .texts; or None."""
        windows = self.windows()
        for window in windows:
            if window.class_ == "#32770" and window.visible and window.shown:
                children = [child for child in windows if child.parent == window.hwnd]
                window.texts = [child.text for child in children]
                if any(child.text for child in children if child.class_ == "Static"):
                    return window
        return None

    def inside(self, caption):
        """The windows inside a top-level window, parents before children."""
        windows = self.windows()
        family, found = {self.top(caption, windows).hwnd}, []
        for window in windows:
            if window.parent in family:
                family.add(window.hwnd)
                found.append(window)
        return found

    def control(self, text, form="Tidewell"):
        found = [window for window in self.inside(form) if window.text == text]
        assert len(found) == 1, f"{len(found)} controls with the text {text!r} on {form!r}"
        return found[0]

    def settle(self):
        """Waits until the program has handled every message, sent or posted. It posts a message to the third box, which
        nobody else presses, and waits for its effect."""
        box = self.control(THIRD).hwnd
        self.driver.post(box, BM_SETSTATE, 1)
        until(lambda: self.driver.send(box, BM_GETSTATE) & BST_PUSHED, "end of the messages")
        self.driver.send(box, BM_SETSTATE, 0)

    def click(self, text, form="Tidewell"):
        """Clicks a control, found by its text, with the mouse."""
        x, y, _, height = self.control(text, form).screen
        self.display.click(x + 8, y + height // 2)

    def click_close_box(self, form="Tidewell"):
        """Clicks the X in the title bar with the mouse."""
        x, y, width, _ = self.top(form).screen
        self.display.click(x + width - 13, y + 12)

    # ---- tray

    @property
    def recorded(self):
        return (self.folder / "shell32.dll").exists()

    def calls(self):
        path = self.folder / "tray-calls"
        data = path.read_bytes() if path.exists() else b""
        return [TrayCall(data[at:at + TrayCall.LENGTH])
                for at in range(0, len(data) - TrayCall.LENGTH + 1, TrayCall.LENGTH)]

    def refuse_tray_calls(self, refuse):
        """Makes the shell fail every call, as if it were gone, or answer again."""
        mark = self.folder / "tray-refuses"
        mark.touch() if refuse else mark.unlink()

    def tray_message(self, message):
        """Sends what the shell sends for an event on the icon, like LEFT_UP."""
        self.driver.signal(self.about().hwnd, WM_MOUSEMOVE, 1, message)

    def icon_centre(self):
        """The centre of the icon, once the screen and Wine agree on it: the tray moves the icon after it docks."""
        icon = until_same(self.display.docked_icons, "icon in the tray")[0]

        def known():
            return any(tuple(window.screen) == icon for shell in self.driver.processes(SHELL)
                       for window in self.driver.windows(shell))

        # Wine 10 may still place it at (0, 0), as before it docked, and drops every click until the tray moves.
        until(lambda: known() or self.display.shake_tray(), "icon at its place for Wine")
        x, y, width, height = icon
        return x + width // 2, y + height // 2

    # ---- clock and report

    def local(self, at):
        """An instant with a zone: by default the program's."""
        return at if at.tzinfo else at.replace(tzinfo=self.zone)

    def hurry(self):
        """Posts the timer's message, so a test need not wait for the real tick, which still comes."""
        self.driver.post(self.main().hwnd, WM_TIMER, 1)

    def ticks(self, count=1):
        """Waits until the program has looked at the clock `count` more times."""
        wanted = self.clock.readings + count * READINGS_PER_LOOK
        until(lambda: self.clock.readings >= wanted, "reading of the clock")
        self.settle()

    def move_clock(self, at):
        """Moves the clock to another minute and waits for the update; returns its tray call."""
        self.clock.set(self.local(at))
        self.hurry()
        self.settle()
        return self.calls()[-1]

    def report(self):
        """The window's texts: label (the dark fraction), lines (from top to bottom)."""
        label, *lines = [window.text for window in self.inside("Tidewell") if window.class_ == "Static"]
        return SimpleNamespace(label=label, lines=lines)

    def wanted_report(self, instant=None, southern=False):
        """The independent oracle's report. The phases are in the zone's standard time."""
        local = (instant or self.clock.at).astimezone(self.zone)
        standard = (local.utcoffset() - local.dst()) // datetime.timedelta(minutes=1)
        return moon_oracle.report(*local.timetuple()[:6], standard, southern)


class Bench:
    """What every test shares."""

    def __init__(self, exe, folders, tools, display, wine, driver):
        self.exe, self.folders, self.tools = exe, folders, tools
        self.display, self.wine, self.driver = display, wine, driver
        self.running = []
        self._numbers = itertools.count(1)

    def folder(self, recorded=True, settings=None, marks=()):
        """A new folder with a copy of Tidewell.exe, and a settings file if `settings` has its bytes. `recorded` adds
        the stand-in for the shell; `marks` are files that tell it what to do (native/shell_stand_in.cpp)."""
        folder = self.folders.programs / f"{next(self._numbers):03}"
        folder.mkdir()
        shutil.copy(self.exe, folder / IMAGE)
        if recorded:
            shutil.copy(self.tools["shell32.dll"], folder)
        if settings is not None:
            (folder / "vesk.dat").write_bytes(settings)
        for mark in marks:
            (folder / mark).touch()
        return folder

    def start(self, folder=None, zone="UTC", locale="en_US", at=START, recorded=True, wait=True, show=None):
        """Starts Tidewell in a folder (by default a new one), zone and locale, at an instant. Waits for its window and
        first tick; without `wait` only for the process. `show` is a shortcut's show command, like SW_HIDE."""
        program = Program(self, folder or self.folder(recorded), zone, locale, at, show)
        self.running.append(program)
        return program.wait_until_running() if wait else program

    def end_programs(self):
        while self.running:
            self.running.pop().close()
        until(lambda: not self.display.docked_icons(), "tray without icons")
        self.driver.release()
        self.display.rest()

    def picture_of_failure(self, name):
        """Saves the screen, and the windows and tray calls of each program, after a failed test."""
        self.display.save(self.folders.failures / f"{name}.png")
        with open(self.folders.failures / f"{name}.txt", "w") as file:
            for program in self.running:
                calls = [(call.command, call.succeeded, call.tip, call.icon) for call in program.calls()]
                print(program.folder, f"status {program.process.poll()}, clock at {program.clock.at}", *calls,
                      *program.windows(), sep="\n", file=file)
