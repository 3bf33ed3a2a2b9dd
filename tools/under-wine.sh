#!/usr/bin/env bash
# Runs a Windows console program under Wine and passes its output and status on. It
# fails if Wine warns of a wrong use of the heap.
# Usage: tools/under-wine.sh PROGRAM [ARGUMENT...]
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/wine-env.sh"

# A zone that is neither UTC nor one of whole hours: in UTC a test of the zone would see nothing.
export TZ=America/St_Johns

wine_prefix >&2
if [[ -z ${DISPLAY-} ]]; then
  with_own_display "$0" "$@"
  exit
fi

# The Wine server may outlive the program and would keep a pipe open, whose
# reader would wait for ever.
output=$(mktemp)
trap 'rm -f "$output"' EXIT
status=0
# The warnings also make Wine fill freed blocks and what lies behind each block.
WINEDEBUG=-all,err+heap,warn+heap wine "$@" >"$output" 2>&1 || status=$?
cat "$output"
if grep -q ':heap:' "$output"; then
  status=1
fi
exit "$status"
