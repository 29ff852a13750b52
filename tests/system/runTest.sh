#!/usr/bin/env bash
# ./run says what is wrong with a path at once, before it installs or builds anything.
#
# usage: runTest.sh SOURCE
set -euo pipefail

run=$1/run
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"

# Runs ./run with the arguments after the first two, and compares its message and exit code.
expect() {
    local code=$1 message=$2 said status=0
    shift 2
    said=$("$run" "$@" 2>&1 </dev/null) || status=$?
    if [[ $said != "$message" || $status -ne $code ]]; then
        printf 'run %s\n  said      %s\n  expected  %s\n  exit code %d, expected %d\n' \
            "$*" "$said" "$message" "$status" "$code"
        exit 1
    fi
}

mkdir folder
expect 1 "run: “missing.plist” does not exist." missing.plist
expect 1 "run: “folder” is a folder, and Tabulet opens files." folder
expect 1 "run: “” does not exist." ""

touch secret.plist
chmod 000 secret.plist
# The administrator may read everything.
if [[ ! -r secret.plist ]]; then
    expect 1 "run: “secret.plist” cannot be read: you have no permission." secret.plist
fi

mkfifo pipe
expect 1 "run: “pipe” is not a regular file." pipe

"$run" --help | grep -q '^usage: ./run'
