#!/usr/bin/env bash
# How the desktop starts the program: its busy cursor ends with every start, the bus can start it,
# and then there are the windows that were asked for, and no others.
#
# usage: startupTest.sh SOURCE PROGRAM
set -euo pipefail

if [[ ${1:-} != --on-display ]]; then
    /usr/bin/python3 -c 'import Xlib' 2>/dev/null || {
        echo "python3-xlib is not installed."
        exit 77
    }
    # The bus looks for what it can start when it is started itself.
    mkdir -p "$XDG_DATA_HOME/dbus-1/services"
    sed "s|@programFolder@|$(dirname -- "$2")|" "$1/packaging/dbus/com.ventrel.Tabulet.service.in" \
        >"$XDG_DATA_HOME/dbus-1/services/com.ventrel.Tabulet.service"
fi
needs="dbus-run-session gdbus"
under="dbus-run-session --"
# shellcheck source=tests/system/onDisplay.sh
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/onDisplay.sh"

plist >a.plist <<<$'<key>a</key>\n<true/>'
cp a.plist b.plist

"$here/startupMessages.py" >messages &
processes+=("$!")
: >log
waitFor "messages are listened to" grep -qx listening messages

hasEnded() {
    grep -qxF "remove: ID=$1" messages
}

# By the default "remove" also ends with the process that was started.
DESKTOP_STARTUP_ID="first_TIME1" start a.plist
waitFor "the start of the program is over" hasEnded first_TIME1

# Longer than one piece of a message, and with what is marked in it.
DESKTOP_STARTUP_ID='the "second" start/of\all_TIME2' timeout 60 "$program" b.plist
waitFor "the start that handed over is over" hasEnded 'the\ \"second\"\ start/of\\all_TIME2'

countWindows() {
    xwininfo -root -tree | grep -c ' — Tabulet": ("tabulet"' || true
}

hasWindows() {
    [[ $(countWindows) -eq $1 ]]
}

# Calls a method of the program on the bus, which starts it where it does not run.
call() {
    gdbus call --session --dest com.ventrel.Tabulet --object-path /com/ventrel/Tabulet \
        --method "org.freedesktop.Application.$1" "${@:2}"
}

waitFor "both files are open" hasWindows 2
for each in 3 4; do
    call ActivateAction new-window '[]' "{'desktop-startup-id': <'window_TIME$each'>}"
    waitFor "there is a new window" hasWindows "$each"
    waitFor "its start is over" hasEnded "window_TIME$each"
done

if call ActivateAction fly '[]' '{}' 2>refusal; then
    echo "An action that there is not was carried out."
    exit 1
fi
grep -q 'There is no action “fly”\.' refusal
hasWindows 4

ends() {
    ! gdbus call --session --dest org.freedesktop.DBus --object-path /org/freedesktop/DBus \
        --method org.freedesktop.DBus.GetNameOwner com.ventrel.Tabulet &>/dev/null
}

# Ends the program as the desktop does.
end() {
    local owner
    owner=$(gdbus call --session --dest org.freedesktop.DBus --object-path /org/freedesktop/DBus \
        --method org.freedesktop.DBus.GetConnectionUnixProcessID com.ventrel.Tabulet |
        grep -o '[0-9]*,' | tr -d ,)
    kill "$owner"
    waitFor "the program has ended" ends
    waitFor "its windows are closed" hasWindows 0
}

# Waits until the program that the bus has started has done what it was asked for, and sees that it
# does nothing else.
expectWindows() {
    waitFor "$1 windows for $2" hasWindows "$1"
    call Activate '{}'
    if ! hasWindows "$1"; then
        echo "After $2 there are $(countWindows) windows instead of $1."
        exit 1
    fi
    end
}

end
call ActivateAction new-window '[]' '{}'
expectWindows 1 ActivateAction
call Activate '{}'
expectWindows 1 Activate
call Open "['file://$PWD/a.plist', 'file://$PWD/b.plist']" '{}'
waitFor "2 windows for Open" hasWindows 2
end
