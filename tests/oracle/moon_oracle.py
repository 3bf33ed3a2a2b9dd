"""Computes Tidewell's numbers a second time, to check the program.

Written independently from the published formulae: J. Meeus, Astronomical Formulae for Calculators. Departures from
them are marked "on purpose": users have always seen their results. Angles are degrees and instants Julian days, unless
a docstring says otherwise. Run-time libraries differ in the last bits: compare with a tolerance.
"""

import bisect
import datetime
import math
from decimal import Decimal, ROUND_HALF_UP
from fractions import Fraction

import moon_series as series

PI10 = 3.1415926535  # ten decimals, on purpose, in every conversion
MONTHS = "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec".split()


# ---------------------------------------------------------------- calendar and angles

def civil_to_julian(year, month, day, hour=0, minute=0):
    """Julian day of a Gregorian date. On purpose Gregorian also before the reform of 1582."""
    if month < 3:
        year, month = year - 1, month + 12
    a = math.floor(year / 100)
    b = 2 - a + math.floor(a / 4)
    day_with_fraction = day + (hour * 60 + minute) / 1440
    return math.floor(365.25 * year) + math.floor(30.6001 * (month + 1)) + day_with_fraction + 1720994.5 + b


def julian_centuries(jd):
    """Julian centuries of 36525 days from JD 2415020.0."""
    return (jd - 2415020.0) / 36525.0


def normalize_angle(angle):
    """Degrees reduced to 0..360; 0 and 360 themselves stay, on purpose."""
    if 0 <= angle <= 360:
        return angle
    whole = math.floor(angle)
    turns = whole / 360
    return (turns - math.floor(turns)) * 360 + (angle - whole)


def deg_to_rad(angle):
    """Degrees to radians with the ten-decimal pi."""
    return (angle / 360 + angle / 360) * PI10


def arc_sine(x):
    """Radians. Not the true arc sine, on purpose: the tangent is converted as if it were degrees."""
    return math.atan(deg_to_rad(x / math.sqrt(1 - x * x)))


def format_fixed(value, whole_digits, decimals):
    """Text of a number with leading zeros, rounded to 15 digits and then to the decimals, half away from zero."""
    digits = Decimal("%.14e" % value)
    rounded = digits.quantize(Decimal(1).scaleb(-decimals), rounding=ROUND_HALF_UP)
    width = whole_digits + (decimals + 1 if decimals else 0)
    sign = "-" if digits < 0 else ""
    return sign + format(abs(rounded), "f").rjust(width, "0")


def julian_to_civil(jd):
    """(year, month, day, hour, minute) of a Julian day; Julian dates before the reform of 1582.

    On purpose the hour comes from the text of the hours with four decimals, the minute from the arithmetic: just before
    a full hour the hour is one higher, but the minute is 59.
    """
    whole, part = divmod(Fraction(jd) + Fraction(1, 2), 1)
    if whole >= 2299161:
        date = datetime.date.fromordinal(whole - 1721425)
        year = date.year
    else:
        # Like any four years that begin with a leap year. Day 0 is 1 January -4712.
        cycles, rest = divmod(whole, 1461)
        date = datetime.date(2000, 1, 1) + datetime.timedelta(rest)
        year = date.year - 2000 - 4712 + 4 * cycles
    return year, date.month, date.day, int(format_fixed(float(part * 24), 2, 4)[:2]), int(part * 1440) % 60


# ---------------------------------------------------------------- Sun

def _sin(degrees):
    return math.sin(deg_to_rad(degrees))


def _cos(degrees):
    return math.cos(deg_to_rad(degrees))


def obliquity(t):
    """Obliquity of the ecliptic."""
    return 23.452294 - 0.0130125 * t - 0.00000164 * math.pow(t, 2) + 0.000000503 * math.pow(t, 3)


