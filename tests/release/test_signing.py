"""A signed release, made by the commands of docs/releasing.md with a key token that the test makes."""

import os
import re
import shutil
import subprocess

from conftest import REPOSITORY
from user import long

pytestmark = long


def test_program_uninstaller_and_setup_are_signed(committed, dist, program, machine, folder, version):
    sources = folder / "signed"
    shutil.rmtree(sources, ignore_errors=True)
    subprocess.run(["git", "clone", "-q", committed, sources], check=True)
    (sources / "build/tokens").mkdir(parents=True)
    settings = sources / "build/softhsm2.conf"
    settings.write_text(f"directories.tokendir = {sources}/build/tokens\n")

    def run(commands, where=sources):
        with open(folder / "signed.log", "a") as log:
            subprocess.run(["bash", "-ec", commands], cwd=where, check=True, stdout=log, stderr=log,
                           env=os.environ | {"SOFTHSM2_CONF": str(settings)})

    def verified(path):
        return subprocess.run(["osslsigncode", "verify", "-CAfile", sources / "tidewell.pem", "-in", path],
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0

    section = (REPOSITORY / "docs/releasing.md").read_text().partition("\n## Signing\n")[2].partition("\n## ")[0]
    release, token, removal = re.findall(r"(?<=\n\n)(?: {4}.*\n)+", section)
    run(token)
    run(release)
    setup = sources / f"dist/Tidewell-{version}-setup.exe"
    target = machine.drive_c / "signed"
    assert verified(setup)
    assert not verified(dist / setup.name)
    assert machine.wine.run(setup, "/S", "/D=C:\\signed") == 0
    assert verified(target / "Tidewell.exe")
    assert verified(target / "uninstall.exe")
    run(removal, where=target)
    assert (target / "unsigned.exe").read_bytes() == program.read_bytes()
    assert machine.wine.run("C:\\signed\\uninstall.exe", "/S", "_?=C:\\signed") == 0
    assert not (target / "Tidewell.exe").exists()
    shutil.rmtree(target)
    # The sums are those of the signed files.
    subprocess.run(["sha256sum", "--check", "--quiet", "SHA256SUMS"], cwd=setup.parent, check=True)
