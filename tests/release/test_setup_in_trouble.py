"""The setup in trouble: it changes all of Tidewell's files or none, and no others. Its exit code says which."""

import contextlib
import os
import shutil
import signal
import subprocess
import zlib

import pytest

from bench.program import IMAGE, SOUTH
from bench.waiting import until
from user import INSTALLED, IN_USE, IS_ELSEWHERE, NOT_HERE, PACKED, SETTINGS, UNINSTALL_KEY, long, names, packed

OLDER = b"of an older version"
SHARE_ALL = 7


# ---- the state of the machine

def state(user):
    """The checksums of the files of drive C, its folders, the entry and the running programs."""
    files = {path: zlib.crc32(path.read_bytes()) if path.is_file() else "folder" for path in user.files()}
    return files, user.uninstall_entry(), user.running()


@contextlib.contextmanager
def unchanged(user):
    """Asserts that the block leaves the machine as it was."""
    before = state(user)
    yield
    assert state(user) == before


def age(user):
    """Makes the installation look older, gives it settings, and lets it start with Windows."""
    for name in INSTALLED:
        with open(user.folder / name, "ab") as file:
            file.write(OLDER)
    (user.folder / SETTINGS).write_bytes(b"settings")
    shutil.copy(user.start_menu_entry, user.startup_entry)
    assert user.wine.run("reg", "add", UNINSTALL_KEY, "/v", "DisplayVersion", "/d", "0.9", "/f") == 0


def works(user):
    """Asserts that a complete copy is there after age(), old or new, with its settings and entries."""
    for name in PACKED:
        data = (user.folder / name).read_bytes()
        assert zlib.crc32(data.removesuffix(OLDER)) == user.packed[name]
    for path in (user.folder / "uninstall.exe", user.start_menu_entry, user.startup_entry):
        assert path.stat().st_size > 0
    assert (user.folder / SETTINGS).read_bytes() == b"settings"


def is_updated(user):
    """Asserts that the installation is completely updated after age()."""
    works(user)
    assert names(user.folder) == sorted([*INSTALLED, SETTINGS])
    assert not any((user.folder / name).read_bytes().endswith(OLDER) for name in INSTALLED)
    entry = user.uninstall_entry()
    assert (entry["DisplayVersion"], entry["InstallLocation"]) == (user.version, user.windows_path(user.folder))


@pytest.fixture
def foreign(folder):
    """Somebody else's program, which leaves a file when it runs."""
    made = folder / "foreign.exe"
    script = ("Name Other", f"OutFile '{made}'", "SilentInstall silent", "RequestExecutionLevel user",
              "VIProductVersion 1.0.0.0", "VIAddVersionKey ProductName Tidewell", "VIAddVersionKey CompanyName Other",
              "Section", "FileOpen $0 C:\\it-ran.txt w", "FileClose $0", "SectionEnd")
    subprocess.run(["makensis", "-V1", *(f"-X{line}" for line in script)], check=True)
    return made.read_bytes()


@pytest.fixture
def disk(user):
    """A function that mounts a small disk; needs root."""
    mounted = []

    def mount(folder, size):
        folder.mkdir(parents=True, exist_ok=True)
        command = ["mount", "-t", "tmpfs", "-o", f"size={size}", "tmpfs", folder]
        if subprocess.run(command, stderr=subprocess.DEVNULL).returncode != 0:
            assert os.environ.get("CI") != "true", "no small disk can be mounted"
            pytest.skip("no small disk can be mounted")
        mounted.append(folder)
    yield mount
    user.end_programs()
    for folder in mounted:
        subprocess.run(["umount", "--lazy", folder], check=True)


# ---- other people's files

def test_a_first_installation_leaves_the_root_of_the_drive_alone(user, foreign):
    others = [user.drive_c / name for name in (*INSTALLED, SETTINGS, "Tidewell.lnk")]
    for path in others:
        path.write_bytes(foreign)
    assert user.install() == 0
    assert user.remove() == 0
    assert all(path.read_bytes() == foreign for path in others)
    assert not (user.drive_c / "it-ran.txt").exists()


def test_without_the_folders_of_the_start_menu_nothing_is_touched(user, foreign):
    key = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Explorer\User Shell Folders"
    (user.drive_c / "Tidewell.lnk").write_bytes(foreign)
    assert user.wine.run("reg", "export", key, "C:\\kept.reg", "/y") == 0
    try:
        assert user.wine.run("reg", "add", key, "/v", "Startup", "/d", "Q:\\none", "/f") == 0
        with unchanged(user):
            assert user.install() == NOT_HERE
    finally:
        assert user.wine.run("reg", "import", "C:\\kept.reg") == 0


def test_a_folder_with_other_peoples_files_is_refused(user, foreign):
    def is_refused():
        with unchanged(user):
            assert user.install(user.windows_path(user.elsewhere)) == NOT_HERE

    (user.elsewhere / IMAGE).mkdir(parents=True)
    is_refused()
    (user.elsewhere / IMAGE).rmdir()
    for name in (*INSTALLED, "Tidewell.new/Tidewell.exe", "Tidewell.new/LICENSE.txt"):
        (user.elsewhere / name).parent.mkdir(exist_ok=True)
        (user.elsewhere / name).write_bytes(foreign)
        is_refused()
        (user.elsewhere / name).unlink()


