#!/usr/bin/env bash
# In a real window: other programs replace, rewrite, delete and bring back the file of a document.
# Without edits it follows; with edits nothing is overwritten that the user has not chosen.
#
# usage: changedFileTest.sh SOURCE PROGRAM
set -euo pipefail

# shellcheck source=tests/system/onDisplay.sh
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/onDisplay.sh"

content() {
    plist <<TEXT
<key>Port</key>
<string>$1</string>
TEXT
}

# Puts a file with other content in its place.
replaceBy() {
    content "$1" >fresh
    mv fresh document.plist
}

# Has another program change the file, and waits until the window shows that.
seeAfter() {
    local before
    before=$(rowsMade)
    "$@"
    waitFor "rows after $*" rowsWereMadeSince "$before"
    [[ $(title) == "document.plist — Tabulet" ]] || fail "the document counts as modified after $*"
}

fail() {
    echo "$1"
    exit 1
}

rewriteAs() {
    content "$1" >document.plist
}

hasQuestion() {
    local focused
    focused=$(xdotool getwindowfocus)
    [[ $focused != "$window" && $(xdotool getwindowname "$focused") == Tabulet ]]
}

content first >document.plist
start document.plist
seeAfter replaceBy second
seeAfter rewriteAs third
seeAfter replaceBy fourth

# What the file held before comes back by Undo, and can be saved.
pressForRows ctrl+z
save
content third >expected
cmp document.plist expected

# Without its file a document is modified; it is clean again when the file is back.
mv document.plist elsewhere
waitFor "the missing file shows in the title" isModified
mv elsewhere document.plist
waitFor "the file that is back shows in the title" isUnmodified
rm document.plist
waitFor "the missing file shows in the title" isModified
save
cmp document.plist expected

# What cannot be read leaves the document alone, which counts as modified. The strip that says so
# has keys too: what is kept is saved without a question.
echo '<plist>' >document.plist
waitFor "the unreadable file shows in the title" isModified
# A button that is pressed by its key is so a moment later; whoever saves before that is asked.
saveKept() {
    ! hasQuestion || xdotool key Escape
    xdotool key alt+k ctrl+s
    isUnmodified
}
waitFor "the kept document is saved" saveKept
cmp document.plist expected

# With an edit on each side, saving asks; Escape leaves both as they are.
xdotool key Down Down
pressForRows ctrl+d
replaceBy theirs
content theirs >expected
xdotool key ctrl+s
waitFor "there is a question" hasQuestion
xdotool key Escape
waitFor "the window has the keyboard" hasFocus
cmp document.plist expected
isModified || fail "the document counts as saved"
