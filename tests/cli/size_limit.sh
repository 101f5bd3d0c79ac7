#!/usr/bin/env bash
# The real program at the system's limit for the size of files, and with results that can't be
# written or that nobody reads: a message and status 1, not a signal and not silence.
# usage: size_limit.sh BIN_FOLDER
set -euo pipefail
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$1/morlik-samples" "$work" >/dev/null
status=0
"$1/morlik-cli" info "$work/tr1.phd" >/dev/full 2>"$work/errors" || status=$?
grep -q "Can't write the results" "$work/errors" && [ "$status" -eq 1 ]
# Nobody who reads any more, then no streams at all, whose numbers no file of the set may take.
{ "$1/morlik-cli" info "$work/tr1.phd" 2>"$work/errors" || echo $? >"$work/status"; } | true
grep -q "Can't write the results" "$work/errors" && [ "$(<"$work/status")" -eq 1 ]
"$1/morlik-cli" convert "$work/tr1.phd" "$work/tr4.tr4" -d "$work/sets" >/dev/null
"$1/morlik-cli" convert "$work/tr1.phd" "$work/tr4.tr4" -d "$work/blind" <&- >&- 2>&- || status=$?
[ "$status" -eq 1 ] && diff -r "$work/sets" "$work/blind"
# The set that is there stays as it was.
for kilobytes in 400 200 100 50 10 1 0; do
    ulimit -f "$kilobytes"
    status=0
    message=$("$1/morlik-cli" convert "$work/tr1.phd" -o "$work/sets/tr4.was" 2>&1) || status=$?
    [[ $message == *"Can't write $work/sets/tr4.wad: File too large"* && $status -eq 1 ]]
    diff -r "$work/sets" "$work/blind"
done