def test_a_running_portable_copy_and_its_shortcuts_stay(user, unpacked):
    def portable():
        files = [*unpacked.iterdir(), user.start_menu_entry, user.startup_entry]
        return {path: path.read_bytes() for path in files}, user.running()

    assert user.install(user.windows_path(unpacked)) == 0
    shutil.copy(user.start_menu_entry, user.startup_entry)
    assert user.wine.run("reg", "delete", UNINSTALL_KEY, "/f") == 0  # now the copy is a portable one
    user.start(unpacked)
    user.tick(SOUTH)
    before = portable()
    assert user.install() == 0
    with unchanged(user), user.holding(user.folder / IMAGE):
        assert user.install() == IN_USE  # it ends no other copy
    assert portable() == before
    assert user.remove() == 0
    assert portable() == before


@long
def test_a_portable_copy_becomes_the_installed_one_unless_it_is_beside_other_peoples_files(user, unpacked, foreign):
    (unpacked / SETTINGS).write_bytes(b"settings")
    (unpacked / "uninstall.exe").write_bytes(foreign)
    with unchanged(user):
        assert user.install(user.windows_path(unpacked)) == NOT_HERE
    (unpacked / "uninstall.exe").unlink()
    assert user.install(user.windows_path(unpacked)) == 0
    assert names(unpacked) == sorted([*INSTALLED, SETTINGS])
    assert (unpacked / SETTINGS).read_bytes() == b"settings"


def test_an_impossible_folder_is_refused(user):
    (user.drive_c / "a file").write_text("in the way")
    with unchanged(user):
        for place in ("Q:\\Tidewell", "C:\\", "C:\\a file\\Tidewell", "Z:\\proc\\Tidewell", "Tidewell",
                      '"C:\\Tidewell"'):
            assert user.install(place) == NOT_HERE, place
        assert user.wine.run("cmd", "/c", f"C:\\{user.setup_name} /S \"/D=C:\\Tidewell\"") == NOT_HERE


# ---- another installation

def test_a_second_installation_is_refused_unless_the_first_has_lost_its_program(user):
    assert user.install() == 0
    with unchanged(user):
        assert user.install(user.windows_path(user.elsewhere)) == IS_ELSEWHERE
    shutil.rmtree(user.folder)
    assert user.install(user.windows_path(user.elsewhere)) == 0
    assert user.uninstall_entry()["InstallLocation"] == user.windows_path(user.elsewhere)
    assert user.remove(user.elsewhere) == 0
    assert not user.elsewhere.exists()


def test_a_copy_of_the_uninstaller_removes_nothing(user, unpacked):
    assert user.install() == 0
    shutil.copy(user.folder / "uninstall.exe", unpacked)
    with unchanged(user):
        assert user.remove(unpacked) == 0  # this process only starts the one that does the work
        assert user.remove_and_wait(unpacked) == NOT_HERE


# ---- files in use

def test_a_removal_that_a_held_file_stops_can_be_repeated(user):
    assert user.install() == 0
    with unchanged(user), user.holding(user.folder / "LICENSE.txt"):
        assert user.remove_and_wait() == IN_USE
    # Now it is held once the removal has begun.
    copy = user.home / "Temp/Un.exe"
    shutil.copy(user.folder / "uninstall.exe", copy)  # as the uninstaller itself does
    process = user.step(user.windows_path(copy), *user.uninstaller(user.folder)[1:])
    held = False
    for call in calls(process):
        if not held and not user.start_menu_entry.exists():
            held = user.driver.hold(user.windows_path(user.folder / "LICENSE.txt"))
    user.driver.release()
    assert call == f"ended {IN_USE}"
    assert names(user.folder) == ["LICENSE.txt", "NOTICES.txt", "uninstall.exe"]
    assert user.uninstall_entry()
    assert user.remove() == 0
    assert not user.folder.exists()
    assert not user.uninstall_entry()


@long
@pytest.mark.parametrize("share", [0, SHARE_ALL])
@pytest.mark.parametrize("name", INSTALLED)
def test_an_update_while_a_file_is_held_changes_nothing(user, name, share):
    assert user.install() == 0
    age(user)
    with unchanged(user), user.holding(user.folder / name, share):
        assert user.install() == IN_USE
    assert user.install() == 0
    is_updated(user)


@pytest.mark.parametrize("held, share", [("Tidewell.new/Tidewell.exe", 0), ("LICENSE.txt", SHARE_ALL), ("entry", 0)])
def test_an_update_waits_for_a_scanner(user, held, share):
    assert user.install() == 0
    age(user)
    path = user.start_menu_entry if held == "entry" else user.folder / held
    process = user.step(*user.silent_setup)
    seen, in_vain, holds = None, 0, None
    for call in calls(process):
        in_vain = in_vain + 1 if look(user) == seen else 0
        seen = look(user)
        if holds is None and (user.folder / "Tidewell.new/Startup.lnk").exists():
            holds = user.driver.hold(user.windows_path(path), share)
        elif holds and in_vain == 30:  # so many calls without a change: it is retrying
            holds = not user.driver.release()
    assert holds is False
    assert call == "ended 0"
    is_updated(user)


