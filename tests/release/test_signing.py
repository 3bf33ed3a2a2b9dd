"""A signed release, with a key made for the test."""

import shutil
import subprocess

import pytest

from conftest import run_release

pytestmark = pytest.mark.long


def test_program_uninstaller_and_setup_are_signed(committed, dist, machine, folder, version):
    unsigned = {path.name: path.read_bytes() for path in dist.iterdir() if path.is_file()}
    key, certificate = folder / "throw away.key", folder / "throw away.pem"
    subprocess.run(["openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout", key, "-out", certificate,
                    "-days", "2", "-subj", "/CN=Throw-away", "-addext", "extendedKeyUsage=codeSigning"],
                   check=True, stderr=subprocess.DEVNULL)
    sources = folder / "signed"
    shutil.rmtree(sources, ignore_errors=True)
    subprocess.run(["git", "clone", "-q", committed, sources], check=True)
    signed = run_release(sources, "--sign", key, certificate, log=folder / "signed.log")

    def verified(path):
        return subprocess.run(["osslsigncode", "verify", "-CAfile", certificate, "-in", path],
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode == 0

    setup = signed / f"Tidewell-{version}-setup.exe"
    target = machine.drive_c / "signed"
    assert verified(setup)
    assert machine.wine.run(setup, "/S", "/D=C:\\signed") == 0
    assert verified(target / "Tidewell.exe")
    assert verified(target / "uninstall.exe")
    assert machine.wine.run("C:\\signed\\uninstall.exe", "/S", "_?=C:\\signed") == 0
    assert not (target / "Tidewell.exe").exists()
    shutil.rmtree(target)
    assert unsigned[setup.name] != setup.read_bytes()
    # A signature and nothing else: the sums and the manifests are those of the signed files.
    subprocess.run(["sha256sum", "--check", "--quiet", "SHA256SUMS"], cwd=signed, check=True)
