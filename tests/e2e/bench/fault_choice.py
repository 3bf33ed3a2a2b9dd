"""Which calls are made to fail: chosen from the calls that a run without a fault makes."""

import itertools

from bench.failures import NEVER_FAIL, SETS, VARIANTS
from bench.faults import Case


def numbers_of(reference, functions):
    """The numbers of the calls of functions, each with the step in which it is."""
    step, numbers = "zero", itertools.count(1)  # zero: before the first
    for name in reference.journal:
        if name.startswith("-- "):
            step = name[3:]
        elif name in functions:
            yield next(numbers), step


def failing_calls(reference, name, functions, long, failure=None):
    """Functions fail once, or from a call on."""
    count = len([*numbers_of(reference, functions)])
    middle = count // 2 + 1
    for first in sorted({1, 2, middle, count} if long else {middle}):
        if first <= count:
            yield Case(reference.scenario, f"{name}, call {first}", functions, first, first, failure)
    for first in sorted({1, middle} if long else {1}):
        yield Case(reference.scenario, f"{name}, from call {first} on", functions, first, 0, failure)


def failing_memory(reference, every):
    """No memory at a call, or from a call on."""
    for number, _ in itertools.islice(numbers_of(reference, SETS["memory"]), 0, None, every):
        yield Case(reference.scenario, f"memory, call {number}", SETS["memory"], number, number)
        yield Case(reference.scenario, f"memory, from call {number} on", SETS["memory"], number, 0)


def failing_steps(reference, name, functions):
    """Functions fail during a step, or from a step on."""
    for step, calls in itertools.groupby(numbers_of(reference, functions), lambda call: call[1]):
        numbers = [number for number, _ in calls]
        yield Case(reference.scenario, f"{name}, in step {step}", functions, numbers[0], numbers[-1])
        yield Case(reference.scenario, f"{name}, from step {step} on", functions, numbers[0], 0)


def cases(references, long):
    """All cases to try; fewer unless it is a long run."""
    for reference in references.values():
        called = {name for name in reference.journal if not name.startswith("-- ")}
        for name in sorted(called - NEVER_FAIL - set(SETS["memory"])):
            yield from failing_calls(reference, name, [name], long)
            for variant, failure in VARIANTS.get(name, {}).items():
                yield from failing_calls(reference, f"{name} {variant}", [name], long, failure)
        yield from failing_memory(reference, 1 if long else 7)
        for name, functions in SETS.items():
            if name != "memory":
                yield from failing_calls(reference, name, functions, long)
                yield from failing_steps(reference, name, functions)
