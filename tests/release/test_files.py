"""The files of a release agree with each other, and the headers of Tidewell.exe are right."""

import hashlib
import json
import os
import re
import shutil
import subprocess
import zipfile
from urllib.parse import unquote

import pefile
import pytest
import yaml

from conftest import REPOSITORY
from user import long


def files(dist):
    return {str(path.relative_to(dist)): path.read_bytes() for path in dist.rglob("*") if path.is_file()}


def sha256(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()


def test_all_files_are_there(dist, version):
    assert sorted(files(dist)) == sorted([
        f"Tidewell-{version}-setup.exe", f"Tidewell-{version}-portable.zip", f"Tidewell-{version}.cdx.json",
        "SHA256SUMS", "scoop/tidewell.json", *(f"winget/QuorvaneSystems.Tidewell{part}.yaml"
                                               for part in ("", ".installer", ".locale.en-US"))])


def test_another_user_in_another_folder_makes_the_same_bytes(dist, second_dist):
    first, second = files(dist), files(second_dist)
    assert sorted(first) == sorted(second)
    assert [name for name in first if first[name] != second[name]] == []


def test_the_documented_check_of_a_download_covers_all_other_files(dist):
    listed = {line.split("  ", 1)[1] for line in (dist / "SHA256SUMS").read_text().splitlines()}
    assert listed == set(files(dist)) - {"SHA256SUMS"}
    subprocess.run(["sha256sum", "--check", "--ignore-missing", "SHA256SUMS"], cwd=dist, check=True)


def test_the_archive_holds_the_program_and_the_committed_texts(dist, version, date):
    with zipfile.ZipFile(dist / f"Tidewell-{version}-portable.zip") as archive:
        assert archive.namelist() == ["Tidewell/LICENSE.txt", "Tidewell/NOTICES.txt", "Tidewell/Tidewell.exe"]
        assert {entry.date_time for entry in archive.infolist()} == {(*map(int, date.split("-")), 0, 0, 0)}
        for name in ("LICENSE", "NOTICES"):
            assert archive.read(f"Tidewell/{name}.txt") == (REPOSITORY / name).read_bytes().replace(b"\n", b"\r\n")


def test_the_winget_manifests_describe_the_setup(dist, version, date):
    def read(part):
        path = dist / f"winget/QuorvaneSystems.Tidewell{part}.yaml"
        return yaml.load(path.read_text(encoding="utf-8"), yaml.BaseLoader)  # all values as strings

    manifest, installer, locale = read(""), read(".installer"), read(".locale.en-US")
    for part, kind in ((manifest, "version"), (installer, "installer"), (locale, "defaultLocale")):
        assert (part["ManifestType"], part["ManifestVersion"]) == (kind, "1.12.0")
        assert (part["PackageIdentifier"], part["PackageVersion"]) == ("QuorvaneSystems.Tidewell", version)
    assert manifest["DefaultLocale"] == locale["PackageLocale"] == "en-US"

    [download] = installer["Installers"]
    setup = dist / f"Tidewell-{version}-setup.exe"
    assert download["InstallerUrl"].endswith(f"/{setup.name}")
    assert download["InstallerSha256"] == sha256(setup)
    assert (download["Architecture"], installer["InstallerType"], installer["Scope"]) == ("x86", "nullsoft", "user")
    assert installer["ReleaseDate"] == date

    codes = {code["ReturnResponse"]: code["InstallerReturnCode"] for code in installer["ExpectedReturnCodes"]}
    script = (REPOSITORY / "packaging/tidewell.nsi").read_text(encoding="utf-8")
    for line in (f"Uninstall\\{installer['ProductCode']}\"", f"DisplayName {locale['PackageName']}\n",
                 f"Publisher \"{locale['Publisher']}\"\n", f"EXIT_IN_USE {codes.pop('packageInUse')}\n",
                 f"EXIT_IS_ELSEWHERE {codes.pop('alreadyInstalled')}\n"):
        assert line in script
    assert not codes
    assert locale["License"] == (REPOSITORY / "LICENSE").read_text().split()[0]
    assert locale["Copyright"].replace("©", "(c)") in (REPOSITORY / "LICENSE").read_text()


def test_the_scoop_manifest_describes_the_archive(dist, version):
    manifest = json.loads((dist / "scoop/tidewell.json").read_text())
    archive = dist / manifest["url"].rsplit("/", 1)[1]
    assert (manifest["version"], archive.name) == (version, f"Tidewell-{version}-portable.zip")
    assert manifest["hash"] == sha256(archive)
    with zipfile.ZipFile(archive) as packed:
        assert {name.split("/")[0] for name in packed.namelist()} == {manifest["extract_dir"]}
        [[target, _]] = manifest["shortcuts"]
        assert f"{manifest['extract_dir']}/{target}" in packed.namelist()
    assert manifest["persist"] == "vesk.dat"
    assert any("vesk.dat" in line for line in manifest["pre_install"])
    update = manifest["autoupdate"]
    assert update["url"].replace("$version", version) == manifest["url"]
    assert re.search(manifest["checkver"]["regex"], manifest["url"])[1] == version
    assert manifest["url"].startswith(manifest["checkver"]["url"] + "/")
    assert (dist / update["hash"]["url"].replace("$baseurl/", "")).exists()


def test_every_download_is_under_the_same_address(dist):
    address = re.search("^downloads=(.+)$", (REPOSITORY / "release").read_text(), re.MULTILINE)[1]
    for name, data in files(dist).items():
        if name.startswith(("winget", "scoop")):
            found = re.findall(r"https?://[^\s\"]+", data.decode())
            assert all(link == address or link.startswith(f"{address}/") for link in found)


def test_the_bill_of_materials_names_the_libraries_in_the_program(dist, program, version):
    bill = json.loads((dist / f"Tidewell-{version}.cdx.json").read_text())
    assert (bill["bomFormat"], bill["specVersion"]) == ("CycloneDX", "1.5")
    described = bill["metadata"]["component"]
    assert (described["name"], described["version"]) == ("Tidewell", version)
    assert described["hashes"] == [{"alg": "SHA-256", "content": sha256(program)}]

    libraries = {component["name"]: component for component in bill["components"]}
    assert {"libgcc", "libstdc++", "mingw-w64 runtime"} <= set(libraries)
    notices = re.findall(r"={78}\n(.+)\n={78}", (REPOSITORY / "NOTICES").read_text())
    for name, library in libraries.items():
        purl = re.fullmatch(r"pkg:deb/debian/(.+)@(.+)\?arch=\w+", unquote(library["purl"]))
        package, found = purl.groups()
        installed = subprocess.run(["dpkg-query", "-W", "-f", "${Version}", package], check=True,
                                   stdout=subprocess.PIPE, text=True).stdout
        assert library["version"] == found == installed
        assert library["licenses"]
        assert any(name in title.split(", ") for title in notices), f"{name} is not in NOTICES"
    parts = [library["bom-ref"] for library in libraries.values()]
    assert bill["dependencies"] == [{"ref": "Tidewell", "dependsOn": parts}]


# ---- the program: what it needs of Windows, and which protections it allows

@pytest.fixture(scope="session")
def image(program):
    return pefile.PE(str(program))


def test_the_program_runs_on_windows_7_with_32_bits(image):
    header = image.OPTIONAL_HEADER
    assert image.FILE_HEADER.Machine == pefile.MACHINE_TYPE["IMAGE_FILE_MACHINE_I386"]
    assert header.Subsystem == pefile.SUBSYSTEM_TYPE["IMAGE_SUBSYSTEM_WINDOWS_GUI"]
    assert (header.MajorSubsystemVersion, header.MinorSubsystemVersion) == (6, 1)


def test_the_program_imports_only_what_windows_7_has(image):
    path = REPOSITORY / "tests/release/windows_7_imports.txt"
    lines = map(str.split, path.read_text(encoding="ascii").splitlines())
    allowed = {f"{library} {name}" for library, *names in lines for name in names}
    imported = {f"{library.dll.decode().lower()} {entry.name.decode()}"
                for library in image.DIRECTORY_ENTRY_IMPORT for entry in library.imports}
    assert len(imported) > 50
    assert not imported - allowed, f"look them up: if Windows 7 has them, add them to {path.name}"
    assert "comctl32.dll InitCommonControlsEx" in imported, "themed controls need this library"


def test_the_program_allows_address_randomisation_data_execution_prevention_and_terminal_servers(image):
    for name in ("DYNAMIC_BASE", "NX_COMPAT", "NO_SEH", "TERMINAL_SERVER_AWARE"):
        assert getattr(image.OPTIONAL_HEADER, f"IMAGE_DLLCHARACTERISTICS_{name}"), name
    assert not image.FILE_HEADER.IMAGE_FILE_RELOCS_STRIPPED
    assert len(image.DIRECTORY_ENTRY_BASERELOC) > 10
    # No section is both writable and executable.
    assert all(not (section.IMAGE_SCN_MEM_WRITE and section.IMAGE_SCN_MEM_EXECUTE) for section in image.sections)


def test_the_program_has_no_structured_exception_handlers(image):
    """Installing one would take an instruction that moves a register to fs:[0]."""
    code = next(section for section in image.sections if section.Name.rstrip(b"\0") == b".text").get_data()
    assert b"\x64\xa3\x00\x00\x00\x00" not in code  # eax
    assert not re.search(b"\x64\x89[\x05\x0d\x15\x1d\x25\x2d\x35\x3d]\x00\x00\x00\x00", code)  # any register
    assert not hasattr(image, "DIRECTORY_ENTRY_LOAD_CONFIG")


def test_the_program_holds_no_build_time(image):
    assert image.FILE_HEADER.TimeDateStamp == 0


def test_the_version_resource_names_maker_product_version_and_year(image, version, date):
    strings = {key.decode(): value.decode() for block in image.FileInfo[0] if block.Key == b"StringFileInfo"
               for table in block.StringTable for key, value in table.entries.items()}
    owner = f"{date[:4]} Quorvane Systems"
    assert strings == {
        "CompanyName": "Quorvane Systems", "FileDescription": "Tidewell: the Moon's phase", "FileVersion": version,
        "InternalName": "Tidewell", "LegalCopyright": f"Copyright © {owner}", "OriginalFilename": "Tidewell.exe",
        "ProductName": "Tidewell", "ProductVersion": version}
    assert f"Copyright (c) {owner}\n" in (REPOSITORY / "LICENSE").read_text()
    fixed = image.VS_FIXEDFILEINFO[0]
    numbers = (fixed.FileVersionMS >> 16, fixed.FileVersionMS & 0xFFFF, fixed.FileVersionLS >> 16)
    assert ".".join(map(str, numbers)) == version


@long
def test_program_uninstaller_and_setup_are_signed(committed, dist, program, machine, folder, version):
    """By the commands of docs/releasing.md, with a key token that the test makes."""
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
