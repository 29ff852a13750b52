#!/usr/bin/env bash
# Builds the Debian packages, lets lintian look at them, and compares what is in them with the list of
# what is installed.
set -euo pipefail

scripts/package build/debian
cd build/debian
lintian --pedantic --fail-on error,warning tabulet_*.changes

files() {
    dpkg-deb --fsys-tarfile "$1"_*.deb | tar --list | sed -n 's|^\./\(.*[^/]\)$|\1|p' | LC_ALL=C sort
}

# The licence stands in the copyright file, and documents are compressed.
diff <(files tabulet) <(
    {
        sed -e '/^share\/licenses/d' -e 's|^|usr/|' -e 's|/tabulet\.1$|&.gz|' \
            ../../tests/system/installedFiles.txt
        echo usr/share/doc/tabulet/changelog.gz
        echo usr/share/doc/tabulet/copyright
    } | LC_ALL=C sort
)
files libplistcore0 | sed 's|usr/lib/[^/]*/|usr/lib/MACHINE/|' | diff - <(
    cat <<'TEXT'
usr/lib/MACHINE/libPlistCore.so.0
usr/lib/MACHINE/libPlistCore.so.0.1.0
usr/share/doc/libplistcore0/changelog.gz
usr/share/doc/libplistcore0/copyright
TEXT
)
