"""Makes the inputs that the fuzz targets start from, as corpus.txt describes them.

    make_corpus.py FOLDER

Each target gets a folder FOLDER/target with one file per input, and a list of them, FOLDER/target.list. An old
FOLDER is removed first.
"""

import re
import shutil
import struct
import sys
from pathlib import Path

CORPUS = Path(__file__).resolve().with_name("corpus.txt")
FORMATS = {"i16": "<h", "u16": "<H", "i32": "<i", "u8": "<B", "f64": "<d"}


def packed(kind, word):
    """The bytes of one word of a row."""
    if kind == "bytes":
        if word.startswith('"'):
            return word.strip('"').encode()
        digits, _, times = word.partition("*")
        return bytes.fromhex(digits) * int(times or 1)
    return struct.pack(FORMATS[kind], float(word) if kind == "f64" else int(word))


def inputs(text):
    """(target, name, bytes) of each row; the rows under "all" belong to every target."""
    targets, found, common = [], [], []
    for line in text.splitlines():
        words = re.findall(r'"[^"]*"|[^\s"]+', line)
        if not words or words[0] == "#":
            continue
        if not line.startswith(" "):
            target, *kinds = words
            if target != "all":
                targets.append(target)
            continue
        name, *fields = words
        if kinds[-1] == "bytes":
            kinds += ["bytes"] * len(fields)
        assert len(fields) <= len(kinds), line
        data = b"".join(map(packed, kinds, fields))
        if target == "all":
            common.append((name, data))
        else:
            found.append((target, name, data))
    return found + [(target, name, data) for target in targets for name, data in common]


def main(folder):
    shutil.rmtree(folder, ignore_errors=True)
    paths = {}
    for target, name, data in inputs(CORPUS.read_text()):
        path = folder / target / name
        path.parent.mkdir(parents=True, exist_ok=True)
        with open(path, "xb") as file:  # fails for a duplicate name
            file.write(data)
        paths.setdefault(target, []).append(str(path))
    for target, files in paths.items():
        (folder / f"{target}.list").write_text(",".join(files))


if __name__ == "__main__":
    main(Path(sys.argv[1]))
