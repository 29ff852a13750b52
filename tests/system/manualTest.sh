#!/usr/bin/env bash
# The manual page speaks of the options that the program has, and of no others.
#
# usage: manualTest.sh SOURCE PROGRAM
set -euo pipefail

command -v mandoc >/dev/null || {
    echo "mandoc is not installed."
    exit 77
}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# The options of a description, where each stands at the beginning of its line, one a line.
options() {
    sed -n 's/^ \+\(-.*\)$/\1/p' | sed 's/  .*//' | grep -o -e '-[-a-z]*' | sort -u
}

QT_QPA_PLATFORM=offscreen "$2" --help | options >"$scratch/program"
mandoc -T ascii "$1/docs/tabulet.1" | sed -e 's/.\x08//g' |
    sed -n '/^OPTIONS/,/^ENVIRONMENT/p' | options \
    >"$scratch/manual"
[[ -s $scratch/program ]]
diff "$scratch/program" "$scratch/manual"
