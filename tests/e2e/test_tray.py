"""The icon in the tray: clicks, menu, tip, and a shell that restarts."""

import time

import pytest

from bench import LONG
from bench.display import RIGHT
from bench.driver import LEFT_DOUBLE, LEFT_DOWN, LEFT_UP, NIM_ADD, NIM_MODIFY, RIGHT_DOUBLE, RIGHT_DOWN
from bench.program import RESTORE
from bench.user import choose, hide, open_menu, pass_a_minute, place_of, wait_for_main
from bench.waiting import until

ELSEWHERE = (100, 100)
TRIES = 40 if LONG else 6  # an even number, so the main window is shown again


# ---- clicks

@pytest.mark.parametrize("message", [LEFT_DOWN, LEFT_DOUBLE, RIGHT_DOWN, RIGHT_DOUBLE, 512, 519, 520])
def test_other_messages_of_the_icon_do_nothing(program, message):
    program.tray_message(message)
    program.settle()
    assert program.main().shown
    assert program.menu() is None
    assert not program.about().shown


# ---- menu

def test_a_click_elsewhere_closes_the_menu(program):
    open_menu(program)
    program.display.click(*ELSEWHERE)
    until(lambda: program.menu() is None, "menu closed")
    assert open_menu(program)


def test_a_right_click_on_an_entry_does_nothing(program):
    program.display.click(*place_of("Exit", open_menu(program)), RIGHT)
    program.settle()
    program.ticks()
    assert not program.ended
    choose(program, "About")
    until(lambda: program.about().shown, "About box")


def test_while_the_menu_is_open_updates_go_on_and_a_click_on_the_icon_does_nothing(program):
    open_menu(program)
    count = len(program.calls())
    program.clock.advance(minutes=1)
    until(lambda: len(program.calls()) > count, "update")
    assert program.menu()
    program.tray_message(LEFT_DOWN)
    program.tray_message(LEFT_UP)
    program.settle()
    assert program.main().shown


@pytest.mark.parametrize("gap", [0, 5, 20, 50, 300])
def test_the_icon_still_answers_after_a_right_click_and_a_quick_click_elsewhere(program, typewriter, gap):
    """The second click may take the foreground just before or just after the menu opens."""
    icon = program.icon_centre()
    x, y, width, height = typewriter.window().screen
    for number in range(TRIES):  # hides and shows the main window in turn
        program.display.click(*icon, RIGHT)
        time.sleep(gap / 1000)
        program.display.click(x + 30 + 20 * (number % 4), y + height // 2)
        shown = program.main().shown

        def toggled():
            if program.menu():
                program.driver.keys("Escape")
            program.tray_message(LEFT_UP)
            program.settle()
            return program.main().shown != shown
        until(toggled, f"icon that answers, in try {number}")


# ---- record

def test_the_record_is_filled_as_the_shell_expects(program):
    about = program.about().hwnd
    added, changed = program.calls()[:2]
    assert (added.command, changed.command) == (NIM_ADD, NIM_MODIFY)
    for call in (added, changed):
        assert call.succeeded
        assert (call.size, call.hwnd, call.id, call.flags, call.message) == (88, about, 1, 7, 512)
        assert len(call.tip) == 64
        assert call.tip.startswith("Moon's Age - ")


# ---- the shell

def announce_a_new_shell(program):
    program.driver.broadcast("TaskbarCreated")


@pytest.fixture(params=[pass_a_minute, announce_a_new_shell])
def event(request):
    """A function that makes the program try again to add its icon."""
    return request.param


def lose_the_icon(program):
    """Removes the icon, as the end of the shell does."""
    assert program.driver.remove_icon(program.about().hwnd)
    until(lambda: not program.display.docked_icons(), "tray without icons")


@pytest.mark.parametrize("hidden", [False, True])
def test_a_new_shell_gets_the_icon_again(program, event, hidden):
    if hidden:
        hide(program)
    lose_the_icon(program)
    event(program)
    until(program.display.docked_icons, "icon in the tray")
    modified, added = program.calls()[-2:]
    assert (modified.command, modified.succeeded) == (NIM_MODIFY, False)
    assert (added.command, added.succeeded) == (NIM_ADD, True)
    assert added.tip == modified.tip
    program.display.click(*program.icon_centre())
    wait_for_main(program, hidden)


def test_a_shell_that_kept_the_icon_gets_no_second_one(program):
    count = len(program.calls())
    announce_a_new_shell(program)
    until(lambda: len(program.calls()) > count, "tray call")
    program.settle()
    assert [(call.command, call.succeeded) for call in program.calls()[count:]] == [(NIM_MODIFY, True)]
    assert len(program.display.docked_icons()) == 1


@pytest.fixture
def without_shell(start, bench):
    """A program whose shell is not there yet."""
    return start(bench.folder(marks=["tray-refuses"]))


def test_a_late_shell_gets_the_icon(without_shell, event):
    program = without_shell
    assert (program.calls()[0].command, program.calls()[0].succeeded) == (NIM_ADD, False)
    assert not program.display.docked_icons()
    program.refuse_tray_calls(False)
    event(program)
    until(program.display.docked_icons, "icon in the tray")
    assert (program.calls()[-1].command, program.calls()[-1].succeeded) == (NIM_ADD, True)


def test_without_an_icon_the_window_is_minimised_instead_of_hidden(without_shell):
    without_shell.click(RESTORE)
    without_shell.click("Close")
    until(lambda: without_shell.main().minimised, "minimised window")
    assert without_shell.main().shown


def test_a_hidden_window_that_loses_its_icon_is_minimised(program):
    hide(program)
    program.refuse_tray_calls(True)
    pass_a_minute(program)
    until(lambda: program.main().minimised and program.main().shown, "minimised window")
    program.refuse_tray_calls(False)
    pass_a_minute(program)
    wait_for_main(program, False)
