"""Waiting for a condition instead of for a time."""

import time

BOUND = 60  # seconds; only a failing test ever waits that long


class Timeout(AssertionError):
    """The condition did not come true within the bound."""


def until(condition, what, bound=BOUND, pause=0.02):
    """Asks condition() again and again; returns its first true result."""
    end = time.monotonic() + bound
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > end:
            raise Timeout(f"within {bound} s there was no {what}; last: {result!r}")
        time.sleep(pause)
