#!/usr/bin/env bash
# In a real window, by the mouse, and by keys only where there is a text to type: expands and
# collapses, edits a value and ends that by a click elsewhere, toggles a boolean, chooses a type, adds,
# duplicates and deletes items, and saves.
#
# usage: mouseTest.sh SOURCE PROGRAM
set -euo pipefail

# shellcheck source=tests/system/onDisplay.sh
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/onDisplay.sh"

plist >document.plist <<'TEXT'
<key>size</key>
<string>old</string>
<key>flag</key>
<false/>
<key>group</key>
<dict/>
TEXT
plist >edited.plist <<'TEXT'
<key>size</key>
<integer>12</integer>
<key>flag</key>
<true/>
<key>group</key>
<dict/>
TEXT
plist >added.plist <<'TEXT'
<key>New Item</key>
<string></string>
<key>size</key>
<integer>12</integer>
<key>size copy</key>
<integer>12</integer>
<key>flag</key>
<true/>
TEXT
groupRow=3

# Where the columns are in a window that is wide enough.
keyX=70 typeX=300 valueX=560

heightOf() {
    echo $(((firstRow + $1 * rowHeight) / 100))
}

click() {
    xdotool mousemove --window "$window" "$1" "$(heightOf "$2")" click "${3:-1}"
    # Not so soon that two clicks are a double click.
    sleep 0.6
}

popups() {
    xdotool search --onlyvisible --pid "$process" 2>/dev/null | sort
}

menuIsOpen() {
    menu=$(comm -13 <(echo "$before") <(popups) | head -n 1)
    [[ -n $menu ]]
}

menuIsClosed() {
    [[ $(popups) == "$before" ]]
}

# Opens a menu by a button in a column of a row and chooses what stands at that part of its height,
# in hundredths.
choose() {
    before=$(popups)
    click "$1" "$2" "$3"
    waitFor "a menu" menuIsOpen
    eval "$(xdotool getwindowgeometry --shell "$menu" | grep -E '^(WIDTH|HEIGHT)=')"
    xdotool mousemove --window "$menu" $((WIDTH / 2)) $((HEIGHT * $4 / 100))
    sleep 0.3
    xdotool click 1
    waitFor "the end of the menu" menuIsClosed
}

# Clicks on the button of the toolbar that stands at a distance from the left. Menus have no rows to
# make, and the heights differ, so this tries from the rows upwards.
pressButton() {
    local rows y tries
    rows=$(rowsMade)
    for ((y = $(heightOf 0) - 36; y > 24; y -= 6)); do
        xdotool mousemove --window "$window" "$1" "$y" click 1
        for ((tries = 0; tries < 4; ++tries)); do
            ! rowsWereMadeSince "$rows" || return 0
            sleep 0.1
        done
    done
    echo "There is no button at $1."
    exit 1
}

start document.plist
xdotool windowmove "$window" 0 0 windowsize "$window" 900 420
measureRows

# A text, ended by a click on another row.
xdotool mousemove --window "$window" "$valueX" "$(heightOf 1)" click --repeat 2 --delay 60 1
sleep 0.4
xdotool key ctrl+a
xdotool type --delay 30 12
click "$keyX" 2
waitFor "the title shows a change" isModified

# The fourth of eight types.
choose "$typeX" 1 1 43
save

# The box stands at the beginning of its column.
for ((x = 364; x < 460; x += 9)); do
    click "$x" 2
    ! isModified || break
done
save
waitFor "the edited file" isSavedAs document.plist edited.plist

# The second of the six items that a row has.
choose "$keyX" 1 3 24
click "$keyX" 4
pressButton 48
click "$keyX" 0
pressButton 18
sleep 0.4
click "$keyX" 3
save
waitFor "the file with other items" isSavedAs document.plist added.plist
quit
