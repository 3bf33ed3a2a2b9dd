"""Makes the files of a release that need no compiler:

    files.py DIST STAGE VERSION YYYY-MM-DD COPYRIGHT DOWNLOADS

Packs the files of STAGE into the portable archive. Fills in winget/ and scoop/ beside this script: each @NAME@ by its
value. DIST has the setup already. The same files give the same bytes.
"""

import hashlib
import re
import sys
import zipfile
from pathlib import Path

HERE = Path(__file__).resolve().parent


def pack(stage, date, output):
    """The zip tools would keep times and rights."""
    with zipfile.ZipFile(output, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
        for path in sorted(stage.iterdir()):
            entry = zipfile.ZipInfo(f"Tidewell/{path.name}", (*map(int, date.split("-")), 0, 0, 0))
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = 0  # Windows; otherwise the archive holds Unix rights
            archive.writestr(entry, path.read_bytes())


def main(dist, stage, version, date, copyright_line, downloads):
    values = {"VERSION": version, "DATE": date, "COPYRIGHT": copyright_line, "DOWNLOADS": downloads}
    files = {"SETUP": dist / f"Tidewell-{version}-setup.exe", "PORTABLE": dist / f"Tidewell-{version}-portable.zip"}
    pack(stage, date, files["PORTABLE"])
    for name, file in files.items():
        values[f"{name}_URL"] = f"{downloads}/{version}/{file.name}"
        values[f"{name}_SHA256"] = hashlib.sha256(file.read_bytes()).hexdigest()
    for template in (*HERE.glob("winget/*.yaml"), *HERE.glob("scoop/*.json")):
        filled = dist / template.relative_to(HERE)
        filled.parent.mkdir(exist_ok=True)
        text = re.sub("@([A-Z0-9_]+)@", lambda found: values[found[1]], template.read_text(encoding="utf-8"))
        filled.write_text(text, encoding="utf-8")


main(Path(sys.argv[1]), Path(sys.argv[2]), *sys.argv[3:])
