"""Holds the documents to the repository: links, pictures, commands, paths; and the scripts to what commands need.

    python3 tests/documents_test.py

A command is not run here, most are by ./test: its script exists, has its run bit and knows the options, its preset and
its test program are there, and every script at least parses.
"""

import json
import os
import re
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
MADE = {".git", "build", "dist", "node_modules", "__pycache__"}  # not sources

FENCED = re.compile(r"^```.*?^```", re.MULTILINE | re.DOTALL)
INDENTED = re.compile(r"(?<=\n\n)(?: {4}.*\n)+")
IN_LINE = re.compile(r"`([^`\n]+)`")
LINK = re.compile(r"\]\(([^)\s]+)[^)]*\)|^\[[^\]]+\]:\s*(\S+)|\b(?:src|href)=\"([^\"]+)\"", re.MULTILINE)
HEADING = re.compile(r"^#+ +(.*)$", re.MULTILINE)
END_OF_COMMAND = re.compile(r"&&|\|\||[;|\n]")
ASSIGNMENT = re.compile(r"\w+=")


def files(root=ROOT):
    """All files that are no products, by their paths."""
    for folder, folders, names in os.walk(root):
        folders[:] = sorted(set(folders) - MADE)
        yield from (Path(folder) / name for name in sorted(names))


def documents():
    return [path for path in files() if path.suffix == ".md"]


def anchors(text):
    """The anchors of a document's headings, as hosts of Git repositories form them."""
    found = []
    for heading in HEADING.findall(FENCED.sub("", text)):
        anchor = re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")
        found.append(f"{anchor}-{found.count(anchor)}" if anchor in found else anchor)
    return found


def link_faults(path, text):
    """The links of a document that lead nowhere."""
    prose = IN_LINE.sub("", INDENTED.sub("", FENCED.sub("", text)))
    for link in ("".join(groups) for groups in LINK.findall(prose)):
        if re.match(r"[a-z]+:", link):
            continue  # of another host
        name, _, anchor = link.partition("#")
        target = path.parent / name if name else path
        if not target.exists():
            yield f"{link} does not exist"
        elif anchor and anchor not in anchors(text if target == path else target.read_text()):
            yield f"{link}: no such heading"


def presets(kind):
    described = json.loads((ROOT / "CMakePresets.json").read_text())[f"{kind}Presets"]
    return {preset["name"] for preset in described if not preset.get("hidden")}


def test_programs():
    return set(re.findall(r"(?:add_executable|tidewell_test)\((\w+)", (ROOT / "tests/CMakeLists.txt").read_text()))


def commands(text):
    """The commands and other pieces of code in a document, each as its words."""
    pieces = [block.strip("`") for block in FENCED.findall(text) + INDENTED.findall(text)]
    pieces += IN_LINE.findall(FENCED.sub("", text))
    for piece in pieces:
        for command in END_OF_COMMAND.split(piece):
            words = command.split()
            while words and ASSIGNMENT.match(words[0]):
                words.pop(0)
            if words:
                yield words


def is_source(word):
    """Whether a word names a file or a folder of the repository."""
    folder, slash, _ = word.partition("/")
    return folder == "." or bool(folder and slash) and folder not in MADE and (ROOT / folder).is_dir()


def command_faults(text):
    """The commands and paths in a document that are not there."""
    for words in commands(text):
        first, *rest = words
        if first in ("cmake", "ctest") and "--preset" in rest[:-1]:
            kind = "test" if first == "ctest" else "build" if "--build" in rest else "configure"
            name = rest[rest.index("--preset") + 1]
            if name not in presets(kind):
                yield f"{' '.join(words)}: no such preset"
        for word in filter(is_source, words):
            if not any(ROOT.glob(word)):
                yield f"{word} does not exist"
        parts = first.split("/")
        if parts[0] == "build" and rest:
            if len(parts) != 4 or parts[1] not in presets("build") or parts[3] not in test_programs():
                yield f"{first} is no test program of a preset"
        elif is_source(first) and (rest or first.startswith("./")) and (ROOT / first).exists():
            if not (ROOT / first).is_file() or not os.access(ROOT / first, os.X_OK):
                yield f"{first} has no run bit"
            else:
                script = (ROOT / first).read_text()
                yield from (f"{first} knows no {word}" for word in rest
                            if word.startswith("--") and word.partition("=")[0] not in script)


def script_faults(root):
    """The scripts that could not be started."""
    for path in files(root):
        with open(path, "rb") as file:
            head = file.readline()
        if head.startswith(b"#!") and not os.access(path, os.X_OK):
            yield f"{path.name} has no run bit"
        if head.startswith(b"#!") and b"bash" in head:
            if subprocess.run(["bash", "-n", path], capture_output=True, check=False).returncode:
                yield f"{path.name} does not parse"
        elif path.suffix == ".py":
            try:
                compile(path.read_bytes(), path, "exec")
            except SyntaxError:
                yield f"{path.name} does not parse"


