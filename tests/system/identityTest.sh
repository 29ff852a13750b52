#!/usr/bin/env bash
# The windows say who they belong to: the class that the desktop entry names, and an icon in the
# sizes that it was drawn in.
#
# usage: identityTest.sh SOURCE PROGRAM
set -euo pipefail

# shellcheck source=tests/system/onDisplay.sh
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/onDisplay.sh"

plist >document.plist <<<$'<key>a</key>\n<true/>'
start document.plist

class=$(xprop -id "$window" WM_CLASS)
if [[ $class != 'WM_CLASS(STRING) = "tabulet", "tabulet"' ]]; then
    echo "The class of the window is: $class"
    exit 1
fi
grep -qx 'StartupWMClass=tabulet' "$source/packaging/desktop/com.ventrel.Tabulet.desktop"

# The property is a row of pictures, each after its width and its height.
xprop -id "$window" -notype 32c _NET_WM_ICON | sed 's/^[^=]*= //' | tr -d ' ' | tr ',' '\n' |
    awk 'left > 0 { --left; next }
         width { print width "x" $1; left = width * $1; width = 0; next }
         { width = $1 }' >sizes
sort --numeric-sort sizes | diff /dev/fd/3 - 3<<'TEXT' || {
16x16
24x24
32x32
48x48
64x64
128x128
TEXT
    echo "Those are the sizes of the icon."
    exit 1
}
quit
