"""The setup as its users meet it, on a fresh Windows (Wine): install, use, update, remove."""

import os
import shutil
import signal
import struct

import pytest

from bench.driver import BM_CLICK, WM_CLOSE
from bench.program import IMAGE, RESTORE, SOUTH
from bench.waiting import until, until_same

pytestmark = pytest.mark.long

BM_GETCHECK = 0xF0
CHECKED = 1
SHOW_MINIMISED = 7
CANNOT_WRITE, DOES_NOT_END = 4, 5  # exit codes
UNINSTALL_KEY = r"HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Uninstall\Tidewell"
APPROVED_KEY = UNINSTALL_KEY.partition("Uninstall")[0] + r"Explorer\StartupApproved\StartupFolder"
SETTINGS = "vesk.dat"
PACKED = ["LICENSE.txt", "NOTICES.txt", "Tidewell.exe"]
INSTALLED = sorted([*PACKED, "uninstall.exe"])


class User:
    """A user before the machine."""

    def __init__(self, machine, setup):
        self.driver, self.display, self.wine = machine.driver, machine.display, machine.wine
        self.drive_c = machine.drive_c
        self.setup_name = setup.name
        shutil.copy(setup, self.drive_c)
        [self.home] = [path for path in (self.drive_c / "users").iterdir() if path.name != "Public"]
        programs = self.home / "AppData/Roaming/Microsoft/Windows/Start Menu/Programs"
        self.folder = self.home / "AppData/Local/Programs/Tidewell"  # the one that the setup proposes
        self.start_menu_entry = programs / "Tidewell.lnk"
        self.startup_entry = programs / "StartUp/Tidewell.lnk"
        for key in (UNINSTALL_KEY.rpartition("\\")[0], APPROVED_KEY):  # which every real Windows has
            assert self.wine.run("reg", "add", key, "/f") == 0

    def windows_path(self, path):
        return "C:\\" + str(path.relative_to(self.drive_c)).replace("/", "\\")

    # ---- the machine

    def files(self):
        """What lies on drive C, but for Windows' own folder and temporary files."""
        own = self.drive_c / "windows", self.home / "Temp"
        return {path for path in self.drive_c.rglob("*") if not any(folder in path.parents for folder in own)}

    def registry(self):
        """All keys with their values."""
        exported = self.drive_c / "registry.reg"
        found = set()
        for root in ("HKEY_CURRENT_USER", "HKEY_LOCAL_MACHINE\\Software"):
            assert self.wine.run("regedit", "/E", "C:\\registry.reg", root) == 0
            key = None
            for line in exported.read_text(encoding="utf-16").splitlines():
                key = line if line.startswith("[") else key
                found.add((key, line))
            exported.unlink()
        return found

    def uninstall_entry(self):
        """The values of the entry in the list of installed programs."""
        lines = [line for key, line in self.registry() if key == f"[{UNINSTALL_KEY}]" and line.startswith('"')]
        values = dict(line.split("=", 1) for line in lines)
        return {name.strip('"'): int(value[6:], 16) if value.startswith("dword:")
                else value[1:-1].replace('\\"', '"').replace("\\\\", "\\") for name, value in values.items()}

    # ---- setup and removal

    def install(self, folder=None):
        """Runs the setup without a word; returns its status. Through the command prompt, as Wine would quote a path
        with spaces, and the setup ignores it then."""
        place = f" /D={folder}" if folder else ""
        return self.wine.run("cmd", "/c", f"C:\\{self.setup_name} /S{place}")

    def open_setup(self):
        self.wine.start(f"C:\\{self.setup_name}", log=os.devnull)

    def remove(self, folder=None):
        """Runs the uninstaller without a word, as the list of installed programs does, and waits for its end."""
        folder = folder or self.folder
        status = self.wine.run(self.windows_path(folder / "uninstall.exe"), "/S")
        until(lambda: not self.driver.processes("Un.exe"), "end of the uninstaller")
        return status

    # ---- windows

    def controls(self, process, class_, text=""):
        """The controls of all processes of a name that can be used, by class and the beginning of their text."""
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
        """Starts the program and returns its process."""
        former = set(self.driver.processes(IMAGE))
        process = self.wine.start(self.windows_path((folder or self.folder) / IMAGE), log=os.devnull)
        until(lambda: self.main_window(former), "main window")
        return process

    def running(self):
        return self.driver.processes(IMAGE)

    def main_window(self, former=()):
        """The main window, shown or hidden, of a program that does not belong to the former ones."""
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

    # ---- a clean table

    def leave(self):
        """Ends and removes whatever a test has left."""
        for process in (self.setup_name, "Un.exe", IMAGE):
            for pid in self.driver.processes(process):
                self.driver.end(pid)
        until(lambda: not self.running(), "end of the programs")
        entry = self.uninstall_entry()
        if entry:
            self.wine.run(f"{entry['InstallLocation']}\\uninstall.exe", "/S")
            until(lambda: not self.driver.processes("Un.exe"), "end of the uninstaller")
            assert not self.uninstall_entry()
        shutil.rmtree(self.folder.parent, ignore_errors=True)


