"""Compares the .ico files that make_icons.py writes with the description of the icons.

    python3 -m unittest tests/resources/icons_test.py

A picture is a list of 16 rows of 16 levels: None for transparent, else the grey level 0 to 255. Rows and
columns count from 0. Every pixel that is not black is lit.
"""

import os
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
import zlib

RESOURCES = os.path.join(os.path.dirname(os.path.abspath(__file__)), os.pardir, os.pardir, "resources")
TOOL = os.path.join(RESOURCES, "make_icons.py")
PICTURES = os.path.join(RESOURCES, "icons")

BLACK, DARK_GREY, LIGHT_GREY, WHITE = 0, 128, 192, 255

# The palette a second time, on purpose, in the file's byte order: blue, green, red, 0.
PALETTE_BYTES = bytes.fromhex(
    "00000000 00008000 00800000 00808000 80000000 80008000 80800000 80808000"
    "c0c0c000 0000ff00 00ff0000 00ffff00 ff000000 ff00ff00 ffff0000 ffffff00")

WIDTHS = [6, 10, 12, 14, 14, 16, 16, 16, 16, 16, 16, 14, 14, 12, 10, 6]
DISC = [[abs(2 * column - 15) < width for column in range(16)] for width in WIDTHS]


def eroded(mask):
    """The mask's pixels whose four neighbours are all in the mask."""
    def at(row, column):
        return 0 <= row < 16 and 0 <= column < 16 and mask[row][column]
    return [[all((at(row, column), at(row - 1, column), at(row + 1, column),
                  at(row, column - 1), at(row, column + 1))) for column in range(16)] for row in range(16)]


INSIDE = eroded(DISC)       # the disc within its black outline: columns 1 to 14
CORE = eroded(INSIDE)       # and within the rim
EQUATOR = (7, 8)            # the two middle rows

SLIVERS = (1, 2)
CRESCENT_WIDTHS = {3: 3, 4: 4, 5: 5, 6: 5}
QUARTER = 7
GIBBOUS = range(8, 14)
FULL = 14


def run_tool(*arguments):
    return subprocess.run([sys.executable, "-B", TOOL, *arguments], capture_output=True, text=True, check=False)


def read_folder(folder):
    files = {}
    for name in os.listdir(folder):
        with open(os.path.join(folder, name), "rb") as file:
            files[name] = file.read()
    return files


def images(ico):
    """The images of an .ico file: [(directory entry, image data)]."""
    reserved, kind, count = struct.unpack_from("<HHH", ico)
    if (reserved, kind) != (0, 1):
        raise AssertionError("not an icon file")
    entries = [struct.unpack_from("<BBBBHHII", ico, 6 + 16 * index) for index in range(count)]
    return [(entry, ico[entry[7]:entry[7] + entry[6]]) for entry in entries]


