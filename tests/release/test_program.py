"""The headers of Tidewell.exe: what it needs of Windows, and which protections it allows."""

import re
from pathlib import Path

import pefile
import pytest

from conftest import REPOSITORY

RELOCATIONS_STRIPPED = 0x1
DYNAMIC_BASE, NX_COMPATIBLE, NO_SEH, TERMINAL_SERVER_AWARE = 0x40, 0x100, 0x400, 0x8000


@pytest.fixture(scope="session")
def image(program):
    return pefile.PE(str(program))


def test_it_runs_on_windows_7_with_32_bits(image):
    header = image.OPTIONAL_HEADER
    assert image.FILE_HEADER.Machine == pefile.MACHINE_TYPE["IMAGE_FILE_MACHINE_I386"]
    assert header.Subsystem == pefile.SUBSYSTEM_TYPE["IMAGE_SUBSYSTEM_WINDOWS_GUI"]
    assert (header.MajorSubsystemVersion, header.MinorSubsystemVersion) == (6, 1)


def test_it_imports_only_what_windows_7_has(image):
    path = Path(__file__).with_name("windows_7_imports.txt")
    lines = map(str.split, path.read_text(encoding="ascii").splitlines())
    allowed = {f"{library} {name}" for library, *names in lines for name in names}
    imported = {f"{library.dll.decode().lower()} {entry.name.decode()}"
                for library in image.DIRECTORY_ENTRY_IMPORT for entry in library.imports}
    assert len(imported) > 50
    assert not imported - allowed, f"look them up: if Windows 7 has them, add them to {path.name}"
    assert "comctl32.dll InitCommonControlsEx" in imported, "themed controls need this library"


def test_it_allows_address_randomisation_data_execution_prevention_and_terminal_servers(image):
    allowed = DYNAMIC_BASE | NX_COMPATIBLE | NO_SEH | TERMINAL_SERVER_AWARE
    assert image.OPTIONAL_HEADER.DllCharacteristics & allowed == allowed
    assert not image.FILE_HEADER.Characteristics & RELOCATIONS_STRIPPED
    assert len(image.DIRECTORY_ENTRY_BASERELOC) > 10
    # No section is both writable and executable.
    assert all(not (section.IMAGE_SCN_MEM_WRITE and section.IMAGE_SCN_MEM_EXECUTE) for section in image.sections)


def test_it_has_no_structured_exception_handlers(image):
    """Installing one would take an instruction that moves a register to fs:[0]."""
    code = next(section for section in image.sections if section.Name.rstrip(b"\0") == b".text").get_data()
    assert b"\x64\xa3\x00\x00\x00\x00" not in code  # eax
    assert not re.search(b"\x64\x89[\x05\x0d\x15\x1d\x25\x2d\x35\x3d]\x00\x00\x00\x00", code)  # any register
    assert not hasattr(image, "DIRECTORY_ENTRY_LOAD_CONFIG")


def test_it_holds_no_build_time(image):
    assert image.FILE_HEADER.TimeDateStamp == 0


def test_its_version_resource_names_maker_product_version_and_year(image, version, date):
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
