#!/usr/bin/env bash
# In a real window, as an ordinary user whose home and folders for programs cannot be written: a file
# is opened, edited and saved all the same. One that can only be overwritten is refused, because
# there is no place for a copy of what it holds, and stays as it is.
#
# usage: readOnlyHomeTest.sh SOURCE PROGRAM
set -euo pipefail

# The administrator could write everywhere.
if [[ $EUID -eq 0 ]]; then
    nobody=65534
    exec setpriv --reuid "$nobody" --regid "$nobody" --clear-groups "$0" "$@"
fi
# shellcheck source=tests/system/onDisplay.sh
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/onDisplay.sh"

mkdir home
chmod 500 home
export HOME=$PWD/home
export XDG_CONFIG_HOME=$HOME/config XDG_DATA_HOME=$HOME/data XDG_STATE_HOME=$HOME/state
export XDG_CACHE_HOME=$HOME/cache XDG_RUNTIME_DIR=$HOME/run
if mkdir home/anything 2>/dev/null; then
    echo "The home can be written, so there is nothing to test."
    exit 1
fi

plist >original.plist <<<$'<key>a</key>\n<string>b</string>'
cp original.plist file.plist
start file.plist
xdotool key Tab Right space
save
quit
if [[ $(head -c 8 file.plist) != bplist00 ]]; then
    echo "The file was not saved."
    exit 1
fi

cp original.plist linked.plist
ln linked.plist link.plist
start linked.plist
xdotool key Tab Right space
waitFor "the title shows a change" isModified
document=$window
xdotool key ctrl+s
# What is in front then explains why.
isExplained() {
    [[ $(xdotool getactivewindow 2>/dev/null) != "$document" ]]
}
waitFor "there is an explanation" isExplained
xdotool key Return
waitFor "the window has the keyboard" hasFocus
if isUnmodified || ! cmp -s original.plist linked.plist; then
    echo "What could not be kept safe was overwritten."
    exit 1
fi