def sun_position(t):
    """The Sun's position.

    On purpose:
    - The right ascension is an arctangent in radians. Its numerator is converted as if it were degrees. 180 is added if
      the cosine is negative, with the longitude in degrees taken as radians.
    - The declination (radians) converts the sine of the obliquity as if it were degrees.
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

def argument(text, angles):
    """The value of an argument like "2D - M"."""
    return sum(count * angles[name] for count, name in series.parse_argument(text))


def sum_series(rows, function, angles, eccentricity, raw_row=None):
    """The sum of a periodic series. In row `raw_row` (counted from 1) the function gets degrees instead of radians."""
    total = 0
    for number, (coefficient, power, text) in enumerate(rows, 1):
        angle = argument(text, angles)
        total += coefficient * eccentricity ** power * function(angle if number == raw_row else deg_to_rad(angle))
    return total


def moon_position(t, sun_mean_anomaly):
    """The Moon's position. sun_mean_anomaly comes from sun_position; the result has the corrected one.

    On purpose: elongation and argument of latitude are not reduced; the T^2 part of the Venus argument is in radians;
    some rows of the series depart from the publication (see moon_series.py); the right ascension (an arctangent in
    radians, plus 0 or 180) and the declination (radians) have extra conversions.
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
    angles = {"D": d, "M": m, "M'": mp, "F": f}

    ecl_lon = normalize_angle(lon + sum_series(series.LONGITUDE, math.sin, angles, e, series.LONGITUDE_RAW_ROW))
    b = sum_series(series.LATITUDE, math.sin, angles, e)
    ecl_lat = b * (1 - 0.0004664 * _cos(node) - 0.0000754 * _cos(node + 275.05 - 2.3 * t))
    parallax = series.PARALLAX_START + sum_series(series.PARALLAX, math.cos, angles, e)

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
    }


# ---------------------------------------------------------------- phases

def lit_fraction(d, m, mp):
    """Lit fraction of the disc, 0..1, from elongation and anomalies. The last coefficient is 0.112 on purpose."""
    i = (180 - d - 6.289 * _sin(mp) + 2.1 * _sin(m) - 1.274 * _sin(2 * d - mp)
         - 0.658 * _sin(2 * d) - 0.214 * _sin(2 * mp) - 0.112 * _sin(d))
    return (1 + _cos(normalize_angle(i))) / 2


def lunation(k, m_t2_sign=-1):
    """(instant, M, M') of lunation k; whole: New Moon, + 0.5: Full Moon. m_t2_sign is the sign of the T^2 term of M."""
    t = k / 1236.85
    t2, t3 = math.pow(t, 2), math.pow(t, 3)
    mean = (2415020.75933 + 29.53058868 * k + 0.0001178 * t2 - 0.000000155 * t3
            + 0.00033 * _sin(166.56 + 132.87 * t - 0.009173 * t2))
    m = normalize_angle(
        359.2242 + 29.10535608 * k + m_t2_sign * 0.0000333 * t2 - 0.00000347 * t3)
    mp = normalize_angle(306.0253 + 385.81691806 * k + 0.0107306 * t2 + 0.00001236 * t3)
    f = normalize_angle(21.2964 + 390.67050646 * k - 0.0016528 * t2 - 0.00000239 * t3)
    angles = {"M": m, "M'": mp, "F": f}
    correction = series.PHASE_FIRST_RATE * t * _sin(m)
    for coefficient, text in series.PHASE:
        correction += coefficient * _sin(argument(text, angles))
    return mean + correction, m, mp


def find_phases(year, jd, jd_jan1, d, m, mp):
    """Lit fraction, a New Moon and a Full Moon near the day jd of a year that began at jd_jan1.

    d, m, mp: elongation and anomalies of the moment. On purpose: the year has 365 days; a New Moon before jd moves one
    lunation on, with the opposite sign of the T^2 term of M; a Full Moon before jd stays.
    """
    illumination = lit_fraction(d, m, mp)
    year_percent = (jd - jd_jan1) / 365 * 100
    k0 = ((year + year_percent / 100) - 1900) * 12.3685
    k = math.ceil(k0 - 0.5)  # the nearest; an exact half goes down
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
    }


# ---------------------------------------------------------------- picture and icon

ICON_THRESHOLDS = [
    1.73, 5.68, 11.2, 19.31, 28.13, 38.43, 48.87, 59.4, 69.96, 78.75, 86.89, 93.18, 97.44, 99.66,
    100.238, 102.36, 106.6, 112.81, 120.87, 129.61, 140.0, 150.58, 161.0, 171.0, 180.56, 188.2, 194.27, 198.22]


def phase_to_icon_number(value):
    """Icon number 0..28 of a phase value on the 0..200 scale."""
    return bisect.bisect_left(ICON_THRESHOLDS, value)


