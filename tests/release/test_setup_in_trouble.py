"""The setup in trouble: it changes only Tidewell's files, all or none, and its exit code says which."""

import os
import shutil
import signal
import subprocess

import pytest

from bench.program import IMAGE, SOUTH
from bench.waiting import until
from user import INSTALLED, IN_USE, IS_ELSEWHERE, NOT_HERE, PACKED, SETTINGS, UNINSTALL_KEY, names

long = pytest.mark.long
OLDER = b"of an older version"
SHARE_ALL = 7


# ---- the state of the machine

def contents(user):
    """The files of drive C with their bytes, and the folders."""
    return {path: path.read_bytes() if path.is_file() else "folder" for path in user.files()}


@pytest.fixture
def unchanged(user):
    """A function. Its first call notes the state of the machine; each later one asserts that it is still the same."""
    before = []

    def check():
        before.append((contents(user), user.uninstall_entry(), user.running()))
        (files, *others), (files_before, *others_before) = before[-1], before[0]
        assert {path for path in files.keys() | files_before.keys() if files.get(path) != files_before.get(path)} == set()
        assert others == others_before
    return check


def age(user):
    """Makes the installation look older, gives it settings, and lets it start with Windows."""
    for name in INSTALLED:
        with open(user.folder / name, "ab") as file:
            file.write(OLDER)
    (user.folder / SETTINGS).write_bytes(b"settings")
    shutil.copy(user.start_menu_entry, user.startup_entry)
    assert user.wine.run("reg", "add", UNINSTALL_KEY, "/v", "DisplayVersion", "/d", "0.9", "/f") == 0


def is_updated(user, program, version):
    """Asserts that the installation is completely updated after age()."""
    assert names(user.folder) == sorted([*INSTALLED, SETTINGS])
    assert all((user.folder / name).read_bytes() == (program.parent / name).read_bytes() for name in PACKED)
    assert OLDER not in (user.folder / "uninstall.exe").read_bytes()
    assert (user.folder / SETTINGS).read_bytes() == b"settings"
    assert user.start_menu_entry.stat().st_size > 0
    assert user.startup_entry.stat().st_size > 0
    entry = user.uninstall_entry()
    assert (entry["DisplayVersion"], entry["InstallLocation"]) == (version, user.windows_path(user.folder))


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


def install_on_full_disks(user, sizes, check):
    """Installs with each number of free bytes until it succeeds; checks after each failure."""
    for size in sizes:
        system = os.statvfs(user.folder)
        (user.folder / "filler").write_bytes(bytes(system.f_bavail * system.f_frsize - size))
        status = user.install()
        (user.folder / "filler").unlink()
        if status == 0:
            return
        assert status == NOT_HERE, size
        check()
    assert user.install() == 0


# ---- other people's files

def test_a_first_installation_leaves_the_root_of_the_drive_alone(user, foreign):
    others = [user.drive_c / name for name in (*INSTALLED, SETTINGS, "Tidewell.lnk")]
    for path in others:
        path.write_bytes(foreign)
    try:
        assert user.install() == 0
        assert user.remove() == 0
        assert all(path.read_bytes() == foreign for path in others)
        assert not (user.drive_c / "it-ran.txt").exists()
    finally:
        for path in (*others, user.drive_c / "it-ran.txt"):
            path.unlink(missing_ok=True)


def test_without_the_folders_of_the_start_menu_nothing_is_touched(user, unchanged, foreign):
    key = r"HKCU\Software\Microsoft\Windows\CurrentVersion\Explorer\User Shell Folders"
    link = user.drive_c / "Tidewell.lnk"
    link.write_bytes(foreign)
    assert user.wine.run("reg", "export", key, "C:\\kept.reg", "/y") == 0
    try:
        assert user.wine.run("reg", "add", key, "/v", "Startup", "/d", "Q:\\none", "/f") == 0
        unchanged()
        assert user.install() == NOT_HERE
        unchanged()
    finally:
        assert user.wine.run("reg", "import", "C:\\kept.reg") == 0
        (user.drive_c / "kept.reg").unlink()
        link.unlink()


def test_a_folder_with_other_peoples_files_is_refused(user, elsewhere, foreign):
    (elsewhere / "Tidewell.new").mkdir(parents=True)
    for name in (*INSTALLED, "Tidewell.new/Tidewell.exe", "Tidewell.new/LICENSE.txt"):
        (elsewhere / name).write_bytes(foreign)
        before = contents(user)
        assert user.install(user.windows_path(elsewhere)) == NOT_HERE
        assert contents(user) == before
        (elsewhere / name).unlink()
    assert not user.uninstall_entry()


