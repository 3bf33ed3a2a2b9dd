"""Measures the whole program beside an empty window: its start, end, memory, quiet minutes and many updates."""

import collections
import datetime
import re
import time
from pathlib import Path

from stage import WM_TIMER

START, CLOSE = "start to visible window, ms", "close to ended, ms"
SHOWN, HIDDEN = "private memory shown, MB", "private memory hidden, MB"
PROCESSOR, WAKE_UPS = "processor time of a quiet minute, ms", "wake-ups of a quiet minute"

SETTLED = 3  # seconds; by then the start and the first tick are over


def _private(process):
    """The process's private written megabytes. Pages that it only reads do not count: whether they are private depends
    on who else reads them."""
    rollup = Path(f"/proc/{process.pid}/smaps_rollup").read_text()
    return int(re.search(r"^Private_Dirty:\s+(\d+) kB", rollup, re.MULTILINE)[1]) / 1024


def _processor_milliseconds(process):
    return 1000 * time.clock_gettime(~process.pid << 3 | 2)  # the clock's id as clock_getcpuclockid() returns it


def _wake_ups(process):
    return sum(int(re.search(r"^voluntary_ctxt_switches:\s+(\d+)", (task / "status").read_text(), re.MULTILINE)[1])
               for task in Path(f"/proc/{process.pid}/task").iterdir())


def measure_program(stage, quick):
    """Returns figures[what][program], each a list of values. The two programs take turns."""
    starts, minutes, seconds = (3, 1, 5) if quick else (31, 5, 60)
    figures = collections.defaultdict(lambda: collections.defaultdict(list))
    sizes = set()
    for _ in range(starts):
        for name in stage.programs:
            start, close, size = stage.race(name)
            figures[START][name].append(start)
            figures[CLOSE][name].append(close)
            sizes.add(tuple(size))
    assert len(sizes) == 1, f"the windows differ in size: {sizes}"

    for _ in range(minutes):
        for name in stage.programs:
            with stage.running(name) as process:
                time.sleep(SETTLED)
                figures[SHOWN][name].append(_private(process))
                processor, wake_ups = _processor_milliseconds(process), _wake_ups(process)
                time.sleep(seconds)
                figures[PROCESSOR][name].append(_processor_milliseconds(process) - processor)
                figures[WAKE_UPS][name].append(_wake_ups(process) - wake_ups)
                stage.hide()
                time.sleep(SETTLED)
                figures[HIDDEN][name].append(_private(process))
    return figures


def measure_updates(stage, quick):
    """Makes updates over a simulated year. Returns for each 1,000 of them the processor milliseconds that they took and
    the private megabytes after them, as two lists."""
    portions, portion = 2 if quick else 20, 1_000
    step = datetime.timedelta(days=365) / portions / portion
    milliseconds, private = [], []
    program = stage.bench.start(recorded=False)
    window = program.main().hwnd
    for _ in range(portions):
        before = _processor_milliseconds(program.process)
        for _ in range(portion):
            program.clock.advance(seconds=step.total_seconds())
            program.driver.send(window, WM_TIMER, 1)
        milliseconds.append(_processor_milliseconds(program.process) - before)
        private.append(_private(program.process))
    stage.bench.end_programs()
    return milliseconds, private
