"""Fills in the manifests for winget and Scoop for a release.

    manifests.py DIST VERSION YYYY-MM-DD COPYRIGHT DOWNLOADS

Reads winget/ and scoop/ beside this script, replaces each @NAME@ by its value, and writes the results into DIST.
"""

import hashlib
import re
import sys
from pathlib import Path


def main(dist, version, date, copyright_line, downloads):
    dist = Path(dist)
    values = {"VERSION": version, "DATE": date, "COPYRIGHT": copyright_line, "DOWNLOADS": downloads}
    files = {"SETUP": f"Tidewell-{version}-setup.exe", "PORTABLE": f"Tidewell-{version}-portable.zip"}
    for name, file in files.items():
        values[f"{name}_URL"] = f"{downloads}/{version}/{file}"
        values[f"{name}_SHA256"] = hashlib.sha256((dist / file).read_bytes()).hexdigest()

    here = Path(__file__).resolve().parent
    for template in sorted([*here.glob("winget/*.yaml"), *here.glob("scoop/*.json")]):
        filled = dist / template.relative_to(here)
        filled.parent.mkdir(exist_ok=True)
        text = re.sub("@([A-Z0-9_]+)@", lambda found: values[found[1]], template.read_text(encoding="utf-8"))
        filled.write_text(text, encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
