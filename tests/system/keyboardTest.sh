#!/usr/bin/env bash
# In a real window, by the keyboard alone and under a window manager that keeps keys to itself: adds
# items, renames them, changes their types, edits a value of each type, moves, expands and collapses,
# sorts, searches, exports bytes, saves, and closes the windows.
#
# usage: keyboardTest.sh SOURCE PROGRAM
set -euo pipefail

# shellcheck source=tests/system/onDisplay.sh
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/onDisplay.sh"
# What dates look like while they are edited.
export LC_ALL=C.UTF-8 TZ=UTC

plist >document.plist <<'TEXT'
<key>group</key>
<dict>
	<key>inner</key>
	<string>deep</string>
</dict>
TEXT
plist >expected.plist <<'TEXT'
<key>1 name</key>
<string>Argo</string>
<key>2 count</key>
<integer>42</integer>
<key>3 part</key>
<real>0.5</real>
<key>4 flag</key>
<true/>
<key>5 day</key>
<date>2026-04-19T09:30:00Z</date>
<key>6 bytes</key>
<data>
AAECAw==
</data>
<key>group</key>
<dict>
	<key>inner</key>
	<string>deep</string>
</dict>
TEXT

# Windows and menus open, and fields take the keyboard, a moment after the key.
pause() {
    sleep 0.4
}

press() {
    xdotool key --delay 60 "$@"
    pause
}

enter() {
    press ctrl+a
    xdotool type --delay 30 "$1"
    press "$2"
}

# Adds an item below the current one.
add() {
    pressForRows ctrl+shift+n
    pause
    enter "$1" Tab
    enter "$2" Return
}

# Gives the current item, a string, the type that stands so many places below that in the menu.
retype() {
    press F4
    xdotool key --repeat "$1" --delay 60 Down
    press Return
}

# Edits the value of the current item.
revalue() {
    press Return Tab
    enter "$1" Return
}

start document.plist
press Down
add '6 bytes' AAEC
retype 5
# The fields of the bytes: the digits, the text, and the buttons for import, export and applying.
press space Tab
enter 'AAECAw==' Tab
press Tab Tab space
press shift+Tab
press space
enter "$PWD/bytes.bin" Return
waitFor "the exported bytes" test -s bytes.bin
printf '\0\1\2\3' | cmp - bytes.bin
press Escape
activate

add '5 day' 2026-04-18T09:30:00Z
retype 4
press space Home Up Return
add '4 flag' false
retype 3
press space
add '3 part' 0.25
retype 2
revalue 0.5
add '2 count' 41
retype 1
revalue 42
add '1 name' Vesta
press Return
enter '1 name' Tab
press Escape

# By the second keys, as the window manager takes the first ones.
before=$(rowsMade)
xdotool key ctrl+alt+Up
pressForRows alt+Up
pressForRows alt+Up
pressForRows alt+Down
pressForRows ctrl+shift+Right
pressForRows ctrl+shift+Left
if [[ $(rowsMade) -ne $((before + 5)) ]]; then
    echo "The window manager has not taken the first key, so there is nothing tested here."
    exit 1
fi

# The menu of the editor sorts the keys of the root; that can be taken back, and done by the menu of
# the row.
press ctrl+Home
before=$(rowsMade)
press alt+t s
waitFor "the sorted keys" rowsWereMadeSince "$before"
pressForRows ctrl+z
before=$(rowsMade)
press shift+F10
press Up Up Up Return
waitFor "the keys sorted again" rowsWereMadeSince "$before"

before=$(rowsMade)
xdotool key ctrl+f
xdotool type --delay 30 vesta
waitFor "the rows that are found" rowsWereMadeSince "$before"
press Return
before=$(rowsMade)
press Escape
waitFor "all rows again" rowsWereMadeSince "$before"
press Escape
revalue Argo
save
waitFor "the edited file" isSavedAs document.plist expected.plist
quit

# The program stays while there is a window, also when nothing is opened, and ends with the last.
plist </dev/null >other.plist
start document.plist other.plist
first=$window
isClosed() {
    ! xdotool getwindowname "$1" >/dev/null 2>&1
}
press ctrl+o
press Escape
activate
press ctrl+w
waitFor "the end of the first window" isClosed "$first"
findWindow other.plist
activate
kill -0 "$process"
xdotool key ctrl+w
wait "$process"
