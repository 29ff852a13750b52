#!/usr/bin/env bash
# Installs the packages in a fresh Debian, opens a file there as the desktop does, and removes them
# again: then not one file may differ from before.
#
# usage: cleanInstall.sh PACKAGES, the folder of the packages
set -euo pipefail

packages=$(realpath "$1")
root=$(mktemp -d)/root
trap 'rm -rf "$(dirname "$root")"' EXIT

# What a desktop brings, and what is needed to look; and what the packages depend on, so that only
# they come and go.
desktop=(shared-mime-info desktop-file-utils libglib2.0-bin hicolor-icon-theme man-db
    dbus-daemon xvfb xauth x11-utils openbox)
mapfile -t needed < <(
    dpkg-deb --field "$packages"/tabulet_*.deb Depends | tr ',' '\n' | sed 's/ *\([^ ]*\).*/\1/'
    echo libutf8proc-dev
)
mmdebstrap --quiet --variant=apt --include="$(
    IFS=,
    echo "${desktop[*]},${needed[*]}"
)" bookworm "$root"

# In a world of processes of its own, which ends with the command.
inside() {
    unshare --mount --pid --fork --kill-child --mount-proc="$root/proc" chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 \
        DEBIAN_FRONTEND=noninteractive "$@"
}

# All files with their content and permissions, but what apt and dpkg remember of their own work.
state() {
    (cd "$root" && find . -xdev \( -path ./proc -o -path ./sys -o -path ./dev -o -path ./tmp \
        -o -path ./packages -o -path ./home -o -path ./run -o -path ./var/lib/dpkg -o -path ./var/lib/apt \
        -o -path ./var/log -o -path ./var/cache \) -prune -o \
        \( -type f -printf '%m %u %g %p ' -exec sha256sum {} \; \) \
        -o -printf '%m %u %g %p %l\n' | LC_ALL=C sort)
}

inside useradd --create-home somebody
# The triggers have worked on what is there.
inside dpkg --triggers-only --pending
state >"$root.before"
mkdir "$root/packages"
cp "$packages"/*.deb "$root/packages"
inside sh -c 'apt-get -q -y install --no-install-recommends /packages/*.deb'

# --- The desktop knows them ---

inside grep -q '^application/x-bplist=com.ventrel.Tabulet.desktop' \
    /usr/share/applications/mimeinfo.cache
cp scripts/sample.plist "$root/tmp/sample.plist"
chmod a+r "$root/tmp/sample.plist"
inside gio info -a standard::content-type /tmp/sample.plist | grep -q 'application/x-plist+xml$'
inside man --whatis tabulet 2>/dev/null | grep -q 'property lists' ||
    [[ -f $root/usr/share/man/man1/tabulet.1.gz ]]

# --- It opens a file ---

cat >"$root/tmp/open" <<'TEXT'
openbox --sm-disable &
gio open /tmp/sample.plist
for try in $(seq 300); do
    if xwininfo -root -tree | grep -q '"sample.plist.*Tabulet'; then
        # Whoever has the name on the bus is asked to end, as at the end of a session.
        owner=$(gdbus call --session --dest org.freedesktop.DBus --object-path / \
            --method org.freedesktop.DBus.GetConnectionUnixProcessID com.ventrel.Tabulet)
        owner=${owner#*uint32 }
        kill "${owner%,*}"
        while gdbus call --session --dest org.freedesktop.DBus --object-path / \
            --method org.freedesktop.DBus.NameHasOwner com.ventrel.Tabulet | grep -q true; do
            sleep 0.1
        done
        exit 0
    fi
    sleep 0.1
done
echo "No window came."
xwininfo -root -tree
exit 1
TEXT
inside su somebody -c 'cd && xvfb-run -a dbus-run-session -- bash /tmp/open'
# The user's own folders hold what the manual says; the other files are of fonts and of the window
# manager.
(cd "$root/home/somebody" && find . -type f -newer "$root/tmp/open" \
    -not -path './.cache/fontconfig/*' -not -path './.cache/openbox/*' | LC_ALL=C sort) |
    diff - <(echo ./.config/tabulet/tabulet.ini)

# --- And goes ---

inside apt-get -q -y purge tabulet libplistcore0 libplistcore-dev
rm -rf "$root"/tmp/*
state | diff "$root.before" -

# --- The packages' own tests ---

inside apt-get -q update
inside sh -c 'apt-get -q -y install --no-install-recommends /packages/*.deb \
    cmake g++ ninja-build pkg-config'
mkdir "$root/tmp/source"
git ls-files -z debian/tests docs/example scripts | xargs -0 cp --parents --target-directory "$root/tmp/source"
for each in window example; do
    inside sh -c "mkdir /tmp/$each; cd /tmp/source && AUTOPKGTEST_TMP=/tmp/$each debian/tests/$each"
done
