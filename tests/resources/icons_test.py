"""Compares make_icons.py's pictures and .ico files with the description in resources/icons.

    python3 -m unittest tests/resources/icons_test.py

A picture is a list of 16 rows of 16 grey levels, 0 to 255, None for transparent. Rows and columns count from 0. Every
pixel that is not black is lit. tests/e2e compares the icons that the program shows with the pictures.
"""

import struct
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

RESOURCES = Path(__file__).resolve().parents[2] / "resources"
sys.path.insert(0, str(RESOURCES))
sys.dont_write_bytecode = True

import make_icons  # noqa: E402

BLACK, DARK_GREY, LIGHT_GREY, WHITE = 0, 128, 192, 255
LEVELS = {None: None, 0: BLACK, 7: DARK_GREY, 8: LIGHT_GREY, 15: WHITE}  # any other colour of the palette is an error

ICONS = make_icons.all_icons(RESOURCES / "icons")
PICTURES = [[[LEVELS[colour] for colour in row] for row in ICONS[f"phase{phase:02d}"][16]] for phase in range(28)]

WIDTHS = [6, 10, 12, 14, 14, 16, 16, 16, 16, 16, 16, 14, 14, 12, 10, 6]
DISC = {(row, column) for row in range(16) for column in range(16) if abs(2 * column - 15) < WIDTHS[row]}


def eroded(points):
    """The points whose four neighbours are all there."""
    return {(row, column) for row, column in points
            if {(row - 1, column), (row + 1, column), (row, column - 1), (row, column + 1)} <= points}


INSIDE = eroded(DISC)  # the disc within its black outline: columns 1 to 14
CORE = eroded(INSIDE)  # and within the rim
EQUATOR = 7
ROWS = range(1, 8)     # those of the upper half with pixels inside; the lower half mirrors them

QUARTER = 7
FULL = 14


def images(ico, pixels):
    """The images of an .ico file: [(directory entry, rows of its pixels)]."""
    reserved, kind, count = struct.unpack_from("<HHH", ico)
    assert (reserved, kind) == (0, 1)
    entries = [struct.unpack_from("<BBBBHHII", ico, 6 + 16 * index) for index in range(count)]
    assert sum(entry[6] for entry in entries) + 6 + 16 * count == len(ico)
    sides = [entry[1] or 256 for entry in entries]
    return [(entry, [[next(pixels) for _ in range(side)] for _ in range(side)]) for entry, side in zip(entries, sides)]


def painted(picture):
    """The rows of a picture of palette indexes as (red, green, blue, alpha). A transparent pixel is black."""
    return [[(0, 0, 0, 0) if index is None else (*make_icons.PALETTE[index], 255) for index in row] for row in picture]


def lit_columns(picture, row):
    return [column for column in range(16) if picture[row][column]]


def pixels(picture):
    return [level for row in picture for level in row if level is not None]


