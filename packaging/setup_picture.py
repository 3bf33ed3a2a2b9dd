"""Draws the picture on the setup's last page: the window icon's night, with more sky.

    setup_picture.py OUTPUT.bmp
"""

import struct
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent.parent / "resources"))
import window_icon  # noqa: E402

WIDTH, HEIGHT = 164, 314  # the size that NSIS expects
LEFT, TOP, UNIT = 5, -8, 22 / WIDTH  # the part of the plane that is shown


def bitmap(rows):
    """A bitmap file of 24 bits a pixel from rows of (red, green, blue, alpha)."""
    padding = bytes(-3 * len(rows[0]) % 4)
    pixels = b"".join(bytes(channel for red, green, blue, _ in row for channel in (blue, green, red)) + padding
                      for row in reversed(rows))
    header = struct.pack("<IiiHHIIiiII", 40, len(rows[0]), len(rows), 1, 24, 0, len(pixels), 0, 0, 0, 0)
    return struct.pack("<2sIII", b"BM", 14 + len(header) + len(pixels), 0, 14 + len(header)) + header + pixels


Path(sys.argv[1]).write_bytes(bitmap(window_icon.look(WIDTH, HEIGHT, UNIT, window_icon.scene_at, LEFT, TOP)))
