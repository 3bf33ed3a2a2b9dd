# shellcheck shell=bash
# Source this: it makes Wine use the repository's own prefix, build/wine-prefix.

WINEPREFIX=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)/build/wine-prefix
export WINEPREFIX WINEARCH=win32 WINEDEBUG=-all
# No downloads of .NET or a browser, no menu entries on the user's desktop.
export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe="

# Makes the prefix once, in about 8 s. Wine refuses to use another user's prefix, or
# to make one in another user's folder.
wine_prefix() {
  [[ -O $WINEPREFIX/complete ]] && return
  mkdir -p "${WINEPREFIX%/*}"
  (
    # Wine's processes outlive this shell. If they inherited the lock or a pipe,
    # others would wait for them.
    flock 9
    [[ -O $WINEPREFIX/complete ]] && exit
    echo "making the Wine prefix build/wine-prefix"
    if [[ -d $WINEPREFIX ]]; then # interrupted, or another user's
      wineserver -k || true
      rm -rf "$WINEPREFIX"
    fi
    mkdir "$WINEPREFIX"
    # Without a display there is no "updating" window, and the prefix is not tied to
    # a display that ends first.
    unset DISPLAY
    set_value() { wine reg add "HKCU\\Software\\Wine\\$1" /f /v "$2" /d "$3" "${@:4}"; }
    {
      wine wineboot --init &&
        # MS Sans Serif and the symbols of title bars and check marks
        ln -s /usr/share/wine/fonts/* "$WINEPREFIX/drive_c/windows/Fonts/" &&
        # Wine ignores fontconfig's aliases.
        set_value 'Fonts\Replacements' Arial 'Liberation Sans' &&
        # A crash ends the program instead of asking.
        set_value WineDbg ShowCrashDialog 0 /t REG_DWORD &&
        # Without a window manager Wine waits 2 s whenever it hides a managed window.
        set_value 'AppDefaults\window_tests.exe\X11 Driver' Managed N &&
        set_value 'AppDefaults\explorer.exe\X11 Driver' Managed N && # the tray
        # The server writes the registry only when it ends. It may have ended already.
        { wineserver -k || true; }
    } >"$WINEPREFIX.log" 2>&1 </dev/null 9>&- || {
      echo "making the Wine prefix failed, see build/wine-prefix.log" >&2
      exit 1
    }
    touch "$WINEPREFIX/complete"
  ) 9>"$WINEPREFIX.lock"
}

# Runs a command on a virtual display of its own and returns its status. Stops the
# Wine server and any program left before the display. Wine ties a prefix to the
# display of its first use, so nobody else may use the prefix meanwhile.
with_own_display() (
  exec 9>"$WINEPREFIX.lock"
  flock 9
  # The server picks a free display and prints its number when it is ready. setsid
  # keeps the terminal's Ctrl-C from it, so that it outlives the command. Without
  # -noreset it restarts after its last client and refuses new ones meanwhile.
  exec {told}< <(exec setsid Xvfb -displayfd 1 -noreset -screen 0 1024x768x24 2>/dev/null 9>&-)
  server=$!
  trap '{ wineserver -k; kill "$server"; wait; } 2>/dev/null || true' EXIT
  trap 'exit 130' INT
  trap 'exit 143' TERM HUP
  if ! read -r -t 30 -u "$told" number; then
    echo "Xvfb did not start" >&2
    exit 1
  fi
  exec {told}<&-
  export DISPLAY=:$number
  "$@" 9>&-
)
