#!/usr/bin/env bash
# Runs a command in a locale whose decimal point is a comma; exits 77 (skipped) where there is none.
# The locale is made in the folder FOLDER if the system lacks it, which takes no administrator.
#
# usage: withCommaLocale.sh FOLDER COMMAND…
set -euo pipefail

folder=$1
shift
wanted=de_DE.UTF-8

if ! locale -a | grep -qix 'de_DE\.utf-\?8'; then
    if [[ ! -r /usr/share/i18n/locales/de_DE ]]; then
        echo "The locale $wanted is not installed and cannot be made; skipped."
        exit 77
    fi
    export LOCPATH=$folder
    if [[ ! -e $folder/$wanted/LC_NUMERIC ]]; then
        mkdir -p "$folder"
        # It warns about details that do not matter here, with an exit code of 1.
        localedef --inputfile=de_DE --charmap=UTF-8 "$folder/$wanted" 2>/dev/null || [[ $? -eq 1 ]]
    fi
fi

# Asked of a program, for the shell itself does not look at LOCPATH again.
if [[ $(LC_ALL=$wanted env printf '%.1f' 1) != 1,0 ]]; then
    echo "The locale $wanted does not work here."
    exit 1
fi
LC_ALL=$wanted exec "$@"
