#!/usr/bin/env bash
# The real program where the system has no more memory to give: a message and status 1, whatever the
# command and in however many threads, not an end by "terminate called".
# usage: memory_limit.sh BIN_FOLDER
set -euo pipefail
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$1/morlik-samples" "$work" >/dev/null
"$1/morlik-cli" convert "$work/tr4.tr4" -o "$work/set.was" >/dev/null
truncate -s 400M "$work/large.phd" "$work/big.tr4" "$work/main.sfx" "$work/large.prj"
truncate -s 120M "$work/set.wad"
export MALLOC_ARENA_MAX=1 # each arena of a thread takes 64 MB of names of memory
ulimit -v 240000
tells() {
    local status=0
    "$1/morlik-cli" "${@:2}" >"$work/out" 2>"$work/errors" || status=$?
    grep -q "There is not enough memory" "$work/out" "$work/errors" && [ "$status" -eq 1 ] && return
    cat "$work/out" "$work/errors"
    echo "status $status of ${*:2}"
    exit 1
}
tells "$1" info "$work/large.phd"
tells "$1" info "$work/main.sfx"
tells "$1" info "$work/large.prj"
tells "$1" sheet "$work/big.tr4" "$work/sheet.tga"
tells "$1" sounds "$work/large.phd" "$work/waves"
tells "$1" convert "$work/large.phd" -o "$work/large.was"
tells "$1" convert "$work/large.phd" "$work/big.tr4" "$work/tr1.phd" -d "$work/sets" --jobs 3
"$1/morlik-cli" check "$work/sets/tr1.was" >/dev/null
ulimit -v 110000
tells "$1" check "$work/set.was"
