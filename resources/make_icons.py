#!/usr/bin/env python3
"""Makes Tidewell's .ico files from the pictures in icons/*.txt.

    make_icons.py OUTPUT_FOLDER [--pictures FOLDER] [--strip FILE.png]

A picture file holds, line by line:

    ; a comment, or an empty line
    colour CHARACTER RED GREEN BLUE      one of the 16 colours of PALETTE
    colour CHARACTER transparent
    icon NAME WIDTHxHEIGHT               followed at once by HEIGHT rows of WIDTH characters

Pictures of one NAME go into NAME.ico together, in the order of the file. window_icon.py draws the window icon's
large pictures, which are stored as PNG. The same pictures always give the same bytes. A mistake in a picture
ends the run with status 1 and a message "FILE:LINE: what is wrong", before any file is written.
"""

import argparse
import os
import re
import struct
import sys
import zlib

import window_icon

# The standard Windows 16-colour palette, in the order that 4-bit icons store it.
PALETTE = [
    (0, 0, 0), (128, 0, 0), (0, 128, 0), (128, 128, 0),
    (0, 0, 128), (128, 0, 128), (0, 128, 128), (128, 128, 128),
    (192, 192, 192), (255, 0, 0), (0, 255, 0), (255, 255, 0),
    (0, 0, 255), (255, 0, 255), (0, 255, 255), (255, 255, 255),
]

TRANSPARENT = None

# Which icons each file must hold, and in which sizes.
EXPECTED = {
    "phases.txt": {f"phase{index:02d}": [(16, 16)] for index in range(28)},
    "window.txt": {"window": [(32, 32), (24, 24), (20, 20), (16, 16)]},
}

# The sizes of the window icon that window_icon.py draws: for high-DPI screens and folders.
DRAWN = [256, 64, 48, 40]


class PictureError(Exception):
    """A mistake in a picture file; its text names the file and the line."""

    def __init__(self, path, line, what):
        super().__init__(f"{path}:{line}: {what}")


# --- Reading the pictures ---------------------------------------------------------------------------

def read_lines(path):
    try:
        with open(path, "rb") as file:
            data = file.read()
    except OSError as error:
        raise PictureError(path, 1, f"cannot be read: {error.strerror}") from error
    lines = data.splitlines()
    for number, line in enumerate(lines, 1):
        if not line.isascii():
            raise PictureError(path, number, "only ASCII characters are allowed")
    return [line.decode("ascii") for line in lines]


def parse_colour(path, number, words):
    """`colour CHARACTER transparent` or `colour CHARACTER RED GREEN BLUE`: (character, palette index)."""
    if len(words) < 3 or len(words[1]) != 1:
        raise PictureError(path, number, "a colour line reads 'colour CHARACTER RED GREEN BLUE' "
                                         "or 'colour CHARACTER transparent'")
    character, value = words[1], words[2:]
    if value == ["transparent"]:
        return character, TRANSPARENT
    if len(value) != 3 or not all(part.isdigit() for part in value):
        raise PictureError(path, number, f"'{' '.join(value)}' is neither three numbers nor 'transparent'")
    rgb = tuple(int(part) for part in value)
    if rgb not in PALETTE:
        raise PictureError(path, number, f"colour {rgb} is not in the standard 16-colour palette")
    return character, PALETTE.index(rgb)


def parse_row(path, number, row, row_label, width, legend):
    if len(row) != width:
        raise PictureError(path, number, f"{row_label} is {len(row)} characters wide, not {width}")
    for column, character in enumerate(row, 1):
        if character not in legend:
            raise PictureError(path, number, f"{row_label}, column {column}: unknown character '{character}'")
    return [legend[character] for character in row]


def parse(path):
    """The pictures of a file: {name: [picture, ...]}. A picture is a list of rows of palette indexes."""
    lines = read_lines(path)
    legend = {}
    icons = {}
    at = 0
    while at < len(lines):
        number, line = at + 1, lines[at]
        words = line.split()
        at += 1
        if not words or line.startswith(";"):
            continue
        if words[0] == "colour":
            character, colour = parse_colour(path, number, words)
            if character in legend:
                raise PictureError(path, number, f"the character '{character}' has a colour already")
            legend[character] = colour
            continue
        header = re.fullmatch(r"icon (\w+) ([1-9]\d*)x([1-9]\d*)", line)
        if header is None:
            raise PictureError(path, number, "expected a comment, 'colour ...', or 'icon NAME WIDTHxHEIGHT'; "
                                             f"found '{line}' (a row too many?)")
        name, width, height = header[1], int(header[2]), int(header[3])
        if len(lines) - at < height:
            raise PictureError(path, len(lines), f"the file ends after {len(lines) - at} of the {height} rows "
                                                 f"of {name}")
        picture = [parse_row(path, at + row + 1, lines[at + row], f"row {row + 1} of {name}", width, legend)
                   for row in range(height)]
        at += height
        pictures = icons.setdefault(name, [])
        if any(size(other) == (width, height) for other in pictures):
            raise PictureError(path, number, f"{name} has a picture of {width}x{height} already")
        pictures.append(picture)
    check_complete(path, len(lines), icons)
    return icons


def size(picture):
    return len(picture[0]), len(picture)


