#!/usr/bin/env bash
# At the end of the session the program goes without a question, and the command that it leaves for
# the next shows the same files, with what was not saved, each in one window.
#
# usage: sessionTest.sh SOURCE PROGRAM
set -euo pipefail

needs=python3
# shellcheck source=tests/system/onDisplay.sh
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/onDisplay.sh"

python3 -c 'import ctypes; ctypes.CDLL("libSM.so.6"), ctypes.CDLL("libICE.so.6")' || {
    echo "The libraries of the session manager are not installed."
    exit 77
}
mkfifo commands answers
"$source/tests/system/sessionManager.py" commands answers &
processes+=($!)
exec {answers}<answers {commands}>commands
read -r -t 60 -u "$answers" SESSION_MANAGER
export SESSION_MANAGER

# The windows of documents, of which each has a name that the window manager shows.
windowsNamed() {
    xdotool search --onlyvisible --all --pid "$process" --name "^.*$1" 2>/dev/null | wc -l
}

plist >"one 1.plist" <<<$'<key>a</key>\n<true/>'
plist >two.plist <<<$'<key>b</key>\n<true/>'
start two.plist "one 1.plist"
xdotool key ctrl+shift+n
sleep 0.3
xdotool key Return
waitFor "the title shows a change" isModified

echo end >&"$commands"
restart=()
while read -r -t 60 -u "$answers" word && [[ -n $word ]]; do
    restart+=("$word")
done
wait "$process"
isNamed() {
    [[ ${#restart[@]} -eq 5 && ${restart[0]} == "$program" && ${restart[1]} == -session &&
        ${restart[3]} == "file://$scratch/two.plist" &&
        ${restart[4]} == "file://$scratch/one%201.plist" ]]
}
isNamed || {
    echo "That is the restart command: ${restart[*]}"
    exit 1
}

: >log
"${restart[@]}" 2>log &
process=$!
processes+=("$process")
findWindow "Recover Documents"
xdotool windowactivate --sync "$window" key Return
isBack() {
    hasFoundWindow two.plist && isModified
}
waitFor "the unsaved change is back" isBack
[[ $(windowsNamed two.plist) -eq 1 && $(windowsNamed "one 1.plist") -eq 1 ]]
