"""Holds the documents to the repository: each command in them is run by a test, each link and path leads somewhere.

    python3 tests/documents_test.py

after the native build. The tables tell who runs a command; with TIDEWELL_LONG=1 in the environment the slow ones, too,
are run here.
"""

import os
import re
import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
[VERSION] = re.findall(r"project\(Tidewell VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text())
MADE = {".git", "build", "dist", "node_modules", "__pycache__"}  # not sources

# Run here, in a copy of the sources, in which all must be as before: command, and what it says.
HERE = {
    "build/native/tests/core_tests --gtest_filter='NormalizeAngle.*'": "] NormalizeAngle.",
    "resources/make_icons.py OUT --strip docs/moons.png": "",
    "tests/mutation/mutate.py --help": "--only",
}
HERE_IN_THE_LONG_RUN = {
    "./run --debugger": "class tidewell::frmMoon : public",
    "tools/accuracy/accuracy.py": "",
    "tools/pictures.sh": "1 passed",
}
DEBUGGER_INPUT = "ptype tidewell::frmMoon\nkill\n"

# Run by another test or by ./test itself: file, and the lines that do it. The last three of "test" in its long run.
ELSEWHERE = {
    ".github/workflows/ci.yml": ["./test"],
    "test": ["tools/setup.sh test", "clang-format --dry-run -Werror", "tools/build.sh native", "ctest --preset native",
             "tools/build.sh clang", "ctest --preset clang", "tools/build.sh windows", "tools/build.sh windows-tests",
             "ctest --preset windows-tests", "./run", "./bench --quick", "tests/mutation/mutate.py",
             "tests/mutation/mutate.py --windows --end-to-end --sample 6"],
    "tests/release/conftest.py": ["./release"],
    "tests/release/test_files.py": ["sha256sum --check --ignore-missing SHA256SUMS"],
}
# The same, where the line has variables in it.
ALIKE = {
    "./release --sign KEY CERTIFICATE": ("tests/release/test_signing.py", '"--sign", key, certificate'),
    "/S": ("tests/release/user.py", "/S{place}"),
    "/D=C:\\Some folder": ("tests/release/user.py", "/D={folder}"),
}

NOT_RUN = {
    "./test --long": "it is what runs the others",
    "./bench": "25 minutes that are true on a quiet machine only; its short form takes the same road",
    "tools/other-wine.sh trixie": "a second Debian, and half an hour; with its Wine some tests fail",
    f"certutil -hashfile Tidewell-{VERSION}-setup.exe SHA256": "Wine 8 has one that does nothing",
}

FENCED = re.compile(r"^```.*?^```", re.MULTILINE | re.DOTALL)
INDENTED = re.compile(r"(?<=\n\n)(?: {4}.*\n)+")
IN_LINE = re.compile(r"`([^`\n]+)`")
LINK = re.compile(r"\]\(([^)\s]+)[^)]*\)|^\[[^\]]+\]:\s*(\S+)|\b(?:src|href)=\"([^\"]+)\"", re.MULTILINE)
HEADING = re.compile(r"^#+ +(.*)$", re.MULTILINE)
END_OF_COMMAND = re.compile(r"&&|\|\||[;|\n]")


def files():
    """All files that are no products, by their paths."""
    for folder, folders, names in os.walk(ROOT):
        folders[:] = sorted(set(folders) - MADE)
        yield from (Path(folder) / name for name in sorted(set(names) - MADE))


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


def code(text):
    """The pieces of code in a document, line by line."""
    blocks = [block.strip("`") for block in FENCED.findall(text) if not block.startswith("```mermaid")]
    for piece in blocks + INDENTED.findall(text) + IN_LINE.findall(FENCED.sub("", text)):
        yield from filter(None, map(str.strip, END_OF_COMMAND.split(piece)))


def is_source(word):
    """Whether a word names a file or a folder of the repository, be it there or not."""
    folder, slash, _ = word.partition("/")
    return folder == "." or bool(folder and slash) and folder not in MADE and (ROOT / folder).is_dir()


def is_command(line):
    """Whether a line of code starts something: a script of ours, another program with arguments, or the setup."""
    first, *rest = line.split()
    script = is_source(first) and (ROOT / first).is_file() and os.access(ROOT / first, os.X_OK)
    return bool(script or re.match(r"\./|/[A-Z]\b", first) or rest and re.match("[a-z]", first))


def commands():
    return {line for path in documents() for line in code(path.read_text()) if is_command(line)}


def runs(name, line):
    """Whether a file has a command, whole and not in a comment."""
    whole = rf"^[^#\n]*(?<![\w./-]){re.escape(line)}(?= *(?:[\"|]|$))"
    return bool(re.search(whole, (ROOT / name).read_text(), re.MULTILINE))


class Documents(unittest.TestCase):
    def test_every_link_and_picture_exists(self):
        for path in documents():
            with self.subTest(document=path.relative_to(ROOT)):
                self.assertEqual(list(link_faults(path, path.read_text())), [])

    def test_every_path_exists(self):
        for path in documents():
            for word in " ".join(code(path.read_text())).split():
                if is_source(word):
                    self.assertTrue(any(ROOT.glob(word)), f"{path.name}: {word} does not exist")

    def test_every_command_is_run_by_somebody(self):
        tables = {*HERE, *HERE_IN_THE_LONG_RUN, *sum(ELSEWHERE.values(), []), *ALIKE, *NOT_RUN}
        self.assertEqual(commands(), tables)

    def test_what_others_run_they_run(self):
        for name, lines in ELSEWHERE.items():
            for line in lines:
                self.assertTrue(runs(name, line), f"{name} does not run {line}")
        for command, (name, part) in ALIKE.items():
            self.assertIn(part, (ROOT / name).read_text(), command)

    def test_each_command_runs_and_what_it_makes_is_what_is_here(self):
        environment = {name: value for name, value in os.environ.items() if name != "DISPLAY"}
        long = HERE_IN_THE_LONG_RUN if os.environ.get("TIDEWELL_LONG") == "1" else {}
        for command, said in (HERE | long).items():
            with self.subTest(command=command), tempfile.TemporaryDirectory() as scratch:
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

    def test_the_readme_leads_to_every_document(self):
        links = ["".join(groups) for groups in LINK.findall((ROOT / "README.md").read_text())]
        for path in documents():
            name = path.relative_to(ROOT).as_posix()
            self.assertTrue(name == "README.md" or name in links, name)

    def test_downloads_bear_the_address_and_the_version_of_the_release(self):
        [address] = re.findall(r"\ndownloads=(.*)", (ROOT / "release").read_text())
        self.assertIn(f"{address}/{VERSION}/", (ROOT / "README.md").read_text())
        for path in documents():
            for found in re.findall(r"Tidewell-(\d[\d.]*\d)", path.read_text()):
                self.assertEqual(found, VERSION, path.name)

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

    def test_a_command_is_told_from_a_name(self):
        text = ("`./none` `tests/mutation/mutate.py` `tests/floors_test.py` `build/e2e` `sudo` `C:\\A b` `/S`\n\n"
                "```\n./a && ctest --b c | d e\n```\n\n    f g\n    h i; j k\n\n```mermaid\nl --> m\n```\n")
        self.assertEqual([line for line in code(text) if is_command(line)], [
            "./a", "ctest --b c", "d e", "f g", "h i", "j k", "./none", "tests/mutation/mutate.py", "/S"])

    def test_a_comment_and_a_longer_line_run_nothing(self):
        for line, found in [("./test", True), ("./tes", False), ("test", False), ("built on.", False)]:
            self.assertEqual(runs(".github/workflows/ci.yml", line), found, line)


if __name__ == "__main__":
    unittest.main()