def draw_moon_phase(fraction, waning, southern):
    """The dark fraction p, the label's text, the value on the 0..200 scale and the icon number."""
    p = abs(1 - fraction)
    if southern:
        waning = 1 if waning == 0 else 0
    value = (p + 1) * 100 if waning == 1 else (1 - p) * 100
    return {"p": p, "label1": format_fixed(p, 1, 6), "value": value, "icon": phase_to_icon_number(value)}


# ---------------------------------------------------------------- report

def local_date(jd, offset_minutes):
    """Local date and time of a Julian day; the offset is added to the minute, a half goes to the even one."""
    *day, hour, minute = julian_to_civil(jd)
    return datetime.datetime(*day) + datetime.timedelta(hours=hour, minutes=round(minute + offset_minutes))


def date_line(prefix, date):
    """A line of the report: prefix, "dd-mmm-yy", a space, "h:mm AM/PM"."""
    return "%s%02d-%s-%02d %d:%02d %s" % (
        prefix, date.day, MONTHS[date.month - 1], date.year % 100, date.hour % 12 or 12, date.minute,
        "AM" if date.hour < 12 else "PM")


def pair_of_lines(kind, full, new):
    """The two lines of a Full and a New date, the earlier event above."""
    full_line = date_line(kind + " Full Moon : ", full)
    new_line = date_line(kind + " New Moon : ", new)
    return [full_line, new_line] if full < new else [new_line, full_line]


def tip_text(age):
    """The tip for the Moon's age. On purpose the days come from the text with three decimals, the time from the age."""
    days = int(format_fixed(age / datetime.timedelta(days=1), 2, 3)[:2])
    minutes = abs(age).seconds // 60
    return ("Moon's Age - %d Days %d:%02d" % (days, minutes // 60, minutes % 60)).ljust(64)


def module_values(year, month, day, hour, minute):
    """Every module value of one pass. @Sun, @Moon or @Phases tells which routine wrote a name that several write."""
    jd = civil_to_julian(year, month, day, hour, minute)
    t = julian_centuries(jd)
    sun = sun_position(t)
    moon = moon_position(t, sun["SunMeanAnomaly"])
    jd0, year_start = civil_to_julian(year, month, day), civil_to_julian(year, 1, 1)
    phases = find_phases(year, jd0, year_start, moon["MoonElongation"],
                         moon["SunMeanAnomaly"], moon["MoonMeanAnomaly"])
    values = {"JD": jd, "Centuries": t, "JD0": jd0, "YearStartJD": year_start}
    for source, record in (("Sun", sun), ("Moon", moon), ("Phases", phases)):
        for name, value in record.items():
            shared = name in ("SunMeanAnomaly", "MoonMeanAnomaly", "Obliquity")
            values[name + "@" + source if shared else name] = value
    return values


def report(year, month, day, hour, minute, second, offset_minutes, southern):
    """The whole report at a local clock instant. offset_minutes: local time minus Universal Time.

    On purpose the astronomy takes the clock's reading as Universal Time; only the phase instants get the offset.
    """
    passes = []

    def run_pass(base):
        """One pass at a local date: Full date, New date."""
        values = module_values(*base.timetuple()[:5])
        passes.append(values)
        return local_date(values["FullMoonJD"], offset_minutes), local_date(values["NewMoonJD"], offset_minutes)

    now = datetime.datetime(year, month, day, hour, minute, second)
    next_full, next_new = run_pass(now)
    picture = draw_moon_phase(passes[0]["Illumination"], passes[0]["WaningFlag"], southern)
    coming = pair_of_lines("Next", next_full, next_new)
    corrected = next_new <= now or next_full <= now
    if corrected:
        next_full, next_new = run_pass(now + datetime.timedelta(days=5))
        coming = pair_of_lines("New", next_full, next_new)
    last_full, last_new = run_pass(min(next_full, next_new) - datetime.timedelta(days=30))
    return {
        "lines": pair_of_lines("Last", last_full, last_new) + coming,
        "tip": tip_text(now - last_new),
        "label1": picture["label1"],
        "icon": picture["icon"],
        "picture": picture,
        "passes": passes,
        "corrected": corrected,
        "dates": {"NextFull": next_full, "NextNew": next_new, "LastFull": last_full, "LastNew": last_new},
    }
