# Starts a test of real windows again on a virtual display of its own, and gets it its tools. To be
# sourced by it first, with the arguments SOURCE PROGRAM, which "source" and "program" are set to.
# The test may set before: "needs", programs that it needs besides, and "under", a command that is
# to start it there. Exit code 77 says that a program is not there.
# shellcheck shell=bash disable=SC2034

here=$(dirname -- "$(realpath -- "${BASH_SOURCE[0]}")")
if [[ ${1:-} != --on-display ]]; then
    for each in xdotool ${needs:-}; do
        command -v "$each" >/dev/null || {
            echo "$each is not installed."
            exit 77
        }
    done
    # Each start of the program is to run alone, unless the test brings a bus of its own.
    export DBUS_SESSION_BUS_ADDRESS=disabled:
    # shellcheck disable=SC2086
    exec "$here/withDisplay.sh" ${under:-} "$0" --on-display "$@"
fi
source=$2
program=$3
# shellcheck source=tests/system/windowTools.sh
source "$here/windowTools.sh"
