#!/usr/bin/env bash
# In a real window: opens a file, collapses and expands it by key and by mouse, saves it in the
# binary form, and from that again as XML, which must be the file that it was.
#
# usage: windowTest.sh SOURCE PROGRAM
set -euo pipefail

# shellcheck source=tests/system/onDisplay.sh
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/onDisplay.sh"

# Reals are written with all their digits, so those of the sample would come back longer.
sed -E 's|<real>[^<]*</real>|<real>0.5</real>|' "$source/scripts/sample.plist" >original.plist
cp original.plist document.plist

start document.plist
xdotool key Down
pressForRows Left
pressForRows Right
pressForRows alt+Right
clickUpwards 12 140
xdotool key Tab Right space
save
if [[ $(head -c 8 document.plist) != bplist00 ]]; then
    echo "The saved file is not in the binary form."
    exit 1
fi
quit

start document.plist
xdotool key Tab Left space
save
quit
cmp document.plist original.plist
