"""Which calls are made to fail: chosen from the calls that a run without a fault makes."""

from bench.failures import NEVER_FAIL, SETS, VARIANTS, usual
from bench.faults import Case


def steps_of(reference, functions):
    """The step of each call of the functions."""
    step = "zero"  # before the first
    for name in reference.journal:
        if name.startswith("-- "):
            step = name[3:]
        elif name in functions:
            yield step


def spans(name, steps, long):
    """The calls that fail in each case: (when, first call, last call); last call 0: for ever. `steps` has the step of
    each call."""
    count = len(steps)
    middle = count // 2 + 1
    once = {1, min(2, count), middle, count} if long else {middle}
    for_ever = {1, middle} if long else {1}
    if name == "memory":
        once = for_ever = range(1, count + 1, 1 if long else 7)
    yield from ((f"call {number}", number, number) for number in once)
    yield from ((f"from call {number} on", number, 0) for number in for_ever)
    if name in SETS and name != "memory":
        for step in dict.fromkeys(steps):
            first = steps.index(step) + 1
            yield f"in step {step}", first, first + steps.count(step) - 1
            yield f"from step {step} on", first, 0


def cases(references, long):
    """The cases to try; more in a long run."""
    for scenario, reference in references.items():
        called = {name for name in reference.journal if not name.startswith("-- ")}
        alone = {name: usual([name]) for name in sorted(called - NEVER_FAIL - set(SETS["memory"]))}
        for name, failing in (alone | VARIANTS | {name: usual(SETS[name]) for name in SETS}).items():
            for when, first, last in spans(name, [*steps_of(reference, failing)], long):
                yield Case(scenario, f"{name}, {when}", failing, first, last)