class Documents(unittest.TestCase):
    def test_every_link_and_picture_exists(self):
        for path in documents():
            with self.subTest(document=path.relative_to(ROOT)):
                self.assertEqual(list(link_faults(path, path.read_text())), [])

    def test_every_command_and_path_exists(self):
        for path in documents():
            with self.subTest(document=path.relative_to(ROOT)):
                self.assertEqual(list(command_faults(path.read_text())), [])

    def test_the_readme_leads_to_every_document(self):
        links = ["".join(groups) for groups in LINK.findall((ROOT / "README.md").read_text())]
        for path in documents():
            name = path.relative_to(ROOT).as_posix()
            self.assertTrue(name == "README.md" or name in links, name)

    def test_downloads_bear_the_address_and_the_version_of_the_release(self):
        [version] = re.findall(r"project\(Tidewell VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text())
        [address] = re.findall(r"\ndownloads=(.*)", (ROOT / "release").read_text())
        self.assertIn(f"{address}/{version}/", (ROOT / "README.md").read_text())
        for path in documents():
            for found in re.findall(r"Tidewell-(\d[\d.]*\d)", path.read_text()):
                self.assertEqual(found, version, path.name)

    def test_every_script_parses_and_has_its_run_bit(self):
        self.assertEqual(list(script_faults(ROOT)), [])

    def test_each_kind_of_broken_link_is_found(self):
        for text, fault in [
            ("[a](docs/none.md)", "does not exist"),
            ("![a](docs/none.png)", "does not exist"),
            ("[![a](docs/none.png)](README.md)", "does not exist"),
            ('<img src="docs/none.png">', "does not exist"),
            ("[a]\n\n[a]: docs/none.md", "does not exist"),
            ("[a](docs/testing.md#none)", "no such heading"),
            ("# Some\n\n[a](#none)", "no such heading"),
            ("# Some\n# Some\n\n[a](#some-2)", "no such heading"),
        ]:
            with self.subTest(text=text):
                found = list(link_faults(ROOT / "README.md", text))
                self.assertEqual(len(found), 1, found)
                self.assertIn(fault, found[0])

    def test_each_kind_of_broken_command_is_found(self):
        for text, fault in [
            ("`./none`", "./none does not exist"),
            ("`tools/none.sh`", "tools/none.sh does not exist"),
            ("`python3 tests/none.py`", "tests/none.py does not exist"),
            ("    \n\n    ./none\n", "./none does not exist"),
            ("```\n./test && ./none\n```", "./none does not exist"),
            ("`./LICENSE`", "no run bit"),
            ("`A=1 tests/floors_test.py now`", "no run bit"),
            ("`./test --none`", "knows no --none"),
            ("`cmake --preset none`", "no such preset"),
            ("`cmake --preset windows-base`", "no such preset"),
            ("`cmake --preset native && cmake --build --preset none`", "no such preset"),
            ("`ctest --preset windows`", "no such preset"),
            ("`build/none/tests/core_tests --gtest_filter=A`", "no test program"),
            ("`build/native/tests/none --gtest_filter=A`", "no test program"),
        ]:
            with self.subTest(text=text):
                found = list(command_faults(text))
                self.assertEqual(len(found), 1, found)
                self.assertIn(fault, found[0])

    def test_each_kind_of_broken_script_is_found(self):
        for name, text, mode, fault in [
            ("script", "#!/usr/bin/env bash\ntrue\n", 0o644, "script has no run bit"),
            ("script", "#!/usr/bin/env bash\nif true\n", 0o755, "script does not parse"),
            ("script.py", "def none(:\n", 0o644, "script.py does not parse"),
        ]:
            with self.subTest(text=text), tempfile.TemporaryDirectory() as folder:
                path = Path(folder) / name
                path.write_text(text)
                path.chmod(mode)
                self.assertEqual(list(script_faults(folder)), [fault])

    def test_what_is_there_is_no_fault(self):
        text = ("# A `b`, c-d\n# E\n# E\n\n[a](#a-b-c-d) [a](#e-1) [a](README.md) [a](https://example.org/none)\n\n"
                "`[a](none.md)` `./test --long` `cmake --build --preset windows` `ctest --preset native -R a`\n"
                "`build/native/tests/core_tests --gtest_filter='A.*'` `build/e2e/failures` `tests/floors_test.py`\n")
        self.assertEqual(list(link_faults(ROOT / "README.md", text)), [])
        self.assertEqual(list(command_faults(text)), [])


if __name__ == "__main__":
    unittest.main()
