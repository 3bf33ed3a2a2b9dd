"""The program when the system refuses its calls: nothing lost that stays, or one box and the end (bench/faults.py)."""

import pytest

from bench import fault_choice, faults
from bench.failures import FAILURES, NEVER_FAIL, NEVER_GIVEN, STAYS_BAD, imports
from bench.fault_verdict import WORST, WRONG
from bench.folders import Folders
from bench.wine import wine_on_a_screen


@pytest.fixture(scope="module")
def trials(bench):
    with wine_on_a_screen(Folders(bench.folders.root / "second")) as (_, second):
        yield faults.Trials(bench.exe, bench.tools, [bench.wine, second])


def test_every_import_has_its_failure(bench):
    assert imports(bench.exe) - FAILURES.keys() - NEVER_FAIL == set()


def test_few_cases_stay_bad():
    assert len(STAYS_BAD) < 25
    assert {name.partition(",")[0] for name in STAYS_BAD}.isdisjoint(NEVER_GIVEN)


@pytest.mark.parametrize("scenario", faults.SCENARIOS)
def test_without_a_fault_a_run_is_always_the_same(trials, scenario):
    reference = trials.references[scenario]
    for _, run in trials.run([faults.Case(scenario)] * 4):
        assert (run.status, run.log, run.file) == (faults.SCENARIOS[scenario], reference.log, reference.file)
    assert not reference.told("missed") and not reference.told("again")


def problems(trials, cases):
    """What is wrong with the verdicts: bad ones that are not listed, listed ones that are good."""
    bad, good = set(), set()
    for case, verdict, seen in trials.judge(cases):
        name = case.rule.name
        [function, *more] = case.rule.functions
        if verdict not in (WRONG, WORST):
            good.add(name)
        elif more or function not in NEVER_GIVEN:
            bad.add(name)
            if verdict == WORST or name not in STAYS_BAD:  # nothing excuses the worst
                yield f"{case}: {seen}"
    yield from (f"{name} is listed, but good now" for name in STAYS_BAD.keys() & good - bad)


def test_calls_that_fail(trials):
    assert list(problems(trials, fault_choice.quick_cases(trials.references))) == []


@pytest.mark.long
def test_every_call_that_fails(trials):
    assert list(problems(trials, fault_choice.all_cases(trials.references))) == []
