#!/usr/bin/env bash
# In real windows: the files that were opened last are offered by the next process, also one whose
# name is no text, but not those that are gone; the Open dialog begins where the last one lies; and
# clearing the list clears it for all.
#
# usage: recentTest.sh SOURCE PROGRAM
set -euo pipefail

# shellcheck source=tests/system/onDisplay.sh
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/onDisplay.sh"

export XDG_CONFIG_HOME=$PWD/config
latin1=$'caf\xe9.plist'
latin1Shown=$'caf\uFFFD.plist'
mkdir documents
for each in first.plist beside.plist gone.plist "$latin1"; do
    plist >"documents/$each" <<<$'<key>a</key>\n<integer>1</integer>'
done

# A start without files. Sets "process" and "window".
startEmpty() {
    : >log
    "$program" 2>log &
    process=$!
    processes+=("$process")
    findWindow Untitled
    activate
}

showsTitle() {
    [[ $(xdotool getactivewindow getwindowname 2>/dev/null) == "$1 — Tabulet" ]]
}

# Chooses an item of the list by its place, 1 for the first.
chooseRecent() {
    local place
    xdotool key alt+f
    sleep 0.3
    xdotool key r
    sleep 0.3
    for ((place = 1; place < $1; ++place)); do
        xdotool key Down
    done
    xdotool key Return
}

# Opens a file of the folder in a process that knows nothing else, and ends it.
openOnce() {
    cd documents
    : >log
    "$program" "$1" 2>log &
    process=$!
    processes+=("$process")
    waitFor "the file is open" showsTitle "$2"
    waitFor "the file is read" rowsWereMadeSince 1
    window=$(xdotool getactivewindow)
    waitFor "the window has the keyboard" hasFocus
    quit
    rm log
    cd ..
}

openOnce first.plist first.plist
openOnce "$latin1" "$latin1Shown"
openOnce gone.plist gone.plist
rm documents/gone.plist

# Another process offers what is there, the last one first.
startEmpty
chooseRecent 1
waitFor "the last file is open again" showsTitle "$latin1Shown"
quit
startEmpty
chooseRecent 2
waitFor "the file before is open again" showsTitle first.plist

# The dialog begins in the folder of that file, although the program was started elsewhere.
quit
startEmpty
xdotool key ctrl+o
dialogIsThere() {
    [[ $(xdotool getactivewindow getwindowname 2>/dev/null) == Open* ]]
}
waitFor "the dialog is there" dialogIsThere
xdotool type --delay 20 beside.plist
xdotool key Return
waitFor "the file beside it is open" showsTitle beside.plist
waitFor "the file is read" rowsWereMadeSince 1
waitFor "the window has the keyboard again" hasFocus

# "Clear Menu" stands last.
xdotool key alt+f
sleep 0.3
xdotool key r
sleep 0.3
xdotool key Up Return
isForgotten() {
    ! grep -q 'plist' config/tabulet/tabulet.ini
}
waitFor "the list is cleared" isForgotten
quit
