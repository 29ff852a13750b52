#!/usr/bin/env bash
# In a real window: opens a file, collapses and expands it by key and by mouse, saves it in the
# binary form, and from that again as XML, which must be the file that it was.
#
# usage: windowTest.sh SOURCE PROGRAM
set -euo pipefail

here=$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")
if [[ ${1:-} != --on-display ]]; then
    command -v xdotool >/dev/null || {
        echo "xdotool is not installed."
        exit 77
    }
    exec "$here/withDisplay.sh" "$0" --on-display "$@"
fi
source=$2
program=$3
# shellcheck source=tests/system/windowTools.sh
source "$here/windowTools.sh"

# Clicks where the control of the first row is. The heights of menus differ, so this tries from
# below; a click beside the control only selects.
clickForRows() {
    local before y tries
    before=$(rowsMade)
    for ((y = 140; y > 60; y -= 5)); do
        xdotool mousemove --window "$window" 12 "$y" click 1
        for ((tries = 0; tries < 3; ++tries)); do
            ! rowsWereMadeSince "$before" || return 0
            sleep 0.1
        done
    done
    echo "No click on a control made rows."
    exit 1
}

# Reals are written with all their digits, so those of the sample would come back longer.
sed -E 's|<real>[^<]*</real>|<real>0.5</real>|' "$source/packaging/sample.plist" >original.plist
cp original.plist document.plist

start document.plist
xdotool key Down
pressForRows Left
pressForRows Right
pressForRows alt+Right
clickForRows
xdotool key Tab Right space
save
if [[ $(head -c 8 document.plist) != bplist00 ]]; then
    echo "The saved file is not in the binary form."
    exit 1
fi
quit

start document.plist
xdotool key Tab Left space
save
quit
cmp document.plist original.plist
