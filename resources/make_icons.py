#!/usr/bin/env python3
"""Makes Tidewell's .ico files from the pictures in icons/*.txt: make_icons.py OUTPUT_FOLDER [--strip FILE.png]

It also writes phase_icons.rc, which makes the picture of phase n the resource IDI_PHASE0 + n.

A picture file holds, line by line:

    ; a comment, or an empty line
    colour CHARACTER RED GREEN BLUE      one of the 16 colours of PALETTE
    colour CHARACTER transparent
    icon NAME SIZE                       followed at once by SIZE rows of SIZE characters
    half NAME SIZE                       followed by the upper half of the rows; the lower half mirrors it

Pictures of one NAME go into NAME.ico together, in the order of the file. The waning phases mirror the waxing ones.
window_icon.py draws the window icon's large pictures, which are stored as PNG. A mistake in a picture ends the run with
"FILE:LINE: what is wrong" before any file is written.
"""

import argparse
import struct
import sys
import zlib
from pathlib import Path

import window_icon

# The standard Windows 16-colour palette, in the order that 4-bit icons store it.
PALETTE = [
    (0, 0, 0), (128, 0, 0), (0, 128, 0), (128, 128, 0),
    (0, 0, 128), (128, 0, 128), (0, 128, 128), (128, 128, 128),
    (192, 192, 192), (255, 0, 0), (0, 255, 0), (255, 255, 0),
    (0, 0, 255), (255, 0, 255), (0, 255, 255), (255, 255, 255),
]

TRANSPARENT = None

# The sizes of the window icon that window_icon.py draws: for high-DPI screens and folders.
DRAWN = [256, 64, 48, 40]


def parse(path):
    """The pictures of a file by name and size. A picture is a list of rows of palette indexes."""
    legend, icons, number = {}, {}, 0
    lines = path.read_text(encoding="ascii").splitlines()
    try:
        while number < len(lines):
            number += 1
            match lines[number - 1].partition(";")[0].split():
                case []:
                    pass
                case "colour", character, "transparent":
                    legend[character] = TRANSPARENT
                case "colour", character, *channels:
                    legend[character] = PALETTE.index(tuple(map(int, channels)))
                case "icon" | "half" as part, name, size:
                    picture = icons.setdefault(name, {})[int(size)] = []
                    for _ in range(int(size) // (1 if part == "icon" else 2)):
                        number += 1
                        picture.append([legend[character] for character in lines[number - 1]])
                        if len(picture[-1]) != int(size):
                            raise ValueError(f"not {size} characters")
                    if part == "half":
                        picture += picture[::-1]
                case _:
                    raise ValueError("neither 'colour', 'icon' nor 'half'")
    except (IndexError, KeyError, ValueError) as error:
        sys.exit(f"{path}:{number}: not understood: {error!r}")
    return icons


def all_icons(folder):
    """The pictures of the 28 phases and of the window."""
    icons = parse(folder / "phases.txt") | parse(folder / "window.txt")
    for phase in range(15, 28):
        waxing = icons[f"phase{28 - phase:02d}"]
        icons[f"phase{phase:02d}"] = {size: [row[::-1] for row in picture] for size, picture in waxing.items()}
    return icons


def png_file(canvas):
    """A PNG of rows of (red, green, blue) or (red, green, blue, alpha)."""
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    colour_type = {3: 2, 4: 6}[len(canvas[0][0])]  # the format's numbers for colours without and with alpha
    header = struct.pack(">IIBBBBB", len(canvas[0]), len(canvas), 8, colour_type, 0, 0, 0)
    pixels = b"".join(b"\0" + b"".join(bytes(pixel) for pixel in row) for row in canvas)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(pixels, 9))
            + chunk(b"IEND", b""))


def packed_rows(rows, bits):
    """Rows of `bits` per pixel, bottom row first, each padded to 4 bytes."""
    packed = b""
    for row in reversed(rows):
        digits = "".join(f"{value:0{bits}b}" for value in row)
        digits += "0" * (-len(digits) % 32)
        packed += int(digits, 2).to_bytes(len(digits) // 8, "big")
    return packed


def image_data(picture):
    """One image of an icon: header, palette, colours (XOR), mask (AND)."""
    width, height = len(picture[0]), len(picture)
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
    directory, offset = struct.pack("<HHH", 0, 1, len(images)), 6 + 16 * len(images)
    for side, colours, bits, data in images:
        directory += struct.pack("<BBBBHHII", side, side, colours, 0, 1, bits, len(data), offset)
        offset += len(data)
    return directory + b"".join(data for _, _, _, data in images)


STRIP_BACKGROUND = (96, 104, 120)  # black and white both stand out on it
STRIP_SCALE, STRIP_GAP = 2, 4


def strip(icons):
    """The 28 phases in one row."""
    step = 16 * STRIP_SCALE + STRIP_GAP
    canvas = [[STRIP_BACKGROUND] * (28 * step + STRIP_GAP) for _ in range(step + STRIP_GAP)]
    for index in range(28):
        picture = icons[f"phase{index:02d}"][16]
        for y, row in enumerate(canvas[STRIP_GAP:-STRIP_GAP], STRIP_GAP):
            for x in range(16 * STRIP_SCALE):
                pixel = picture[(y - STRIP_GAP) // STRIP_SCALE][x // STRIP_SCALE]
                if pixel is not TRANSPARENT:
                    row[STRIP_GAP + index * step + x] = PALETTE[pixel]
    return canvas


def main():
    parser = argparse.ArgumentParser(description=__doc__.partition(":")[0])
    parser.add_argument("output", type=Path, help="folder for the .ico files; created if missing")
    parser.add_argument("--strip", type=Path, metavar="FILE.png", help="also draw the 28 phases in one row")
    arguments = parser.parse_args()

    icons = all_icons(Path(__file__).parent / "icons")
    arguments.output.mkdir(parents=True, exist_ok=True)
    for name, pictures in icons.items():
        drawn = [window_icon.draw(size) for size in DRAWN] if name == "window" else []
        (arguments.output / f"{name}.ico").write_bytes(icon_file(pictures.values(), drawn))
    (arguments.output / "phase_icons.rc").write_text(
        "".join(f'IDI_PHASE0 + {phase} ICON "phase{phase:02d}.ico"\n' for phase in range(28)))
    if arguments.strip:
        arguments.strip.write_bytes(png_file(strip(icons)))


if __name__ == "__main__":
    main()
