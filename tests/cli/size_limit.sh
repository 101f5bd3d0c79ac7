#!/usr/bin/env bash
# The real program at the system's limit for the size of files: a message and status 1, not a signal.
# usage: size_limit.sh BIN_FOLDER
set -euo pipefail
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$1/morlik-samples" "$work" >/dev/null
ulimit -f 100
status=0
"$1/morlik-cli" convert "$work/tr1.phd" -o "$work/set.was" 2>"$work/errors" || status=$?
grep -q "Can't write $work/set.wad: File too large" "$work/errors" && [ "$status" -eq 1 ]
