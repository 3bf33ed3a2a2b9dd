"""Checks the documents: links and paths lead somewhere, versions are right, some commands work.

    python3 tests/documents_test.py

Needs the native build. With TIDEWELL_LONG=1 in the environment it runs the slow commands too.
"""

import os
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
MADE = {".git", "build", "dist", "node_modules", "__pycache__"}  # not sources

# Commands of the documents and a part of their output. Each runs in a copy of the sources and must not change them.
COMMANDS = {
    "build/native/tests/core_tests --gtest_filter='NormalizeAngle.*'": "] NormalizeAngle.",
    "resources/make_icons.py OUT --strip docs/moons.png": "",
    "tests/mutation/mutate.py --help": "--seed",
}
SLOW_COMMANDS = {
    "./run --debugger": "class tidewell::frmMoon : public",
    "tools/accuracy/accuracy.py": "",
    "tools/pictures.sh": "1 passed",
}
DEBUGGER_INPUT = "ptype tidewell::frmMoon\nkill\n"

FENCED = re.compile(r"^```.*?^```", re.MULTILINE | re.DOTALL)
INDENTED = re.compile(r"(?<=\n\n)(?: {4}.*\n)+")
IN_LINE = re.compile(r"`([^`\n]+)`")
LINK = re.compile(r"\]\(([^)\s]+)[^)]*\)|^\[[^\]]+\]:\s*(\S+)|\b(?:src|href)=\"([^\"]+)\"", re.MULTILINE)
HEADING = re.compile(r"^#+ +(.*)$", re.MULTILINE)


def documents():
    """The texts of the documents by their paths."""
    return {path: path.read_text() for path in ROOT.rglob("*.md") if not MADE & set(path.relative_to(ROOT).parts)}


def links(text):
    prose = IN_LINE.sub("", INDENTED.sub("", FENCED.sub("", text)))
    return ["".join(groups) for groups in LINK.findall(prose)]


def anchors(text):
    """The anchors that Git hosts make of a document's headings."""
    headings = HEADING.findall(FENCED.sub("", text))
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


def broken_links(path, text):
    for link in links(text):
        name, _, anchor = link.partition("#")
        target = path.parent / name if name else path
        if not re.match(r"[a-z]+:", link) and not (  # a web address
                target.exists() and (not anchor or anchor in anchors(text if target == path else target.read_text()))):
            yield link


def code(text):
    """The pieces of code in a document."""
    return FENCED.findall(text) + INDENTED.findall(text) + IN_LINE.findall(FENCED.sub("", text))


def broken_paths(text):
    """The paths in code that name a missing file in one of our folders."""
    for word in " ".join(code(text)).split():
        folder, _, rest = word.partition("/")
        if folder and rest and folder not in MADE and (ROOT / folder).is_dir() and not any(ROOT.glob(word)):
            yield word


class Documents(unittest.TestCase):
    def test_links_and_paths_lead_somewhere(self):
        for path, text in documents().items():
            with self.subTest(document=path.relative_to(ROOT)):
                self.assertEqual([*broken_links(path, text), *broken_paths(text)], [])

    def test_the_readme_leads_to_every_document(self):
        found = {(ROOT / link).resolve() for link in links((ROOT / "README.md").read_text())}
        self.assertEqual(set(documents()) - found,
                         {ROOT / "README.md", ROOT / ".github/ISSUE_TEMPLATE/fault.md"})

    def test_downloads_have_the_releases_version_and_address(self):
        [version] = re.findall(r"project\(Tidewell VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text())
        [address] = re.findall(r"\ndownloads=(.*)", (ROOT / "release").read_text())
        self.assertIn(f"{address}/{version}/", (ROOT / "README.md").read_text())
        for path, text in documents().items():
            self.assertLessEqual(set(re.findall(r"Tidewell-(\d[\d.]*\d)", text)), {version}, path.name)

    def test_commands_work_and_their_files_are_up_to_date(self):
        documented = " ".join(piece for text in documents().values() for piece in code(text))
        environment = {name: value for name, value in os.environ.items() if name != "DISPLAY"}
        slow = SLOW_COMMANDS if os.environ.get("TIDEWELL_LONG") == "1" else {}
        for command, said in (COMMANDS | slow).items():
            with self.subTest(command=command), tempfile.TemporaryDirectory() as scratch:
                self.assertIn(command, documented)
                copy = Path(shutil.copytree(ROOT, Path(scratch, "copy"), ignore=shutil.ignore_patterns(*MADE)))
                before = {path: path.read_bytes() for path in copy.rglob("*") if path.is_file()}
                (copy / "build").mkdir()
                (copy / "build/native").symlink_to(ROOT / "build/native")
                run = subprocess.run(["bash", "-c", command], cwd=copy, env=environment, input=DEBUGGER_INPUT,
                                     text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
                self.assertEqual(run.returncode, 0, run.stdout)
                self.assertIn(said, run.stdout)
                for path, data in before.items():
                    self.assertEqual(path.read_bytes(), data, f"{path.relative_to(copy)} is not up to date")

    def test_broken_links_and_paths_are_found(self):
        text = '[a](docs/1.md)\n[![a](docs/2.png)](README.md) <img src="docs/3.png">\n[a](docs/testing.md#none)\n'
        self.assertEqual(len(list(broken_links(ROOT / "README.md", text))), 4)
        self.assertEqual(len(list(broken_paths("`docs/3.md`\n\n    docs/4.sh\n\n```\ntests/*.none x\n```\n"))), 3)


if __name__ == "__main__":
    unittest.main()