def check_complete(path, last_line, icons):
    """Refuses a missing or an unknown icon or size."""
    expected = EXPECTED[os.path.basename(path)]
    for name, sizes in expected.items():
        found = [size(picture) for picture in icons.get(name, [])]
        for width, height in sizes:
            if (width, height) not in found:
                raise PictureError(path, last_line, f"{name} of {width}x{height} is missing")
        if len(found) > len(sizes):
            raise PictureError(path, last_line, f"{name} has a picture of an unexpected size")
    for name in icons:
        if name not in expected:
            raise PictureError(path, last_line, f"{name} is not an icon of this file")


# --- Writing PNG ------------------------------------------------------------------------------------

def png_file(canvas):
    """A PNG of rows of (red, green, blue) or (red, green, blue, alpha)."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    colour_type = {3: 2, 4: 6}[len(canvas[0][0])]  # the format's numbers for colours without and with alpha
    header = struct.pack(">IIBBBBB", len(canvas[0]), len(canvas), 8, colour_type, 0, 0, 0)
    pixels = b"".join(b"\0" + b"".join(bytes(pixel) for pixel in row) for row in canvas)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(pixels, 9))
            + chunk(b"IEND", b""))


# --- Writing .ico -----------------------------------------------------------------------------------

def packed_rows(rows, bits):
    """Rows of `bits` per pixel, bottom row first, each padded to 4 bytes."""
    packed = bytearray()
    for row in reversed(rows):
        digits = "".join(f"{value:0{bits}b}" for value in row)
        digits += "0" * (-len(digits) % 32)
        packed += int(digits, 2).to_bytes(len(digits) // 8, "big")
    return bytes(packed)


def image_data(picture):
    """One image of an icon: header, palette, colours (XOR), mask (AND)."""
    width, height = size(picture)
    # A transparent pixel must be black, or it would invert the screen.
    colours = packed_rows([[0 if pixel is TRANSPARENT else pixel for pixel in row] for row in picture], 4)
    mask = packed_rows([[int(pixel is TRANSPARENT) for pixel in row] for row in picture], 1)
    header = struct.pack("<IiiHHIIiiII",
                         40, width, 2 * height,  # the height counts colours and mask
                         1, 4,                   # planes, bits a pixel
                         0, len(colours) + len(mask),
                         0, 0, 0, 0)
    palette = b"".join(bytes((blue, green, red, 0)) for red, green, blue in PALETTE)
    return header + palette + colours + mask


def icon_file(pictures, drawn=()):
    """An .ico file: first the drawn pictures, which are larger, then the written ones."""
    images = [(len(picture) % 256, 0, 32, png_file(picture)) for picture in drawn]  # a side of 256 is written as 0
    images += [(len(picture), len(PALETTE), 4, image_data(picture)) for picture in pictures]
    directory = struct.pack("<HHH", 0, 1, len(images))
    offset = 6 + 16 * len(images)
    for side, colours, bits, data in images:
        directory += struct.pack("<BBBBHHII", side, side, colours, 0, 1, bits, len(data), offset)
        offset += len(data)
    return directory + b"".join(data for _, _, _, data in images)


# --- The strip --------------------------------------------------------------------------------------

STRIP_BACKGROUND = (96, 104, 120)  # black and white both stand out on it
STRIP_SCALE, STRIP_GAP = 2, 4


def strip(icons):
    """The 28 phases in one row, phase 0 first."""
    step = 16 * STRIP_SCALE + STRIP_GAP
    canvas = [[STRIP_BACKGROUND] * (28 * step + STRIP_GAP) for _ in range(step + STRIP_GAP)]
    for index in range(28):
        [picture] = icons[f"phase{index:02d}"]
        for y, row in enumerate(canvas[STRIP_GAP:-STRIP_GAP], STRIP_GAP):
            for x in range(16 * STRIP_SCALE):
                pixel = picture[(y - STRIP_GAP) // STRIP_SCALE][x // STRIP_SCALE]
                if pixel is not TRANSPARENT:
                    row[STRIP_GAP + index * step + x] = PALETTE[pixel]
    return canvas


# --- The command ------------------------------------------------------------------------------------

def write(path, data):
    with open(path, "wb") as file:
        file.write(data)


def main():
    parser = argparse.ArgumentParser(description="Makes Tidewell's .ico files from text pictures.")
    parser.add_argument("output", help="folder for the .ico files; created if missing")
    parser.add_argument("--pictures", default=os.path.join(os.path.dirname(os.path.abspath(__file__)), "icons"),
                        help="folder of phases.txt and window.txt (the icons folder beside this tool)")
    parser.add_argument("--strip", metavar="FILE.png", help="also draw the 28 phases in one row")
    arguments = parser.parse_args()

    try:
        icons = {}
        for file_name in EXPECTED:
            icons.update(parse(os.path.join(arguments.pictures, file_name)))
        os.makedirs(arguments.output, exist_ok=True)
        for name, pictures in icons.items():
            drawn = [window_icon.draw(side) for side in DRAWN] if name == "window" else []
            write(os.path.join(arguments.output, name + ".ico"), icon_file(pictures, drawn))
        if arguments.strip:
            write(arguments.strip, png_file(strip(icons)))
    except PictureError as error:
        print(error, file=sys.stderr)
        return 1
    except OSError as error:
        print(f"{error.filename}: {error.strerror}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
