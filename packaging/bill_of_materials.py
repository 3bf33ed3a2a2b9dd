"""Prints the bill of materials of Tidewell.exe (CycloneDX 1.5): the program and its linked libraries.

    bill_of_materials.py TIDEWELL.EXE LINKER.MAP VERSION YYYY-MM-DD

The linker's map names the libraries, dpkg their Debian packages. An unknown library ends the run: check its
licence, add it to LIBRARIES and its notice to NOTICES.
"""

import hashlib
import json
import os
import re
import subprocess
import sys
from pathlib import Path
from urllib.parse import quote

GCC = {
    "licenses": [{"expression": "GPL-3.0-or-later WITH GCC-exception-3.1"}],
    "externalReferences": [{"type": "website", "url": "https://gcc.gnu.org/"}],
}
MINGW = {
    "licenses": [{"license": {"id": "ZPL-2.1"}}, {"license": {"name": "public domain"}},
                 {"license": {"name": "Lucent Technologies (gdtoa)"}}],
    "externalReferences": [{"type": "website", "url": "https://www.mingw-w64.org/"}],
}

# Keyed by archive, but all archives of mingw-w64 by their package.
LIBRARIES = {
    "libgcc.a": ("libgcc", GCC),
    "libgcc_eh.a": ("libgcc", GCC),
    "libstdc++.a": ("libstdc++", GCC),
    "mingw-w64-i686-dev": ("mingw-w64 runtime", MINGW),
}


def output(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout.strip()


def components(linker_map):
    """The libraries from which the linker took a member. The map begins with them."""
    text = Path(linker_map).read_text(encoding="utf-8", errors="replace")
    found = {}
    for archive in sorted(map(os.path.realpath, set(re.findall(r"^(/.+?\.a)\(", text, re.MULTILINE)))):
        package = output("dpkg-query", "-S", archive).split(":")[0]
        known = LIBRARIES.get(os.path.basename(archive)) or LIBRARIES.get(package)
        if known is None:
            raise SystemExit(f"bill_of_materials: unknown library {archive} of package {package}")
        name, terms = known
        version, architecture = output("dpkg-query", "-W", "-f", "${Version} ${Architecture}", package).split()
        purl = f"pkg:deb/debian/{quote(package, safe='')}@{quote(version, safe='')}?arch={architecture}"
        reference = name.replace(" ", "-")
        found[name] = {"type": "library", "bom-ref": reference, "name": name, "version": version, "purl": purl} | terms
    return [found[name] for name in sorted(found)]


def main(program, linker_map, version, date):
    libraries = components(linker_map)
    maker = {"name": "Quorvane Systems"}
    print(json.dumps({
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
                "hashes": [{"alg": "SHA-256", "content": hashlib.sha256(Path(program).read_bytes()).hexdigest()}],
                "licenses": [{"license": {"id": "MIT"}}],
            },
        },
        "components": libraries,
        "dependencies": [{"ref": "Tidewell", "dependsOn": [library["bom-ref"] for library in libraries]}],
    }, indent=2))


main(*sys.argv[1:])
