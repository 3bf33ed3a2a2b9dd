"""Draws the window icon, a young Moon over the tide, in the sizes too large for icons/window.txt.

colour_at() gives the colours of a plane of 32 x 32 units, x to the right and y down. The shapes were measured in the
32-pixel icon; lines are one unit thick. Each pixel is the mean of SAMPLES x SAMPLES points of the plane. Its opacity
is the share of points inside the disc.
"""

import math

UNITS = 32  # the side of the plane
SAMPLES = 2

# The palette's colours in the picture of 32 pixels.
BLACK, NAVY, BLUE = (0, 0, 0), (0, 0, 128), (0, 0, 255)
TEAL, CYAN, YELLOW, WHITE = (0, 128, 128), (0, 255, 255), (255, 255, 0), (255, 255, 255)

# Circles: x and y of the centre, radius.
DISC = (16, 16, 16)
WITHIN_OUTLINE = (16, 16, 15)
MOON = (16.5, 11, 8.25)
MOON_SHADOW = (12.3, 9, 6.9)
STARS = ((11.5, 5.5, 0.6), (7.5, 8.5, 0.6))

# The two waves: their height, and the place of a crest. The lower one's crests are below the upper one's troughs.
WAVE_LENGTH = 9.8
SURFACE, SURFACE_CREST = 21, 5
UNDERTOW, UNDERTOW_CREST = 26, 9.9


def within(x, y, circle):
    centre_x, centre_y, radius = circle
    return math.hypot(x - centre_x, y - centre_y) < radius


def wave(x, level, crest):
    """The y of a wave at x."""
    return level - math.cos(2 * math.pi * (x - crest) / WAVE_LENGTH)


def scene_at(x, y):
    """The colour of a point of the scene, also outside the disc."""
    under_water = y - wave(x, UNDERTOW, UNDERTOW_CREST)
    if under_water >= 0:
        return CYAN if under_water < 1 else BLUE
    under_water = y - wave(x, SURFACE, SURFACE_CREST)
    if under_water >= 0:
        return WHITE if under_water < 1 else CYAN if under_water < 2 else TEAL
    if within(x, y, MOON) and not within(x, y, MOON_SHADOW):
        return YELLOW
    return WHITE if any(within(x, y, star) for star in STARS) else NAVY


def colour_at(x, y):
    """The colour of a point of the plane, None outside the disc."""
    if not within(x, y, DISC):
        return None
    return scene_at(x, y) if within(x, y, WITHIN_OUTLINE) else BLACK


def mean(colours):
    """The mean of some colours, as (red, green, blue, alpha)."""
    found = [colour for colour in colours if colour is not None]
    if not found:
        return 0, 0, 0, 0
    return *(round(sum(channel) / len(found)) for channel in zip(*found)), round(255 * len(found) / len(colours))


def look(width, height, unit, colour, left=0, top=0):
    """A picture of colour(x, y) as rows of (red, green, blue, alpha), from (left, top) on; a pixel is `unit` wide."""
    step = unit / SAMPLES
    lines = [[colour(left + (column + 0.5) * step, top + (row + 0.5) * step) for column in range(width * SAMPLES)]
             for row in range(height * SAMPLES)]
    return [[mean([lines[SAMPLES * row + j][SAMPLES * column + i] for j in range(SAMPLES) for i in range(SAMPLES)])
             for column in range(width)] for row in range(height)]


def draw(size):
    """The icon of size x size pixels."""
    return look(size, size, UNITS / size, colour_at)