@long
def test_a_copy_that_hangs_is_left_alone(user):
    assert user.install() == 0
    process = user.start()
    process.send_signal(signal.SIGSTOP)
    try:
        assert user.install() == IN_USE
        assert user.remove_and_wait() == IN_USE
    finally:
        process.send_signal(signal.SIGCONT)
    assert sorted({*names(user.folder)} - {SETTINGS}) == INSTALLED
    assert user.uninstall_entry()


@long
def test_a_failed_update_starts_the_copy_that_it_ended(user):
    assert user.install() == 0
    user.start()
    user.tick(SOUTH)
    former = user.running()
    with user.holding(user.folder / "LICENSE.txt"):
        assert user.install() == IN_USE
    until(lambda: user.main_window(former), "main window")
    assert user.ticked(SOUTH)


# ---- full disks

@pytest.mark.parametrize("update", [False, True])
@pytest.mark.parametrize("sizes", [
    pytest.param([100_000, 220_000], id="two"),  # too small for the program; too small for the uninstaller
    pytest.param(range(0, 400_000, 8192), id="all", marks=long)])
def test_on_a_full_disk_nothing_changes(user, disk, sizes, update):
    """Installs with each number of free bytes until it succeeds."""
    disk(user.folder.parent, "2m")
    if update:
        assert user.install() == 0
        age(user)
        user.start()
    filler = user.folder.parent / "filler"
    for size in sizes:
        before, system = state(user), os.statvfs(filler.parent)
        filler.write_bytes(bytes(system.f_bavail * system.f_frsize - size))
        status = user.install()
        filler.unlink()
        if status == 0:
            break
        assert status == NOT_HERE, size
        assert state(user) == before
    else:
        assert user.install() == 0
    user.end_programs()
    if update:
        is_updated(user)
    else:
        assert names(user.folder) == INSTALLED


@long
def test_without_room_for_temporary_files_nothing_changes(user, disk):
    assert user.install() == 0
    with unchanged(user):
        disk(user.home / "Temp", 4096)
        assert user.install() == 2  # NSIS's own code


# ---- killed

CHANGES = "NtSetValueKey", "NtDeleteValueKey", "NtDeleteKey"


def look(user):
    """A quick look at the installation's files."""
    places = [user.start_menu_entry, user.startup_entry, *user.folder.rglob("*")]
    return {path: (path.stat().st_ino, path.stat().st_size) for path in places if path.exists()}


def calls(process, last=None):
    """Yields each call of a program run step by step; makes it only when asked for the next one. Kills the program
    instead of making call number `last`."""
    for number, call in enumerate(map(str.strip, process.stdout)):
        yield call
        if not call.startswith("ended"):
            process.stdin.write("kill\n" if number == last else "go\n")
            process.stdin.flush()
    assert process.wait(timeout=60) == 0


def step(user, command, check=lambda: None, last=None):
    """Runs a command step by step, killing it before step `last`. Returns the numbers of the steps that follow a
    change of a file or change the registry."""
    changes, seen = [], None
    for number, call in enumerate(calls(user.step(*command), last)):
        if call.startswith("ended"):
            assert call == "ended 0"
        elif look(user) != seen or call in CHANGES:
            seen = look(user)
            changes.append(number)
            check()
    return changes


@pytest.mark.parametrize("every", [pytest.param(12, id="some"), pytest.param(1, id="all", marks=long)])
def test_a_killed_update_leaves_a_working_copy(user, every):
    def prepare():
        assert user.install() == 0
        age(user)

    prepare()
    changes = step(user, user.silent_setup, lambda: works(user))
    is_updated(user)
    assert len(changes) > 20
    for number in changes[every // 2::every]:
        prepare()
        step(user, user.silent_setup, lambda: works(user), last=number)
        assert user.uninstall_entry()["InstallLocation"] == user.windows_path(user.folder)
        assert user.install() == 0
        is_updated(user)


@long
def test_a_killed_first_installation_can_be_repeated(user):
    changes = step(user, user.silent_setup)
    for number in changes:
        assert user.remove() == 0
        assert not user.folder.exists()
        step(user, user.silent_setup, last=number)
        assert user.uninstall_entry() or not user.folder.exists()
        assert user.install() == 0
        assert names(user.folder) == INSTALLED
        assert packed(user.folder) == user.packed


@long
def test_a_killed_removal_can_be_repeated(user):
    def prepare():
        assert user.install() == 0  # also beside the uninstaller that a removal has left
        return user.uninstaller(user.folder)

    for number in step(user, prepare()):
        step(user, prepare(), last=number)
        if user.uninstall_entry():
            assert (user.folder / "uninstall.exe").exists()
            assert user.remove() == 0
        assert not user.uninstall_entry()
        assert not user.start_menu_entry.exists()
        assert not user.folder.exists() or names(user.folder) == ["uninstall.exe"]
