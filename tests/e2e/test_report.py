"""The four lines, the tip, the icon and the dark fraction, compared with the independent oracle."""

import datetime
import itertools
import re

import pytest

from bench.clock import UTC
from bench.driver import NIM_MODIFY, WM_POWERBROADCAST, WM_TIMECHANGE
from bench.program import SOUTHERN_VIEW, TRUE
from bench.user import hide

# What the report takes from a locale: the months, the morning and afternoon, the decimal sign.
WORDS = {
    "en_US": "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec AM PM .",
    "de_DE": "Jan Feb Mär Apr Mai Jun Jul Aug Sep Okt Nov Dez AM PM ,",
    "el_GR": "Ιαν Φεβ Μάρ Απρ Μάι Ιούν Ιούλ Αύγ Σεπ Οκτ Νοέ Δεκ π.μ. μ.μ. ,",
}

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


def localised(text, locale):
    """The report's English text, put into a locale."""
    words = dict(zip(WORDS["en_US"].split(), WORDS[locale].split(), strict=True))
    return re.sub(r"(?<=\d-)\w{3}(?=-)|[AP]M$|\.", lambda word: words[word[0]], text)


def corrected_evenings(program):
    """Two evenings with a corrected report: a phase has passed on the same day."""
    first = datetime.datetime(2024, 1, 1, 23, 30, tzinfo=program.zone)
    evenings = (first + datetime.timedelta(days=day) for day in range(366))
    return [*itertools.islice((at for at in evenings if program.wanted_report(at)["corrected"]), 2)]


def check(program, call, locale="en_US", southern=False):
    """Compares texts, tip and icon with the oracle."""
    wanted, shown = program.wanted_report(southern=southern), program.report()
    assert shown.lines == [localised(line, locale) for line in wanted["lines"]]
    assert shown.label == localised(wanted["label1"], locale)
    assert call.tip == wanted["tip"]
    assert call.icon == wanted["icon"] % 28
    return wanted


@pytest.mark.parametrize("zone, locale", ZONES.items())
def test_reports_agree_with_the_oracle(start, zone, locale):
    program = start(zone=zone, locale=locale)
    instants = INSTANTS + corrected_evenings(program)
    corrected = 0
    for instant in instants:
        call = program.move_clock(instant)
        assert (call.command, call.succeeded) == (NIM_MODIFY, True)
        corrected += check(program, call, locale)["corrected"]
    assert corrected >= 2
    assert len(program.calls()) == 2 + len(instants)


def test_with_the_southern_view_stored_the_first_report_has_the_offset(start, bench):
    program = start(bench.folder(settings=bytes(SOUTHERN_VIEW) + TRUE + bytes(2)), zone="America/New_York")
    check(program, program.calls()[0], southern=True)


@pytest.mark.parametrize("day, hidden", [((2024, 2, 28), False), ((2023, 12, 31), True)])
def test_one_update_a_minute_and_none_in_between(start, day, hidden):
    """Waits for the real timer, around midnight."""
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
        check(program, program.calls()[-1])


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
