#!/usr/bin/env bash
# Every text of the program is in every catalogue, translated, with the same placeholders; and the
# program speaks the first of the user's languages that it has.
#
# usage: translationsTest.sh SOURCE LUPDATE PROGRAM
set -euo pipefail

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
catalogues=$1/app/ui/translations

[[ -s $catalogues/tabulet_en.ts && -s $catalogues/tabulet_de.ts ]]
cp "$catalogues"/*.ts "$scratch"
# It complains of definitions that it does not follow, which hold no texts.
"$1/scripts/translations.sh" "$scratch" "$2" 2>"$scratch/log" || {
    cat "$scratch/log"
    exit 1
}
diff -r --exclude=log "$catalogues" "$scratch" || {
    echo "The catalogues are not up to date: run scripts/translations.sh and translate."
    exit 1
}

python3 - "$catalogues"/*.ts <<'END'
import re
import sys
import xml.etree.ElementTree

failures = 0
for path in sys.argv[1:]:
    for message in xml.etree.ElementTree.parse(path).getroot().iter("message"):
        source = message.find("source").text
        translation = message.find("translation")
        forms = translation.findall("numerusform") or [translation]
        placeholders = set(re.findall("%[0-9nL]+", source))
        for text in (form.text or "" for form in forms):
            if translation.get("type") or not text:
                print(f"{path}: not translated: {source}")
                failures += 1
            elif set(re.findall("%[0-9nL]+", text)) != placeholders:
                print(f"{path}: other placeholders: {source}")
                failures += 1
            elif source.count("&") != text.count("&"):
                print(f"{path}: another number of shortcuts: {source}")
                failures += 1
sys.exit(failures != 0)
END

# The second line of --help, for a user's list of languages.
description() {
    LC_ALL='' LANG=C.UTF-8 LANGUAGE=$1 "$program" --help | sed -n 2p
}
program=$3
[[ $(description de) == "Ein Editor für Eigenschaftslisten." ]]
[[ $(description de_AT) == "Ein Editor für Eigenschaftslisten." ]]
[[ $(description tlh:de) == "Ein Editor für Eigenschaftslisten." ]]
[[ $(description en:de) == "An editor for property lists." ]]
[[ $(description tlh) == "An editor for property lists." ]]