def test_shortcuts_to_a_portable_copy_stay(user, unpacked):
    assert user.install(user.windows_path(unpacked)) == 0
    link = user.start_menu_entry.read_bytes()
    user.startup_entry.write_bytes(link)
    assert user.wine.run("reg", "delete", UNINSTALL_KEY, "/f") == 0  # now the copy is a portable one
    assert user.install() == 0
    assert user.start_menu_entry.read_bytes() == user.startup_entry.read_bytes() == link
    assert user.remove() == 0
    assert user.start_menu_entry.read_bytes() == user.startup_entry.read_bytes() == link


@long
def test_a_folder_named_as_a_file_is_refused(user):
    (user.folder / IMAGE).mkdir(parents=True)
    assert user.install() == NOT_HERE
    assert not user.uninstall_entry()


@long
def test_a_portable_copy_becomes_the_installed_one_unless_it_is_beside_other_peoples_files(user, unpacked, foreign,
                                                                                           unchanged):
    (unpacked / SETTINGS).write_bytes(b"settings")
    (unpacked / "uninstall.exe").write_bytes(foreign)
    unchanged()
    assert user.install(user.windows_path(unpacked)) == NOT_HERE
    unchanged()
    (unpacked / "uninstall.exe").unlink()
    assert user.install(user.windows_path(unpacked)) == 0
    assert names(unpacked) == sorted([*INSTALLED, SETTINGS])
    assert (unpacked / SETTINGS).read_bytes() == b"settings"


def test_an_impossible_folder_is_refused(user, unchanged):
    (user.drive_c / "a file").write_text("in the way")
    unchanged()
    for place in ("Q:\\Tidewell", "C:\\", "C:\\a file\\Tidewell", "Z:\\proc\\Tidewell", "Tidewell", '"C:\\Tidewell"'):
        assert user.install(place) == NOT_HERE, place
    assert user.wine.run("cmd", "/c", f"C:\\{user.setup_name} /S \"/D=C:\\Tidewell\"") == NOT_HERE
    unchanged()
    (user.drive_c / "a file").unlink()


# ---- another installation

def test_a_second_installation_is_refused_unless_the_first_has_lost_its_program(user, elsewhere, unchanged):
    assert user.install() == 0
    unchanged()
    assert user.install(user.windows_path(elsewhere)) == IS_ELSEWHERE
    unchanged()
    shutil.rmtree(user.folder)
    assert user.install(user.windows_path(elsewhere)) == 0
    assert user.uninstall_entry()["InstallLocation"] == user.windows_path(elsewhere)
    assert user.remove(elsewhere) == 0
    assert not elsewhere.exists()


def test_a_copy_of_the_uninstaller_removes_nothing(user, unpacked, unchanged):
    assert user.install() == 0
    shutil.copy(user.folder / "uninstall.exe", unpacked)
    unchanged()
    assert user.remove(unpacked) == 0  # this process only starts the one that does the work
    unchanged()
    assert user.remove_and_wait(unpacked) == NOT_HERE
    unchanged()


@long
def test_the_setup_works_after_a_removal_that_kept_the_uninstaller(user):
    assert user.install() == 0
    assert user.remove_and_wait() == 0
    assert names(user.folder) == ["uninstall.exe"]  # it ran from its place
    assert user.install() == 0
    assert names(user.folder) == INSTALLED


# ---- files in use

def test_a_removal_while_a_file_is_held_changes_nothing(user, unchanged):
    assert user.install() == 0
    unchanged()
    with user.holding(user.folder / "LICENSE.txt"):
        assert user.remove_and_wait() == IN_USE
    unchanged()
    assert user.remove() == 0
    assert not user.folder.exists()
    assert not user.uninstall_entry()


def test_a_removal_that_cannot_delete_a_file_can_be_repeated(user):
    assert user.install() == 0
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
def test_an_update_while_a_file_is_held_changes_nothing(user, name, share, program, version, unchanged):
    assert user.install() == 0
    age(user)
    unchanged()
    with user.holding(user.folder / name, share):
        assert user.install() == IN_USE
    unchanged()
    assert user.install() == 0
    is_updated(user, program, version)


@pytest.mark.parametrize("held, share", [("Tidewell.new/Tidewell.exe", 0), ("LICENSE.txt", SHARE_ALL), ("entry", 0)])
def test_an_update_waits_for_a_scanner(user, held, share, program, version):
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
    is_updated(user, program, version)


def test_if_a_scanner_holds_the_program_no_other_copy_is_ended(user, unpacked, unchanged):
    assert user.install() == 0
    user.start(unpacked)
    unchanged()
    with user.holding(user.folder / IMAGE):
        assert user.install() == IN_USE
    unchanged()


