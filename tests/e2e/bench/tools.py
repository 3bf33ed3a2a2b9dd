"""Builds what the bench runs: Tidewell.exe and the helpers in native/."""

import shutil
import subprocess
from pathlib import Path

from bench.folders import NATIVE, TESTS

WINDOWS = ["i686-w64-mingw32-g++-posix", "i686-w64-mingw32-g++"]
LINUX_32 = ["i686-linux-gnu-gcc"]
WARNINGS = ["-O1", "-Wall", "-Wextra", "-Werror"]


def compiler(names):
    for name in names:
        if shutil.which(name):
            return name
    raise RuntimeError(f"none of these compilers is installed: {' '.join(names)} (tools/setup.sh test installs it)")


def build_program(exe):
    """Rebuilds Tidewell.exe if it lies in a build folder, so no test runs an outdated one."""
    if (exe.parent / "build.ninja").exists():
        build_target(exe.parent, "Tidewell")


def build_target(folder, name):
    subprocess.run(["cmake", "--build", folder, "--target", name, "-j2"], check=True)


def build(folder):
    """Builds each helper that is older than this file or any helper's source. Returns the paths of all by name."""
    static = ["-std=c++20", "-static", f"-I{TESTS}"]
    recipes = {
        "clock_preload.so": (LINUX_32, ["-ffreestanding", "-fPIC", "-shared", "-nostdlib"],
                             ["clock_preload.c"], ["-lgcc"]),
        "driver.exe": (WINDOWS, static, ["driver.cpp"], ["-loleacc", "-lole32", "-loleaut32", "-lshell32", "-luuid"]),
        "shell32.dll": (WINDOWS, [*static, "-shared"], ["shell_stand_in.cpp", "faults.cpp", "scenario.cpp"],
                        ["-Wl,--kill-at", "-lgdi32"]),
        "stepper.exe": (WINDOWS, [*static, "-municode"], ["stepper.cpp"], []),
        "typewriter.exe": (WINDOWS, static, ["typewriter.cpp"], []),
    }
    newest = max(path.stat().st_mtime for path in (Path(__file__), *NATIVE.iterdir(), *(TESTS / "support").iterdir()))
    for name, (compilers, options, sources, libraries) in recipes.items():
        target = folder / name
        if target.exists() and newest < target.stat().st_mtime:
            continue
        made = target.with_suffix(".new")
        subprocess.run([compiler(compilers), *WARNINGS, *options, "-o", made,
                        *(NATIVE / source for source in sources), *libraries], check=True)
        made.rename(target)
    return {name: folder / name for name in recipes}
