#!/usr/bin/env bash
# Configures and builds a preset of CMakePresets.json in build/PRESET.
# Usage: tools/build.sh PRESET
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."

printf '\n== building %s\n' "$1"
cmake --preset "$1" >/dev/null
cmake --build "build/$1" -j2
