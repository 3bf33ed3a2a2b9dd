"""The settings file: nothing on disk is ever lost or half-written."""

import pytest

from bench.driver import DriverError
from bench.program import RECORD, RECORD_SIZE, RESTORE, RESTORE_IN_TRAY, SOUTH, SOUTHERN_VIEW, TRUE
from bench.user import tick
from bench.wine import windows_path


def all_bytes(size):
    """Varied bytes; no option among them is true."""
    return bytes((7 * i + i // 256) % 255 for i in range(size))


@pytest.mark.parametrize("size", [None, 0, 1, 8191, 8192, 8465, 8466, 100_000])
def test_a_file_of_any_length_is_kept(bench, start, size):
    before = all_bytes(size or 0)
    program = start(bench.folder(settings=None if size is None else before))
    path = program.folder / "vesk.dat"
    assert path.read_bytes() == before, "reading changes nothing"
    assert not program.control(SOUTH).checked
    tick(program, SOUTH)
    expected = bytearray(before.ljust(RECORD + RECORD_SIZE, b"\0"))
    expected[SOUTHERN_VIEW:SOUTHERN_VIEW + 2] = TRUE
    assert path.read_bytes() == bytes(expected)


@pytest.mark.parametrize("stored, ticked", [(b"\xff\xff", True), (b"\x01\x00", False), (b"\xff\x00", False)])
def test_only_minus_one_is_true(bench, start, stored, ticked):
    program = start(bench.folder(settings=bytes(RECORD + 266) + stored * 3 + bytes(2)))
    assert bool(program.control(SOUTH).checked) == ticked
    assert not program.control(RESTORE).checked, "this box starts unticked, whatever is stored"
    icon = program.calls()[-1].icon
    program.click("Close")
    assert program.wait_for_end() == 0, "the stored option does not hide the window"
    assert (icon != start().calls()[-1].icon) == ticked


def test_another_programs_changes_between_two_clicks_are_kept(program):
    path = program.folder / "vesk.dat"
    tick(program, SOUTH)
    other = bytearray(all_bytes(RECORD + RECORD_SIZE))
    path.write_bytes(other)
    tick(program, RESTORE)
    other[RESTORE_IN_TRAY:RESTORE_IN_TRAY + 2] = TRUE
    assert path.read_bytes() == bytes(other)


def test_the_file_is_beside_the_program_in_any_folder(bench, start, tmp_path, monkeypatch):
    folder = bench.folder()
    folder = folder.rename(folder.parent / "Mond, Луна & 月 – 100 %")
    began = bench.wine.start
    monkeypatch.setattr(bench.wine, "start", lambda *command, **more: began(*command, **(more | {"cwd": tmp_path})))
    program = start(folder=folder)
    tick(program, SOUTH)
    assert (folder / "vesk.dat").exists()
    assert not list(tmp_path.iterdir())


def test_nobody_can_open_the_file_exclusively_while_the_program_runs(program):
    with pytest.raises(DriverError, match="error 32"):
        program.driver.hold(windows_path(program.folder / "vesk.dat"))
    tick(program, SOUTH)
    assert (program.folder / "vesk.dat").read_bytes()[SOUTHERN_VIEW:][:2] == TRUE
