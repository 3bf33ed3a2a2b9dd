"""The expected report at an instant, from the independent oracle."""

import datetime

import moon_oracle


def wanted_report(instant, zone, southern=False):
    """The oracle's report at an instant. The phases are in the zone's standard time."""
    local = instant.astimezone(zone)
    standard = (local.utcoffset() - local.dst()) // datetime.timedelta(minutes=1)
    return moon_oracle.report(*local.timetuple()[:6], standard, southern)
