#!/usr/bin/env bash
# In a real window: reads the outline and edits it through the accessibility bus, as a screen reader
# does, saves, and compares the file.
#
# usage: accessibilityTest.sh SOURCE PROGRAM
set -euo pipefail

# The system's own: others do not have the module.
python=/usr/bin/python3
"$python" -c "import pyatspi" 2>/dev/null || {
    echo "pyatspi is not installed."
    exit 77
}
needs="dbus-run-session dbus-send"
under="dbus-run-session --"
# shellcheck source=tests/system/onDisplay.sh
source "$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")/onDisplay.sh"
# As the desktop does when a screen reader starts.
dbus-send --session --print-reply --dest=org.a11y.Bus /org/a11y/bus \
    org.freedesktop.DBus.Properties.Set \
    string:org.a11y.Status string:IsEnabled variant:boolean:true >/dev/null

sed -E 's|<real>[^<]*</real>|<real>0.5</real>|' "$source/scripts/sample.plist" >document.plist
sed -e '0,/<true/s|<true/>|<false/>|' -e 's|<string>Harbour Light: a field guide</string>|<string>Lamps</string>|' \
    document.plist >expected.plist

start document.plist
"$python" "$here/screenReader.py" document.plist
waitFor "the document is saved" isUnmodified
quit
diff document.plist expected.plist
