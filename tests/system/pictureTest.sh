#!/usr/bin/env bash
# `tabulet --picture PATH FILE` shows FILE, leaves a picture of its window in PATH and ends; for a
# file that cannot be shown it says why and fails.
#
# usage: pictureTest.sh SOURCE PROGRAM
set -euo pipefail

source=$1
program=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
export QT_QPA_PLATFORM=offscreen
cd "$scratch"

# Fails unless the program leaves a picture of the file.
expectPicture() {
    rm -f window.png
    timeout 120 "$program" --picture "$PWD/window.png" "$1"
    if [[ $(head -c 8 window.png | od -An -tx1 | tr -d ' ') != 89504e470d0a1a0a ]]; then
        echo "The picture of $1 is no PNG file."
        exit 1
    fi
}

# Fails unless the program refuses the file and says something with the given text.
expectRefusal() {
    local text=$1 file=$2 status=0
    rm -f window.png
    timeout 120 "$program" --picture "$PWD/window.png" "$file" 2>errors || status=$?
    if [[ $status -ne 1 ]] || ! grep -qF -- "$text" errors || [[ -e window.png ]]; then
        printf '%s: exit code %d, expected 1; said:\n%s\nexpected: %s\n' \
            "$file" "$status" "$(cat errors)" "$text"
        exit 1
    fi
}

expectPicture "$source/scripts/sample.plist"
printf '{ name = "North Mole"; height = 27; }' >openstep.plist
expectPicture openstep.plist

printf '<plist><dict></array></plist>' >broken.plist
expectRefusal "Line 1, column 14: " broken.plist
printf '\x89PNG\r\n\x1a\n\x00\x01\x02\x03' >picture.plist
expectRefusal "The text is not valid UTF-8." picture.plist
: >empty.plist
expectRefusal "The file is not a property list." empty.plist
expectRefusal "missing.plist" missing.plist
mkdir folder
expectRefusal "folder" folder
