#!/usr/bin/env bash
# Runs a command with a virtual display of its own and passes its status on.
# Usage: tools/under-display.sh COMMAND...
set -euo pipefail

# The server picks a free display itself and tells it when it is ready for use.
# In a session of its own it does not get the terminal's Ctrl-C, so that it is
# there until the command has ended. Without -noreset it starts anew when its last
# client leaves, and turns away who comes just then.
exec {told}< <(exec setsid Xvfb -displayfd 1 -noreset -screen 0 1024x768x24 2>/dev/null)
server=$!
trap 'kill "$server" 2>/dev/null; wait "$server" 2>/dev/null || true' EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP

if ! read -r -t 30 -u "$told" number; then
  echo "under-display: Xvfb did not start" >&2
  exit 1
fi
exec {told}<&-

export DISPLAY=:$number
status=0
"$@" || status=$?
exit "$status"
