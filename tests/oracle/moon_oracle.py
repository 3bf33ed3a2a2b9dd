"""Computes Tidewell's numbers a second time, to check the program.

Written independently from the published formulae. Every function is pure. Angles
are degrees and instants Julian days, unless a docstring says otherwise.

Sums go from left to right as printed; powers use math.pow. Run-time libraries
differ in the last bits: compare with a tolerance (1e-8 degrees or days is ample).

Source of the series: J. Meeus, Astronomical Formulae for Calculators. Departures
from it are marked "on purpose": users have always seen their results.
"""

import datetime
import math
from decimal import Decimal, ROUND_HALF_UP

import moon_series as series

PI10 = 3.1415926535  # ten decimals, on purpose, in every conversion
MONTHS = "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec".split()
DATE_EPOCH = datetime.date(1899, 12, 30).toordinal()
DAY_SECONDS = 86400


# ---------------------------------------------------------------- calendar and angles

def int16(value):
    """The number, or OverflowError unless it fits in 16 bits with sign."""
    if not -32768 <= value <= 32767:
        raise OverflowError("16-bit overflow")
    return value


def int32(value):
    """The number, or OverflowError unless it fits in 32 bits with sign."""
    if not -2147483648 <= value <= 2147483647:
        raise OverflowError("32-bit overflow")
    return value


def day_fraction(day, hour, minute):
    """Day of the month, with the time of day as its fraction."""
    return day + int16(hour * 60 + minute) / 1440


def shift_january(year, month):
    """Year and month for the Julian-day formula: January is month 13 of the year before."""
    if month < 3:
        return int16(year - 1), int16(month + 12)
    return year, month


def civil_to_julian(year, month, day):
    """Julian day of a Gregorian date; the day may have a fraction.

    Source: Meeus, Julian day. On purpose there is no test for the reform of 1582:
    the Gregorian correction always applies.
    """
    year, month = shift_january(year, month)
    a = math.floor(year / 100)
    b = 2 - a + math.floor(a / 4)
    jd = float(math.floor(365.25 * year) + math.floor(30.6001 * (month + 1)))
    return jd + day + 1720994.5 + b


def julian_centuries(jd):
    """Julian centuries of 36525 days from JD 2415020.0."""
    return (jd - 2415020.0) / 36525.0


def normalize_angle(angle):
    """Degrees reduced to 0..360; 0 and 360 themselves stay, on purpose."""
    if not angle < 0 and not angle > 360:
        return angle
    n = int32(math.floor(angle))
    f = angle - n
    q = n / 360
    m = int32(math.floor(q))
    return (q - m) * 360 + f


def deg_to_rad(angle):
    """Degrees to radians with the ten-decimal pi."""
    return (angle / 360 + angle / 360) * PI10


def arc_sine(x):
    """atan(DegToRad(x / sqrt(1 - x^2))), radians.

    Not the arc sine, on purpose: the tangent is converted from degrees.
    ZeroDivisionError at +-1, ValueError beyond.
    """
    s = math.sqrt(-x * x + 1)
    return math.atan(deg_to_rad(x / s))


def format_fixed(value, whole_digits, decimals):
    """Text of a number for a pattern of whole_digits zeros, a point, decimals zeros.

    The value is first rounded to 15 significant digits, then to the decimals, half
    away from zero.
    """
    digits = Decimal("%.14e" % value)
    rounded = digits.quantize(Decimal(1).scaleb(-decimals), rounding=ROUND_HALF_UP)
    width = whole_digits + (decimals + 1 if decimals else 0)
    sign = "-" if digits < 0 else ""
    return sign + format(abs(rounded), "f").rjust(width, "0")


def julian_to_civil(jd):
    """Calendar date and time of a Julian day, as a dictionary of the Cal... values.

    Source: Meeus, calendar date from the Julian day. Below JD 2299160.5 the date
    is Julian. On purpose the hour comes from the text of the hours with four
    decimals, the minute from the arithmetic: just before a full hour the hour is
    one higher, but the minute is 59.
    """
    whole = int32(math.floor(jd + 0.5))
    part = (jd + 0.5) - whole
    if whole >= 2299161:
        alpha = math.floor((whole - 1867216.25) / 36524.25)
        a = (whole + 1) + alpha - math.floor(alpha / 4)
    else:
        a = whole
    b = a + 1524
    c = math.floor((b - 122.1) / 365.25)
    d = math.floor(365.25 * c)
    e = math.floor((b - d) / 30.6001)
    day_with_fraction = (b - d) - math.floor(30.6001 * e) + part
    day = math.floor(day_with_fraction)
    hours = (day_with_fraction - day) * 1440 / 60
    minute = int16(math.floor((hours - math.floor(hours)) * 60))
    month = e - 1 if e < 13.5 else e - 13
    year = c - 4716 if month > 2.5 else c - 4715
    return {
        "CalWholeDays": whole, "CalDayPart": part,
        "CalYear": year, "CalMonth": month, "CalDay": day,
        "CalHour": int(format_fixed(hours, 2, 4)[:2]), "CalMinute": minute,
    }


