# What tests of real windows have in common; sourced by them, with the program in $program. Each works
# in a scratch folder and leaves no process behind.
# shellcheck shell=bash disable=SC2034

scratch=$(mktemp -d)
processes=()
cleanUp() {
    local status=$? each
    # What was on the screen when a test failed stays in the home of the test.
    if [[ $status -ne 0 ]] && command -v import >/dev/null; then
        import -window root "$HOME/failure.png" && echo "The screen then: $HOME/failure.png"
    fi
    for each in "${processes[@]}"; do
        kill "$each" 2>/dev/null || true
    done
    rm -rf "$scratch"
}
trap cleanUp EXIT
cd "$scratch"
export QT_QPA_PLATFORM=xcb
# One line for each time that the rows of the outline are made.
export QT_LOGGING_RULES="com.ventrel.Tabulet.debug=true"

# Waits until a condition holds; the name of what it waits for is the first argument.
waitFor() {
    local name=$1 tries
    shift
    for ((tries = 0; tries < 300; ++tries)); do
        ! "$@" || return 0
        sleep 0.1
    done
    echo "After 30 seconds still not: $name"
    cat log
    exit 1
}

# A property list with the lines of standard input in its dictionary.
plist() {
    echo '<?xml version="1.0" encoding="UTF-8"?>'
    echo '<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN"' \
        '"http://www.apple.com/DTDs/PropertyList-1.0.dtd">'
    echo '<plist version="1.0">'
    echo '<dict>'
    sed 's/^/\t/'
    echo '</dict>'
    echo '</plist>'
}

# Whether two files are the same.
isSavedAs() {
    cmp -s "$1" "$2"
}

title() {
    xdotool getwindowname "$window"
}

titleIs() {
    [[ $(title) == "$1" ]]
}

isModified() {
    [[ $(title) == *\** ]]
}

isUnmodified() {
    [[ $(title) != *\** ]]
}

rowsMade() {
    grep -c 'Rows: ' log || true
}

rowsWereMadeSince() {
    [[ $(rowsMade) -gt $1 ]]
}

hasFocus() {
    [[ $(xdotool getwindowfocus) == "$window" ]]
}

# Brings the window of the variable up and waits until it has the keyboard.
activate() {
    xdotool windowactivate "$window"
    waitFor "the window has the keyboard" hasFocus
}

# Sets "window" to that of the process which shows the file.
findWindow() {
    window=$(xdotool search --sync --onlyvisible --pid "$process" --name "^$1" | head -n 1)
}

# Opens the files in the program and waits until the window of the first has the keyboard. Sets
# "process" and "window".
start() {
    : >log
    "$program" "$@" 2>log &
    process=$!
    processes+=("$process")
    findWindow "$1"
    waitFor "the window shows $1" titleIs "$1 — Tabulet"
    waitFor "the documents are read" rowsWereMadeSince $#
    activate
}

# Presses a key that must make rows anew.
pressForRows() {
    local before
    before=$(rowsMade)
    xdotool key "$1"
    waitFor "rows after $1" rowsWereMadeSince "$before"
}

# Saves, and waits until that is done.
save() {
    waitFor "the title shows a change" isModified
    xdotool key ctrl+s
    waitFor "the document is saved" isUnmodified
}

quit() {
    xdotool key ctrl+q
    local status=0
    wait "$process" || status=$?
    if [[ $status -ne 0 ]]; then
        echo "The program ended with $status."
        exit 1
    fi
}