class Files(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([sys.executable, "-B", RESOURCES / "make_icons.py", folder], check=True)
            paths = list(Path(folder).glob("*.ico"))
            command = ["convert", *paths, "-depth", "8", "rgba:-"]  # ImageMagick writes (red, green, blue, alpha)
            pixels = struct.iter_unpack("4B", subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout)
            cls.files = {path.name: images(path.read_bytes(), pixels) for path in paths}
            assert not list(pixels)

    def test_each_phase_is_a_picture_of_16_colours(self):
        self.assertEqual(self.files.keys(), {"window.ico", *(f"phase{phase:02d}.ico" for phase in range(28))})
        for name in self.files.keys() - {"window.ico"}:
            [(entry, rows)] = self.files[name]
            self.assertEqual(entry[:7], (16, 16, 16, 0, 1, 4, 296))
            self.assertEqual(rows, painted(ICONS[name.removesuffix(".ico")][16]))

    def test_the_window_icon_is_round_and_coloured_in_the_sizes_that_windows_asks_for(self):
        parts = self.files["window.ico"]
        self.assertEqual([entry[0] for entry, _ in parts], [0, 64, 48, 40, 32, 24, 20, 16])  # 0: 256
        for (size, *_), found in parts[4:]:
            rows = ICONS["window"][size]
            self.assertEqual(found, painted(rows))
            self.assertEqual({rows[0][0], rows[0][-1], rows[-1][0], rows[-1][-1]}, {None})
            self.assertIsNotNone(rows[size // 2][size // 2])
            self.assertGreater(len({colour for row in rows for colour in row}), 6)

    def test_the_large_window_icons_show_the_picture_of_32_pixels(self):
        """Compared in the middle of each pixel. Edges may differ: they are shaded by hand."""
        small = ICONS["window"][32]
        for entry, rows in self.files["window.ico"][:4]:
            size = entry[0] or 256
            self.assertEqual(entry[:6], (size % 256, size % 256, 0, 0, 1, 32))
            different = 0
            for row in range(32):
                for column in range(32):
                    *colour, alpha = rows[(2 * row + 1) * size // 64][(2 * column + 1) * size // 64]
                    self.assertTrue(alpha or colour == [0, 0, 0], "a transparent pixel is black")
                    if alpha < 128 or small[row][column] is None:
                        different += (alpha < 128) != (small[row][column] is None)
                    else:
                        wanted = make_icons.PALETTE[small[row][column]]
                        different += any(abs(want - got) > 64 for want, got in zip(wanted, colour))
            self.assertLess(different, 32 * 32 // 8, size)


class Phases(unittest.TestCase):
    def test_all_are_the_same_disc_with_a_black_outline(self):
        for phase, picture in enumerate(PICTURES):
            with self.subTest(phase=phase):
                self.assertEqual({(row, column) for row in range(16) for column in range(16)
                                  if picture[row][column] is not None}, DISC)
                self.assertEqual({picture[row][column] for row, column in DISC - INSIDE}, {BLACK})

    def test_top_and_bottom_mirror_each_other_and_so_do_waxing_and_waning(self):
        for phase, picture in enumerate(PICTURES):
            with self.subTest(phase=phase):
                self.assertEqual(picture, picture[::-1])
                if phase:
                    self.assertEqual(picture, [row[::-1] for row in PICTURES[28 - phase]])

    # From here on only phases 0 to 14, lit from the right: the others mirror them.

    def test_new_moon_is_all_black(self):
        self.assertEqual(set(pixels(PICTURES[0])), {BLACK})

    def test_slivers_are_thin_grey_and_white_at_the_right_edge(self):
        for phase in (1, 2):
            picture = PICTURES[phase]
            with self.subTest(phase=phase):
                self.assertTrue({DARK_GREY, LIGHT_GREY} & set(pixels(picture)))
                for row in ROWS:
                    self.assertLessEqual(len(lit_columns(picture, row)), 2)
                self.assertEqual(picture[EQUATOR][14], WHITE)

    def test_crescents_quarter_and_gibbous_reach_left_until_one_column_is_dark(self):
        widths = {3: 3, 4: 4, 5: 5, 6: 5, QUARTER: 7} | {gibbous: gibbous for gibbous in range(8, 14)}
        for phase, width in widths.items():
            with self.subTest(phase=phase):
                self.assertEqual(lit_columns(PICTURES[phase], EQUATOR), list(range(15 - width, 15)))
        self.assertEqual(PICTURES[13][EQUATOR][:3], [BLACK, BLACK, LIGHT_GREY])

    def test_full_moon_is_white_in_a_light_grey_ring(self):
        self.assertEqual({PICTURES[FULL][row][column] for row, column in CORE}, {WHITE})
        self.assertEqual({PICTURES[FULL][row][column] for row, column in INSIDE - CORE}, {LIGHT_GREY})

    def test_each_row_is_lit_from_the_terminator_to_the_rim_without_a_gap(self):
        for phase, picture in enumerate(PICTURES[1:FULL], 1):
            with self.subTest(phase=phase):
                for row in ROWS:
                    lit = lit_columns(picture, row)
                    rim = max(column for place, column in INSIDE if place == row)
                    self.assertEqual(lit, list(range(rim + 1 - len(lit), rim + 1)), row)

    def test_terminator_and_rim_are_grey_and_white_is_between(self):
        for phase, picture in enumerate(PICTURES[3:FULL], 3):
            with self.subTest(phase=phase):
                for row in ROWS:
                    first, *others = lit_columns(picture, row)
                    self.assertIn(picture[row][first], (DARK_GREY, LIGHT_GREY))
                    for column in others:
                        expected = WHITE if (row, column) in CORE else LIGHT_GREY
                        self.assertEqual(picture[row][column], expected, (row, column))

    def test_terminator_curves_one_way_from_pole_to_equator(self):
        for phase, picture in enumerate(PICTURES[3:FULL], 3):
            with self.subTest(phase=phase):
                first = [lit_columns(picture, row)[0] for row in ROWS]
                self.assertEqual(first, sorted(first, reverse=phase > QUARTER))
                if phase == QUARTER:
                    self.assertEqual(set(first), {8})
                elif abs(phase - QUARTER) > 1:
                    self.assertNotEqual(first[0], first[-1], "a straight terminator")

    def test_light_grows_until_full_moon(self):
        for phase, picture in enumerate(PICTURES[:FULL]):
            with self.subTest(phase=phase):
                before, after = pixels(picture), pixels(PICTURES[phase + 1])
                for measure in (lambda levels: sum(level > BLACK for level in levels),
                                lambda levels: sum(level == WHITE for level in levels), sum):
                    self.assertLess(measure(before), measure(after))
                for one, next_one in zip(before, after):
                    self.assertGreaterEqual(bool(next_one), bool(one), "a lit pixel stays lit")
                    if 3 <= phase < 13:
                        self.assertGreaterEqual(next_one, one)


class Mistakes(unittest.TestCase):
    def test_a_mistake_in_a_picture_is_reported_with_its_line(self):
        good = "; comment\n\ncolour # 0 0 0\ncolour . transparent\nhalf two 2\n##\nicon one 2\n#.\n.#\n"
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder, "some.txt")
            path.write_text(good)
            self.assertEqual(make_icons.parse(path), {"two": {2: [[0, 0], [0, 0]]}, "one": {2: [[0, None], [None, 0]]}})
            for old, new, line in [("0 0 0", "0 0 1", 3), ("colour .", "color .", 4), ("#.\n", "#\n", 8),
                                   ("#.\n", "#x\n", 8), ("#.\n", "#.\n#.\n", 10), (".#\n", "", 9)]:
                with self.subTest(old=old, new=new), self.assertRaises(SystemExit) as refused:
                    path.write_text(good.replace(old, new))
                    make_icons.parse(path)
                self.assertTrue(str(refused.exception).startswith(f"{path}:{line}: "), refused.exception)


if __name__ == "__main__":
    unittest.main()
