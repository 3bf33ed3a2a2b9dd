"""On high-DPI screens the windows are larger and as sharp; nothing is cut off, even in a locale with long words."""

import datetime

import pytest

from bench.program import RESTORE, SOUTH
from bench.user import bring_to_front
from bench.waiting import until_same

DESIGNED_FOR = 96
BLACK, WHITE = (0, 0, 0), (255, 255, 255)
TWIPS = 1440  # per inch


@pytest.fixture
def dense(bench, start):
    """dense(dots, ...) starts Tidewell on a screen with that many pixels per inch."""
    def started(dots, **how):
        bench.wine.set_density(dots)
        return start(**how)

    yield started
    bench.wine.set_density(DESIGNED_FOR)


def pixels(twips, dots):
    return round(twips * dots / TWIPS)


def grab(program, place):
    """A part of the screen, once it no longer changes."""
    program.display.rest()
    return until_same(lambda: program.display.grab(*place), "picture")


def client(program):
    main = program.main()
    return grab(program, (*main.client_origin, *main.client[2:]))


def moon(program, dots):
    """The lit share of the disc; checks the disc's place, size and colours."""
    picture, scale = client(program), dots / DESIGNED_FOR
    face = picture.pixel(1, 1)
    above_the_lines = {(x, y): picture.pixel(x, y) for y in range(round(160 * scale)) for x in range(picture.width)}
    assert set(above_the_lines.values()) == {face, BLACK, WHITE}
    disc = {place: colour for place, colour in above_the_lines.items() if colour != face}
    columns, rows = zip(*disc)
    wanted = [int(edge * scale + 0.5) for edge in (60, 20, 191, 151)]
    assert [min(columns), min(rows), max(columns) + 1, max(rows) + 1] == wanted
    assert len(disc) == pytest.approx(3.14159 * (65.5 * scale) ** 2, rel=0.01)
    return list(disc.values()).count(WHITE) / len(disc)


@pytest.mark.parametrize("dots", [120, 144, 192])
def test_the_moon_grows_with_its_window(bench, dense, dots):
    lit = moon(dense(DESIGNED_FOR), DESIGNED_FOR)
    bench.end_programs()
    program = dense(dots)
    assert program.main().client[2:] == [pixels(3855, dots), pixels(5130, dots)]
    bring_to_front(program)
    assert moon(program, dots) == pytest.approx(lit, abs=0.02)


def lines_within(program):
    """The four lines; checks that none reaches the window's left or right edge."""
    picture = client(program)
    lines = [control for control in program.inside("Tidewell") if control.text.startswith(("Last", "Next"))]
    assert len(lines) == 4
    for line in lines:
        top = line.screen[1] - program.main().client_origin[1]
        for column in (0, picture.width - 1):
            assert {picture.pixel(column, row) for row in range(top, top + line.screen[3])} == {picture.pixel(1, 1)}
    return [line.text for line in lines]


@pytest.mark.parametrize("dots", [DESIGNED_FOR, 144])
def test_a_line_with_long_words_is_shown_in_full(dense, dots):
    program = dense(dots, locale="lt_LT", at=datetime.datetime(2026, 11, 23, 12, 0, 10))
    bring_to_front(program)
    assert "Next New Moon : 09-gruod.-26 12:51 priešpiet" in lines_within(program)


@pytest.mark.parametrize("dots", [DESIGNED_FOR, 120, 144, 192])
def test_no_text_of_the_main_window_is_cut_off(dense, dots):
    program = dense(dots)
    bring_to_front(program)
    lines_within(program)
    for caption in (RESTORE, SOUTH):
        x, y, width, height = program.control(caption).screen
        more = pixels(150, dots)
        before = grab(program, (x, y, width + more, height))
        box = program.control(caption)
        program.driver.place(box.hwnd, *box.place[:2], width + more, height)
        assert grab(program, (x, y, width + more, height)) == before, f"{caption} shows more when it is wider"
