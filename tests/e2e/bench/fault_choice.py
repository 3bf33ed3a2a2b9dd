"""Which calls are made to fail: chosen from the calls that a run without a fault makes."""

import itertools
from collections import Counter

from bench.failures import FAILURES, NEVER_GIVEN, SETS, VARIANTS
from bench.faults import Case, Rule


def counted(reference, functions, until=None):
    """How many calls of the functions there are, in all or until a mark in the journal."""
    journal = itertools.takewhile(lambda name: name != until, reference.journal)
    return sum(1 for name in journal if name in functions)


def rules_of(name, functions, count, long, failure=None):
    """The rules for a function or set that is called count times."""
    middle = (count + 1) // 2
    names = {count: "last call", middle: "middle call", 2: "second call", 1: "first call"}
    once = [1, 2, middle, count] if long else [middle]
    for_ever = [1, middle] if long else [1]
    for first in dict.fromkeys(first for first in once if first <= count):
        yield Rule(f"{name}, {names[first]}", tuple(functions), first, first, failure)
    for first in dict.fromkeys(for_ever):
        yield Rule(f"{name}, from the {names[first]} on", tuple(functions), first, 0, failure)


def memory_calls(reference):
    """(number, neighbour) for each call for memory. A neighbour is like an earlier call: in the same step, and as many
    calls for memory after the same other function."""
    quiet = set("free memcpy memmove memset strlen strcmp wcslen atan tan".split())
    number, step, last, distance, seen = 0, "", "", 0, set()
    for name in reference.journal:
        if name in SETS["memory"]:
            number, distance = number + 1, distance + 1
            place = step, last, distance
            yield number, place in seen
            seen.add(place)
        elif name not in quiet:
            last, distance = name, 0
            step = name if name.startswith("-- ") else step


def phases(reference, functions):
    """(name, number) for each step: the number of the next call of the functions when the step begins."""
    number = 0
    for name in reference.journal:
        if name.startswith("-- "):
            yield name[3:], number + 1
        elif name in functions:
            number += 1


def function_rules(reference, tried, long):
    """Each function alone, unless it was tried before."""
    called = Counter(reference.journal)
    for name in sorted(called.keys() & FAILURES.keys() - NEVER_GIVEN.keys() - tried - set(SETS["memory"])):
        yield from rules_of(name, [name], called[name], long)
        for variant, failure in VARIANTS.get(name, {}).items():
            yield from rules_of(f"{name} {variant}", [name], called[name], long, failure)


def memory_rules(reference, after, long):
    """No memory at a call, and from a call on."""
    memory = tuple(SETS["memory"])
    for number, neighbour in memory_calls(reference):
        if long or (number > after and not neighbour):
            yield Rule(f"memory, call {number}", memory, number, number)
            yield Rule(f"memory, from call {number} on", memory, number, 0)


def set_rules(reference, long):
    """Each set but memory: by the same rules as a single function, and step by step."""
    for name, functions in SETS.items():
        if name == "memory":
            continue
        count = counted(reference, functions)
        yield from rules_of(name, functions, count, long)
        for (step, first), (_, after) in itertools.pairwise([*phases(reference, functions), ("", count + 1)]):
            if first < after:
                yield Rule(f"{name}, in step {step}", tuple(functions), first, after - 1)
            if first <= count:
                yield Rule(f"{name}, from step {step} on", tuple(functions), first, 0)


def quick_cases(references):
    """The quick choice: what an earlier scenario has tried is left out."""
    tried = set()
    for scenario, reference in references.items():
        started = counted(reference, SETS["memory"], "-- start") if tried else 0
        for rule in (*function_rules(reference, tried, False), *memory_rules(reference, started, False),
                     *set_rules(reference, False)):
            yield Case(scenario, rule)
        tried |= set(reference.journal)


def all_cases(references):
    """The quick choice and all others."""
    found = {str(case): case for case in quick_cases(references)}
    for scenario, reference in references.items():
        for rule in (*function_rules(reference, set(), True), *memory_rules(reference, 0, True),
                     *set_rules(reference, True)):
            case = Case(scenario, rule)
            found.setdefault(str(case), case)
    return list(found.values())