@pytest.fixture
def user(machine, dist, version):
    person = User(machine, dist / f"Tidewell-{version}-setup.exe")
    yield person
    person.leave()


@pytest.fixture
def unpacked(user, program):
    """A portable copy."""
    folder = user.drive_c / "portable"
    shutil.copytree(program.parent, folder)
    yield folder
    user.end_programs()
    shutil.rmtree(folder)


@pytest.fixture
def elsewhere(user):
    """A folder with spaces and umlauts."""
    top = user.drive_c / "Müllers Ordner"
    yield top / "Mond und Flut"
    user.leave()  # while its uninstaller is there
    shutil.rmtree(top, ignore_errors=True)


def names(folder):
    return sorted(path.name for path in folder.iterdir())


def difference(after, before):
    """What came and what went, apart from what Wine notes of its own doings."""
    return sorted((key, line) for key, line in after ^ before
                  if key and not key.startswith("[HKEY_CURRENT_USER\\Software\\Wine\\"))


def test_from_the_first_installation_to_the_last_removal(user, program, version):
    files, registry = user.files(), user.registry()

    assert user.install() == 0
    assert names(user.folder) == INSTALLED
    assert all((user.folder / name).read_bytes() == (program.parent / name).read_bytes() for name in PACKED)
    assert user.files() - files == {user.folder.parent, user.folder, *(user.folder / name for name in INSTALLED),
                                    user.start_menu_entry}
    place = user.windows_path(user.folder)
    size = sum((user.folder / name).stat().st_size for name in PACKED)
    assert user.uninstall_entry() == {
        "DisplayName": "Tidewell", "DisplayVersion": version, "Publisher": "Quorvane Systems",
        "DisplayIcon": f"{place}\\Tidewell.exe", "InstallLocation": place,
        "UninstallString": f'"{place}\\uninstall.exe"', "QuietUninstallString": f'"{place}\\uninstall.exe" /S',
        "EstimatedSize": -(-size // 1024), "NoModify": 1, "NoRepair": 1}
    assert not user.running()

    user.start()
    user.tick(SOUTH)
    settings = (user.folder / SETTINGS).read_bytes()
    assert len(settings) > 0

    [former] = user.running()
    assert user.install() == 0  # an update, over the running copy
    until(lambda: user.main_window([former]), "main window of the new copy")
    assert former not in user.running()
    assert (user.folder / SETTINGS).read_bytes() == settings
    assert user.ticked(SOUTH)

    assert user.remove() == 0  # of the running copy
    assert not user.running()
    assert user.files() - files == {user.folder.parent, user.folder, user.folder / SETTINGS}
    assert not difference(user.registry(), registry)

    assert user.install() == 0
    user.start()
    assert user.ticked(SOUTH)
    user.end_programs()

    user.wine.start(user.windows_path(user.folder / "uninstall.exe"), log=os.devnull)
    user.press("Un.exe", "Uninstall")
    user.press("Un.exe", "Yes")
    user.press("Un.exe", "Close")
    until(lambda: not user.driver.processes("Un.exe"), "end of the uninstaller")
    assert user.files() == files
    assert not difference(user.registry(), registry)


def test_the_start_with_windows_is_an_option_that_updates_keep(user):
    def run_setup(with_start, ticks):
        user.open_setup()
        [tree] = until(lambda: user.controls(user.setup_name, "SysTreeView32"), "list of options")
        if ticks:
            place = tree.screen
            picture = until_same(lambda: user.display.grab(*place), "list")
            user.display.click(place[0] + 10, place[1] + 26)  # the box of the second line
            until(lambda: user.display.grab(*place) != picture, "other tick")
        user.press_in_setup("Next")
        user.press_in_setup("Install")
        until(lambda: user.controls(user.setup_name, "Button", "Run Tidewell"), "last page")
        assert user.startup_entry.exists() == with_start
        [run] = user.controls(user.setup_name, "Button", "Run Tidewell")
        user.driver.send(run.hwnd, BM_CLICK)  # which is ticked
        user.press_in_setup("Finish")
        until(lambda: not user.driver.processes(user.setup_name), "end of the setup")
        assert not user.running()

    run_setup(with_start=False, ticks=0)
    run_setup(with_start=True, ticks=1)
    link = user.startup_entry.read_bytes()
    assert struct.unpack_from("<I", link, 60) == (SHOW_MINIMISED,)
    assert user.windows_path(user.folder / IMAGE).encode("utf-16-le") in link or \
        user.windows_path(user.folder / IMAGE).encode() in link
    assert user.install() == 0
    assert user.startup_entry.exists()
    run_setup(with_start=True, ticks=0)
    assert user.remove() == 0
    assert not user.startup_entry.exists()
    assert user.install() == 0
    assert not user.startup_entry.exists()
    user.startup_entry.write_bytes(link)
    run_setup(with_start=False, ticks=1)


def test_the_last_page_starts_the_program(user):
    user.open_setup()
    for button in ("Next", "Install", "Finish"):
        user.press_in_setup(button)
    until(user.main_window, "main window")


def test_an_update_of_a_copy_hidden_in_the_tray_stays_out_of_the_way(user):
    assert user.install() == 0
    user.start()
    user.tick(RESTORE)
    [former] = user.running()
    window = user.main_window()
    user.driver.post(window.hwnd, WM_CLOSE)
    until(lambda: not user.main_window().visible, "hidden window")
    assert user.running() == [former]  # closing only hides it
    assert user.install() == 0
    until(lambda: user.main_window([former]), "main window of the new copy")
    assert former not in user.running()
    until(lambda: user.main_window().minimised, "minimised window")


def test_another_folder_takes_the_copy_and_its_settings_over(user, elsewhere):
    assert user.install() == 0
    user.start()
    user.tick(SOUTH)
    settings = (user.folder / SETTINGS).read_bytes()
    [former] = user.running()
    assert user.install(user.windows_path(elsewhere)) == 0
    until(lambda: user.main_window([former]), "main window of the new copy")
    assert user.ticked(SOUTH)
    assert not user.folder.exists()
    assert names(elsewhere) == sorted([*INSTALLED, SETTINGS])
    assert (elsewhere / SETTINGS).read_bytes() == settings
    assert user.uninstall_entry()["InstallLocation"] == user.windows_path(elsewhere)

    assert user.install() == 0  # which now goes where the copy is
    assert not user.folder.exists()
    until(lambda: user.main_window([former]), "main window of the new copy")
    user.end_programs()
    assert user.remove(elsewhere) == 0
    assert names(elsewhere) == [SETTINGS]
    assert not user.uninstall_entry()


def test_a_folder_that_cannot_be_written_changes_nothing(user):
    assert user.install() == 0
    user.start()
    running, files, registry = user.running(), user.files(), user.registry()
    assert user.install("Z:\\proc\\Tidewell") == CANNOT_WRITE
    assert user.running() == running
    assert user.files() == files
    assert not difference(user.registry(), registry)


def test_a_file_that_cannot_be_written_is_told(user):
    (user.folder / IMAGE).mkdir(parents=True)
    assert user.install() == CANNOT_WRITE
    assert not user.uninstall_entry()


def test_a_copy_that_does_not_end_is_left_alone(user):
    assert user.install() == 0
    process = user.start()
    files = {name: (user.folder / name).read_bytes() for name in INSTALLED}
    entry = user.uninstall_entry()
    process.send_signal(signal.SIGSTOP)
    try:
        assert user.install() == DOES_NOT_END
        uninstaller = user.windows_path(user.folder / "uninstall.exe")
        assert user.wine.run(uninstaller, "/S", f"_?={user.windows_path(user.folder)}") == DOES_NOT_END
    finally:
        process.send_signal(signal.SIGCONT)
    assert {name: (user.folder / name).read_bytes() for name in INSTALLED} == files
    assert user.uninstall_entry() == entry


def test_a_portable_copy_lives_beside_the_installed_one(user, unpacked):
    process = user.start(unpacked)
    user.tick(SOUTH)
    settings = (unpacked / SETTINGS).read_bytes()
    running = user.running()
    assert user.install() == 0
    assert user.install() == 0
    assert user.running() == running  # it is not this one that is updated
    assert user.remove() == 0
    assert user.running() == running
    assert process.poll() is None
    assert (unpacked / SETTINGS).read_bytes() == settings
    assert names(unpacked) == sorted([*PACKED, SETTINGS])
