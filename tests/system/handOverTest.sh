#!/usr/bin/env bash
# In real windows, with a message bus: later starts of the program hand their files over to the first
# and end, which brings the windows to the front. Where there is no bus, or the first does not
# answer, each start runs alone.
#
# usage: handOverTest.sh SOURCE PROGRAM
set -euo pipefail

needs=dbus-run-session
under="dbus-run-session --"
# shellcheck source=tests/system/onDisplay.sh
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/onDisplay.sh"

latin1=$'caf\xe9 %41.plist'
latin1Shown=$'caf\uFFFD %41.plist'
mkdir folder
for each in one.plist other.plist late.plist alone.plist "folder/two words.plist" "$latin1"; do
    plist >"$each" <<<$'<key>a</key>\n<integer>1</integer>'
done

# A start that hands over: it must end by itself, and well.
handOver() {
    timeout 60 "$program" "$@" || {
        echo "Handing over $* ended with $?."
        exit 1
    }
}

countWindows() {
    xwininfo -root -tree | grep -c ' — Tabulet": ("tabulet"' || true
}

hasWindows() {
    [[ $(countWindows) -eq $1 ]]
}

isInFront() {
    local active
    active=$(xdotool getactivewindow getwindowname 2>/dev/null) && [[ $active == "$1 — Tabulet" ]]
}

pidInFront() {
    xdotool getactivewindow getwindowpid
}

expectFrontBelongsTo() {
    if [[ $(pidInFront) != "$1" ]]; then
        echo "The window in front belongs to another process."
        exit 1
    fi
}

# Another program has the keyboard.
start one.plist
first=$process firstWindow=$window
mv log first.log
# Each window makes rows for its new document, and again when the file has been read.
firstHasRead() {
    [[ $(grep -c 'Rows: ' first.log) -ge $((2 * $1)) ]]
}
DBUS_SESSION_BUS_ADDRESS=disabled: start other.plist
other=$process otherWindow=$window

(cd folder && handOver "two words.plist" "../$latin1")
waitFor "the last file is in front" isInFront "$latin1Shown"
expectFrontBelongsTo "$first"
waitFor "both files are open" hasWindows 4
waitFor "the files are read" firstHasRead 3

# What is no text in its name is saved where it came from.
window=$(xdotool getactivewindow)
waitFor "the window has the keyboard" hasFocus
xdotool key Tab Right space
save
if [[ $(head -c 8 "$latin1") != bplist00 ]]; then
    echo "The file has not been saved under its own name."
    exit 1
fi

# A file that is open is shown again, whatever has become of its window.
xdotool windowminimize "$firstWindow"
xdotool windowactivate --sync "$otherWindow"
handOver "$PWD/folder/../one.plist"
waitFor "the window is in front again" isInFront one.plist
expectFrontBelongsTo "$first"
waitFor "no window was added" hasWindows 4

# A start without files makes a new document.
xdotool windowactivate --sync "$otherWindow"
handOver
untitledIsInFront() {
    [[ $(xdotool getactivewindow getwindowname 2>/dev/null) == Untitled*" — Tabulet" ]]
}
waitFor "a new document is in front" untitledIsInFront
expectFrontBelongsTo "$first"

# Nobody waits for ever for a program that does not answer.
kill -STOP "$first"
start late.plist
kill -CONT "$first"
expectFrontBelongsTo "$process"
handOver
waitFor "the file was opened once" hasWindows 6
activate
quit

# Without a bus, and with one that is not there any more.
for address in disabled: "unix:path=$PWD/none"; do
    DBUS_SESSION_BUS_ADDRESS=$address start alone.plist
    expectFrontBelongsTo "$process"
    quit
done

kill "$other" "$first"
wait "$other" "$first" || true
waitFor "all windows are closed" hasWindows 0

# Of several that start at once, one takes all.
processes=()
for each in 1 2 3 4 5 6; do
    cp other.plist "$each.plist"
    "$program" "$each.plist" 2>>log &
    processes+=("$!")
done
waitFor "all files are open" hasWindows 6
onlyOneRuns() {
    local each running=0
    for each in "${processes[@]}"; do
        ! kill -0 "$each" 2>/dev/null || running=$((running + 1))
    done
    [[ $running -eq 1 ]]
}
waitFor "all but one have ended" onlyOneRuns
