"""What became of the program in a run with calls that fail, measured by the run without."""

import re

from bench.display import HEIGHT, WIDTH
from bench.settings_file import FILE_WITHOUT_OPTIONS

# Nothing lost; something named lost that is harmless or heals within a minute; ended by one box; something wrong that
# stays; and what may never be: silent, invisible, stuck, busy, crashed, an icon left dead, a file damaged.
VERDICTS = SAME, LESS, BOX, WRONG, WORST = "same", "less", "box", "wrong", "worst"

# What is missing as long as a function is refused, and harms nobody.
LOOK = {"window", "about-window"}
REACHED_BY_THE_ICON = {"menu", "main", "about", "about-place", "missed", *LOOK}
LOSES = {
    # The line round the options.
    "BeginPaint": LOOK, "DrawEdge": LOOK, "GetClientRect": LOOK,
    # The mark of the keyboard on a control.
    "GetFocus": LOOK, "SetFocus": LOOK, "IsChild": LOOK, "GetNextDlgTabItem": LOOK,
    # The icon keeps its picture.
    "LoadImageW": {"icon-picture"},
    "Shell_NotifyIconA": {"icon", "icon-picture", "tip", *REACHED_BY_THE_ICON},
    "TrackPopupMenu": REACHED_BY_THE_ICON,
}


def judge(case, reference, run):
    """The verdict on a run, and what was seen."""
    if told := [*worst(case, reference, run)]:
        return WORST, ", ".join(told)
    if run.status != 0:
        return judge_box(case, reference, run)
    return judge_life(case, reference, run)


def worst(case, reference, run):
    """What may never be."""
    if run.status == "stuck":
        yield "stuck"
    for word in ("busy", "not ended", "crash"):
        yield from (" ".join([word, *rest]) for rest in run.told(word))
    shell_refuses_for_ever = "Shell_NotifyIconA" in case.rule.functions and case.rule.last == 0
    if run.told("icon")[-1:] == [["added"]] and not shell_refuses_for_ever:
        yield "icon left dead"
    if run.file not in (FILE_WITHOUT_OPTIONS, reference.file):
        yield "settings file damaged"
    if run.astray:
        yield "settings file in the root of the drive"
    for moment, look in run.looks().items():
        if moment.endswith("later") and look["icon"] == "none" and look["main"] in ("hidden", "none"):
            yield f"invisible ({moment})"
    tries = run.journal.count("MessageBoxA")
    if run.status == 0 and (reference.status != 0 or run.looks().keys() < reference.looks().keys()):
        yield "silent end"
    elif run.status == 1 and not run.told("box") and not (tries > 1 and "MessageBoxA" in case.rule.functions):
        yield f"silent end, with {tries} tries to show the box"
    elif run.status not in (0, 1, "stuck"):
        yield f"exit status {run.status}"


def judge_box(case, reference, run):
    """Of a run that ended on an error."""
    boxes = run.told("box")
    if not boxes:
        return BOX, "refused"
    if boxes == reference.told("box") and not any(differences(reference, run)):
        return SAME, ""
    may_be = case.rule.ends_on() | numbers(reference)
    return (BOX if len(boxes) == 1 and numbers(run) and numbers(run) <= may_be else WRONG), str(boxes)


def numbers(run):
    """The run-time errors that its boxes told of."""
    return {int(number) for number in re.findall(r"Run-time error '(\d+)':", str(run.told("box")))}


def judge_life(case, reference, run):
    """Of a run that ended when it was asked to."""
    lost = set().union(*(LOSES.get(function, set()) for function in case.rule.functions))
    still_refused = set(moments_of_refusal(run)) if case.rule.last else set()
    losses, healed, wrong = set(), set(), {}
    for moment, key, wanted, seen in differences(reference, run):
        if moment.endswith("now") or moment in still_refused:
            healed.add(key)
        elif key in lost or harmless(key, wanted, seen) or (key == "window" and run.looks()[moment]["moon"] == "blank"):
            losses.add(key)
        else:
            wrong.setdefault(key, f"{key} {seen!r} for {wanted!r} ({moment})")
    for [step] in run.told("missed"):
        if "missed" in lost:
            losses.add(step)
        else:
            wrong[step] = f"missed {step}"
    if wrong:
        return WRONG, ", ".join(wrong.values())
    again = [f"{step} once more" for [step] in run.told("again") if not losses]
    seen = [*(f"without {key}" for key in sorted(losses)), *(f"{key} heals" for key in sorted(healed - losses)), *again]
    return (LESS if seen else SAME), ", ".join(seen)


def differences(reference, run):
    """What a user saw that differs from the reference: moment, field, and both values."""
    looks = run.looks()
    for moment, wanted in reference.looks().items():
        seen = looks.get(moment, {})
        for key in wanted.keys() & seen.keys():
            if wanted[key] != seen[key]:
                yield moment, key, wanted[key], seen[key]


def moments_of_refusal(run):
    """The moments that came with a call that was refused since the moment before."""
    refused = False
    for line in run.log:
        if line[0] == "refused":
            refused = True
        elif line[0] == "see":
            if refused:
                yield line[1]
            refused = False


def harmless(key, wanted, seen):
    """Whether a difference that stays may be."""
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
