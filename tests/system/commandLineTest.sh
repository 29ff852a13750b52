#!/usr/bin/env bash
# What the program says where it cannot show anything: one line on standard error, and the status.
#
# usage: commandLineTest.sh SOURCE PROGRAM
set -euo pipefail

program=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM
ulimit -c 0

# expect STATUS LINE COMMAND [ARGUMENT…]
expect() {
    local status=0
    "${@:3}" >output 2>error || status=$?
    if [[ $status -ne $1 || $(<error) != "$2" || -s output ]]; then
        echo "“${*:3}” ended with $status and said:"
        cat output error
        exit 1
    fi
}

noDisplay="tabulet: No display is available: neither DISPLAY nor WAYLAND_DISPLAY is set. Start Tabulet from a desktop session."
expect 1 "$noDisplay" "$program"
expect 1 "$noDisplay" "$program" a.plist
expect 1 "$noDisplay" env DISPLAY= "$program" -- --platform

noOption="tabulet: Unknown option 'frobnicate'."
noAddress="tabulet: “https://example.org/a.plist” is not the address of a file on this computer."
for display in QT_QPA_PLATFORM= QT_QPA_PLATFORM=offscreen; do
    expect 2 "$noOption" env "$display" "$program" --frobnicate
    expect 2 "$noAddress" env "$display" "$program" a.plist https://example.org/a.plist
    expect 2 "tabulet: --picture needs the path of the picture and exactly one file to open." \
        env "$display" "$program" --picture p.png
done

# A platform that was chosen is a display; so is an address a path.
cp "$1/scripts/sample.plist" "two words.plist"
"$program" -platform offscreen --picture shown.png "file://$PWD/two%20words.plist" 2>log
[[ -s shown.png ]]
