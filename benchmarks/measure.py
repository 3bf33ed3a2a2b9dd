"""Takes all measurements and writes the page. ./bench runs it."""

import dataclasses
import sys

import program_cost
import report_speed
from page import Measurements, page
from stage import BUILD, REPOSITORY, open_stage


@dataclasses.dataclass(frozen=True)
class Extent:
    """How much is measured."""

    rounds: int  # of comparing the report; each takes about 10 s
    growth_repetitions: int
    starts: int
    memory_rounds: int
    quiet_minutes: int
    seconds_of_a_minute: int
    updates: int


WHOLE = Extent(rounds=15, growth_repetitions=15, starts=31, memory_rounds=5, quiet_minutes=5, seconds_of_a_minute=60,
               updates=20_000)
QUICK = Extent(rounds=1, growth_repetitions=1, starts=3, memory_rounds=1, quiet_minutes=1, seconds_of_a_minute=5,
               updates=2_000)


def main():
    quick = "--quick" in sys.argv
    extent = QUICK if quick else WHOLE
    with open_stage() as stage:
        def measured(what, measure, *arguments):
            print(f"bench: {what}", flush=True)
            return measure(stage, *arguments)

        measurements = Measurements(
            answers=measured("are the answers right?", report_speed.check_answers),
            report=measured("the report beside other libraries", report_speed.measure, extent.rounds),
            growth=measured("the report over the years", report_speed.measure_growth, extent.growth_repetitions),
            size=measured("the program's size", program_cost.measure_size),
            start_and_close=measured("start and close", program_cost.measure_start_and_close, extent.starts),
            memory=measured("memory", program_cost.measure_memory, extent.memory_rounds),
            quiet=measured("quiet minutes", program_cost.measure_quiet_minutes, extent.quiet_minutes,
                           extent.seconds_of_a_minute),
            updates=measured("many updates", program_cost.measure_updates, extent.updates))
    target = BUILD / "bench/performance.md" if quick else REPOSITORY / "docs/performance.md"
    target.write_text(page(measurements))
    print(f"bench: {target.relative_to(REPOSITORY)} is written")


main()
