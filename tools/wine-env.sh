# shellcheck shell=bash
# To be sourced: points Wine at the repository's own prefix, build/wine-prefix.

repository=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export WINEPREFIX=$repository/build/wine-prefix WINEARCH=win32 WINEDEBUG=-all
# No offer to download .NET or a browser, no menu entries on the user's desktop.
export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe="

unmanaged() {
  env -u DISPLAY wine reg add "HKCU\\Software\\Wine\\AppDefaults\\$1\\X11 Driver" /v Managed /d N /f
}

# Makes the prefix unless it is complete; takes about 8 s, once. Wine refuses
# one that another user owns, and to make one in a folder of another user.
wine_prefix() {
  [[ -O $WINEPREFIX/complete ]] && return
  mkdir -p "${WINEPREFIX%/*}"
  (
    # Wine's processes outlive their starter: none may inherit the lock, nor a
    # pipe, or the next one in line, or the pipe's reader, waits for them.
    flock 9
    [[ -O $WINEPREFIX/complete ]] && exit
    echo "making the Wine prefix build/wine-prefix"
    if [[ -d $WINEPREFIX ]]; then # left by one that was interrupted, or another user's
      wineserver -k || true
      rm -rf "$WINEPREFIX"
    fi
    mkdir "$WINEPREFIX"
    # Without a display, so that no "updating" window comes and nothing stays
    # tied to a display that ends before the prefix does. Debian's Wine does not
    # look where fonts-wine puts its fonts: MS Sans Serif and the symbols of
    # title bars and check marks come from there. Wine ignores fontconfig's
    # aliases, hence the replacement. The server writes the registry to disk only
    # as it ends.
    {
      env -u DISPLAY wine wineboot --init &&
        ln -s /usr/share/wine/fonts/* "$WINEPREFIX/drive_c/windows/Fonts/" &&
        env -u DISPLAY wine reg add 'HKCU\Software\Wine\Fonts\Replacements' \
          /v Arial /d 'Liberation Sans' /f &&
        # A crash ends the program instead of asking.
        env -u DISPLAY wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f &&
        # Without a window manager Wine waits 2 s whenever a window that it takes
        # for managed is hidden: not so for the tests and for the tray's own.
        unmanaged window_tests.exe && unmanaged explorer.exe &&
        { wineserver -k || true; } # fails where the server has ended by itself
    } >"$WINEPREFIX.log" 2>&1 </dev/null 9>&- || {
      echo "making the Wine prefix failed, see build/wine-prefix.log" >&2
      exit 1
    }
    touch "$WINEPREFIX/complete"
  ) 9>"$WINEPREFIX.lock"
}

# Runs a command with a display of its own and the prefix for itself, and ends
# the Wine server, and with it every program left in the prefix, before the
# display goes. Wine ties a prefix to the display it was first used on: two such
# commands must not overlap. There may be no server left to end, and a command
# that is a function may have left errexit on: neither is to turn a success into
# a failure.
with_own_display() {
  # shellcheck disable=SC2016 # expanded by the inner shell
  flock --close "$WINEPREFIX.lock" "$repository/tools/under-display.sh" \
    bash -c 'trap "wineserver -k || true; wait" EXIT; "$@"' with_own_display "$@"
}
