#!/usr/bin/env bash
# Puts the program into scenes and takes a picture of each, on the display that is there.
#
# usage: scenes.sh SOURCE PROGRAM FOLDER SUFFIX [SCENE…]
#
# The pictures are FOLDER/SCENE-SUFFIX.png. Without scenes it takes all.
set -euo pipefail

source=$1
program=$2
folder=$3
suffix=$4
shift 4
# shellcheck source=tests/system/windowTools.sh
source "$source/tests/system/windowTools.sh"

# There is no sign of a window having been drawn; this is longer than it takes.
settle() {
    sleep 0.6
}

press() {
    local key
    for key in "$@"; do
        xdotool key "$key"
        sleep 0.1
    done
}

down() {
    xdotool key --repeat "$1" --delay 40 Down
    sleep 0.1
}

enter() {
    xdotool type --delay 20 "$1"
}

# Moves the pointer to a point of the window, given for scale 1.
pointAt() {
    local place
    place=$(awk -v x="$1" -v y="$2" -v scale="${QT_SCALE_FACTOR:-1}" 'BEGIN { print int(x * scale), int(y * scale) }')
    # Two words on purpose.
    # shellcheck disable=SC2086
    xdotool mousemove --window "$window" $place
    sleep 0.1
}

clickAt() {
    pointAt "$1" "$2"
    xdotool click 1
}

# Where the window is, as a region of the screen.
windowRegion() {
    xwininfo -id "$window" | awk '
        /Absolute upper-left X/ { x = $NF }
        /Absolute upper-left Y/ { y = $NF }
        /^  Width/ { width = $NF }
        /^  Height/ { height = $NF }
        END { print width "x" height "+" x "+" y }'
}

# Takes the picture of a scene and ends the program.
take() {
    local region
    region=$(windowRegion)
    settle
    import -window root -crop "$region" +repage "$folder/$1-$suffix.png"
    xdotool mouseup 1
    kill "$process"
    wait "$process" 2>/dev/null || true
    # The next scene is not to be offered the changes of this one.
    rm -rf "$XDG_STATE_HOME"
}

# Opens a file under a name that looks well in a title.
open() {
    start "$1"
    xdotool mousemove 0 0
}

openSample() {
    cp "$source/scripts/sample.plist" Harbour.plist
    open Harbour.plist
}

# --- The scenes ---

startWithoutFiles() {
    : >log
    "$program" 2>log &
    process=$!
    processes+=("$process")
    findWindow "Untitled"
}

newDocument() {
    startWithoutFiles
    activate
}

document() {
    openSample
    down 1
    pressForRows alt+Right
    down 2
}

search() {
    openSample
    press ctrl+f
    enter "light"
    settle
    press Return
}

noMatch() {
    openSample
    press ctrl+f
    enter "airport"
}

invalidEdit() {
    openSample
    down 3
    press Return Tab
    settle
    enter "third"
    press Return
}

invalidKey() {
    openSample
    down 3
    press Return
    settle
    enter "Title"
    press Return
}

dateEdit() {
    openSample
    down 6
    press space
}

dataPopover() {
    openSample
    down 7
    press space
    settle
}

openStep() {
    printf '{ Name = "North Mole"; Height = 27; Keepers = ("Ines", "S\\U00f8ren"); Bytes = <0fbd77>; }' \
        >Lighthouse.plist
    open Lighthouse.plist
}

duplicateKeys() {
    plist >Tides.plist <<'TEXT'
<key>Port</key>
<string>North Mole</string>
<key>High water</key>
<date>2026-04-18T05:12:00Z</date>
<key>High water</key>
<date>2026-04-18T17:40:00Z</date>
<key>Spring tide</key>
<false/>
TEXT
    open Tides.plist
}

contextMenu() {
    openSample
    down 3
    press Menu
}

editMenu() {
    openSample
    down 3
    press alt+e
}

editorMenu() {
    openSample
    down 3
    press alt+t
}

typeMenu() {
    openSample
    down 3
    press F4
}

longText() {
    {
        echo "<key>Story</key>"
        echo "<string>$(yes 'The lamp is lit at dusk, and the keeper writes the hour into his book.' |
            head -n 2000)</string>"
    } | plist >Story.plist
    open Story.plist
    down 2
    press Return Tab
    settle
}

about() {
    openSample
    press alt+h Up Return
    settle
}

shortcuts() {
    openSample
    press alt+h Return
    settle
}

# Another program does something to the file.
changedFile() {
    openSample
    down 3
    press ctrl+d
    sed -i 's/Harbour/Lighthouse/' Harbour.plist
    settle
}

unreadableFile() {
    openSample
    sed -i '0,/<array>/s///' Harbour.plist
    settle
}

deletedFile() {
    openSample
    rm Harbour.plist
    settle
}

overwriteQuestion() {
    changedFile
    press ctrl+s
    settle
}

calendar() {
    dateEdit
    clickAt 750 218
}

toolTip() {
    openSample
    pointAt 20 40
    pointAt 21 41
    sleep 1
}

longToolTip() {
    plist >Note.plist <<'TEXT'
<key>Note</key>
<string>The lamp is lit at dusk, and the keeper writes the hour into his book, with the wind, the state of the sea, and every ship that passed in the night.</string>
TEXT
    open Note.plist
    pointAt 300 120
    pointAt 301 121
    sleep 1
}

drag() {
    openSample
    press Down Down shift+Down shift+Down
    pointAt 90 145
    xdotool mousedown 1
    pointAt 100 160
    pointAt 120 215
    pointAt 150 268
    pointAt 152 270
    sleep 0.5
}

question() {
    openSample
    down 3
    press Delete
    press ctrl+w
    settle
}

failure() {
    printf '<plist><dict></array></plist>' >Broken.plist
    "$program" Broken.plist 2>log &
    process=$!
    processes+=("$process")
    findWindow Broken
    settle
}

# Changes to a file and to a new document that a process leaves which is killed.
recovery() {
    openSample
    down 3
    press Delete ctrl+n
    settle
    press ctrl+shift+n Return
    sleep 2.5
    kill -KILL "$process"
    wait "$process" 2>/dev/null || true
    startWithoutFiles
    settle
}

interruptedSave() {
    mkdir -p "$XDG_STATE_HOME/tabulet/recovery"
    echo old >"$XDG_STATE_HOME/tabulet/recovery/one.old"
    echo "{\"kind\": \"interruptedSave\", \"file\": \"$PWD/Harbour.plist\"}" \
        >"$XDG_STATE_HOME/tabulet/recovery/one.json"
    startWithoutFiles
    settle
}

scenes=("$@")
[[ ${#scenes[@]} -gt 0 ]] ||
    scenes=(newDocument document search noMatch invalidEdit invalidKey dateEdit dataPopover openStep
        duplicateKeys contextMenu editMenu editorMenu typeMenu longText shortcuts about calendar toolTip longToolTip
        drag question failure changedFile unreadableFile deletedFile overwriteQuestion recovery
        interruptedSave)
for scene in "${scenes[@]}"; do
    "$scene"
    take "$scene"
done