# ---------------------------------------------------------------- Sun

def _sin(degrees):
    return math.sin(deg_to_rad(degrees))


def _cos(degrees):
    return math.cos(deg_to_rad(degrees))


def obliquity(t):
    """Obliquity of the ecliptic, degrees; t in Julian centuries. Source: Meeus."""
    return 23.452294 - 0.0130125 * t - 0.00000164 * math.pow(t, 2) + 0.000000503 * math.pow(t, 3)


def sun_position(t):
    """The Sun's position at t Julian centuries; degrees, except as marked.

    Source: Meeus, solar coordinates. On purpose: the right ascension is an
    arctangent in radians, its numerator converted from degrees, plus 180 if the
    cosine of the longitude's raw number is negative; the declination (radians)
    converts the sine of the obliquity once more.
    """
    t2, t3 = math.pow(t, 2), math.pow(t, 3)
    lon = normalize_angle(279.69668 + 36000.76892 * t + 0.0003025 * t2)
    m = normalize_angle(358.47583 + 35999.04975 * t - 0.00015 * t2 - 0.0000033 * t3)
    ecc = 0.01675104 - 0.0000418 * t - 0.000000126 * t2
    centre = ((1.91946 - 0.004789 * t - 0.000014 * t2) * _sin(m)
              + (0.020094 - 0.0001 * t) * _sin(2 * m)
              + 0.000293 * _sin(3 * m))
    true_lon = lon + centre
    node = 259.18 - 1934.142 * t
    eps = obliquity(t)
    ra = math.atan(deg_to_rad(_sin(true_lon) * _cos(eps)) / _cos(true_lon))
    if math.cos(true_lon) < 0:
        ra = ra + 180
    return {
        "SunMeanLongitude": lon,
        "SunMeanAnomaly": m,
        "EarthEccentricity": ecc,
        "SunEquationOfCentre": centre,
        "SunTrueAnomaly": centre + m,
        "SunTrueLongitude": true_lon,
        "SunApparentLongitude": true_lon - 0.00569 - 0.00479 * _sin(node),
        "Obliquity": eps,
        "SunRightAscension": ra,
        "SunDeclination": arc_sine(_sin(true_lon) * deg_to_rad(_sin(eps))),
    }


# ---------------------------------------------------------------- Moon

def sum_series(start, rows, group_ends, function, arguments, eccentricity,
               raw_rows=(), start_opens_group=False):
    """The sum of a periodic series, degrees.

    Adds the terms k * E^n * function(argument) of each group in the order of the
    rows, then adds the group to the sum. The sum begins at start; with
    start_opens_group the first group does. A row in raw_rows gives the function its
    argument unconverted.
    """
    factor = (1, eccentricity, math.pow(eccentricity, 2))
    total, first = start, 0
    for end in group_ends:
        group = None
        if first == 0 and start_opens_group:
            group, total = start, None
        for number in range(first + 1, end + 1):
            k, power, text = rows[number - 1]
            angle = None
            for count, name in series.parse_argument(text):
                part = count * arguments[name]
                angle = part if angle is None else angle + part
            value = function(angle if number in raw_rows else deg_to_rad(angle))
            term = float(k) * value if power == 0 else float(k) * factor[power] * value
            group = term if group is None else group + term
        total = group if total is None else total + group
        first = end
    return total


