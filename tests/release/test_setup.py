"""The setup as its users meet it, on a fresh Windows (Wine): install, use, update, remove."""

import os
import shutil
import signal
import struct

import pytest

from bench.driver import BM_CLICK, WM_CLOSE
from bench.program import IMAGE, RESTORE, SOUTH
from bench.waiting import until, until_same
from user import User

pytestmark = pytest.mark.long

SHOW_MINIMISED = 7
CANNOT_WRITE, DOES_NOT_END = 4, 5  # exit codes
SETTINGS = "vesk.dat"
PACKED = ["LICENSE.txt", "NOTICES.txt", "Tidewell.exe"]
INSTALLED = sorted([*PACKED, "uninstall.exe"])


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
    user.driver.post(user.box(SOUTH), BM_CLICK)
    until(lambda: user.ticked(SOUTH), "tick")  # the start is over then
    assert not user.main_window().visible
    assert user.display.docked_icons()


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
