#!/usr/bin/env bash
# Configures and builds a preset of CMakePresets.json.
# Usage: tools/build.sh PRESET
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."

# CMake would fail too, but not say what to do.
cache=build/$1/CMakeCache.txt
if [[ -e $cache ]]; then
  made_for=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$cache")
  if [[ ! $made_for -ef . ]]; then
    echo "build/$1 was made in another folder, $made_for, and is of no use here." >&2
    printf 'Please remove it and try again: rm -r %q\n' "$PWD/build" >&2
    exit 1
  fi
fi

printf '\n== building %s\n' "$1"
cmake --preset "$1" >/dev/null
cmake --build --preset "$1" -j2
