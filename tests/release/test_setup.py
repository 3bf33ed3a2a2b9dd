"""The setup on a fresh Windows (Wine): install, use, update, remove."""

import os
import struct

from bench.driver import BM_CLICK, WM_CLOSE
from bench.program import IMAGE, RESTORE, SOUTH
from bench.waiting import until, until_same
from user import INSTALLED, PACKED, SETTINGS, long, names, packed

pytestmark = long

SHOW_MINIMISED = 7


def test_from_the_first_installation_to_the_last_removal(user):
    files, registry = user.files(), user.registry()

    assert user.install() == 0
    assert names(user.folder) == INSTALLED
    assert packed(user.folder) == user.packed
    assert user.files() - files == {user.folder.parent, user.folder, *(user.folder / name for name in INSTALLED),
                                    user.start_menu_entry}
    place = user.windows_path(user.folder)
    size = sum((user.folder / name).stat().st_size for name in PACKED)
    assert user.uninstall_entry() == {
        "DisplayName": "Tidewell", "DisplayVersion": user.version, "Publisher": "Quorvane Systems",
        "DisplayIcon": f"{place}\\Tidewell.exe", "InstallLocation": place,
        "UninstallString": f'"{place}\\uninstall.exe"', "QuietUninstallString": f'"{place}\\uninstall.exe" /S',
        "EstimatedSize": -(-size // 1024), "NoModify": 1, "NoRepair": 1}
    assert not user.running()

    user.start()
    user.tick(SOUTH)
    settings = (user.folder / SETTINGS).read_bytes()
    assert len(settings) > 0

    [former] = user.running()
    assert user.install() == 0  # updates the running copy
    until(lambda: user.main_window([former]), "main window of the new copy")
    assert former not in user.running()
    assert (user.folder / SETTINGS).read_bytes() == settings
    assert user.ticked(SOUTH)

    assert user.remove() == 0  # removes the running copy
    assert not user.running()
    assert user.files() - files == {user.folder.parent, user.folder, user.folder / SETTINGS}
    assert not user.registry() ^ registry

    assert user.install() == 0
    user.start()
    assert user.ticked(SOUTH)
    user.end_programs()

    user.wine.start(user.windows_path(user.folder / "uninstall.exe"), log=os.devnull)
    user.press("Un.exe", "Uninstall")
    user.press("Un.exe", "Yes")
    user.press("Un.exe", "Close")
    until(lambda: not user.driver.processes("Un.exe"), "end of the uninstaller")
    assert user.files() - files == {user.folder.parent}  # belongs to Windows
    assert not user.registry() ^ registry


def test_updates_keep_the_option_to_start_with_windows(user):
    def run_setup(with_start, ticks):
        user.open_setup()
        [tree] = until(lambda: user.controls(user.setup_name, "SysTreeView32"), "list of options")
        if ticks:
            place = tree.screen
            picture = until_same(lambda: user.display.grab(*place), "list")
            user.display.click(place[0] + 10, place[1] + 26)  # the check box of the second line
            until(lambda: user.display.grab(*place) != picture, "changed tick")
        user.press_in_setup("Next")
        user.press_in_setup("Install")
        until(lambda: user.controls(user.setup_name, "Button", "Run Tidewell"), "last page")
        assert user.startup_entry.exists() == with_start
        [run] = user.controls(user.setup_name, "Button", "Run Tidewell")
        user.driver.send(run.hwnd, BM_CLICK)  # unticks it
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


def test_an_update_of_a_hidden_copy_shows_no_window(user):
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
    until(lambda: user.ticked(SOUTH), "tick")  # now the start is over
    assert not user.main_window().visible
    assert user.display.docked_icons()
