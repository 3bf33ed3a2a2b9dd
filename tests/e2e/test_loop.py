"""The program ends at once, whatever its message loop is in the midst of, and leaves nothing behind."""

from bench.driver import NIM_DELETE, WM_QUIT
from bench.program import SOUTH
from bench.waiting import until
from test_run_time_errors import see_the_box_and_end


def test_a_loop_that_ends_by_itself_takes_the_icon_away(program):
    program.click(SOUTH)
    program.settle()
    program.driver.post(program.main().hwnd, WM_QUIT)
    assert program.wait_for_end() == 0
    assert program.calls()[-1].command == NIM_DELETE
    assert program.calls()[-1].succeeded
    until(lambda: not program.display.docked_icons(), "tray without icons")


def test_an_error_before_the_icon_was_added_tells_the_shell_nothing(bench, start):
    folder = bench.folder()
    (folder / "vesk.dat").mkdir()
    program = start(folder=folder, wait=False)
    see_the_box_and_end(program, "Run-time error '75':\n\nPath/File access error")
    assert program.calls() == []
