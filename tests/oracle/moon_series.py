"""The periodic series behind the Moon's position and the lunation instants.

Source: J. Meeus, Astronomical Formulae for Calculators (position of the Moon;
phases of the Moon). Rows stand in the published order, digits as published.
Angles are degrees; the parallax coefficients are degrees as well.

Each row of the Moon's series is (k, power of E, argument). The argument is
written with the letters of the source:
    D  mean elongation of the Moon from the Sun
    M  mean anomaly of the Sun
    M' mean anomaly of the Moon
    F  mean argument of latitude of the Moon
and is summed from left to right.

Rows that depart from the publication, all kept on purpose:
    longitude 26: the angle goes to the sine as it stands, as if it were radians
    longitude 41: M' + 3M instead of M + M' + 2D
    parallax 28:  2D - 2M' instead of 2D - 2M
    phase term 10: 2F - M' instead of 2F - M
"""

import re

LONGITUDE = [
    ("6.28875", 0, "M'"),
    ("1.274018", 0, "2D - M'"),
    ("0.658309", 0, "2D"),
    ("0.213616", 0, "2M'"),
    ("-0.185596", 1, "M"),
    ("-0.114336", 0, "2F"),
    ("0.058793", 0, "2D - 2M'"),
    ("0.057212", 1, "2D - M - M'"),
    ("0.05332", 0, "2D + M'"),
    ("0.045874", 1, "2D - M"),
    ("0.041024", 1, "M' - M"),
    ("-0.034718", 0, "D"),
    ("-0.030465", 1, "M' + M"),
    ("0.015326", 0, "2D - 2F"),
    ("-0.012528", 0, "2F + M'"),
    ("-0.01098", 0, "2F - M'"),
    ("0.010674", 0, "4D - M'"),
    ("0.010034", 0, "3M'"),
    ("0.008548", 0, "4D - 2M'"),
    ("-0.00791", 1, "M - M' + 2D"),
    ("-0.006783", 1, "2D + M"),
    ("0.005162", 0, "M' - D"),
    ("0.005", 1, "D + M"),
    ("0.004049", 1, "M' - M + 2D"),
    ("0.003996", 0, "2D + 2M'"),
    ("0.003862", 0, "4D"),
    ("0.003665", 0, "2D - 3M'"),
    ("0.002695", 1, "2M' - M"),
    ("0.002602", 0, "M' - 2F - 2D"),
    ("0.002396", 1, "2D - M - 2M'"),
    ("-0.002349", 0, "D + M'"),
    ("0.002249", 2, "2D - 2M"),
    ("-0.002125", 1, "2M' + M"),
    ("-0.002079", 2, "2M"),
    ("0.002059", 2, "2D - M' - 2M"),
    ("-0.001773", 0, "2D + M' - 2F"),
    ("-0.001595", 0, "2F + 2D"),
    ("0.00122", 1, "4D - M - M'"),
    ("-0.00111", 0, "2F + 2M'"),
    ("0.000892", 0, "M' - 3D"),
    ("-0.000811", 1, "M' + 3M"),
    ("0.000761", 1, "4D - M - 2M'"),
    ("0.000717", 2, "M' - 2M"),
    ("0.000704", 2, "M' - 2M - 2D"),
    ("0.000693", 1, "M - 2M' + 2D"),
    ("0.000598", 1, "2D - M - 2F"),
    ("0.00055", 0, "4D + M'"),
    ("0.000538", 0, "4M'"),
    ("0.000521", 1, "4D - M"),
    ("0.000486", 0, "2M' - D"),
]
LONGITUDE_GROUP_ENDS = (6, 13, 22, 31, 40, 50)
LONGITUDE_RAW_ROWS = (26,)

