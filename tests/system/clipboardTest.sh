#!/usr/bin/env bash
# In a real window: another program reads what was copied, in the forms that are offered, and what it
# copies itself is pasted, as text and in the binary form.
#
# usage: clipboardTest.sh SOURCE PROGRAM
set -euo pipefail

needs=xclip
# shellcheck source=tests/system/onDisplay.sh
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/onDisplay.sh"

ship=$'<key>ship</key>\n<string>Vesta</string>'
tide=$'<key>tide</key>\n<integer>4</integer>'

# What the clipboard holds in a form, or the names of its forms.
clipboard() {
    timeout 20 xclip -selection clipboard -o -t "$1"
}

# Another program copies a file in a form.
offer() {
    xclip -quiet -selection clipboard -t "$1" "$2" 2>xclip.log &
    processes+=($!)
    waitFor "another program offers $1" isOffered "$1"
}

isOffered() {
    clipboard TARGETS 2>/dev/null | grep -qxF -- "$1" &&
        ! clipboard TARGETS | grep -qxF com.ventrel.tabulet.nodes
}

isCopied() {
    clipboard TARGETS 2>/dev/null | grep -qxF com.ventrel.tabulet.nodes
}

printf '%s\n' "$ship" "$tide" | plist >original.plist
cp original.plist document.plist
start document.plist
xdotool key ctrl+a ctrl+c
waitFor "the items are copied" isCopied
clipboard TARGETS | grep -E '^(com\.|application/x-plist|text/plain)' >forms
diff forms - <<'TEXT'
com.ventrel.tabulet.nodes
application/x-plist
text/plain;charset=utf-8
text/plain
TEXT
for form in application/x-plist text/plain 'text/plain;charset=utf-8' UTF8_STRING; do
    clipboard "$form" >copied
    # A text needs no line break at its end.
    diff <(awk 1 copied) original.plist
done

# The file in the binary form, as the program writes it.
xdotool key Tab Right space
save
cp document.plist binary.plist
quit
[[ $(head -c 8 binary.plist) == bplist00 ]]

# What others copy goes into an empty document.
paste() {
    plist </dev/null >pasted.plist
    start pasted.plist
    offer "$1" "$2"
    pressForRows ctrl+v
    save
    waitFor "the pasted items of $1" isSavedAs pasted.plist original.plist
    quit
}
paste UTF8_STRING original.plist
paste text/plain original.plist
paste application/x-plist original.plist
paste application/x-bplist binary.plist