@long
def test_a_copy_that_hangs_is_left_alone(user, unchanged):
    assert user.install() == 0
    process = user.start()
    unchanged()
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


@long
def test_read_only_files_are_updated(user, program, version):
    assert user.install() == 0
    age(user)
    for name in INSTALLED:
        (user.folder / name).chmod(0o444)
    assert user.install() == 0
    is_updated(user, program, version)


# ---- full disks

SIZES = [pytest.param([100_000, 220_000], id="two"),  # too small for the program; too small for the uninstaller
         pytest.param(range(0, 400_000, 8192), id="all", marks=long)]


@pytest.mark.parametrize("sizes", SIZES)
def test_an_update_on_a_full_disk_changes_nothing(user, disk, program, version, unchanged, sizes):
    disk(user.folder, "2m")
    assert user.install() == 0
    age(user)
    user.start()
    unchanged()
    install_on_full_disks(user, sizes, unchanged)
    user.end_programs()
    is_updated(user, program, version)


@pytest.mark.parametrize("sizes", SIZES)
def test_a_first_installation_on_a_full_disk_leaves_nothing(user, disk, unchanged, sizes):
    disk(user.folder, "2m")
    unchanged()
    install_on_full_disks(user, sizes, unchanged)
    assert names(user.folder) == INSTALLED


def test_a_first_installation_that_fails_leaves_no_folder(user, disk, unchanged):
    disk(user.folder.parent, "100k")
    unchanged()
    assert user.install() == NOT_HERE
    unchanged()


@long
def test_without_room_for_temporary_files_nothing_changes(user, disk, unchanged):
    assert user.install() == 0
    unchanged()
    disk(user.home / "Temp", 4096)
    assert user.install() == 2  # NSIS's own code
    unchanged()


# ---- killed

CHANGES = "NtSetValueKey", "NtDeleteValueKey", "NtDeleteKey"


def look(user):
    """A quick look at the installation's files."""
    places = [user.start_menu_entry, user.startup_entry, *user.folder.rglob("*")]
    return {path: (path.stat().st_ino, path.stat().st_size) for path in places if path.exists()}


def works(user, program):
    """Asserts that a complete copy is there, old or new, with its settings and entries."""
    for name in PACKED:
        new = (program.parent / name).read_bytes()
        assert (user.folder / name).read_bytes() in (new, new + OLDER)
    assert (user.folder / "uninstall.exe").stat().st_size > 0
    assert (user.folder / SETTINGS).read_bytes() == b"settings"
    assert user.start_menu_entry.stat().st_size > 0
    assert user.startup_entry.stat().st_size > 0


def calls(process, last=None):
    """Yields each call of a program run step by step, before it is made; asking for the next makes it. Kills the
    program instead of making call number `last`."""
    for number, call in enumerate(map(str.strip, process.stdout)):
        yield call
        if not call.startswith("ended"):
            process.stdin.write("kill\n" if number == last else "go\n")
            process.stdin.flush()
    assert process.wait(timeout=60) == 0


def step(user, command, check=lambda: None, last=None):
    """Runs a command step by step, killing it before the step numbered last. Returns the numbers of the steps before
    which something changed."""
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
def test_a_killed_update_leaves_a_working_copy(user, program, version, every):
    def prepare():
        assert user.install() == 0
        age(user)

    prepare()
    changes = step(user, user.silent_setup, lambda: works(user, program))
    is_updated(user, program, version)
    assert len(changes) > 20
    for number in changes[every // 2::every]:
        prepare()
        step(user, user.silent_setup, lambda: works(user, program), last=number)
        assert user.uninstall_entry()["InstallLocation"] == user.windows_path(user.folder)
        assert user.install() == 0
        is_updated(user, program, version)


@long
def test_a_killed_first_installation_can_be_repeated(user, program):
    changes = step(user, user.silent_setup)
    for number in changes:
        assert user.remove() == 0
        assert not user.folder.exists()
        step(user, user.silent_setup, last=number)
        assert user.uninstall_entry() or not user.folder.exists()
        assert user.install() == 0
        assert names(user.folder) == INSTALLED
        assert all((user.folder / name).read_bytes() == (program.parent / name).read_bytes() for name in PACKED)


@long
def test_a_killed_removal_can_be_repeated(user):
    def prepare():
        shutil.rmtree(user.folder, ignore_errors=True)
        assert user.install() == 0
        return user.uninstaller(user.folder)

    for number in step(user, prepare()):
        step(user, prepare(), last=number)
        if user.uninstall_entry():
            assert (user.folder / "uninstall.exe").exists()
            assert user.remove() == 0
        assert not user.uninstall_entry()
        assert not user.start_menu_entry.exists()
        assert not user.folder.exists() or names(user.folder) == ["uninstall.exe"]