def moon_position(t, sun_mean_anomaly):
    """The Moon's position at t Julian centuries; degrees, except as marked.

    sun_mean_anomaly comes from sun_position at the same t; the result has the
    corrected one. Source: Meeus, position of the Moon. On purpose: elongation and
    argument of latitude are not reduced; the T^2 part of the Venus argument is in
    radians; the odd rows of the series; the extra conversions in the right
    ascension (an arctangent in radians, plus 0 or 180) and the declination (radians).
    """
    t2, t3 = math.pow(t, 2), math.pow(t, 3)
    lon = 270.434164 + 481267.8831 * t - 0.001133 * t2 + 0.0000019 * t3
    mp = 296.104608 + 477198.8491 * t + 0.009192 * t2 + 0.0000144 * t3
    d = 350.737486 + 445267.1142 * t - 0.001436 * t2 + 0.0000019 * t3
    f = 11.250889 + 483202.0251 * t - 0.003211 * t2 - 0.0000003 * t3
    node = 259.183275 - 1934.142 * t + 0.002078 * t2 + 0.0000022 * t3
    m = sun_mean_anomaly

    sin_a = _sin(51.2 + 20.2 * t)
    lon += 0.000233 * sin_a
    m -= 0.001778 * sin_a
    mp += 0.000817 * sin_a
    d += 0.002011 * sin_a

    venus = 0.003964 * math.sin(deg_to_rad(346.56 + 132.87 * t) - 0.0091731 * t2)
    lon += venus
    mp += venus
    d += venus
    f += venus

    sin_node = _sin(node)
    lon += 0.001964 * sin_node
    mp += 0.002541 * sin_node
    d += 0.001964 * sin_node
    f -= 0.024691 * sin_node
    f -= 0.004328 * _sin(node + 275.05 - 2.3 * t)

    lon, mp, node = normalize_angle(lon), normalize_angle(mp), normalize_angle(node)
    e = 1 - 0.002495 * t - 0.00000752 * t2
    arguments = {"D": d, "M": m, "M'": mp, "F": f}

    ecl_lon = normalize_angle(sum_series(
        lon, series.LONGITUDE, series.LONGITUDE_GROUP_ENDS, math.sin, arguments, e,
        series.LONGITUDE_RAW_ROWS))
    b = sum_series(None, series.LATITUDE, series.LATITUDE_GROUP_ENDS, math.sin, arguments, e)
    ecl_lat = b * (1 - 0.0004664 * _cos(node) - 0.0000754 * _cos(node + 275.05 - 2.3 * t))
    parallax = sum_series(
        series.PARALLAX_START, series.PARALLAX, series.PARALLAX_GROUP_ENDS, math.cos, arguments,
        e, start_opens_group=True)

    eps = normalize_angle(obliquity(t))
    tan_lat = math.tan(deg_to_rad(ecl_lat))
    ratio = (_sin(ecl_lon) * _cos(eps) - tan_lat * _sin(eps)) / _cos(ecl_lon)
    ra = math.atan(deg_to_rad(ratio))
    if math.cos(ecl_lon) < 0:
        ra = ra + 180
    s = _sin(eps) * _cos(ecl_lat) * _sin(ecl_lon) + _cos(eps) * _sin(ecl_lat)
    return {
        "MoonMeanLongitude": lon,
        "MoonMeanAnomaly": mp,
        "MoonElongation": d,
        "MoonArgLatitude": f,
        "MoonNodeLongitude": node,
        "SunMeanAnomaly": m,
        "MoonLongitude": ecl_lon,
        "MoonLatitude": ecl_lat,
        "MoonParallax": parallax,
        "Obliquity": eps,
        "MoonRightAscension": normalize_angle(ra),
        "MoonDeclination": arc_sine(deg_to_rad(s)),
        "E": e,
    }


# ---------------------------------------------------------------- phases

def lit_fraction(d, m, mp):
    """Lit fraction of the disc, 0..1, from elongation and anomalies in degrees.

    Source: Meeus, illuminated fraction; the last coefficient 0.112 on purpose.
    """
    i = (180 - d - 6.289 * _sin(mp) + 2.1 * _sin(m) - 1.274 * _sin(2 * d - mp)
         - 0.658 * _sin(2 * d) - 0.214 * _sin(2 * mp) - 0.112 * _sin(d))
    return (1 + _cos(normalize_angle(i))) / 2


def lunation_number(k0):
    """The nearest whole lunation; an exact half goes down."""
    whole = math.floor(k0)
    return whole + 1 if k0 - whole > 0.5 else whole


def lunation(k, m_t2_sign=-1):
    """Julian day of lunation k (whole: New Moon, + 0.5: Full Moon), with its anomalies.

    Returns (instant, M, M'), days and degrees. Source: Meeus, phases of the Moon.
    m_t2_sign is the sign of the T^2 term of M. Both phases use the same thirteen
    terms, with 2F - M' in the tenth on purpose.
    """
    t = k / 1236.85
    t2, t3 = math.pow(t, 2), math.pow(t, 3)
    mean = (2415020.75933 + 29.53058868 * k + 0.0001178 * t2 - 0.000000155 * t3
            + 0.00033 * _sin(166.56 + 132.87 * t - 0.009173 * t2))
    m = normalize_angle(
        359.2242 + 29.10535608 * k + m_t2_sign * 0.0000333 * t2 - 0.00000347 * t3)
    mp = normalize_angle(306.0253 + 385.81691806 * k + 0.0107306 * t2 + 0.00001236 * t3)
    f = normalize_angle(21.2964 + 390.67050646 * k - 0.0016528 * t2 - 0.00000239 * t3)
    arguments = {"M": m, "M'": mp, "F": f}
    correction = 0.0
    for number, (coefficient, text) in enumerate(series.PHASE, 1):
        c = float(coefficient)
        if number == 1:
            c = c + float(series.PHASE_FIRST_RATE) * t
        angle = None
        for count, name in series.parse_argument(text):
            part = count * arguments[name]
            angle = part if angle is None else angle + part
        correction += c * _sin(angle)
    return mean + correction, m, mp


