# What tests of real windows have in common; sourced by them, with the program in $program. Each works
# in a scratch folder and leaves no process behind.
# shellcheck shell=bash disable=SC2034

scratch=$(mktemp -d)
processes=()
# What was on the screen when a test failed stays in the home of the test: a picture and a list of
# the windows.
keepTheScreen() {
    echo "The screen then: $HOME/failure.png and .txt"
    import -window root "$HOME/failure.png" || true
    xwininfo -root -tree >"$HOME/failure.txt" || true
}

cleanUp() {
    local status=$? each
    [[ $status -eq 0 ]] || keepTheScreen
    for each in "${processes[@]}"; do
        kill "$each" 2>/dev/null || true
        kill -CONT "$each" 2>/dev/null || true
    done
    # What they write at their end must not come back into a folder that is deleted.
    for each in "${processes[@]}"; do
        wait "$each" 2>/dev/null || true
    done
    rm -rf "$scratch"
}
trap cleanUp EXIT
cd "$scratch"
# What a run that failed has left unsaved is not to be offered in the next.
export XDG_STATE_HOME=$scratch/state
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

# Sets "window" to that of the process which shows the file, unless another window goes while this
# looks through all of them, which makes it fail.
hasFoundWindow() {
    window=$(xdotool search --onlyvisible --all --pid "$process" --name "^$1" | head -n 1)
}

findWindow() {
    waitFor "there is a window for $1" hasFoundWindow "$1"
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

# Clicks upwards from a height of the window, with a distance that makes no double clicks, until a
# click meets a control and rows are made. Sets "hit".
clickUpwards() {
    local x=$1 before tries
    before=$(rowsMade)
    for ((hit = $2; hit > 60; hit -= 6)); do
        xdotool mousemove --window "$window" "$x" "$hit" click 1
        for ((tries = 0; tries < 6; ++tries)); do
            ! rowsWereMadeSince "$before" || return 0
            sleep 0.1
        done
    done
    echo "No click on a control made rows."
    exit 1
}

clickAgain() {
    local before
    before=$(rowsMade)
    xdotool click 1
    waitFor "rows after a click on a control" rowsWereMadeSince "$before"
}

# Finds out where the rows are, as their heights and those of the menus differ: opens and closes the
# group and the root by their controls, which stand in the middle of their rows. Sets "firstRow",
# the middle of the root, and "rowHeight", in hundredths of a pixel. The group, in row "groupRow", is
# the first that a search from below meets.
measureRows() {
    local below=7 group
    clickUpwards 26 320
    group=$hit
    clickAgain
    clickUpwards 12 $((group - 20))
    clickAgain
    firstRow=$((100 * (hit - below)))
    rowHeight=$(((100 * (group - below) - firstRow) / groupRow))
}

# Points of the key of a row: in its upper and in its lower half.
above() {
    echo $(((firstRow + $1 * rowHeight - rowHeight / 4) / 100))
}

below() {
    echo $(((firstRow + $1 * rowHeight + rowHeight / 4) / 100))
}

pointAt() {
    xdotool mousemove --window "$1" 60 "$2"
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
