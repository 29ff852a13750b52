#!/usr/bin/env bash
# In real windows: what was not saved comes back after the process was killed, whether it has a file
# or not, and as a copy if the file has changed since; SIGTERM ends the program without a question
# and loses nothing; what a running instance keeps is not offered by another; a save that was
# interrupted is offered; and a clean end leaves nothing behind.
#
# usage: recoveryTest.sh SOURCE PROGRAM
set -euo pipefail

# shellcheck source=tests/system/onDisplay.sh
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/onDisplay.sh"

recovery=$XDG_STATE_HOME/tabulet/recovery

kept() {
    find "$recovery" -name '*.json' 2>/dev/null | wc -l
}

isKept() {
    [[ $(kept) -eq $1 ]]
}

nothingIsLeft() {
    [[ -z $(find "$recovery" -mindepth 1 2>/dev/null) ]]
}

# Starts the program and waits for the window with this name. Sets "process" and "window".
begin() {
    local name=$1
    shift
    : >log
    "$program" "$@" 2>log &
    process=$!
    processes+=("$process")
    findWindow "$name"
}

# Adds an item with this key to the document.
addItem() {
    activate
    xdotool key ctrl+shift+n
    sleep 0.3
    xdotool type --delay 20 "$1"
    xdotool key Return
    waitFor "the title shows a change" isModified
}

killHard() {
    kill -KILL "$process"
    wait "$process" || true
}

# Waits until a window has the keyboard whose name begins like this, and sets "window" to it.
windowIs() {
    window=$(xdotool getactivewindow 2>/dev/null) && [[ $(title) == "$1"* ]]
}

dialogIsGone() {
    ! xdotool search --onlyvisible --name "^$1" >/dev/null 2>&1
}

# Presses Return in a dialog with this name when it is there, and waits until it has gone.
accept() {
    waitFor "$1 is there" windowIs "$1"
    xdotool key Return
    waitFor "$1 is gone" dialogIsGone "$1"
}

file=$PWD/kept.plist
plist >kept.plist <<<$'<key>a</key>\n<integer>1</integer>'
cp kept.plist before.plist

# --- Killed with changes to a file and to a new document ---

begin kept.plist "$file"
addItem unsaved
xdotool key ctrl+n
waitFor "there is a new document" windowIs Untitled
addItem new
waitFor "both documents are kept" isKept 2
[[ $(stat -c %a "$recovery"/*/) == 700 ]]
[[ $(stat -c %a "$recovery"/*/*.plist | sort -u) == 600 ]]
killHard
cmp kept.plist before.plist

begin Untitled
accept "Recover Documents"
waitFor "the new document is there again" hasFoundWindow "Untitled.*recovered"
waitFor "the document is there again" hasFoundWindow kept.plist
activate
save
grep -q '<key>unsaved</key>' kept.plist
waitFor "only the new document is kept" isKept 1
# SIGTERM asks for nothing and keeps it.
kill -TERM "$process"
wait "$process"
isKept 1

# --- Discarded in the end ---

begin Untitled
accept "Recover Documents"
waitFor "the new document is there again" hasFoundWindow "Untitled.*recovered"
activate
xdotool key ctrl+q
waitFor "the program asks" windowIs "Tabulet"
xdotool key Tab space
wait "$process"
nothingIsLeft

# --- The file has changed since ---

begin kept.plist "$file"
addItem other
waitFor "the document is kept" isKept 1
killHard
cp before.plist kept.plist
begin Untitled
accept "Recover Documents"
waitFor "it comes back as a copy" hasFoundWindow "kept .recovered"
kill -TERM "$process"
wait "$process"
cmp kept.plist before.plist
rm -r "$recovery"

# --- Another instance that runs, where the numbers of processes begin anew ---

if unshare --pid --fork --mount-proc true 2>/dev/null; then
    begin kept.plist "$file"
    addItem live
    waitFor "the document is kept" isKept 1
    first=$process
    : >otherLog
    unshare --pid --fork --mount-proc --kill-child "$program" 2>otherLog &
    process=$!
    processes+=("$process")
    waitFor "the other instance has its window" windowIs Untitled
    # It has asked about nothing when it takes a command.
    activate
    xdotool key ctrl+q
    wait "$process"
    isKept 1
    process=$first
    killHard
    rm -r "$recovery"
else
    echo "Numbers of processes cannot begin anew here; two instances are left out."
fi

# --- A save that was interrupted ---

mkdir -p "$recovery"
printf 'half of' >kept.plist
cp before.plist "$recovery/one.old"
echo "{\"kind\": \"interruptedSave\", \"file\": \"$file\"}" >"$recovery/one.json"
begin Untitled
waitFor "the old content is offered" windowIs "Tabulet"
xdotool key Return
isRestored() {
    cmp -s kept.plist before.plist
}
waitFor "the old content is restored" isRestored
waitFor "nothing is kept any more" nothingIsLeft
hasFoundWindow Untitled
activate
quit
nothingIsLeft