def find_phases(year, jd, jd_jan1, d, m, mp):
    """Lit fraction, a New Moon and a Full Moon about the day jd.

    year: calendar year; jd: Julian day of the reference day; jd_jan1: Julian day of
    1 January, 0 h; d, m, mp: elongation and anomalies of the moment, degrees.
    On purpose: the year has 365 days; a New Moon before jd moves one lunation on,
    with the opposite sign of the T^2 term of M; a Full Moon before jd stays.
    """
    illumination = lit_fraction(d, m, mp)
    year_percent = (jd - jd_jan1) / 365 * 100
    k0 = ((year + year_percent / 100) - 1900) * 12.3685
    k = lunation_number(k0)
    new, m, mp = lunation(k)
    full, m, mp = lunation(k + 0.5)
    if new < jd:
        new, m, mp = lunation(k + 1, m_t2_sign=+1)
    if full < jd:
        full, m, mp = lunation(k + 0.5)
    return {
        "Illumination": illumination,
        "YearPercent": year_percent,
        "NewMoonJD": new,
        "FullMoonJD": full,
        "WaningFlag": 1 if (new - jd) < (full - jd) else 0,
        "SunMeanAnomaly": m,
        "MoonMeanAnomaly": mp,
        "k0": k0,
        "kNew": k,
    }


# ---------------------------------------------------------------- picture and icon

ICON_THRESHOLDS = [
    (198.22, 28), (194.27, 27), (188.2, 26), (180.56, 25), (171.0, 24), (161.0, 23),
    (150.58, 22), (140.0, 21), (129.61, 20), (120.87, 19), (112.81, 18), (106.6, 17),
    (102.36, 16), (100.238, 15), (99.66, 14), (97.44, 13), (93.18, 12), (86.89, 11),
    (78.75, 10), (69.96, 9), (59.4, 8), (48.87, 7), (38.43, 6), (28.13, 5), (19.31, 4),
    (11.2, 3), (5.68, 2), (1.73, 1),
]


def phase_to_icon_number(value):
    """Icon number 0..28 of a phase value on the 0..200 scale (thresholds strict)."""
    for threshold, icon in ICON_THRESHOLDS:
        if value > threshold:
            return icon
    return 0


def terminator_aspect(p):
    """Aspect of the terminator's ellipse (vertical over horizontal half-axis) at dark fraction p.

    ZeroDivisionError at exactly 0.49999. No |1 - fraction| has that value: its steps
    are twice as wide there.
    """
    return 0.5 / (0.49999 - p) if p < 0.5 else 0.5 / (p - 0.49999)


def draw_moon_phase(fraction, waning, southern):
    """The results of the picture routine for a lit fraction and a waning flag.

    Returns the dark fraction, the flag after the southern view, the terminator's
    aspect, the label's text, the value on the 0..200 scale and the icon number.
    """
    p = abs(1 - fraction)
    if southern:
        waning = 1 if waning == 0 else 0
    aspect = terminator_aspect(p)
    value = (p + 1) * 100 if waning == 1 else (1 - p) * 100
    return {
        "p": p, "waning": waning, "aspect": aspect, "label1": format_fixed(p, 1, 6),
        "value": value, "icon": phase_to_icon_number(value),
    }


# ---------------------------------------------------------------- report

SECOND_PASS_DAYS = 5  # after now, if a phase has already passed
LAST_PASS_DAYS = 30  # before the nearer coming phase

# Local dates are whole seconds from 1899-12-30 0 h. That is exact: every date of the
# report falls on a whole second, but a double that counts days is rounded.

def date_seconds(year, month, day, hour=0, minute=0, second=0):
    """Whole seconds from 1899-12-30 0 h of a local date and time."""
    days = datetime.date(int(year), int(month), int(day)).toordinal() - DATE_EPOCH
    return days * DAY_SECONDS + hour * 3600 + minute * 60 + second


