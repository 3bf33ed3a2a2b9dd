#!/usr/bin/env bash
# Runs a command of Wine on a virtual display of its own and returns its status.
# The Wine server, with every program left, ends before the display.
# Usage: tools/under-display.sh COMMAND...
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/wine-env.sh" # whose server it ends

# The server picks a free display and prints its number when it is ready. setsid
# keeps the terminal's Ctrl-C from it, so that it outlives the command. Without
# -noreset it restarts after its last client and refuses new ones meanwhile.
exec {told}< <(exec setsid Xvfb -displayfd 1 -noreset -screen 0 1024x768x24 2>/dev/null)
server=$!
trap '{ wineserver -k; kill "$server"; wait; } 2>/dev/null || true' EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP

if ! read -r -t 30 -u "$told" number; then
  echo "under-display: Xvfb did not start" >&2
  exit 1
fi
exec {told}<&-

export DISPLAY=:$number
"$@"