def colours_and_mask(data, size):
    """The top-down rows of palette indexes (XOR) and of mask bits (AND) of a square image."""
    stride, mask_stride = (size * 4 + 31) // 32 * 4, (size + 31) // 32 * 4
    start = 40 + 64
    mask_start = start + stride * size
    colours, mask = [], []
    for row in reversed(range(size)):
        line = data[start + row * stride:][:stride]
        colours.append([line[column // 2] >> (0 if column % 2 else 4) & 15 for column in range(size)])
        line = data[mask_start + row * mask_stride:][:mask_stride]
        mask.append([line[column // 8] >> (7 - column % 8) & 1 for column in range(size)])
    return colours, mask


def png_rows(data):
    """The rows of a PNG of 8 bits with alpha and without filters, as (red, green, blue, alpha)."""
    if data[:8] != b"\x89PNG\r\n\x1a\n":
        raise AssertionError("not a PNG")
    chunks, at = {}, 8
    while at < len(data):
        length, kind = struct.unpack_from(">I4s", data, at)
        content = data[at + 8:at + 8 + length]
        if struct.unpack_from(">I", data, at + 8 + length)[0] != zlib.crc32(kind + content):
            raise AssertionError(f"the checksum of {kind} is wrong")
        chunks[kind] = content
        at += 12 + length
    width, height, *form = struct.unpack(">IIBBBBB", chunks[b"IHDR"])
    if form != [8, 6, 0, 0, 0]:
        raise AssertionError(f"not 8 bits a channel with alpha: {form}")
    lines = zlib.decompress(chunks[b"IDAT"])
    stride = 1 + 4 * width
    if len(lines) != height * stride or any(lines[::stride]):
        raise AssertionError("not its size, or filtered")
    return [[tuple(lines[row * stride + 1 + 4 * column:][:4]) for column in range(width)] for row in range(height)]


def levels(data):
    """A phase icon's picture as grey levels; -1 for a colour that is no grey."""
    colours, mask = colours_and_mask(data, 16)

    def level(index):
        blue, green, red, _ = data[40 + 4 * index:][:4]
        return red if red == green == blue else -1
    return [[None if mask[row][column] else level(colours[row][column]) for column in range(16)]
            for row in range(16)]


def mirrored(picture):
    return [row[::-1] for row in picture]


def lit_columns(picture, row):
    return [column for column in range(16) if picture[row][column]]


def pixels(picture):
    return [level for row in picture for level in row if level is not None]


FILES = {}


def setUpModule():
    with tempfile.TemporaryDirectory() as folder:
        result = run_tool(folder)
        if result.returncode != 0:
            raise AssertionError(result.stderr)
        FILES.update(read_folder(folder))


class Format(unittest.TestCase):
    def test_the_files_are_the_28_phases_and_the_window(self):
        self.assertEqual(sorted(FILES), [f"phase{index:02d}.ico" for index in range(28)] + ["window.ico"])

    def check_image(self, name, entry, data, size):
        with self.subTest(icon=name, size=size):
            stride, mask_stride = (size * 4 + 31) // 32 * 4, (size + 31) // 32 * 4
            length = 40 + 64 + (stride + mask_stride) * size
            self.assertEqual(entry[:7], (size, size, 16, 0, 1, 4, length))
            self.assertEqual(len(data), length)
            self.assertEqual(struct.unpack_from("<IiiHHIIiiII", data),
                             (40, size, 2 * size, 1, 4, 0, (stride + mask_stride) * size, 0, 0, 0, 0))
            self.assertEqual(data[40:104], PALETTE_BYTES)
            colours, mask = colours_and_mask(data, size)
            for row in range(size):
                for column in range(size):
                    if mask[row][column]:
                        self.assertEqual(colours[row][column], 0, "a transparent pixel must be black")
            padding = [data[104 + stride * size + row * mask_stride:][(size + 7) // 8:mask_stride] for row in range(size)]
            self.assertEqual(set(b"".join(padding)) - {0}, set())

    def test_a_phase_is_one_image_of_296_bytes(self):
        for index in range(28):
            name = f"phase{index:02d}.ico"
            self.assertEqual(len(FILES[name]), 6 + 16 + 296, name)
            [(entry, data)] = images(FILES[name])
            self.assertEqual((len(data), entry[7]), (296, 22), name)
            self.check_image(name, entry, data, 16)

    def test_the_window_icon_has_the_sizes_that_windows_asks_for(self):
        parts = images(FILES["window.ico"])
        self.assertEqual([entry[0] for entry, _ in parts], [0, 64, 48, 40, 32, 24, 20, 16])  # 0: 256
        for entry, data in parts[4:]:
            self.check_image("window.ico", entry, data, entry[0])
        self.assertEqual(sum(len(data) for _, data in parts) + 6 + len(parts) * 16, len(FILES["window.ico"]))

    def test_the_window_icon_is_round_and_coloured(self):
        for entry, data in images(FILES["window.ico"])[4:]:
            size = entry[0]
            colours, mask = colours_and_mask(data, size)
            self.assertEqual({mask[0][0], mask[0][-1], mask[-1][0], mask[-1][-1]}, {1})
            self.assertEqual(mask[size // 2][size // 2], 0)
            self.assertGreaterEqual(len({colour for row in colours for colour in row}), 6)

    def test_the_large_window_icons_show_the_picture_of_32_pixels(self):
        """Compared in the middle of each pixel, except on edges, which are shaded by hand."""
        parts = images(FILES["window.ico"])
        colours, mask = colours_and_mask(parts[4][1], 32)
        for entry, data in parts[:4]:
            size = entry[0] or 256
            self.assertEqual(entry[:6], (size % 256, size % 256, 0, 0, 1, 32))
            rows = png_rows(data)
            self.assertEqual((len(rows[0]), len(rows)), (size, size))
            different = 0
            for row in range(32):
                for column in range(32):
                    red, green, blue, alpha = rows[(2 * row + 1) * size // 64][(2 * column + 1) * size // 64]
                    self.assertTrue(alpha or (red, green, blue) == (0, 0, 0), "a transparent pixel is black")
                    wanted = PALETTE_BYTES[4 * colours[row][column]:][:3]
                    seen = alpha > 127
                    if seen == bool(mask[row][column]) or seen and max(
                            abs(want - got) for want, got in zip(wanted, (blue, green, red))) > 64:
                        different += 1
            self.assertLess(different, 32 * 32 // 8, size)


class PhaseTest(unittest.TestCase):
    def setUp(self):
        self.pictures = [levels(images(FILES[f"phase{index:02d}.ico"])[0][1]) for index in range(28)]

    def each(self, indexes, check):
        """Calls check(index, picture) for each phase; a failure names the phase."""
        for index in indexes:
            with self.subTest(phase=index):
                check(index, self.pictures[index])


class Disc(PhaseTest):
    def test_every_row_has_its_width(self):
        def check(_, picture):
            self.assertEqual([[level is not None for level in row] for row in picture], DISC)
        self.each(range(28), check)

    def test_the_outline_is_black(self):
        def check(_, picture):
            outline = {picture[row][column] for row in range(16) for column in range(16)
                       if DISC[row][column] and not INSIDE[row][column]}
            self.assertEqual(outline, {BLACK})
        self.each(range(28), check)

    def test_only_black_white_and_two_greys(self):
        def check(_, picture):
            self.assertLessEqual(set(pixels(picture)), {BLACK, DARK_GREY, LIGHT_GREY, WHITE})
        self.each(range(28), check)

    def test_top_and_bottom_mirror_each_other(self):
        def check(_, picture):
            self.assertEqual(picture, picture[::-1])
        self.each(range(28), check)

    def test_the_waning_half_mirrors_the_waxing_half(self):
        def check(index, picture):
            self.assertEqual(picture, mirrored(self.pictures[28 - index]))
        self.each(range(15, 28), check)


class Waxing(PhaseTest):
    """Phases 0 to 14, lit from the right. Disc checks that the waning ones mirror them."""

    def test_new_moon_is_all_black(self):
        self.assertEqual(set(pixels(self.pictures[0])), {BLACK})

    def test_slivers_are_thin_grey_and_white_at_the_right_edge(self):
        def check(_, picture):
            self.assertIn(WHITE, pixels(picture))
            self.assertTrue({DARK_GREY, LIGHT_GREY} & set(pixels(picture)))
            for row in range(16):
                lit = lit_columns(picture, row)
                self.assertLessEqual(len(lit), 2)
                self.assertLessEqual(set(lit), {11, 12, 13, 14})
            for row in EQUATOR:
                self.assertEqual(picture[row][14], WHITE)
        self.each(SLIVERS, check)

    def test_crescents_are_3_to_5_columns_wide(self):
        def check(index, picture):
            width = CRESCENT_WIDTHS[index]
            for row in EQUATOR:
                self.assertEqual(lit_columns(picture, row), list(range(15 - width, 15)))
        self.each(CRESCENT_WIDTHS, check)

    def test_first_quarter_is_the_right_half(self):
        for row in range(16):
            inside = [column for column in range(8, 16) if INSIDE[row][column]]
            self.assertEqual(lit_columns(self.pictures[QUARTER], row), inside)
            white = [column for column in inside if column > 8 and CORE[row][column]]
            self.assertEqual({self.pictures[QUARTER][row][column] for column in white} - {WHITE}, set())

    def test_gibbous_reaches_left_column_by_column_until_one_is_dark(self):
        def check(index, picture):
            for row in EQUATOR:
                self.assertEqual(lit_columns(picture, row), list(range(15 - index, 15)))
        self.each(GIBBOUS, check)
        for row in EQUATOR:
            self.assertEqual(self.pictures[13][row][:3], [BLACK, BLACK, LIGHT_GREY])

    def test_full_moon_is_white_in_a_light_grey_ring(self):
        for row in range(16):
            for column in range(16):
                if INSIDE[row][column]:
                    expected = WHITE if CORE[row][column] else LIGHT_GREY
                    self.assertEqual(self.pictures[FULL][row][column], expected, (row, column))

    def test_each_row_is_lit_from_the_terminator_to_the_rim_without_a_gap(self):
        def check(_, picture):
            for row in range(1, 15):
                lit = lit_columns(picture, row)
                if lit:
                    rim = max(column for column in range(16) if INSIDE[row][column])
                    self.assertEqual(lit, list(range(lit[0], rim + 1)), row)
        self.each(range(1, FULL), check)

    def test_terminator_and_rim_are_grey_and_white_is_between(self):
        def check(_, picture):
            for row in range(1, 15):
                lit = lit_columns(picture, row)
                self.assertIn(picture[row][lit[0]], (DARK_GREY, LIGHT_GREY))
                for column in lit[1:]:
                    expected = WHITE if CORE[row][column] else LIGHT_GREY
                    self.assertEqual(picture[row][column], expected, (row, column))
        self.each(range(3, FULL), check)

    def test_terminator_curves_one_way_from_pole_to_equator(self):
        def check(index, picture):
            first = [lit_columns(picture, row)[0] for row in range(1, 8)]
            self.assertEqual(first, sorted(first, reverse=index > QUARTER))
            if index == QUARTER:
                self.assertEqual(set(first), {8})
            elif abs(index - QUARTER) > 1:
                self.assertNotEqual(first[0], first[-1], "a straight terminator")
        self.each(range(3, FULL), check)


class Progress(PhaseTest):
    MEASURES = {
        "lit pixels": lambda picture: sum(level > BLACK for level in pixels(picture)),
        "white pixels": lambda picture: sum(level == WHITE for level in pixels(picture)),
        "light": lambda picture: sum(pixels(picture)),
    }

    def test_light_grows_to_full_moon_and_shrinks_after_it(self):
        for name, measure in self.MEASURES.items():
            values = [measure(picture) for picture in self.pictures]
            for index in range(27):
                with self.subTest(measure=name, phase=index):
                    if index < FULL:
                        self.assertLess(values[index], values[index + 1])
                    else:
                        self.assertGreater(values[index], values[index + 1])

    def test_a_lit_pixel_stays_lit_until_full_moon(self):
        def check(index, picture):
            after = self.pictures[index + 1]
            for row in range(16):
                self.assertLessEqual(set(lit_columns(picture, row)), set(lit_columns(after, row)), row)
        self.each(range(FULL), check)

    def test_no_pixel_darkens_from_crescent_to_gibbous(self):
        def check(index, picture):
            for before, after in zip(pixels(picture), pixels(self.pictures[index + 1])):
                self.assertLessEqual(before, after)
        self.each(range(3, 13), check)


class Tool(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.mkdtemp()
        self.addCleanup(shutil.rmtree, self.folder)
        self.pictures = os.path.join(self.folder, "icons")
        self.output = os.path.join(self.folder, "out")
        shutil.copytree(PICTURES, self.pictures)

    def edit(self, name, change):
        path = os.path.join(self.pictures, name)
        with open(path, encoding="ascii") as file:
            lines = file.read().split("\n")
        change(lines)
        with open(path, "w", encoding="ascii") as file:
            file.write("\n".join(lines))

    def refused(self, name, line, *words):
        """The tool ends with status 1, writes nothing, and names file, line and what is wrong."""
        result = run_tool(self.output, "--pictures", self.pictures)
        self.assertEqual(result.returncode, 1, result.stderr)
        self.assertNotIn("Traceback", result.stderr)
        self.assertTrue(result.stderr.startswith(f"{os.path.join(self.pictures, name)}:{line}: "), result.stderr)
        for word in words:
            self.assertIn(word, result.stderr)
        self.assertFalse(os.path.exists(self.output))

    def find(self, name, text):
        """The index of the line, from 0, that reads `text`."""
        with open(os.path.join(self.pictures, name), encoding="ascii") as file:
            return file.read().split("\n").index(text)

    def test_the_same_pictures_give_the_same_bytes(self):
        self.assertEqual(run_tool(self.output, "--pictures", self.pictures).returncode, 0)
        self.assertEqual(read_folder(self.output), FILES)

    def test_line_ends_of_windows_are_as_good(self):
        self.edit("phases.txt", lambda lines: lines.__setitem__(slice(None), [line + "\r" for line in lines]))
        result = run_tool(self.output, "--pictures", self.pictures)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(read_folder(self.output), FILES)

    def test_a_short_row(self):
        at = self.find("phases.txt", "icon phase05 16x16") + 3
        self.edit("phases.txt", lambda lines: lines.__setitem__(at, lines[at][:-1]))
        self.refused("phases.txt", at + 1, "row 3 of phase05", "15 characters wide, not 16")

    def test_a_long_row(self):
        at = self.find("window.txt", "icon window 32x32") + 32
        self.edit("window.txt", lambda lines: lines.__setitem__(at, lines[at] + "."))
        self.refused("window.txt", at + 1, "row 32 of window", "33 characters wide, not 32")

    def test_an_unknown_character(self):
        at = self.find("phases.txt", "icon phase20 16x16") + 8
        self.edit("phases.txt", lambda lines: lines.__setitem__(at, "#####x" + lines[at][6:]))
        self.refused("phases.txt", at + 1, "row 8 of phase20, column 6", "'x'")

    def test_a_missing_row(self):
        at = self.find("phases.txt", "icon phase05 16x16") + 16
        self.edit("phases.txt", lambda lines: lines.pop(at))
        self.refused("phases.txt", at + 1, "row 16 of phase05")

    def test_a_row_too_many(self):
        at = self.find("phases.txt", "icon phase05 16x16") + 16
        self.edit("phases.txt", lambda lines: lines.insert(at, lines[at]))
        self.refused("phases.txt", at + 2, "a row too many?")

    def test_a_file_that_ends_too_soon(self):
        at = self.find("phases.txt", "icon phase27 16x16") + 5
        self.edit("phases.txt", lambda lines: lines.__delitem__(slice(at, None)))
        self.refused("phases.txt", at, "phase27", "4 of the 16 rows")

    def test_a_missing_picture(self):
        at = self.find("phases.txt", "icon phase12 16x16")
        self.edit("phases.txt", lambda lines: lines.__delitem__(slice(at, at + 17)))
        with open(os.path.join(self.pictures, "phases.txt"), encoding="ascii") as file:
            last_line = len(file.read().splitlines())
        self.refused("phases.txt", last_line, "phase12 of 16x16 is missing")

    def test_a_picture_twice(self):
        at = self.find("phases.txt", "icon phase12 16x16")
        self.edit("phases.txt", lambda lines: lines.__setitem__(at, "icon phase11 16x16"))
        self.refused("phases.txt", at + 1, "phase11 has a picture of 16x16 already")

    def test_an_unknown_name(self):
        self.edit("window.txt", lambda lines: lines.extend(["icon other 1x1", "#"]))
        with open(os.path.join(self.pictures, "window.txt"), encoding="ascii") as file:
            last_line = len(file.read().splitlines())
        self.refused("window.txt", last_line, "other is not an icon of this file")

    def test_a_colour_outside_the_palette(self):
        at = self.find("phases.txt", "colour o 128 128 128")
        self.edit("phases.txt", lambda lines: lines.__setitem__(at, "colour o 128 128 129"))
        self.refused("phases.txt", at + 1, "(128, 128, 129)", "palette")

    def test_a_colour_line_that_makes_no_sense(self):
        at = self.find("phases.txt", "colour o 128 128 128")
        for line in ("colour o", "colour oo 128 128 128", "colour o grey", "colour o 1 2", "colour # 128 128 128"):
            with self.subTest(line=line):
                self.edit("phases.txt", lambda lines, line=line: lines.__setitem__(at, line))
                self.refused("phases.txt", at + 1)

    def test_a_character_beyond_ascii(self):
        with open(os.path.join(self.pictures, "window.txt"), "ab") as file:
            file.write(b"; \xc3\xa9\n")
        with open(os.path.join(self.pictures, "window.txt"), "rb") as file:
            last_line = len(file.read().splitlines())
        self.refused("window.txt", last_line, "ASCII")

    def test_a_missing_file(self):
        os.remove(os.path.join(self.pictures, "window.txt"))
        self.refused("window.txt", 1, "cannot be read")

    def test_the_strip_is_a_png(self):
        path = os.path.join(self.folder, "strip.png")
        result = run_tool(self.output, "--strip", path)
        self.assertEqual(result.returncode, 0, result.stderr)
        with open(path, "rb") as file:
            data = file.read()
        self.assertEqual(data[:8], b"\x89PNG\r\n\x1a\n")
        width, height = struct.unpack_from(">II", data, 16)
        length = struct.unpack_from(">I", data, 33)[0]
        self.assertEqual(data[37:41], b"IDAT")
        self.assertEqual(len(zlib.decompress(data[41:41 + length])), height * (1 + 3 * width))


if __name__ == "__main__":
    unittest.main()
