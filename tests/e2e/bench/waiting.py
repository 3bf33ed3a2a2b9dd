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


def until_same(look, what):
    """Looks again and again; returns what it sees, when that is something and the same twice running."""
    seen = None

    def still():
        nonlocal seen
        before, seen = seen, look()
        return before and seen == before

    until(still, f"{what} that stays the same")
    return seen
