"""The fixtures of the release tests. Run them with

    /usr/bin/python3 -m pytest tests/release

TIDEWELL_LONG=1 in the environment adds the long tests.
"""

import os
import re
import shutil
import subprocess
import sys
from pathlib import Path
from types import SimpleNamespace

import pytest

REPOSITORY = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(REPOSITORY / "tests/e2e"))  # for the bench
sys.dont_write_bytecode = True

from bench import tools  # noqa: E402
from bench.driver import Driver  # noqa: E402
from bench.folders import Folders  # noqa: E402
from bench.wine import wine_on_a_screen  # noqa: E402
from user import User  # noqa: E402


@pytest.fixture(scope="session")
def folder():
    """The folder of the releases and their installations."""
    made = REPOSITORY / "build/release"
    made.mkdir(parents=True, exist_ok=True)
    return made


def copy_of_the_sources(folder):
    """A copy of the sources as they are, committed or not. Without git: a source archive has none, and git refuses
    another user's checkout."""
    shutil.rmtree(folder, ignore_errors=True)
    ignored = shutil.ignore_patterns(".git", "build", "dist", "__pycache__")
    return Path(shutil.copytree(REPOSITORY, folder, symlinks=True, ignore=ignored))


def run_release(sources, log, prefix=(), **more):
    with open(log, "w") as output:
        subprocess.run([*prefix, "./release"], cwd=sources, check=True, stdout=output, stderr=output, **more)
    return sources / "dist"


@pytest.fixture(scope="session")
def committed(folder):
    """A repository with the sources as they are, and a change that is not committed."""
    sources = copy_of_the_sources(folder / "committed")
    git = ["git", "-c", "user.name=Test", "-c", "user.email=test@example.org", "-c", "commit.gpgsign=false"]
    for command in (["init", "-q"], ["add", "-A"], ["commit", "-q", "-m", "The sources as they are"]):
        subprocess.run([*git, *command], cwd=sources, check=True)
    with open(sources / "LICENSE", "a") as file:
        file.write("A release must not contain what is not committed.\n")
    return sources


@pytest.fixture(scope="session")
def dist(committed, folder):
    """The files of a release."""
    return run_release(committed, log=folder / "committed.log")


@pytest.fixture(scope="session")
def second_dist(folder):
    """A second release, made by another user in another folder, with another umask and without git."""
    sources = copy_of_the_sources(folder / "unpacked as a source archive")
    prefix = ["unshare", "--user", "--map-user=65534", "--map-group=65534"]
    return run_release(sources, prefix=prefix, umask=0o077, log=folder / "unpacked.log",
                       env=os.environ | {"HOME": "/nonexistent", "USER": "other", "LC_ALL": "C", "TZ": "Asia/Tokyo"})


@pytest.fixture(scope="session")
def version():
    return re.search(r"^project\(Tidewell VERSION (\S+)", (REPOSITORY / "CMakeLists.txt").read_text(), re.MULTILINE)[1]


@pytest.fixture(scope="session")
def date(version):
    """The date of the release, as in CHANGELOG.md."""
    return re.search(rf"^## {re.escape(version)} \((\d+-\d\d-\d\d)\)$", (REPOSITORY / "CHANGELOG.md").read_text(),
                     re.MULTILINE)[1]


@pytest.fixture(scope="session")
def program(dist, folder, version):
    """The released Tidewell.exe."""
    shutil.unpack_archive(dist / f"Tidewell-{version}-portable.zip", folder / "portable")
    return folder / "portable/Tidewell/Tidewell.exe"


@pytest.fixture(scope="session")
def machine(folder):
    """A fresh Windows: a new Wine prefix on its own screen."""
    folders = Folders(folder / "machine")
    shutil.rmtree(folders.prefix, ignore_errors=True)
    built = tools.build(folders.tools)
    with wine_on_a_screen(folders) as (display, wine):
        driver = Driver(wine, built["driver.exe"], folders.logs / "driver.log")
        yield SimpleNamespace(display=display, wine=wine, driver=driver, drive_c=folders.prefix / "drive_c",
                              stepper=built["stepper.exe"])
        driver.close()


@pytest.fixture
def user(machine, dist, program, version):
    person = User(machine, dist / f"Tidewell-{version}-setup.exe", program, version)
    yield person
    person.leave()


@pytest.fixture
def unpacked(user, program):
    """A portable copy."""
    return Path(shutil.copytree(program.parent, user.drive_c / "portable"))
