#!/usr/bin/env bash
# In real windows: drags items by the mouse within a window, into a container that opens below the
# resting drag, between two windows of a process, and between two processes; saves, and compares the
# files.
#
# usage: dragTest.sh SOURCE PROGRAM
set -euo pipefail

# shellcheck source=tests/system/onDisplay.sh
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/onDisplay.sh"

alpha=$'<key>alpha</key>\n<string>a</string>'
beta=$'<key>beta</key>\n<string>b</string>'
beta2=$'<key>beta 2</key>\n<string>b</string>'
gamma=$'<key>gamma</key>\n<string>c</string>'
emptyGroup=$'<key>group</key>\n<dict/>'
fullGroup=$'<key>group</key>\n<dict>\n\t<key>gamma</key>\n\t<string>c</string>\n</dict>'

# A property list with the given entries.
documentOf() {
    printf '%s\n' "$@" | plist
}

# The rows of a window when it has been opened: 0 is the root, 4 is the group.
groupRow=4

# Takes hold of a point of a window, goes slowly to one of another, as a hand would, and rests there
# until the command that follows has been done.
drag() {
    local from=$1 fromHeight=$2 to=$3 toHeight=$4 X Y startX startY step steps=16
    shift 4
    pointAt "$to" "$toHeight"
    eval "$(xdotool getmouselocation --shell | grep '^[XY]=')"
    pointAt "$from" "$fromHeight"
    local endX=$X endY=$Y
    eval "$(xdotool getmouselocation --shell | grep '^[XY]=')"
    startX=$X startY=$Y
    xdotool mousedown 1
    # To the side first: a drag that begins on the way shall not pass other rows meanwhile.
    for ((step = 1; step <= 4; ++step)); do
        xdotool mousemove $((startX + 5 * step)) "$startY"
        sleep 0.15
    done
    for ((step = 1; step <= steps; ++step)); do
        xdotool mousemove $((startX + 20 + (endX - startX - 20) * step / steps)) \
            $((startY + (endY - startY) * step / steps))
        sleep 0.15
    done
    "$@"
    xdotool mouseup 1
}

# A copy leaves the document that it came from as it is.
expectUnchanged() {
    window=$firstWindow
    if isModified; then
        echo "A copy has changed the document that it came from."
        exit 1
    fi
}

documentOf "$alpha" "$beta" "$gamma" "$emptyGroup" >original.plist
documentOf "$beta" "$gamma" "$alpha" "$emptyGroup" >moved.plist
documentOf "$beta" "$alpha" "$fullGroup" >grouped.plist
documentOf "$alpha" >copied.plist
documentOf "$alpha" "$beta2" "$beta" "$gamma" "$emptyGroup" >received.plist

cp original.plist first.plist
documentOf "" | grep -v '^\t$' >second.plist
start first.plist second.plist
xdotool windowmove "$window" 0 0 windowsize "$window" 620 420
measureRows
firstWindow=$window firstProcess=$process

# Within a window.
drag "$window" "$(below 1)" "$window" "$(below 3)" true
save
waitFor "the moved item" isSavedAs first.plist moved.plist

# An empty document of the same process takes a copy.
findWindow second.plist
secondWindow=$window
xdotool windowmove "$window" 640 0 windowsize "$window" 620 420
# (Straight to the side, as the group must not open yet.)
drag "$firstWindow" "$(below 3)" "$secondWindow" "$(below 3)" true
activate
save
waitFor "the copied item" isSavedAs second.plist copied.plist
expectUnchanged
xdotool windowminimize "$secondWindow"

# Another process may have given the same ids to its items, and takes a copy all the same.
cp original.plist third.plist
start third.plist
xdotool windowmove "$window" 640 0 windowsize "$window" 620 420
drag "$firstWindow" "$(below 1)" "$window" "$(below 1)" true
activate
save
waitFor "the received item" isSavedAs third.plist received.plist
quit
expectUnchanged

# The group opens below the drag, and takes what is dropped below it.
process=$firstProcess
activate
groupOpens() {
    waitFor "the group opens" rowsWereMadeSince "$before"
}
before=$(rowsMade)
drag "$window" "$(below 2)" "$window" "$(below 4)" groupOpens
save
waitFor "the item in the group" isSavedAs first.plist grouped.plist
quit
