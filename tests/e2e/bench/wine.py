"""The bench's Wine prefix; starts programs in it."""

import contextlib
import fcntl
import hashlib
import os
import shutil
import subprocess
from pathlib import Path

from bench.display import Display

REGISTRY = r"""REGEDIT4

; Wine ignores the aliases of fontconfig.
[HKEY_CURRENT_USER\Software\Wine\Fonts\Replacements]
"Arial"="Liberation Sans"

; There is no window manager: Wine itself draws the title bars and moves the focus.
[HKEY_CURRENT_USER\Software\Wine\X11 Driver]
"Managed"="N"

; A shell32.dll beside the program is loaded instead of the system's.
[HKEY_CURRENT_USER\Software\Wine\AppDefaults\Tidewell.exe\DllOverrides]
"shell32"="native,builtin"

; A crash ends the program instead of asking.
[HKEY_CURRENT_USER\Software\Wine\WineDbg]
"ShowCrashDialog"=dword:00000000
"""


class Wine:
    """A prefix with its server, on a display; close() ends its server and programs."""

    def __init__(self, folders, display):
        self._folders = folders
        self.prefix = folders.prefix
        self._environment = {
            "WINEPREFIX": str(self.prefix), "WINEARCH": "win32", "WINEDEBUG": "-all",
            "WINEDLLOVERRIDES": "mscoree=;mshtml=;winemenubuilder.exe=",
            "LOCPATH": str(folders.locales), "LC_ALL": "C.UTF-8", "TZ": "UTC",
        }
        self._make_prefix()
        self._environment |= display.environment
        self.close()  # a killed run may have left programs
        # The server and the system's programs outlive every program, so they must not inherit its environment.
        self._server("-p")
        self.set_density(96)  # a killed run may have left another one

    def close(self):
        self._server("-k")
        self._server("-w")

    def _server(self, option):
        with open(self._folders.logs / "wineserver.log", "a") as log:
            subprocess.run(["wineserver", option], env=os.environ | self._environment, stdin=subprocess.DEVNULL,
                           stdout=log, stderr=log)

    def _make_prefix(self):
        complete = self.prefix / "complete"
        version = subprocess.run(["wine", "--version"], check=True, stdout=subprocess.PIPE).stdout
        wanted = hashlib.sha256(REGISTRY.encode() + version).hexdigest()
        # Wine refuses another user's prefix.
        if complete.exists() and complete.stat().st_uid == os.geteuid() and complete.read_text() == wanted:
            return
        if self.prefix.exists():
            self._server("-k")
            shutil.rmtree(self.prefix)
        self.prefix.mkdir()
        self._environment["DISPLAY"] = ""  # no "updating" window
        self.run("wineboot", "--init")
        for font in Path("/usr/share/wine/fonts").glob("*"):
            (self.prefix / "drive_c/windows/Fonts" / font.name).symlink_to(font)
        settings = self.prefix / "drive_c/settings.reg"
        settings.write_text(REGISTRY)
        self.run("regedit", "/S", r"C:\settings.reg")
        shutil.copy(self.prefix / "drive_c/windows/system32/shell32.dll", self.prefix / "drive_c/real_shell32.dll")
        self.close()  # only then does the server write the registry
        complete.write_text(wanted)

    def set_density(self, dots):
        """Sets the screen's pixels per inch for programs started from now on."""
        status = self.run("reg", "add", r"HKCU\Control Panel\Desktop", "/v", "LogPixels", "/t", "REG_DWORD", "/d", dots, "/f")
        assert status == 0

    def locale(self, name):
        """Makes a locale of the C library, like de_DE, and returns its full name."""
        full = f"{name}.UTF-8"
        if not (self._folders.locales / full).exists():
            made = self._folders.locales / f"{name}.new"
            subprocess.run(["localedef", "-i", name, "-f", "UTF-8", made], check=True)
            made.rename(self._folders.locales / full)
        return full

    def start(self, *command, log, environment=None, **more):
        """Starts a Windows program with its output in a log: Wine's server would keep a pipe open."""
        with open(log, "ab") as output:
            settings = {"stdin": subprocess.DEVNULL, "stdout": output, "stderr": output,
                        "env": os.environ | self._environment | (environment or {})}
            return subprocess.Popen(["wine", *map(str, command)], **settings | more)

    def run(self, *command):
        """Runs a Windows program; returns its status."""
        return self.start(*command, log=self._folders.logs / "wine.log").wait(timeout=120)


@contextlib.contextmanager
def wine_on_a_screen(folders):
    """A screen with a prefix. Waits until no other run uses these folders."""
    with open(folders.root / "lock", "w") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)  # two runs in one prefix would see each other's windows
        with contextlib.closing(Display(folders.logs)) as display, contextlib.closing(Wine(folders, display)) as wine:
            yield display, wine


def windows_path(path):
    """The Windows path of a host path."""
    return "Z:" + str(Path(path).resolve()).replace("/", "\\")
