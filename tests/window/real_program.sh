#!/usr/bin/env bash
# Runs the program itself in a real X server: it comes up with a level, saves its object set by the
# keys of a user, and ends.
# usage: real_program.sh MORLIK MORLIK_SAMPLES
set -euo pipefail
morlik=$1
samples=$2
for tool in xvfb-run xdotool; do
    command -v "$tool" >/dev/null || { echo "no $tool here"; exit 77; }
done
# Without -noreset the server starts anew when the first program has left it, and refuses the next.
if [ -z "${MORLIK_IN_XVFB-}" ]; then
    MORLIK_IN_XVFB=1 exec xvfb-run -a -s "-screen 0 1280x1024x24 -noreset" "$0" "$@"
fi

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
export HOME=$folder XDG_CONFIG_HOME=$folder/config XDG_STATE_HOME=$folder/state
export XDG_RUNTIME_DIR=$folder QT_QPA_PLATFORM=xcb
"$samples" "$folder" >/dev/null

# Waits until a command succeeds, a minute at the most.
await() {
    local left=600
    until "$@" >/dev/null 2>&1; do
        ((left-- > 0)) || { echo "never came: $*"; exit 1; }
        sleep 0.1
    done
}

"$morlik" "$folder/tr4.tr4" &
program=$!
await xdotool search --name '\[.*tr4\.tr4\] - Moveables'
window=$(xdotool search --name '\] - Moveables' | tail -n 1)
xdotool windowfocus --sync "$window"
xdotool key ctrl+s
await xdotool search --name '^Save As$'
xdotool windowfocus --sync "$(xdotool search --name '^Save As$' | tail -n 1)"
xdotool type --delay 20 "$folder/out.was"
xdotool key Return
await test -s "$folder/out.was"
await test -s "$folder/out.wad"
sleep 0.5
xdotool windowfocus --sync "$window"
xdotool key ctrl+q
wait "$program"

# As a batch job it never shows its window; its closing message waits for the user.
"$morlik" /makewas "$folder/tr1.phd" /export "$folder/batch.was" &
program=$!
await xdotool search --name '^Morlik v1.6$'
! xdotool search --name 'Moveables' >/dev/null 2>&1
xdotool windowfocus --sync "$(xdotool search --name '^Morlik v1.6$' | tail -n 1)"
xdotool key Return
wait "$program"
test -s "$folder/batch.was"
echo "The program came up, saved and ended, and did a batch job."
