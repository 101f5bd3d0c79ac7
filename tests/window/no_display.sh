#!/usr/bin/env bash
# Runs the program itself where no display answers: a batch job works on the console with its log,
# the window ends with status 1, and what needs neither is answered.
# usage: no_display.sh MORLIK MORLIK_SAMPLES
set -euo pipefail
morlik=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
"$2" "$folder" >/dev/null
export HOME=$folder XDG_CONFIG_HOME=$folder/config XDG_STATE_HOME=$folder/state
export XDG_RUNTIME_DIR=$folder MORLIK_FOLDER=$folder/program
mkdir "$MORLIK_FOLDER"
cp "$(dirname "$morlik")"/{TR4Objects.dat,morlik.*} "$MORLIK_FOLDER"
unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM
fail() {
    echo "$1" >&2
    exit 1
}

# A port and a socket where nobody listens, a display that nobody sees, and none at all.
for display in DISPLAY=127.0.0.1:77 WAYLAND_DISPLAY=none "DISPLAY=127.0.0.1:77 WAYLAND_DISPLAY=none" \
    "WAYLAND_DISPLAY=none QT_QPA_PLATFORM=offscreen" DISPLAY=:7777 ""; do
    rm -rf "$folder"/out* "$MORLIK_FOLDER/MORLIK.log"
    # shellcheck disable=SC2086
    env $display "$morlik" /makewas "$folder/tr1.phd" /export "$folder/out.was" >"$folder/told" ||
        fail "The batch job failed with $display"
    grep -q "Morlik v1.6: WAS Saved!" "$folder/told" || fail "No message with $display"
    grep -q "Writing WAS file" "$MORLIK_FOLDER/MORLIK.log" || fail "No log with $display"
    [ -s "$folder/out.was" ] || fail "No set with $display"
    # shellcheck disable=SC2086
    [[ $(env $display "$morlik" --version) == "MORLIK "* ]] || fail "No version with $display"
    # shellcheck disable=SC2086
    [[ $(env $display "$morlik" --help) == Usage:* ]] || fail "No help with $display"
done

rm "$MORLIK_FOLDER/MORLIK.log"
status=0
DISPLAY=127.0.0.1:77 "$morlik" "$folder/tr1.phd" 2>"$folder/told" || status=$?
[ "$status" -eq 1 ] && [ -s "$folder/told" ] || fail "The window ended with $status"
[ "$(wc -l <"$MORLIK_FOLDER/MORLIK.log")" -eq 3 ] || fail "The window has no log"
echo "Batch jobs, help and version came without a display."
