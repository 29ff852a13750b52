#!/usr/bin/env bash
# Runs a command on a virtual display of its own with a window manager, and gives its exit code.
# Exit code 77 says that the programs for that are not there.
# TABULET_SCREEN is the size of the display, 1280x800 unless given.
#
# usage: withDisplay.sh COMMAND [ARGUMENT…]
set -euo pipefail

for program in Xvfb openbox xprop; do
    command -v "$program" >/dev/null || {
        echo "$program is not installed."
        exit 77
    }
done

scratch=$(mktemp -d)
started=()

cleanUp() {
    local process
    for process in "${started[@]}"; do
        kill "$process" 2>/dev/null || true
    done
    rm -rf "$scratch"
}
trap cleanUp EXIT

# The server writes its number when it accepts clients: no guessing, no race.
mkfifo "$scratch/number"
Xvfb -displayfd 3 -screen 0 "${TABULET_SCREEN:-1280x800}x24" -nolisten tcp -noreset \
    3<>"$scratch/number" >"$scratch/xvfb.log" 2>&1 &
started+=($!)
if ! read -r -t 60 number <>"$scratch/number"; then
    cat "$scratch/xvfb.log"
    echo "The virtual display did not start."
    exit 1
fi
export DISPLAY=:$number
unset WAYLAND_DISPLAY

openbox --sm-disable >"$scratch/openbox.log" 2>&1 &
started+=($!)
# A window manager says that it is ready by this property of the root window.
tries=0
until xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; do
    tries=$((tries + 1))
    if [[ $tries -gt 300 ]]; then
        cat "$scratch/openbox.log"
        echo "The window manager did not start."
        exit 1
    fi
    sleep 0.1
done

status=0
"$@" || status=$?
exit "$status"
