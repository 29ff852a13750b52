#!/usr/bin/env bash
# On Wayland the windows name the desktop entry as their application. The compositor is headless.
#
# usage: waylandIdentityTest.sh SOURCE PROGRAM
set -euo pipefail

source=$1
program=$2
for each in sway swaymsg; do
    command -v "$each" >/dev/null || {
        echo "$each is not installed."
        exit 77
    }
done
[[ -n $(find /usr/lib -path '*/qt6/plugins/platforms/libqwayland-generic.so' -print -quit) ]] || {
    echo "qt6-wayland is not installed."
    exit 77
}
scratch=$(mktemp -d)
processes=()
cleanUp() {
    [[ ${#processes[@]} -eq 0 ]] || kill "${processes[@]}" 2>/dev/null || true
    wait
    rm -rf "$scratch"
}
trap cleanUp EXIT
cd "$scratch"

waitFor() {
    local name=$1 tries
    shift
    for ((tries = 0; tries < 300; ++tries)); do
        ! "$@" >/dev/null 2>&1 || return 0
        sleep 0.1
    done
    echo "After 30 seconds still not: $name"
    cat ./*.log
    exit 1
}

# The compositor does not run as the administrator.
under=()
if [[ $(id -u) -eq 0 ]]; then
    under=(setpriv --reuid=nobody --regid=nogroup --clear-groups)
    chown nobody:nogroup "$scratch"
fi
export SWAYSOCK=$scratch/sway.socket
unset DISPLAY WAYLAND_DISPLAY
echo 'xwayland disable' >sway.conf
XDG_RUNTIME_DIR=$scratch WLR_BACKENDS=headless WLR_RENDERER=pixman WLR_LIBINPUT_NO_DEVICES=1 LIBSEAT_BACKEND=noop \
    "${under[@]}" sway --config sway.conf >sway.log 2>&1 &
processes+=($!)
waitFor "the compositor runs" swaymsg -t get_version
display=("$scratch"/wayland-[0-9])

WAYLAND_DISPLAY=${display[0]} QT_QPA_PLATFORM=wayland "$program" "$source/scripts/sample.plist" \
    >program.log 2>&1 &
processes+=($!)
hasItsName() {
    swaymsg -t get_tree | grep -q '"app_id": "com.ventrel.Tabulet"'
}
waitFor "a window with the name of the desktop entry" hasItsName
[[ -f $source/packaging/desktop/com.ventrel.Tabulet.desktop ]]
