"""On high-DPI screens the windows are larger and as sharp; nothing is cut off, even in a locale with long words."""

import datetime
from types import SimpleNamespace

import pytest

from bench.program import RESTORE, SOUTH
from bench.user import bring_to_front, show_about
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


def client(program, form="Tidewell"):
    window = program.top(form)
    return grab(program, (*window.client_origin, *window.client[2:]))


def ink(picture, is_ink, rows=None):
    """The bounds and the number of the pixels that are ink."""
    found = [(x, y) for y in rows or range(picture.height) for x in range(picture.width) if is_ink(picture.pixel(x, y))]
    columns, lines = [x for x, _ in found], [y for _, y in found]
    return SimpleNamespace(left=min(columns), top=min(lines), right=max(columns) + 1, bottom=max(lines) + 1,
                           count=len(found))


def text(picture):
    """The bounds of the text on a plain ground."""
    background = picture.pixel(0, picture.height - 1)
    return ink(picture, lambda colour: colour != background)


def moon(program, dots):
    """The lit share of the disc; checks the disc's place, size and colours."""
    picture, scale = client(program), dots / DESIGNED_FOR
    face = picture.pixel(1, 1)
    rows = range(round(160 * scale))
    assert {picture.pixel(x, y) for y in rows for x in range(picture.width)} == {face, BLACK, WHITE}
    disc = ink(picture, lambda colour: colour != face, rows)
    assert [disc.left, disc.top, disc.right, disc.bottom] == [int(edge * scale + 0.5) for edge in (60, 20, 191, 151)]
    assert disc.count == pytest.approx(3.14159 * (65.5 * scale) ** 2, rel=0.01)
    return ink(picture, lambda colour: colour == WHITE, rows).count / disc.count


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


@pytest.mark.parametrize("dots", [120, 144, 192])
def test_the_texts_of_the_about_box_grow_with_it(bench, dense, dots):
    def texts(program):
        show_about(program)
        program.display.rest()
        return [text(grab(program, program.control(caption, "About Moon").screen))
                for caption in ("Tidewell 1.0", "Developed by Quorvane Systems")]

    designed = texts(dense(DESIGNED_FOR))
    bench.end_programs()
    for was, now in zip(designed, texts(dense(dots))):
        for extent in (lambda ink: ink.right - ink.left, lambda ink: ink.bottom - ink.top):
            assert extent(now) == pytest.approx(extent(was) * dots / DESIGNED_FOR, rel=0.1)
