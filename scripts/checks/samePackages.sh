#!/usr/bin/env bash
# Builds the packages again, elsewhere, later, in another time zone and without what the compiler
# cache remembers: they must be the same byte for byte.
#
# usage: samePackages.sh PACKAGES, the folder of the packages that are there
set -euo pipefail

packages=$(realpath "$1")
again=$(mktemp -d)
trap 'rm -rf "$again"' EXIT

TZ=Pacific/Chatham CCACHE_DISABLE=1 scripts/package "$again/another/with-a-longer-name"
cd "$again/another/with-a-longer-name"
for each in *.deb tabulet_*.tar.*; do
    cmp "$each" "$packages/$each"
done
