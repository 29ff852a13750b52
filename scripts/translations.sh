#!/usr/bin/env bash
# Brings the message catalogues up to date with the sources: new texts come in as unfinished, those
# that are gone go.
#
# usage: translations.sh [FOLDER [LUPDATE]]
#        FOLDER holds other catalogues than those of the sources.
set -euo pipefail

cd "$(dirname "$0")/.."
folder=${1:-app/ui/translations}
lupdate=${2:-$(qmake6 -query QT_HOST_BINS)/lupdate}

for catalogue in "$folder"/*.ts; do
    arguments=(-silent -locations none -no-obsolete -no-ui-lines)
    # English needs the plurals only: the other texts are those in the sources.
    [[ $catalogue == *_en.ts ]] && arguments+=(-pluralonly)
    "$lupdate" "${arguments[@]}" app -ts "$catalogue"
done
