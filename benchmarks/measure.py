"""Takes all measurements and writes the page. ./bench runs it."""

import sys
from types import SimpleNamespace

import program_cost
import report_speed
from page import page
from stage import BUILD, REPOSITORY, open_stage


def main():
    quick = "--quick" in sys.argv
    with open_stage() as stage:
        def measured(what, measure, whole=None, short=None):
            """Measures to the extent of a whole or a quick run."""
            print(f"bench: {what}", flush=True)
            extent = short if quick else whole
            return measure(stage) if extent is None else measure(stage, extent)

        measurements = SimpleNamespace(
            answers=measured("are the answers right?", report_speed.check_answers),
            report=measured("the report beside other libraries", report_speed.measure, 15, 1),  # rounds of about 10 s
            decades=measured("the report over the years", report_speed.measure_decades, 15, 1),  # repetitions
            start_and_close=measured("start and close", program_cost.measure_start_and_close, 31, 3),
            memory=measured("memory", program_cost.measure_memory, 5, 1),
            quiet=measured("quiet minutes", program_cost.measure_quiet_minutes, 5 * [60], [5]),  # seconds of each
            updates=measured("many updates", program_cost.measure_updates, 20_000, 2_000))
    target = BUILD / "bench/performance.md" if quick else REPOSITORY / "docs/performance.md"
    target.write_text(page(measurements))
    print(f"bench: {target.relative_to(REPOSITORY)} is written")


main()
