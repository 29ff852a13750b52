#!/usr/bin/env bash
# What is installed is what the list says, and runs wherever it is put afterwards.
#
# usage: installTest.sh SOURCE BUILD
set -euo pipefail

source=$1
build=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

cmake --install "$build" --prefix "$scratch/prefix" --component Tabulet >/dev/null
(cd "$scratch/prefix" && find . -type f | sed 's|^./||' | LC_ALL=C sort) |
    diff "$source/tests/system/installedFiles.txt" -

# The bus starts the program where it was installed.
grep -qE "^Exec=$scratch/prefix/bin/tabulet( |\$)" \
    "$scratch/prefix/share/dbus-1/services/com.ventrel.Tabulet.service"

mv "$scratch/prefix" "$scratch/elsewhere"
export QT_QPA_PLATFORM=offscreen
program=$scratch/elsewhere/bin/tabulet
"$program" --version
timeout 60 "$program" --picture "$scratch/picture.png" "$source/scripts/sample.plist"
[[ -s $scratch/picture.png ]]
