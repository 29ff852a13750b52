#!/usr/bin/env bash
# Checks what the desktop reads of the program: desktop entry, metainfo, MIME types, icons and the
# manual page. Each checker must be silent.
set -euo pipefail

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
failed=

# Runs a checker, which fails when it says anything.
silent() {
    "$@" >"$scratch/said" 2>&1 || failed=1
    if [[ -s $scratch/said ]]; then
        echo "$*:"
        cat "$scratch/said"
        failed=1
    fi
}

# That the name of the program has a capital is only a hint, and stays.
validateMetainfo() {
    local status=0
    appstreamcli validate --pedantic --no-net "$1" >"$scratch/metainfo" 2>&1 || status=$?
    grep -v -e '^$' -e 'cid-contains-uppercase-letter' -e 'Validation was successful' \
        "$scratch/metainfo" || true
    return "$status"
}

# The scheme stands at the head of the standard types.
sed -n '/^<!DOCTYPE mime-info \[/,/^]>/p' /usr/share/mime/packages/freedesktop.org.xml |
    sed '1d;$d' >"$scratch/mime-info.dtd"
[[ -s $scratch/mime-info.dtd ]]

silent desktop-file-validate packaging/desktop/com.ventrel.Tabulet.desktop
silent validateMetainfo packaging/metainfo/com.ventrel.Tabulet.metainfo.xml
silent xmllint --noout --dtdvalid "$scratch/mime-info.dtd" packaging/mime/com.ventrel.Tabulet.xml
mapfile -t drawings < <(find packaging/icons -name '*.svg')
silent xmllint --noout "${drawings[@]}"
silent mandoc -T lint -W style docs/tabulet.1
silent packaging/changelog.py --check
[[ -z $failed ]]
