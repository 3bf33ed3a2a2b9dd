#!/usr/bin/env bash
# Installs what Tidewell is built, run and tested with, on Debian and its kin.
# Usage: tools/setup.sh GROUP...   where the groups stand below.
set -euo pipefail

declare -A groups=(
  [build]="cmake g++ g++-mingw-w64-i686 ninja-build python3"
  [run]="fonts-liberation fonts-wine imagemagick trayer wine wine32:i386 x11-utils xdotool xvfb"
  [debug]="gdb"
  [release]="cmake g++ g++-mingw-w64-i686 ninja-build nsis python3"
  [accuracy]="fonts-dejavu-core g++ gnuplot-nox imagemagick libswe-dev python3 swe-basic-data"
)
# The 32-bit C compiler is the cross one: gcc-multilib conflicts with the cross
# compilers that a developer may already have.
groups[e2e]="${groups[run]} locales python3-pytest python3-xlib tzdata x11-apps"
groups[test]="${groups[release]} ${groups[e2e]} clang clang-format clang-tidy gcc-i686-linux-gnu googletest icoutils
  libclang-rt-14-dev libengine-pkcs11-openssl libgmock-dev libgtest-dev openssl osslsigncode python3-pefile
  python3-yaml softhsm2"
groups[other-wine]="${groups[build]} ${groups[e2e]} debootstrap gcc-i686-linux-gnu"
# Node may be there from elsewhere than Debian, and Debian's npm would clash with it.
groups[bench]="${groups[build]} ${groups[run]} gcc-i686-linux-gnu libbenchmark-dev libnova-dev libswe-dev locales
  swe-basic-data tzdata $(command -v npm >/dev/null || echo nodejs npm)"

wanted=()
for group; do
  [[ -v groups[$group] ]] || { echo "setup: unknown group '$group' (known: ${!groups[*]})" >&2; exit 2; }
  read -r -d '' -a packages <<<"${groups[$group]}" || true
  wanted+=("${packages[@]}")
done
if ((${#wanted[@]} == 0)); then
  echo "usage: tools/setup.sh GROUP... (known: ${!groups[*]})" >&2
  exit 2
fi

if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
  echo "setup: no apt on this machine; please install the counterparts of these Debian packages:" >&2
  echo "  ${wanted[*]}" >&2
  exit 1
fi

# The status of dpkg-query says nothing: it fails when a single name is unknown.
# shellcheck disable=SC2016 # the names in the format are dpkg's
installed=$(dpkg-query -W -f '${db:Status-Status} ${Package} ${Package}:${Architecture} \n' \
  "${wanted[@]}" 2>/dev/null | sed -n 's/^installed//p') || true
missing=()
for package in "${wanted[@]}"; do
  [[ $installed == *" $package "* ]] || missing+=("$package")
done
((${#missing[@]})) || exit 0
echo "setup: installing ${missing[*]}"

as_root=()
if ((EUID != 0)); then
  if ! command -v sudo >/dev/null; then
    echo "setup: installing packages needs root or sudo" >&2
    exit 1
  fi
  as_root=(sudo)
fi

if [[ " ${missing[*]} " == *":i386 "* && $(dpkg --print-foreign-architectures) != *i386* ]]; then
  echo "setup: adding the i386 architecture, for 32-bit Wine"
  "${as_root[@]}" dpkg --add-architecture i386
fi

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

apt_get() {
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y \
    -o Acquire::Retries=3 -o DPkg::Lock::Timeout=300 -o Dpkg::Use-Pty=0 "$@"
}

# Takes further apt-get options. An index that fails to download may be that of
# an unrelated source, so only the installation decides. Nothing of the user's
# is removed to make room.
update_and_install() {
  apt_get "$@" update || true
  apt_get "$@" install --no-install-recommends --no-remove "${missing[@]}"
}

# The second try. A mirror may serve a security index for i386 that lags behind
# its signed release file; apt then leaves that index out. 32-bit Wine becomes
# uninstallable, as its libraries must have exactly the versions of their 64-bit
# twins, which do see the security suite. Base and updates agree by themselves.
# The pin sends back to them the twins that were upgraded before.
install_without_security() {
  local file parts=$scratch/sources.d
  echo "setup: trying again without the security suites; shared libraries may step back to the base suite"
  mkdir -p "$parts"
  for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [[ -f $file ]] || continue
    sed -E '/^[^#]*[^[:space:]](-security|\/updates)[[:space:]]/d' "$file" >"$parts/${file##*/}.list"
  done
  for file in /etc/apt/sources.list.d/*.sources; do
    [[ -f $file ]] || continue
    # apt refuses a stanza without suites, but takes one that is not enabled.
    sed -E '/^Suites:/I { s,[^[:space:]]+(-security|/updates)([[:space:]]|$),,g; s/^Suites:[[:space:]]*$/Enabled: no/I }' \
      "$file" >"$parts/${file##*/}"
  done
  # The origin is matched, as the list of installed packages, which has none,
  # must not be pinned along with the suites.
  printf 'Package: *\nPin: release o=/./\nPin-Priority: 1001\n' >"$scratch/preferences"
  update_and_install --allow-downgrades -o APT::Get::List-Cleanup=0 \
    -o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$parts" \
    -o Dir::Etc::Preferences="$scratch/preferences"
}

update_and_install || install_without_security || {
  echo "setup: one more round in 10 s, in case the cause was a passing one" >&2
  sleep 10
  update_and_install || install_without_security
}
