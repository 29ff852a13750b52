#!/usr/bin/env bash
# What the desktop takes files for once our types are known, asked of GIO and of Qt; that text
# editors are still offered for what is text; and that nothing else changes, or stays behind.
#
# usage: mimeTypesTest.sh SOURCE PROGRAM, a program that prints what Qt takes files for
set -euo pipefail

source=$1
askQt=$2
for each in gio update-mime-database update-desktop-database; do
    command -v "$each" >/dev/null || {
        echo "$each is not installed."
        exit 77
    }
done
standard=/usr/share/mime/packages/freedesktop.org.xml
[[ -f $standard ]] || {
    echo "The standard MIME types are not installed."
    exit 77
}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
failed=

complain() {
    echo "$*"
    failed=1
}

# The standard types without and with ours, each in a prefix of its own. Qt puts types in order only
# within one folder, so ours lie beside the standard ones, as they do when installed.
mkdir -p before/mime/packages before/applications
cp "$standard" before/mime/packages
cat >before/applications/text-editor.desktop <<'TEXT'
[Desktop Entry]
Type=Application
Name=Text editor
Exec=true %F
MimeType=text/plain;
TEXT
cat >before/applications/xml-editor.desktop <<'TEXT'
[Desktop Entry]
Type=Application
Name=XML editor
Exec=true %F
MimeType=application/xml;
TEXT
cp -R before after
cp "$source/packaging/mime/com.ventrel.Tabulet.xml" after/mime/packages
# As if it were installed.
sed 's/^\(TryExec\|Exec\)=tabulet/\1=true/' "$source/packaging/desktop/com.ventrel.Tabulet.desktop" \
    >after/applications/com.ventrel.Tabulet.desktop
update() {
    # Without waiting for the disk after each of a thousand files.
    PKGSYSTEM_ENABLE_FSYNC=0 XDG_DATA_DIRS=$PWD/$1 update-mime-database "$1/mime"
    update-desktop-database "$1/applications"
}
update before
update after

# --- The files ---

# Copies a file of the tests under the name of each kind of property list.
underEachName() {
    local extension
    for extension in plist entitlements xcprivacy stringsdict; do
        cp "$source/tests/data/$1" "files/$2.$extension"
    done
}
mkdir files
underEachName allTypes.plist xml
underEachName allTypes.binary.plist binary
underEachName project.openstep openstep
underEachName utf16.plist utf16
cp "$source/tests/data/allTypes.plist" files/xml-without-extension
cp "$source/tests/data/allTypes.binary.plist" files/binary-without-extension
cp "$source/tests/data/garden.strings" files/garden.strings
cp "$source/tests/data/allTypes.plist" files/named.xml
: >files/empty.plist
{
    echo '<?xml version="1.0" encoding="UTF-8"?>'
    echo "<!-- $(printf 'a long remark %.0s' {1..40}) -->"
    tail -n +2 "$source/tests/data/allTypes.plist"
} >files/remark.plist
cat >files/profile.spx <<'TEXT'
<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<array><dict><key>_SPCommandLineArguments</key><array/></dict></array>
</plist>
TEXT
cp files/profile.spx files/profile-without-extension
echo '<?xml version="1.0"?><html xmlns="http://www.w3.org/1999/xhtml"/>' >files/page.xhtml
echo '<svg xmlns="http://www.w3.org/2000/svg"/>' >files/drawing.svg
echo '{"plist": true}' >files/data.json
echo 'A plist is a property list.' >files/prose.txt
echo 'A plist is a property list.' >files/prose-without-extension

# The types of all files, "name type" a line.
typesByGio() {
    local each
    for each in files/*; do
        echo "${each#files/} $(XDG_DATA_DIRS=$PWD/$1 gio info -a standard::content-type "$each" |
            sed -n 's/^ *standard::content-type: //p')"
    done
}

typesByQt() {
    paste -d ' ' <(basename --multiple files/*) <(XDG_DATA_DIRS=$PWD/$1 "$askQt" files/*)
}

# --- What each is taken for ---

cat >expected <<'TEXT'
binary-without-extension application/x-bplist
binary.entitlements application/x-bplist
binary.plist application/x-bplist
binary.stringsdict application/x-bplist
binary.xcprivacy application/x-bplist
empty.plist application/x-plist
openstep.entitlements application/x-plist
openstep.plist application/x-plist
openstep.stringsdict application/x-plist
openstep.xcprivacy application/x-plist
remark.plist application/x-plist+xml
utf16.entitlements application/x-plist
utf16.plist application/x-plist
utf16.stringsdict application/x-plist
utf16.xcprivacy application/x-plist
xml-without-extension application/x-plist+xml
xml.entitlements application/x-plist+xml
xml.plist application/x-plist+xml
xml.stringsdict application/x-plist+xml
xml.xcprivacy application/x-plist+xml
TEXT
# What is empty is text for GIO, before it looks at names.
sed 's|^empty.plist .*|empty.plist text/plain|' expected >expected-of-gio

ours() {
    (cd files && printf '%s\n' ./*.{plist,entitlements,stringsdict,xcprivacy} ./{xml,binary}-*) |
        sed 's|^./||' | sort
}
typesByGio after | join - <(ours) | diff expected-of-gio - || complain "So much for GIO."
typesByQt after | join - <(ours) | diff expected - || complain "So much for Qt."

# --- What each is offered to ---

expectPrograms() {
    local type=$1
    shift
    XDG_DATA_DIRS=$PWD/after gio mime "$type" >programs
    head -n 1 programs | grep -q 'Tabulet.desktop$' || complain "Another one opens $type."
    sed -n '/^Registered/,/^Recommended/s/^\t//p' programs | sort |
        diff <(printf '%s\n' "$@") - || complain "So many programs for $type."
}
expectPrograms application/x-plist com.ventrel.Tabulet.desktop text-editor.desktop
expectPrograms application/x-plist+xml com.ventrel.Tabulet.desktop text-editor.desktop \
    xml-editor.desktop
expectPrograms application/x-bplist com.ventrel.Tabulet.desktop

# --- Nothing else ---

for ask in typesByGio typesByQt; do
    diff <("$ask" before | join -v 1 - <(ours)) <("$ask" after | join -v 1 - <(ours)) ||
        complain "Files that are not ours have changed for $ask."
done

# In the lists of the database lines are added, and only such that speak of our types.
for list in aliases generic-icons globs globs2 icons subclasses types XMLnamespaces; do
    diff <(sort "before/mime/$list") <(sort "after/mime/$list") | grep '^[<>]' |
        grep -v '^> .*application/x-b\?plist' && complain "That has changed in $list."
done
comm -3 <(cd before/mime && find . | sort) <(cd after/mime && find . | sort) |
    diff /dev/fd/3 - 3<<'TEXT' || complain "Other files came, or went."
	./application/x-bplist.xml
	./application/x-plist+xml.xml
	./application/x-plist.xml
	./packages/com.ventrel.Tabulet.xml
TEXT

# Without the definition all is as it was.
rm after/mime/packages/com.ventrel.Tabulet.xml after/applications/com.ventrel.Tabulet.desktop
update after
diff -r before after || complain "That stays behind."
[[ -z $failed ]]
