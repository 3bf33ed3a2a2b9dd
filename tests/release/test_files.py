"""The files of a release agree with each other."""

import hashlib
import json
import re
import subprocess
import zipfile
from urllib.parse import unquote

import yaml

from conftest import REPOSITORY

MINGW = "mingw-w64 runtime"


def files(dist):
    return {str(path.relative_to(dist)): path.read_bytes() for path in dist.rglob("*") if path.is_file()}


def sha256(path):
    return hashlib.sha256(path.read_bytes()).hexdigest()


def text_of_windows(name):
    return (REPOSITORY / name).read_bytes().replace(b"\n", b"\r\n")


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
        assert archive.read("Tidewell/LICENSE.txt") == text_of_windows("LICENSE")
        assert archive.read("Tidewell/NOTICES.txt") == text_of_windows("NOTICES")


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

    [entry] = installer["AppsAndFeaturesEntries"]
    codes = {code["ReturnResponse"]: code["InstallerReturnCode"] for code in installer["ExpectedReturnCodes"]}
    script = (REPOSITORY / "packaging/tidewell.nsi").read_text(encoding="utf-8")
    for line in (f"Uninstall\\{entry['ProductCode']}\"", f"DisplayName {entry['DisplayName']}\n",
                 f"Publisher \"{entry['Publisher']}\"\n", f"EXIT_IN_USE {codes.pop('packageInUse')}\n",
                 f"EXIT_IS_ELSEWHERE {codes.pop('alreadyInstalled')}\n"):
        assert line in script
    assert not codes
    assert (entry["DisplayVersion"], entry["ProductCode"]) == (version, installer["ProductCode"])
    assert (locale["PackageName"], locale["Publisher"]) == (entry["DisplayName"], entry["Publisher"])
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
    assert {"libgcc", "libstdc++", MINGW} <= set(libraries)
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
