"""Measures the whole program beside an empty window: its start, end, memory, quiet minutes and many updates."""

import collections
import datetime
import re
import time
from pathlib import Path

from stage import EMPTY, TIDEWELL, WM_TIMER

SETTLED = 3  # seconds; by then the start and the first tick are over


def measure_start_and_close(stage, rounds):
    """Milliseconds from start to visible window and from WM_CLOSE to the end: (start, close) by name, a value for each
    round."""
    names = [TIDEWELL, EMPTY]
    start, close, sizes = collections.defaultdict(list), collections.defaultdict(list), set()
    programs = map(stage.windows_path, names)
    for number, started, closed, *size in stage.output_of("stopwatch.exe", "race", rounds, *programs):
        start[names[int(number)]].append(float(started))
        close[names[int(number)]].append(float(closed))
        sizes.add(tuple(size))
    assert len(sizes) == 1, f"the windows differ in size: {sizes}"
    return start, close


def _private(process):
    """The process's private written bytes. Pages that it only reads do not count: whether they are private depends on
    who else reads them."""
    rollup = Path(f"/proc/{process.pid}/smaps_rollup").read_text()
    return 1024 * int(re.search(r"^Private_Dirty:\s+(\d+) kB", rollup, re.MULTILINE)[1])


def measure_memory(stage, rounds):
    """Private bytes with the window shown and hidden: (shown, hidden) by name, a value for each round."""
    shown, hidden = collections.defaultdict(list), collections.defaultdict(list)
    for _ in range(rounds):
        for name, caption in ((TIDEWELL, "Tidewell"), (EMPTY, "Empty")):
            with stage.running(name) as process:
                time.sleep(SETTLED)
                shown[name].append(_private(process))
                stage.output_of("stopwatch.exe", "hide", caption)
                time.sleep(SETTLED)
                hidden[name].append(_private(process))
    return shown, hidden


def _processor_seconds(process):
    return time.clock_gettime(~process.pid << 3 | 2)  # the clock's id as clock_getcpuclockid() returns it


def _wake_ups(process):
    return sum(int(re.search(r"^voluntary_ctxt_switches:\s+(\d+)", (task / "status").read_text(), re.MULTILINE)[1])
               for task in Path(f"/proc/{process.pid}/task").iterdir())


def measure_quiet_minutes(stage, minutes):
    """Processor milliseconds and wake-ups of quiet minutes, window shown: (processor, wake_ups) by name, a value for
    each minute. `minutes` holds their lengths in seconds. The two programs take turns."""
    processor, wake_ups = collections.defaultdict(list), collections.defaultdict(list)
    for seconds in minutes:
        for name in (TIDEWELL, EMPTY):
            with stage.running(name) as process:
                time.sleep(SETTLED)
                before = _processor_seconds(process), _wake_ups(process)
                time.sleep(seconds)
                after = _processor_seconds(process), _wake_ups(process)
                processor[name].append(1000 * (after[0] - before[0]))
                wake_ups[name].append(after[1] - before[1])
    return processor, wake_ups


# ---- over many updates

def measure_updates(stage, updates, portion=1_000):
    """Spreads the updates over a simulated year. For each portion: processor milliseconds per update, private bytes
    after it."""
    step = datetime.timedelta(days=365) / updates
    milliseconds, private = [], []
    with stage.with_movable_clock() as program:
        window = program.main().hwnd
        for _ in range(updates // portion):
            before = _processor_seconds(program.process)
            for _ in range(portion):
                program.clock.advance(seconds=step.total_seconds())
                program.driver.send(window, WM_TIMER, 1)
            milliseconds.append(1000 * (_processor_seconds(program.process) - before) / portion)
            private.append(_private(program.process))
    return milliseconds, private
