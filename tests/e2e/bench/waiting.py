"""Waiting for conditions, never for times."""

import time

BOUND = 60  # seconds; only a failing test waits that long


def until(condition, what):
    """Calls condition() until it is true; returns that result."""
    end = time.monotonic() + BOUND
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > end:
            raise AssertionError(f"within {BOUND} s there was no {what}; last: {result!r}")
        time.sleep(0.02)


def until_same(look, what):
    """Calls look() until two results in a row are true and equal; returns that."""
    seen = None

    def still():
        nonlocal seen
        before, seen = seen, look()
        return before and seen == before

    until(still, f"{what} that stays the same")
    return seen
