"""The expected report at an instant, from the independent oracle."""

import datetime

import moon_oracle


def reading(instant, zone):
    """The local time in a zone, with summer time, and the zone's standard offset in minutes."""
    local = instant.astimezone(zone)
    return local, (local.utcoffset() - local.dst()) // datetime.timedelta(minutes=1)


def wanted_report(instant, zone, southern=False, offset=None):
    """The oracle's report. The phases are in the zone's standard time unless an offset (in minutes) is given."""
    local, standard = reading(instant, zone)
    return moon_oracle.report(local.year, local.month, local.day, local.hour, local.minute, local.second,
                              standard if offset is None else offset, southern)