def date_parts(seconds):
    """(year, month, day, hour, minute, second) of a local date in seconds."""
    day, rest = divmod(seconds, DAY_SECONDS)
    date = datetime.date.fromordinal(day + DATE_EPOCH)
    return date.year, date.month, date.day, rest // 3600, rest // 60 % 60, rest % 60


def local_date(jd, offset_minutes):
    """Local date (seconds) of a Julian day; the offset in minutes is added to the minute."""
    cal = julian_to_civil(jd)
    minutes = int16(round(cal["CalMinute"] + offset_minutes))  # half to even
    return date_seconds(cal["CalYear"], cal["CalMonth"], cal["CalDay"],
                        cal["CalHour"], minutes)


def date_line(prefix, seconds):
    """A line of the report: prefix, "dd-mmm-yy", a space, "h:mm AM/PM"."""
    year, month, day, hour, minute, _ = date_parts(seconds)
    return "%s%02d-%s-%02d %d:%02d %s" % (
        prefix, day, MONTHS[month - 1], year % 100, hour % 12 or 12, minute,
        "AM" if hour < 12 else "PM")


def pair_of_lines(kind, full, new):
    """The two lines of a Full and a New date, the earlier event above."""
    full_line = date_line(kind + " Full Moon : ", full)
    new_line = date_line(kind + " New Moon : ", new)
    return [full_line, new_line] if full < new else [new_line, full_line]


def tip_text(age_seconds):
    """The 64-character tip for the Moon's age in seconds.

    On purpose the days come from the text with three decimals, the time of day from
    the age itself.
    """
    days = int(format_fixed(age_seconds / DAY_SECONDS, 2, 3)[:2])
    rest = abs(age_seconds) % DAY_SECONDS
    text = "Moon's Age - %d Days %d:%02d" % (days, rest // 3600, rest // 60 % 60)
    return text[:64].ljust(64)


def module_values(year, month, day, hour, minute):
    """Every module value of one pass, in the order of writing.

    A name that several routines write ends with the routine: @Sun, @Moon, @Phases.
    """
    jd = civil_to_julian(year, month, day_fraction(day, hour, minute))
    t = julian_centuries(jd)
    sun = sun_position(t)
    moon = moon_position(t, sun["SunMeanAnomaly"])
    jd0 = civil_to_julian(year, month, day_fraction(day, 0, 0))
    year_start = civil_to_julian(year, 1, 1.0)
    phases = find_phases(year, jd0, year_start, moon["MoonElongation"],
                         moon["SunMeanAnomaly"], moon["MoonMeanAnomaly"])
    values = {"JD": jd, "Centuries": t}
    shared = ("SunMeanAnomaly", "MoonMeanAnomaly", "Obliquity")
    for source, record in (("Sun", sun), ("Moon", moon), ("Phases", phases)):
        if source == "Phases":
            values["JD0"], values["YearStartJD"] = jd0, year_start
        for name, value in record.items():
            if name not in ("E", "k0", "kNew"):
                values[name + "@" + source if name in shared else name] = value
    return values


def run_pass(base, offset_minutes):
    """One pass at a local date (seconds): Full date, New date, module values."""
    values = module_values(*date_parts(base)[:5])
    return (local_date(values["FullMoonJD"], offset_minutes),
            local_date(values["NewMoonJD"], offset_minutes), values)


def report(year, month, day, hour, minute, second, offset_minutes, southern):
    """The whole report at a local clock instant.

    offset_minutes: local time minus Universal Time. On purpose the astronomy takes
    the clock's reading as Universal Time; only the phase instants get the offset. The
    clock stands still during a report.
    """
    now = date_seconds(year, month, day, hour, minute, second)
    next_full, next_new, values = run_pass(now, offset_minutes)
    picture = draw_moon_phase(values["Illumination"], values["WaningFlag"], southern)
    coming = pair_of_lines("Next", next_full, next_new)
    corrected = next_new <= now or next_full <= now
    if corrected:
        next_full, next_new, _ = run_pass(now + SECOND_PASS_DAYS * DAY_SECONDS, offset_minutes)
        coming = pair_of_lines("New", next_full, next_new)
    nearer = next_full if next_full < next_new else next_new
    last_full, last_new, _ = run_pass(nearer - LAST_PASS_DAYS * DAY_SECONDS, offset_minutes)
    previous = pair_of_lines("Last", last_full, last_new)
    return {
        "lines": previous + coming,
        "tip": tip_text(now - last_new),
        "label1": picture["label1"],
        "icon": picture["icon"],
        "picture": picture,
        "values": values,
        "corrected": corrected,
        "dates": {"now": now, "NextFull": next_full, "NextNew": next_new,
                  "LastFull": last_full, "LastNew": last_new},
    }
