"""Builds what the bench runs: Tidewell.exe and the helpers in native/."""

import subprocess
from pathlib import Path

from bench.folders import NATIVE, TESTS


def build_program(exe):
    """Rebuilds Tidewell.exe if it lies in a build folder, so no test runs an outdated one."""
    if (exe.parent / "build.ninja").exists():
        build_target(exe.parent, "Tidewell")


def build_target(folder, name):
    subprocess.run(["cmake", "--build", folder, "--target", name, "-j2"], check=True)


def build(folder):
    """Builds each helper that is older than this file or any helper's source. Returns all paths by name, also that of
    "symbols", a list of the import libraries' symbols."""
    windows = ["i686-w64-mingw32-g++", "-std=c++20", "-static", f"-I{TESTS}"]
    recipes = {
        "clock_preload.so": (["i686-linux-gnu-gcc", "-ffreestanding", "-fPIC", "-shared", "-nostdlib"],
                             ["clock_preload.c"], ["-lgcc"]),
        "driver.exe": (windows, ["driver.cpp"], ["-loleacc", "-lole32", "-loleaut32", "-lshell32", "-luuid"]),
        "shell32.dll": ([*windows, "-shared"], ["shell_stand_in.cpp", "faults.cpp", "scenario.cpp"],
                        ["-Wl,--kill-at", "-lgdi32"]),
        "stepper.exe": ([*windows, "-municode"], ["stepper.cpp"], []),
        "typewriter.exe": (windows, ["typewriter.cpp"], []),
    }
    newest = max(path.stat().st_mtime for path in (Path(__file__), *NATIVE.iterdir(), *(TESTS / "support").iterdir()))
    for name, (compiler, sources, libraries) in recipes.items():
        target = folder / name
        if target.exists() and newest < target.stat().st_mtime:
            continue
        made = target.with_suffix(".new")
        subprocess.run([*compiler, "-O1", "-Wall", "-Wextra", "-Werror", "-o", made,
                        *(NATIVE / source for source in sources), *libraries], check=True)
        made.rename(target)
    symbols = folder / "symbols"
    if not symbols.exists():
        library = subprocess.check_output([windows[0], "-print-file-name=libuser32.a"], text=True)
        libraries = [Path(library).with_name(f"lib{name}.a")
                     for name in ("user32", "gdi32", "kernel32", "comctl32", "shell32")]
        symbols.write_bytes(subprocess.check_output(["i686-w64-mingw32-nm", "-g", "--defined-only", *libraries],
                                                    stderr=subprocess.DEVNULL))
    return {name: folder / name for name in (*recipes, symbols.name)}
