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

scratch=$(mktemp -d)
process=
cleanUp() {
    [[ -z $process ]] || kill "$process" 2>/dev/null || true
    rm -rf "$scratch"
}
trap cleanUp EXIT
cd "$scratch"
export QT_QPA_PLATFORM=xcb
# One line for each time that the rows of the outline are made.
export QT_LOGGING_RULES="com.ventrel.Tabulet.debug=true"

# Waits until a condition holds; the name of what it waits for is the first argument.
waitFor() {
    local name=$1 tries
    shift
    for ((tries = 0; tries < 300; ++tries)); do
        ! "$@" || return 0
        sleep 0.1
    done
    echo "After 30 seconds still not: $name"
    cat log
    exit 1
}

title() {
    xdotool getwindowname "$window"
}

titleIs() {
    [[ $(title) == "$1" ]]
}

isModified() {
    [[ $(title) == *\** ]]
}

isUnmodified() {
    [[ $(title) != *\** ]]
}

rowsMade() {
    grep -c 'Rows: ' log || true
}

rowsWereMadeSince() {
    [[ $(rowsMade) -gt $1 ]]
}

hasFocus() {
    [[ $(xdotool getwindowfocus) == "$window" ]]
}

# Opens the file in the program and waits until its window has the keyboard.
start() {
    : >log
    "$program" "$1" 2>log &
    process=$!
    window=$(xdotool search --sync --onlyvisible --pid "$process" --name "$1" | head -n 1)
    waitFor "the window shows $1" titleIs "$1 — Tabulet"
    waitFor "the document is read" rowsWereMadeSince 1
    xdotool windowactivate "$window"
    waitFor "the window has the keyboard" hasFocus
}

# Presses a key that must make rows anew.
pressForRows() {
    local before
    before=$(rowsMade)
    xdotool key "$1"
    waitFor "rows after $1" rowsWereMadeSince "$before"
}

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

# Saves, and waits until that is done.
save() {
    waitFor "the title shows a change" isModified
    xdotool key ctrl+s
    waitFor "the document is saved" isUnmodified
}

quit() {
    xdotool key ctrl+q
    local status=0
    wait "$process" || status=$?
    process=
    if [[ $status -ne 0 ]]; then
        echo "The program ended with $status."
        exit 1
    fi
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