LATITUDE = [
    ("5.128189", 0, "F"),
    ("0.280606", 0, "F + M'"),
    ("0.277693", 0, "M' - F"),
    ("0.173238", 0, "2D - F"),
    ("0.055413", 0, "2D + F - M'"),
    ("0.046272", 0, "2D - F - M'"),
    ("0.032573", 0, "2D + F"),
    ("0.017198", 0, "2M' + F"),
    ("0.009267", 0, "2D + M' - F"),
    ("0.008823", 0, "2M' - F"),
    ("0.008247", 1, "2D - M - F"),
    ("0.004323", 0, "2D - F - 2M'"),
    ("0.0042", 0, "2D + F + M'"),
    ("0.003372", 1, "F - M - 2D"),
    ("0.002472", 1, "2D + F - M - M'"),
    ("0.002222", 1, "2D + F - M"),
    ("0.002072", 1, "2D - F - M - M'"),
    ("0.001877", 1, "F - M + M'"),
    ("0.001828", 0, "4D - F - M'"),
    ("-0.001803", 1, "F + M"),
    ("-0.00175", 0, "3F"),
    ("0.00157", 1, "M' - M - F"),
    ("-0.001487", 0, "F + D"),
    ("-0.001481", 1, "F + M + M'"),
    ("0.001417", 1, "F - M - M'"),
    ("0.00135", 1, "F - M"),
    ("0.00133", 0, "F - D"),
    ("0.001106", 0, "3M' + F"),
    ("0.00102", 0, "4D - F"),
    ("0.000833", 0, "4D + F - M'"),
    ("0.000781", 0, "M' - 3F"),
    ("0.00067", 0, "4D + F - 2M'"),
    ("0.000606", 0, "2D - 3F"),
    ("0.000597", 0, "2D + 2M' - F"),
    ("0.000492", 1, "2D + M' - M - F"),
    ("0.00045", 0, "2M' - F - 2D"),
    ("0.000439", 0, "3M' - F"),
    ("0.000423", 0, "2D + F + 2M'"),
    ("0.000422", 0, "2D - F - 3M'"),
    ("-0.000367", 1, "F + M + 2D - M'"),
    ("-0.000353", 1, "F + M + 2D"),
    ("0.000331", 0, "4D + F"),
    ("0.000317", 1, "2D + F - M + M'"),
    ("0.000306", 2, "2D - 2M - F"),
    ("-0.000283", 0, "3F + M'"),
]
LATITUDE_GROUP_ENDS = (10, 17, 25, 33, 42, 45)

PARALLAX_START = 0.950724
PARALLAX = [
    ("0.051818", 0, "M'"),
    ("0.009531", 0, "2D - M'"),
    ("0.007843", 0, "2D"),
    ("0.002824", 0, "2M'"),
    ("0.000857", 0, "2D + M'"),
    ("0.000533", 1, "2D - M"),
    ("0.000401", 1, "2D - M - M'"),
    ("0.00032", 1, "M' - M"),
    ("-0.000271", 0, "D"),
    ("-0.000264", 1, "M' + M"),
    ("-0.000198", 0, "2F - M'"),
    ("0.000173", 0, "3M'"),
    ("0.000167", 0, "4D - M'"),
    ("-0.000111", 1, "M"),
    ("0.000103", 0, "4D - 2M'"),
    ("-0.000084", 0, "2M' - 2D"),
    ("-0.000083", 1, "2D + M"),
    ("0.000079", 0, "2D + 2M'"),
    ("0.000072", 0, "4D"),
    ("0.000064", 1, "2D - M + M'"),
    ("-0.000063", 1, "2D + M - M'"),
    ("0.000041", 1, "D + M"),
    ("0.000035", 1, "2M' - M"),
    ("-0.000033", 0, "3M' - 2D"),
    ("-0.00003", 0, "D + M'"),
    ("-0.000029", 0, "2F - 2D"),
    ("-0.000029", 1, "2M' + M"),
    ("0.000026", 2, "2D - 2M'"),
    ("-0.000023", 0, "2F - 2D + M'"),
    ("0.000019", 1, "4D - M - M'"),
]
PARALLAX_GROUP_ENDS = (7, 15, 23, 30)

# Days. The first coefficient also has a part that runs with T.
PHASE_FIRST_RATE = "-0.000393"
PHASE = [
    ("0.1734", "M"),
    ("0.0021", "2M"),
    ("-0.4068", "M'"),
    ("0.0161", "2M'"),
    ("-0.0004", "3M'"),
    ("0.0104", "2F"),
    ("-0.0051", "M + M'"),
    ("-0.0074", "M - M'"),
    ("0.0004", "2F + M"),
    ("-0.0004", "2F - M'"),
    ("-0.0006", "2F + M'"),
    ("0.0010", "2F - M'"),
    ("0.0005", "M + 2M'"),
]

_PIECE = re.compile(r"([+-]?)\s*(\d*)(M'|D|M|F)")


def parse_argument(text):
    """Turn "2D - M - M'" into [(2, "D"), (-1, "M"), (-1, "M'")], in printed order."""
    pieces = [(int(sign + (count or "1")), name) for sign, count, name in _PIECE.findall(text)]
    rebuilt = " ".join(
        ("" if i == 0 and n > 0 else "+ " if n > 0 else "- ")
        + (str(abs(n)) if abs(n) != 1 else "") + name
        for i, (n, name) in enumerate(pieces))
    if rebuilt != text:
        raise ValueError("unreadable argument: " + text)
    return pieces
