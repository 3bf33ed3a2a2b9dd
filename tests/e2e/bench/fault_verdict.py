"""What is wrong in a run with calls that fail, compared with a run without."""

import re

from bench.display import HEIGHT, WIDTH
from bench.faults import FILE_WITHOUT_OPTIONS

# What a user may lose without harm.
LOOK = {"window", "about-window"}
REACHED_BY_THE_ICON = {"menu", "main", "about", "about-place", "missed", *LOOK}
LOSES = {  # the focus rectangle
    "GetFocus": LOOK, "SetFocus": LOOK, "IsChild": LOOK, "GetNextDlgTabItem": LOOK,
}
LOSES_FOR_EVER = {  # while the system refuses for ever
    "BeginPaint": {"moon", *LOOK},  # the last Moon stays on the screen
    "DrawEdge": LOOK, "GetClientRect": LOOK,  # the line round the options
    "LoadImageW": {"icon-picture"},  # the icon keeps its picture
    "Shell_NotifyIconA": {"icon", "icon-picture", "tip", *REACHED_BY_THE_ICON},
    "TrackPopupMenu": REACHED_BY_THE_ICON,
}
SETTINGS_FILE = {"CreateFileW", "GetFileSizeEx", "ReadFile", "WriteFile"}  # a failure must not go unnoticed


def problems(case, reference, run):
    """What is wrong with a run: what must never happen, and what stays wrong."""
    return [*worst(case, reference, run), *(wrong_in_life if run.status == 0 else wrong_end)(case, reference, run)]


def worst(case, reference, run):
    """What must never happen: a silent end, an invisible, stuck or busy program, a crash, a dead icon left behind, a
    damaged file."""
    for word in ("busy", "not ended", "crash"):
        yield from (" ".join([word, *rest]) for rest in run.told(word))
    shell_refuses_for_ever = "Shell_NotifyIconA" in case.failing and case.last == 0
    if run.told("icon")[-1:] == [["added"]] and not shell_refuses_for_ever:
        yield "icon left dead"
    if run.file not in (FILE_WITHOUT_OPTIONS, reference.file):
        yield "settings file damaged"
    if run.astray:
        yield "settings file in the root of the drive"
    for moment, look in run.looks().items():
        if moment.endswith("later") and look["icon"] == "none" and look["main"] in ("hidden", "none"):
            yield f"invisible ({moment})"
    if SETTINGS_FILE & case.failing.keys() and not numbers(run) & case.ends_on():
        yield "goes on without its settings file"
    tries = run.journal.count("MessageBoxA")
    if run.status == 0 and (reference.status != 0 or run.looks().keys() < reference.looks().keys()):
        yield "silent end"
    elif run.status == 1 and not run.told("box") and not (tries > 1 and "MessageBoxA" in case.failing):
        yield f"silent end, with {tries} tries to show the box"
    elif run.status not in (0, 1):
        yield f"exit status {run.status}"


def wrong_end(case, reference, run):
    """What is wrong with an early end: several boxes, or an error that the failed calls and the scenario cannot
    cause."""
    boxes = run.told("box")
    may_be = case.ends_on() | numbers(reference)
    same = boxes == reference.told("box") and not any(differences(reference, run))
    if boxes and not same and not (len(boxes) == 1 and numbers(run) and numbers(run) <= may_be):
        yield str(boxes)


def numbers(run):
    """The numbers of the run-time errors in its boxes."""
    return {int(number) for number in re.findall(r"Run-time error '(\d+)':", str(run.told("box")))}


def wrong_in_life(case, reference, run):
    """What stays wrong in a run that ended when it was asked to. Harmless losses do not count, nor does what heals
    within minutes of the last refusal."""
    tables = [LOSES] if case.last else [LOSES, LOSES_FOR_EVER]
    lost = set().union(*(table.get(function, set()) for table in tables for function in case.failing))
    still_refused = [moment for [moment] in run.told("refused")] if case.last else []
    for moment, key, wanted, seen in differences(reference, run):
        heals = moment.endswith("now") or moment in still_refused
        blank = key == "window" and run.looks()[moment]["moon"] == "blank"
        if not (heals or blank or key in lost or harmless(key, wanted, seen)):
            yield f"{key} {seen!r} for {wanted!r} ({moment})"
    if "missed" not in lost:
        yield from (f"missed {step}" for [step] in run.told("missed"))


def differences(reference, run):
    """What a user saw that differs from the reference: moment, field, and both values."""
    looks = run.looks()
    for moment, wanted in reference.looks().items():
        seen = looks.get(moment, {})
        for key in wanted.keys() & seen.keys():
            if wanted[key] != seen[key]:
                yield moment, key, wanted[key], seen[key]


def harmless(key, wanted, seen):
    """Whether a lasting difference is harmless."""
    if key.endswith("place"):
        return on_screen(wanted, seen)
    if key == "main":
        return (wanted, seen) == ("hidden", "minimised")
    return key == "topmost" or (key == "moon" and seen == "blank")


def on_screen(wanted, seen):
    """Whether a place has the wanted size and lies on the screen."""
    left, top, right, bottom = map(int, seen.split(","))
    wanted = [*map(int, wanted.split(","))]
    same_size = (right - left, bottom - top) == (wanted[2] - wanted[0], wanted[3] - wanted[1])
    return same_size and left >= 0 and top >= 0 and right <= WIDTH and bottom <= HEIGHT
