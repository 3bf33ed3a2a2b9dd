"""The four lines, the tip, the icon and the dark fraction, compared with the independent oracle."""

import datetime
import itertools
import re

import moon_oracle
import pytest

from bench.clock import UTC
from bench.driver import NIM_MODIFY, WM_POWERBROADCAST, WM_TIMECHANGE
from bench.oracle import wanted_report
from bench.settings_file import SOUTHERN_VIEW, TRUE
from bench.user import hide

# Zones of whole, half and quarter hours, on both sides of the date line, each with a locale. * has summer time.
ZONES = {
    "America/New_York": "en_US",    # -5 *
    "America/St_Johns": "de_DE",    # -3:30 *
    "Europe/Berlin": "de_DE",       # +1 *
    "Asia/Kolkata": "el_GR",        # +5:30
    "Asia/Kathmandu": "en_US",      # +5:45
    "Australia/Adelaide": "el_GR",  # +9:30 *
    "Pacific/Chatham": "en_US",     # +12:45 *
    "Pacific/Kiritimati": "de_DE",  # +14
    "Pacific/Pago_Pago": "el_GR",   # -11
}

# Universal Time.
INSTANTS = [datetime.datetime.fromisoformat(text).replace(tzinfo=UTC) for text in (
    "1975-05-11 07:05:00",
    "1999-12-31 23:59:59",
    "2000-02-29 12:00:00",
    "2024-01-15 23:10:30",
    "2024-07-15 03:20:10",
    "2026-11-24 02:52:00",
    "2038-01-19 03:14:08",  # one second past 32 bits
    "2100-03-01 00:00:30",  # the day after 28 February
)]


def localised(line, names):
    """An English line with the month names and day markers of a locale."""
    def exchange(match):
        month = names.months[moon_oracle.MONTHS.index(match[2])]
        marker = {"AM": names.am or "AM", "PM": names.pm or "PM"}[match[4]]
        return f"{match[1]}-{month}-{match[3]} {marker}"
    exchanged, count = re.subn(r"(\d\d)-(\w{3})-(\d\d \d+:\d\d) ([AP]M)$", exchange, line)
    assert count == 1
    return exchanged


def corrected_evenings(zone):
    """Two evenings with a corrected report: a phase has passed on the same day."""
    evenings = (datetime.datetime(2024, 1, 1, 23, 30, tzinfo=zone) + datetime.timedelta(days=day) for day in range(366))
    return [*itertools.islice((at for at in evenings if wanted_report(at, zone)["corrected"]), 2)]


def check(program, call, instant, names=None, southern=False):
    """Compares all that the program shows with the oracle."""
    wanted = wanted_report(instant, program.zone, southern)
    shown = program.report()
    lines, label = wanted["lines"], wanted["label1"]
    if names:
        lines, label = [localised(line, names) for line in lines], label.replace(".", names.decimal)
    assert shown.lines == lines
    assert call.tip == wanted["tip"]
    assert call.icon == wanted["icon"] % 28
    assert shown.label == label
    return wanted


@pytest.mark.parametrize("zone, locale", ZONES.items())
def test_reports_agree_with_the_oracle(start, bench, zone, locale):
    names = bench.locale_names(locale)  # English, German and Greek differ in all that the report uses
    assert names.name == locale.replace("_", "-")
    program = start(zone=zone, locale=locale)
    instants = INSTANTS + corrected_evenings(program.zone)
    corrected = 0
    for instant in instants:
        call = program.move_clock(instant)
        assert (call.command, call.succeeded) == (NIM_MODIFY, True)
        corrected += check(program, call, instant, names)["corrected"]
    assert corrected >= 2
    assert len(program.calls()) == 2 + len(instants)


def test_with_the_southern_view_stored_the_first_report_has_the_offset(start, bench):
    program = start(bench.folder(settings=bytes(SOUTHERN_VIEW) + TRUE + bytes(2)), zone="America/New_York")
    wanted = wanted_report(program.clock.at, program.zone, southern=True)
    assert program.calls()[0].tip == wanted["tip"]
    check(program, program.calls()[0], program.clock.at, southern=True)


@pytest.mark.parametrize("zone, change", [
    ("Europe/Berlin", "2024-03-31 01:00:00"), ("Europe/Berlin", "2024-10-27 01:00:00"),
    ("Pacific/Chatham", "2024-04-06 14:00:00"), ("Pacific/Chatham", "2024-09-28 14:00:00"),
])
def test_summer_time_moves_the_clock_but_not_the_phases(start, zone, change):
    instant = datetime.datetime.fromisoformat(change).replace(tzinfo=UTC)
    program = start(zone=zone, at=instant - datetime.timedelta(seconds=1))
    before = program.report().lines
    check(program, program.calls()[-1], program.clock.at)
    check(program, program.move_clock(instant), instant)
    assert program.report().lines == before


@pytest.mark.parametrize("day, hidden", [((2024, 2, 28), False), ((2023, 12, 31), True)])
def test_one_update_a_minute_and_none_in_between(start, day, hidden):
    """By the real timer, around midnight."""
    program = start(at=datetime.datetime(*day, 23, 58, 10))
    if hidden:
        hide(program)
    count = len(program.calls())
    for _ in range(2):
        for second in 11, 59:
            program.clock.set(program.clock.at.replace(second=second))
            program.ticks(2)
            assert len(program.calls()) == count
        program.clock.advance(seconds=1)
        program.ticks(2)
        count += 1
        assert len(program.calls()) == count
        check(program, program.calls()[-1], program.clock.at)


RESUME_AUTOMATIC, SUSPEND = 0x12, 4


@pytest.mark.parametrize("notice, updates", [
    ((WM_TIMECHANGE, 0), 1),  # the clock or the zone has changed
    ((WM_POWERBROADCAST, RESUME_AUTOMATIC), 1),
    ((WM_POWERBROADCAST, SUSPEND), 0),
])
def test_the_tick_after_a_notice_updates_within_the_minute(program, notice, updates):
    count = len(program.calls())
    program.driver.send(program.main().hwnd, *notice)
    program.ticks(2)
    assert len(program.calls()) == count + updates
