"""Makes the files of a release that need no compiler:

    files.py DIST STAGE LINKER.MAP VERSION YYYY-MM-DD COPYRIGHT DOWNLOADS

Packs the files of STAGE into the portable archive. Lists the libraries in Tidewell.exe as a bill of materials
(CycloneDX). Fills in each @NAME@ in winget/ and scoop/, beside this script. DIST must hold the setup. The same files
give the same bytes.
"""

import hashlib
import json
import os
import re
import subprocess
import sys
import zipfile
from pathlib import Path
from urllib.parse import quote

HERE = Path(__file__).resolve().parent

GCC = {
    "licenses": [{"expression": "GPL-3.0-or-later WITH GCC-exception-3.1"}],
    "externalReferences": [{"type": "website", "url": "https://gcc.gnu.org/"}],
}
MINGW = {
    "licenses": [{"license": {"id": "ZPL-2.1"}}, {"license": {"name": "public domain"}},
                 {"license": {"name": "Lucent Technologies (gdtoa)"}}],
    "externalReferences": [{"type": "website", "url": "https://www.mingw-w64.org/"}],
}
# By archive; all archives of mingw-w64 by their package.
LIBRARIES = {
    "libgcc.a": ("libgcc", GCC),
    "libgcc_eh.a": ("libgcc", GCC),
    "libstdc++.a": ("libstdc++", GCC),
    "mingw-w64-i686-dev": ("mingw-w64 runtime", MINGW),
}


def sha256(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()


def pack(stage, date, output):
    """Without a zip tool: it would store times and permissions."""
    with zipfile.ZipFile(output, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
        for path in sorted(stage.iterdir()):
            entry = zipfile.ZipInfo(f"Tidewell/{path.name}", (*map(int, date.split("-")), 0, 0, 0))
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.create_system = 0  # Windows; otherwise it would hold Unix permissions
            archive.writestr(entry, path.read_bytes())


def dpkg_query(*arguments):
    return subprocess.run(["dpkg-query", *arguments], check=True, stdout=subprocess.PIPE, text=True).stdout


def libraries(linker_map):
    """The libraries from which the linker took a member, by name: its map begins with them. An unknown one ends the
    run: check its licence, add it to LIBRARIES and its notice to NOTICES."""
    text = Path(linker_map).read_text(encoding="utf-8", errors="replace")
    found = {}
    for archive in sorted(map(os.path.realpath, set(re.findall(r"^(/.+?\.a)\(", text, re.MULTILINE)))):
        package = dpkg_query("-S", archive).split(":")[0]
        known = LIBRARIES.get(os.path.basename(archive)) or LIBRARIES.get(package)
        if known is None:
            sys.exit(f"files.py: unknown library {archive} of package {package}")
        name, terms = known
        version, architecture = dpkg_query("-W", "-f", "${Version} ${Architecture}", package).split()
        purl = f"pkg:deb/debian/{quote(package, safe='')}@{quote(version, safe='')}?arch={architecture}"
        reference = name.replace(" ", "-")
        found[name] = {"type": "library", "bom-ref": reference, "name": name, "version": version, "purl": purl} | terms
    return [found[name] for name in sorted(found)]


def bill_of_materials(program, components, version, date):
    maker = {"name": "Quorvane Systems"}
    return {
        "bomFormat": "CycloneDX",
        "specVersion": "1.5",
        "version": 1,
        "metadata": {
            "timestamp": f"{date}T00:00:00Z",
            "supplier": maker,
            "component": {
                "type": "application",
                "bom-ref": "Tidewell",
                "supplier": maker,
                "name": "Tidewell",
                "version": version,
                "hashes": [{"alg": "SHA-256", "content": sha256(program)}],
                "licenses": [{"license": {"id": "MIT"}}],
            },
        },
        "components": components,
        "dependencies": [{"ref": "Tidewell", "dependsOn": [library["bom-ref"] for library in components]}],
    }


def main(dist, stage, linker_map, version, date, copyright_line, downloads):
    values = {"VERSION": version, "DATE": date, "COPYRIGHT": copyright_line, "DOWNLOADS": downloads}
    files = {"SETUP": dist / f"Tidewell-{version}-setup.exe", "PORTABLE": dist / f"Tidewell-{version}-portable.zip"}
    pack(stage, date, files["PORTABLE"])
    bill = bill_of_materials(stage / "Tidewell.exe", libraries(linker_map), version, date)
    (dist / f"Tidewell-{version}.cdx.json").write_text(json.dumps(bill, indent=2) + "\n")
    for name, file in files.items():
        values[f"{name}_URL"] = f"{downloads}/{version}/{file.name}"
        values[f"{name}_SHA256"] = sha256(file)
    for template in (*HERE.glob("winget/*.yaml"), *HERE.glob("scoop/*.json")):
        filled = dist / template.relative_to(HERE)
        filled.parent.mkdir(exist_ok=True)
        text = re.sub("@([A-Z0-9_]+)@", lambda found: values[found[1]], template.read_text(encoding="utf-8"))
        filled.write_text(text, encoding="utf-8")


main(Path(sys.argv[1]), Path(sys.argv[2]), *sys.argv[3:])
