#!/usr/bin/env bash
# Runs a Windows console program under Wine and passes on its output and status.
# Fails if Wine warns of a wrong use of the heap.
# Usage: tools/under-wine.sh PROGRAM [ARGUMENT...]
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/wine-env.sh"

# In UTC a wrong zone offset would go unnoticed.
export TZ=America/St_Johns

wine_prefix >&2
if [[ -z ${DISPLAY-} ]]; then
  with_own_display "$0" "$@"
  exit
fi

# Into a file: the Wine server may outlive the program and keep a pipe open, and
# the pipe's reader would wait for ever.
output=$(mktemp)
trap 'rm -f "$output"' EXIT
status=0
# The warnings also make Wine fill freed blocks and the space after each block.
WINEDEBUG=-all,err+heap,warn+heap wine "$@" >"$output" 2>&1 || status=$?
cat "$output"
if grep -q ':heap:' "$output"; then
  status=1
fi
exit "$status"
