"""Packs the files of a folder into a zip archive, in a folder NAME, all with one date.

    archive.py FOLDER NAME YYYY-MM-DD OUTPUT.zip

The same files give the same bytes. The zip tools would keep times and rights.
"""

import sys
import zipfile
from pathlib import Path


def main(folder, name, date, output):
    day = tuple(int(part) for part in date.split("-"))
    with zipfile.ZipFile(output, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
        for path in sorted(Path(folder).iterdir()):
            entry = zipfile.ZipInfo(f"{name}/{path.name}", (*day, 0, 0, 0))
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = 0  # Windows; otherwise the archive holds Unix rights
            archive.writestr(entry, path.read_bytes())


if __name__ == "__main__":
    main(*sys.argv[1:])
