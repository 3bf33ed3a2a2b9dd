#!/usr/bin/env bash
# Installs what building, running and testing Tidewell needs, on Debian and its
# derivatives.
# Usage: tools/setup.sh GROUP...   (the groups are below)
set -euo pipefail

declare -A groups=(
  [build]="cmake g++ g++-mingw-w64-i686 ninja-build python3"
  [run]="fonts-liberation fonts-wine imagemagick wine wine32:i386 x11-utils xdotool xvfb"
  [debug]="gdb"
  [accuracy]="fonts-dejavu-core g++ gnuplot-nox imagemagick libswe-dev python3 swe-basic-data"
)
groups[release]="${groups[build]} nsis"
# The 32-bit C compiler is a cross compiler: gcc-multilib conflicts with other
# cross compilers, which a developer may have.
groups[e2e]="${groups[run]} locales python3-pytest python3-xlib trayer tzdata"
groups[test]="${groups[release]} ${groups[e2e]} clang clang-format clang-tidy gcc-i686-linux-gnu googletest
  libclang-rt-14-dev libengine-pkcs11-openssl libgmock-dev libgtest-dev libswe-dev openssl osslsigncode
  python3-pefile python3-yaml softhsm2 swe-basic-data"
groups[other-wine]="${groups[build]} ${groups[e2e]} debootstrap gcc-i686-linux-gnu"
# Debian's npm would clash with a Node from elsewhere.
groups[bench]="${groups[build]} ${groups[run]} gcc-i686-linux-gnu libswe-dev locales
  python3-xlib swe-basic-data trayer tzdata $(command -v npm >/dev/null || echo nodejs npm)"

wanted=()
for group; do
  read -r -d '' -a packages <<<"${groups[$group]}" || true
  wanted+=("${packages[@]}")
done

if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
  echo "setup: no apt on this machine; please install the counterparts of these Debian packages:" >&2
  echo "  ${wanted[*]}" >&2
  exit 1
fi

missing=()
for package in "${wanted[@]}"; do
  # shellcheck disable=SC2016 # dpkg expands the format
  [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) == installed* ]] || missing+=("$package")
done
((${#missing[@]})) || exit 0
echo "setup: installing ${missing[*]}"

as_root=()
((EUID == 0)) || as_root=(sudo)

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

# Arguments: more apt-get options. Continues if an index cannot be downloaded: it
# may belong to an unrelated source. Removes no package.
update_and_install() {
  apt_get update || true
  apt_get "$@" install --no-install-recommends --no-remove "${missing[@]}"
}

# A mirror's security index for i386 may be older than its signed release file:
# apt then ignores that index. 32-bit Wine then cannot be installed: its libraries
# need the versions of their 64-bit twins, which come from the security suite. The
# base and updates suites agree, so the pins leave out the security suites and
# downgrade twins that came from them. The pins must not match installed packages;
# these have no origin. Asks the user once, if there is a terminal.
agreed=""
install_without_security() {
  echo "setup: trying again without the security suites; installed libraries may step back to older versions"
  if [[ -z $agreed && -t 0 && -t 2 ]]; then
    read -r -p "setup: go on? [y/N] " agreed || true
    [[ $agreed == [yY]* ]] || { echo "setup: nothing was installed" >&2; exit 1; }
  fi
  printf 'Package: *\nPin: release %s\nPin-Priority: %d\n\n' \
    'a=/-security$/' -1 'o=/./' 1001 >"$scratch/preferences"
  update_and_install --allow-downgrades -o Dir::Etc::Preferences="$scratch/preferences"
}

update_and_install || install_without_security || {
  echo "setup: trying once more in 10 s" >&2
  sleep 10
  update_and_install || install_without_security
}
