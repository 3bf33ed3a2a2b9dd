"""On high-DPI screens the windows are larger and as sharp; nothing is cut off, even in a locale with long words."""

import datetime

import pytest

from bench.program import RESTORE, SOUTH
from bench.user import bring_to_front, picture

DESIGNED_FOR = 96
FACE = (0xF5, 0xF5, 0xF5)  # Wine's window colour, where nothing is drawn
BLACK, WHITE = (0, 0, 0), (255, 255, 255)
TWIPS = 1440  # per inch

at_each_density = pytest.mark.parametrize("dots", [DESIGNED_FOR, 120, 144, 192])


@pytest.fixture
def dense(bench, start):
    """dense(dots, ...) starts Tidewell in the foreground of a screen with that many pixels per inch."""
    def started(dots, **how):
        bench.wine.set_density(dots)
        program = start(**how)
        bring_to_front(program)
        return program

    yield started
    bench.wine.set_density(DESIGNED_FOR)


def pixels(twips, dots):
    return round(twips * dots / TWIPS)


def client(program):
    main = program.main()
    return picture(program, *main.client_origin, *main.client[2:])


@at_each_density
def test_the_moon_grows_with_its_window_and_is_lit_like_the_real_one(dense, dots):
    program = dense(dots)
    assert program.main().client[2:] == [pixels(3855, dots), pixels(5130, dots)]
    shown, scale = client(program), dots / DESIGNED_FOR
    above_the_lines = {(x, y): shown.pixel(x, y) for y in range(round(160 * scale)) for x in range(shown.width)}
    assert set(above_the_lines.values()) == {FACE, BLACK, WHITE}
    disc = {place: colour for place, colour in above_the_lines.items() if colour != FACE}
    columns, rows = zip(*disc)
    edges = [int(edge * scale + 0.5) for edge in (60, 20, 191, 151)]
    assert [min(columns), min(rows), max(columns) + 1, max(rows) + 1] == edges
    assert len(disc) == pytest.approx(3.14159 * (65.5 * scale) ** 2, rel=0.01)
    lit = 1 - float(program.wanted_report()["label1"])
    assert [*disc.values()].count(WHITE) / len(disc) == pytest.approx(lit, abs=0.04)  # the rim is black
    # Through the middle, waning: rim, white, terminator, black.
    left, top, right, bottom = edges
    row = [disc[x, (top + bottom) // 2] for x in range(left, right)]
    terminator, near = round(lit * len(row)), round(3 * scale)
    assert set(row[near:terminator - near]) == {WHITE}
    assert set(row[terminator + near:]) == {BLACK}


@at_each_density
def test_no_text_of_the_main_window_is_cut_off(dense, dots):
    program = dense(dots, locale="lt_LT", at=datetime.datetime(2026, 11, 23, 12, 0, 10))
    shown = client(program)
    lines = [control for control in program.inside("Tidewell") if control.text.startswith(("Last", "Next"))]
    assert len(lines) == 4
    assert "Next New Moon : 09-gruod.-26 12:51 priešpiet" in [line.text for line in lines]
    for line in lines:
        top = line.screen[1] - program.main().client_origin[1]
        for column in (0, shown.width - 1):
            assert {shown.pixel(column, row) for row in range(top, top + line.screen[3])} == {FACE}
    for caption in (RESTORE, SOUTH):
        box = program.control(caption)
        x, y, width, height = box.screen
        more = pixels(150, dots)
        before = picture(program, x, y, width + more, height)
        program.driver.place(box.hwnd, *box.place[:2], width + more, height)
        assert picture(program, x, y, width + more, height) == before, f"{caption} shows more when it is wider"
