"""The bench itself: what the other tests rely on."""

import datetime

from bench.driver import NIM_ADD, NIM_MODIFY


def test_the_clock_stands_still_until_it_is_moved(program):
    program.ticks()
    assert [call.command for call in program.calls()] == [NIM_ADD, NIM_MODIFY]
    program.move_clock(datetime.datetime(2031, 7, 8, 9, 10, 11))
    assert "31" in program.report().lines[3]
    program.ticks()
    assert len(program.calls()) == 3


def test_a_recorded_icon_is_known_again(program):
    assert program.calls()[0].icon == 18


def test_the_icon_is_on_the_screen(program):
    x, y = program.icon_centre()
    assert len(program.display.grab(x - 8, y - 8, 16, 16).colours()) >= 3
