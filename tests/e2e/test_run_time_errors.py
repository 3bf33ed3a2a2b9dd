"""Each run-time error that can be made from outside shows its box once, and leaves no icon and no process behind."""

import datetime

from bench.driver import BM_CLICK, NIM_DELETE, WM_TIMER
from bench.waiting import until
from bench.wine import windows_path


def see_the_box_and_end(program, text):
    """The box stands alone, with its text, while timer ticks go on; "OK" ends the program."""
    until(lambda: (box := program.message_box()) and text in box.texts, f"message box that says {text!r}")
    box = program.message_box()
    assert box.text == "Tidewell"
    main = program.main()
    if main:
        for _ in range(3):
            program.driver.send(main.hwnd, WM_TIMER, 1)
    boxes = [window for window in program.windows() if window.class_ == "#32770" and window.shown]
    assert len(boxes) == 1
    until(lambda: not program.display.docked_icons(), "tray without icons")
    ok = [window for window in program.windows() if window.parent == box.hwnd and window.class_ == "Button"]
    assert len(ok) == 1
    program.driver.post(ok[0].hwnd, BM_CLICK)
    assert program.wait_for_end() == 1


def test_a_folder_in_the_place_of_the_settings_file(bench, start):
    folder = bench.folder()
    (folder / "vesk.dat").mkdir()
    program = start(folder=folder, wait=False)
    see_the_box_and_end(program, "Run-time error '75':\n\nPath/File access error")
    assert (folder / "vesk.dat").is_dir()


def test_a_settings_file_that_another_program_holds(bench, start):
    folder = bench.folder()
    (folder / "vesk.dat").write_bytes(b"kept")
    bench.driver.hold(windows_path(folder / "vesk.dat"))
    program = start(folder=folder, wait=False)
    see_the_box_and_end(program, "Run-time error '70':\n\nPermission denied")
    bench.driver.release()
    assert (folder / "vesk.dat").read_bytes() == b"kept"


def test_a_clock_at_the_end_of_the_calendar_at_start(start):
    program = start(at=datetime.datetime(9999, 12, 30, 12, 0, 10), wait=False)
    see_the_box_and_end(program, "Run-time error '5':\n\nInvalid procedure call or argument")


def test_a_clock_at_the_end_of_the_calendar_while_it_runs(program):
    program.clock.set(program.local(datetime.datetime(9999, 12, 30, 12, 0, 10)))
    program.hurry()
    see_the_box_and_end(program, "Run-time error '5':\n\nInvalid procedure call or argument")
    assert program.calls()[-1].command == NIM_DELETE
