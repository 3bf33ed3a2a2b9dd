"""If the system refuses a call, the program heals or loses something harmless, or it shows one box and ends."""

import pytest

from bench import LONG, fault_choice, faults
from bench.fault_verdict import problems
from bench.folders import Folders
from bench.wine import wine_on_a_screen


@pytest.fixture(scope="module")
def trials(bench):
    with wine_on_a_screen(Folders(bench.folders.root / "second")) as (_, second):
        yield faults.Trials(bench.exe, bench.tools, [bench.wine, second])


@pytest.mark.parametrize("scenario", faults.SCENARIOS)
def test_without_a_fault_a_run_is_always_the_same(trials, scenario):
    reference = trials.references[scenario]
    for _, run in trials.run([faults.Case(scenario)] * 4):
        assert (run.status, run.log, run.file) == (faults.SCENARIOS[scenario], reference.log, reference.file)
    assert not reference.told("missed")


def test_the_menu_has_its_entries(trials):
    menus = {look["menu"] for look in trials.references["shown"].looks().values()}
    assert menus == {"", "About|Show Main Window|Exit|"}


def test_calls_that_fail(trials):
    found = {str(case): problems(case, trials.references[case.scenario], run)
             for case, run in trials.run(fault_choice.cases(trials.references, LONG))}
    assert {case: wrong for case, wrong in found.items() if wrong} == {}
