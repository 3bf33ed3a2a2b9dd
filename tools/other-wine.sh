#!/usr/bin/env bash
# Runs the end-to-end tests with the Wine of another Debian, in the chroot
# build/debian-SUITE, which it makes once. Needs root.
# Usage: tools/other-wine.sh SUITE [PYTEST-ARGUMENT...]   such as trixie (Wine 10)
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."

(($#)) || { sed -n 's/^# Usage: /usage: /p' "$0" >&2; exit 2; }
suite=$1
shift
root=$PWD/build/debian-$suite

# All mounts and processes end with this script.
if [[ ${TIDEWELL_UNSHARED-} != 1 ]]; then
  TIDEWELL_UNSHARED=1 exec unshare --mount --pid --fork --kill-child "$0" "$suite" "$@"
fi

tools/setup.sh other-wine
tools/build.sh windows

if [[ ! -e $root/complete ]]; then
  rm -rf "$root"
  debootstrap --variant=minbase "$suite" "$root"
  touch "$root/complete"
fi
mount -t proc proc "$root/proc"
mount --rbind /dev "$root/dev"

# No compilers in the chroot: the program and the bench's helpers are built outside.
mkdir -p "$root/tidewell/build/e2e"
tar -c --exclude ./build --exclude ./.git . | tar -x -C "$root/tidewell"
cp build/windows/Tidewell.exe "$root/tidewell/build"
PYTHONPATH=tests/e2e /usr/bin/python3 -B -c "from bench import folders, tools
tools.build(folders.Folders('$root/tidewell/build/e2e').tools)"

inside() { chroot "$root" env HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin "$@"; }
inside /tidewell/tools/setup.sh e2e
inside wine --version
# Leaves out test_windows_check.py: windows_check is not built here, and finds the icon only in Wine 8.
inside /usr/bin/python3 -B -m pytest /tidewell/tests/e2e --ignore=/tidewell/tests/e2e/test_windows_check.py \
  --program=/tidewell/build/Tidewell.exe "$@"
