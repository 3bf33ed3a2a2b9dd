"""Checks the layout: a folder includes only lower floors, and only Windows halves include Windows.

    python3 tests/floors_test.py
"""

import graphlib
import re
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent

# A folder includes only itself and lower floors.
FLOORS = {"start": 5, "report": 4, "tray": 3, "forms": 2, "astro": 2, "runtime": 1, "resources": 0}
GENERATED = {"version.h": "resources"}  # a generated header, and its folder

INCLUDE = re.compile(r'^[ \t]*#[ \t]*include[ \t]*([<"])([^>"]+)', re.MULTILINE)
WINDOWS_HALF = re.compile(r"_win\.\w+$|/frm[A-Za-z]+\.\w+$")  # a form's layout, frmMoon_layout.h, is portable


def sources():
    """The texts of all sources by their paths."""
    return {path.relative_to(ROOT).as_posix(): path.read_text() for folder in FLOORS
            for path in sorted((ROOT / folder).glob("*")) if path.suffix in (".h", ".cpp")}


def folder_of(path):
    return GENERATED.get(path) or path.partition("/")[0]


def faults(texts):
    """What is wrong with the layout of sources, given as {path: text}."""
    found, arrows = [], {}
    for path, text in texts.items():
        folder, windows_half = folder_of(path), WINDOWS_HALF.search(path)
        arrows[path] = []
        for bracket, name in INCLUDE.findall(text):
            if bracket == "<":  # standard C++ headers have no ".h": this is a system header
                if name.endswith(".h") and not windows_half:
                    found.append(f"{path} is no Windows half and includes <{name}>")
                continue
            arrows[path].append(name)
            if folder_of(name) not in FLOORS:
                found.append(f"{path} includes {name}, which is on no floor")
            elif folder_of(name) != folder and FLOORS[folder_of(name)] >= FLOORS[folder]:
                found.append(f"{path} includes {name}, which is not below it")
            if WINDOWS_HALF.search(name) and not windows_half:
                found.append(f"{path} is no Windows half and includes {name}")
        if FLOORS[folder] < FLOORS["tray"] and folder != "astro" and re.search(r"\bmMoon\b", re.sub("//.*", "", text)):
            found.append(f"{path} lies below the tray and names mMoon")
    try:
        graphlib.TopologicalSorter(arrows).prepare()
    except graphlib.CycleError as error:
        found.append("circle: " + " -> ".join(error.args[1]))
    return found


class Floors(unittest.TestCase):
    def test_the_sources_keep_to_their_floors(self):
        texts = sources()
        self.assertEqual({folder_of(path) for path in texts}, set(FLOORS))
        self.assertEqual(faults(texts), [])

    def test_each_kind_of_fault_is_found(self):
        for path, line, fault in [
            ("forms/drawing_list.h", '#include "tray/shell_notifier.h"', "not below it"),
            ("start/main_win.cpp", '#include "tests/support/raises.h"', "on no floor"),
            ("runtime/runtime_error.h", '#include "runtime/checked.h"', "circle: "),
            ("report/moon_report.cpp", "#include <windows.h>", "no Windows half"),
            ("forms/drawing_list.cpp", "namespace mMoon {}", "names mMoon"),
        ]:
            with self.subTest(path=path, line=line):
                texts = sources()
                texts[path] = f"// as mMoon does\n{line}\n{texts[path]}"
                [found] = faults(texts)
                self.assertIn(fault, found)


if __name__ == "__main__":
    unittest.main()
