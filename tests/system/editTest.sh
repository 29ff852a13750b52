#!/usr/bin/env bash
# In real windows: adds, renames and changes items by key, saves, takes everything back and does it
# again, and copies items from one process to another.
#
# usage: editTest.sh SOURCE PROGRAM
set -euo pipefail

# shellcheck source=tests/system/onDisplay.sh
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/onDisplay.sh"

plist >original.plist <<'TEXT'
<key>tide</key>
<integer>4</integer>
<key>port</key>
<string>North Mole</string>
TEXT
plist >edited.plist <<'TEXT'
<key>ship</key>
<string>Vesta</string>
<key>height</key>
<integer>42</integer>
<key>port</key>
<string>North Mole</string>
TEXT

# Types a text into the open field and ends it with a key.
enter() {
    xdotool key ctrl+a
    xdotool type --delay 20 "$1"
    xdotool key "$2"
}

# How often a key must be pressed to take all edits back, or to do them again.
edits=5
repeat() {
    xdotool key --repeat "$edits" --delay 60 "$1"
}

cp original.plist document.plist
start document.plist
firstWindow=$window firstProcess=$process

# The root is selected and expanded: the new item becomes its first, and its key is edited.
xdotool key Down
pressForRows ctrl+shift+n
enter ship Tab
sleep 0.3
enter Vesta Return
xdotool key Down Return
enter height Tab
sleep 0.3
enter 42 Return
save
waitFor "the edited file" isSavedAs document.plist edited.plist

repeat ctrl+z
save
waitFor "the original file" isSavedAs document.plist original.plist
repeat ctrl+shift+z
save
waitFor "the edited file again" isSavedAs document.plist edited.plist

# What is copied in one process is pasted in another.
xdotool key ctrl+a ctrl+c
plist >other.plist </dev/null
start other.plist
pressForRows ctrl+v
save
waitFor "the pasted items" isSavedAs other.plist edited.plist
quit

window=$firstWindow process=$firstProcess
activate
quit
