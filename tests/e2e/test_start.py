"""The start: by shortcuts that hide, minimise or maximise, and from a folder that others can write in."""

import shutil

import pytest

from bench.driver import (SW_FORCEMINIMIZE, SW_HIDE, SW_MAXIMIZE, SW_MINIMIZE, SW_SHOWMINIMIZED,
                          SW_SHOWMINNOACTIVE)
from bench.program import SOUTHERN_VIEW, TRUE
from bench.user import wait_for_main
from bench.waiting import until


@pytest.mark.parametrize("show, southern", [
    (SW_HIDE, False), (SW_SHOWMINIMIZED, False), (SW_MINIMIZE, False), (SW_SHOWMINNOACTIVE, False),
    (SW_FORCEMINIMIZE, False),
    (SW_SHOWMINNOACTIVE, True),  # then it tries to change the icon before it adds it
])
def test_a_hidden_or_minimised_start_goes_into_the_tray(bench, start, show, southern):
    program = start(bench.folder(settings=bytes(SOUTHERN_VIEW) + TRUE if southern else None), show=show)
    program.settle()
    assert not program.main().shown
    program.display.click(*program.icon_centre())
    wait_for_main(program, True)
    assert not program.main().minimised
    until(lambda: program.foreground() == program.main().hwnd, "main window in the foreground")


def test_a_maximised_start_shows_the_window_in_its_size(start):
    program = start(show=SW_MAXIMIZE)
    wait_for_main(program, True)
    assert program.main().client[2:] == [257, 342]
    assert not program.main().minimised


def test_no_library_is_loaded_from_the_programs_folder(bench, start):
    """Except its imports: Windows loads them before the program can act."""
    folder = bench.folder()
    shutil.copy(folder / "shell32.dll", folder / "planted.dll")
    start(folder)
    assert not (folder / "planted-loaded").exists()
