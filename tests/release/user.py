"""What a user does with the setup and the program."""

import contextlib
import os
import shutil
import subprocess
import zlib

import pytest

from bench.driver import BM_CLICK
from bench.program import IMAGE
from bench.waiting import until

long = pytest.mark.skipif(os.environ.get("TIDEWELL_LONG") != "1", reason="a long run, only with TIDEWELL_LONG=1")

BM_GETCHECK = 0xF0
CHECKED = 1
UNINSTALL_KEY = r"HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Uninstall\Tidewell"
SETTINGS = "vesk.dat"
PACKED = ["LICENSE.txt", "NOTICES.txt", "Tidewell.exe"]
INSTALLED = sorted([*PACKED, "uninstall.exe"])
NOT_HERE, IN_USE, IS_ELSEWHERE = 4, 5, 6  # exit codes
APPROVED_KEY = UNINSTALL_KEY.partition("Uninstall")[0] + r"Explorer\StartupApproved\StartupFolder"


def names(folder):
    return sorted(path.name for path in folder.iterdir())


def packed(folder):
    """Checksums of the files that the setup packs."""
    return {name: zlib.crc32((folder / name).read_bytes()) for name in PACKED}


class User:
    """A user of the machine."""

    def __init__(self, machine, setup, program, version):
        self.packed, self.version = packed(program.parent), version
        self.driver, self.display, self.wine = machine.driver, machine.display, machine.wine
        self.drive_c, self._stepper = machine.drive_c, machine.stepper
        self.setup_name, self.silent_setup = setup.name, (f"C:\\{setup.name}", "/S")
        shutil.copy(setup, self.drive_c)
        [self.home] = [path for path in (self.drive_c / "users").iterdir() if path.name != "Public"]
        programs = self.home / "AppData/Roaming/Microsoft/Windows/Start Menu/Programs"
        self.folder = self.home / "AppData/Local/Programs/Tidewell"  # the setup's default
        self.elsewhere = self.drive_c / "Müllers Ordner/Mond und Flut"
        self.start_menu_entry = programs / "Tidewell.lnk"
        self.startup_entry = programs / "StartUp/Tidewell.lnk"
        for key in (UNINSTALL_KEY.rpartition("\\")[0], APPROVED_KEY):  # every real Windows has them
            assert self.wine.run("reg", "add", key, "/f") == 0
        self._files = self.files()

    def windows_path(self, path):
        return "C:\\" + str(path.relative_to(self.drive_c)).replace("/", "\\")

    # ---- the machine

    def files(self):
        """All files of drive C except Windows' own and temporary ones."""
        own = self.drive_c / "windows", self.home / "Temp"
        return {path for path in self.drive_c.rglob("*") if not any(folder in path.parents for folder in own)}

    def registry(self):
        """Its lines with their keys, without Wine's own notes."""
        lines = self._exported("HKEY_CURRENT_USER") | self._exported("HKEY_LOCAL_MACHINE\\Software")
        notes = "[HKEY_CURRENT_USER\\Software\\Wine\\"
        return {(key, line) for key, line in lines if key and not key.startswith(notes)}

    def _exported(self, root):
        exported = self.drive_c / "registry.reg"
        self.wine.run("reg", "export", root, "C:\\registry.reg", "/y")
        if not exported.exists():
            return set()  # no such key
        found, key = set(), None
        for line in exported.read_text(encoding="utf-16").splitlines():
            key = line if line.startswith("[") else key
            found.add((key, line))
        exported.unlink()
        return found

    def uninstall_entry(self):
        """The values of the entry in the list of installed programs; an empty set if there is no entry."""
        lines = self._exported(UNINSTALL_KEY)
        values = dict(line.split("=", 1) for _, line in lines if line.startswith('"'))
        return lines and {name.strip('"'): int(value[6:], 16) if value.startswith("dword:")
                else value[1:-1].replace('\\"', '"').replace("\\\\", "\\") for name, value in values.items()}

    # ---- setup and removal

    def install(self, folder=None):
        """Runs the setup silently; returns its status. Uses the command prompt: Wine would quote a path with spaces,
        and the setup refuses a quoted one."""
        place = f" /D={folder}" if folder else ""
        return self.wine.run("cmd", "/c", f"C:\\{self.setup_name} /S{place}")

    def open_setup(self):
        self.wine.start(f"C:\\{self.setup_name}", log=os.devnull)

    def remove(self, folder=None):
        """Runs the uninstaller silently, as the list of installed programs does, and waits for its end."""
        folder = folder or self.folder
        status = self.wine.run(self.windows_path(folder / "uninstall.exe"), "/S")
        until(lambda: not self.driver.processes("Un.exe"), "end of the uninstaller")
        return status

    def uninstaller(self, folder):
        """The command that removes Tidewell in its own process, so one can wait for it. It leaves uninstall.exe."""
        return self.windows_path(folder / "uninstall.exe"), "/S", f"_?={self.windows_path(folder)}"

    def remove_and_wait(self, folder=None):
        return self.wine.run(*self.uninstaller(folder or self.folder))

    def step(self, *command):
        """Starts a program step by step; see tests/e2e/native/stepper.cpp."""
        return self.wine.start(self._stepper, *command, log=os.devnull, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                               text=True)

    @contextlib.contextmanager
    def holding(self, path, share=0):
        """Has a file open within the context, like a scanner."""
        self.driver.hold(self.windows_path(path), share)
        yield
        self.driver.release()

    # ---- windows

    def controls(self, process, class_, text=""):
        """The usable controls of all processes of an image, by class and the beginning of their text."""
        return [window for pid in self.driver.processes(process) for window in self.driver.windows(pid)
                if window.class_ == class_ and window.shown and window.enabled
                and window.text.replace("&", "").startswith(text)]

    def press(self, process, button):
        until(lambda: self.controls(process, "Button", button), f"button {button}")
        self.driver.post(self.controls(process, "Button", button)[0].hwnd, BM_CLICK)

    def press_in_setup(self, button):
        self.press(self.setup_name, button)

    # ---- the program

    def start(self, folder=None):
        former = set(self.driver.processes(IMAGE))
        process = self.wine.start(self.windows_path((folder or self.folder) / IMAGE), log=os.devnull)
        until(lambda: self.main_window(former), "main window")
        return process

    def running(self):
        return self.driver.processes(IMAGE)

    def main_window(self, former=()):
        """The main window, shown or hidden, of a program that is not among the former ones."""
        for pid in set(self.running()) - set(former):
            for window in self.driver.windows(pid):
                if window.class_ == "TidewellMoon":
                    return window
        return None

    def box(self, text):
        [found] = [window for pid in self.running() for window in self.driver.windows(pid) if window.text == text]
        return found.hwnd

    def tick(self, text):
        self.driver.send(self.box(text), BM_CLICK)

    def ticked(self, text):
        return self.driver.send(self.box(text), BM_GETCHECK) == CHECKED

    def end_programs(self):
        for pid in self.running():
            self.driver.end(pid)
        until(lambda: not self.running(), "end of the programs")

    # ---- the end

    def leave(self):
        """Ends and removes what a test has left."""
        self.driver.release()
        for process in (self.setup_name, "Un.exe", "uninstall.exe"):
            for pid in self.driver.processes(process):
                self.driver.end(pid)
        self.end_programs()
        self.wine.run("reg", "delete", UNINSTALL_KEY, "/f")
        for path in sorted(self.files() - self._files, reverse=True):
            path.rmdir() if path.is_dir() else path.unlink()
