"""Measures the whole program: its size by part, and its start, end, memory and quiet minutes beside an empty window."""

import collections
import datetime
import re
import time
from pathlib import Path

from stage import EMPTY, TIDEWELL, WINDOWS, WM_TIMER

SETTLED = 3  # seconds; by then the start and the first tick are over


# ---- size

def _part(section, file):
    """The part of the program that a piece in the linker's map belongs to."""
    if section.startswith(".rsrc"):
        return "resources: pictures, manifest, version"
    if section.startswith(".idata"):
        return "imports"
    if section.startswith(".reloc"):
        return "relocations"
    for part, names in {"C++ library": ["libstdc++"], "the compiler's library, most of it unwinding": ["libgcc"],
                        "Tidewell's own code and data": ["ltrans", "idewell"]}.items():
        if any(name in file for name in names):
            return part
    return "C run-time library and start-up code"


def measure_size(_stage):
    """The bytes of the executable and of each part of it."""
    exe = (WINDOWS / "Tidewell.exe").stat().st_size
    text = (WINDOWS / "Tidewell.map").read_text().split("Linker script and memory map", 1)[1]
    parts = collections.Counter()
    for section, size, file in re.findall(r"^ (\.\S+)\s+0x[0-9a-f]+\s+0x([0-9a-f]+) (\S.*)$", text, re.MULTILINE):
        if not section.startswith((".bss", ".debug")):  # .bss is not in the file, and -s leaves no .debug
            parts[_part(section, file)] += int(size, 16)
    parts["headers and padding"] = exe - sum(parts.values())
    return exe, dict(parts.most_common())


# ---- beside an empty window

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
    return time.clock_gettime(~process.pid << 3 | 2)  # the process's clock; clock_getcpuclockid() forms its id so


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
