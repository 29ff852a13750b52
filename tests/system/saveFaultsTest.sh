#!/usr/bin/env bash
# Saves over a file again and again, and each time another call of the system fails or is the last
# one before the process is killed. Whatever happens, the old content is there, or the new one, or a
# complete copy of the old one with a record of the file. Both for files that are replaced and for
# those that are overwritten, and on a disk that is full.
#
# usage: saveFaultsTest.sh PROGRAM
set -euo pipefail

program=$1
command -v strace >/dev/null || {
    echo "strace is not installed."
    exit 77
}
strace -qq -o /dev/null true 2>/dev/null || {
    echo "strace may not watch processes here."
    exit 77
}

scratch=$(mktemp -d)
mounted=
cleanUp() {
    [[ -z $mounted ]] || umount "$mounted"
    rm -rf "$scratch"
}
trap cleanUp EXIT
cd "$scratch"

head -c 100000 /dev/zero | tr '\0' 'o' >old
head -c 150000 /dev/zero | tr '\0' 'n' >new

fail() {
    echo "$kind, $fault: $1"
    ls -lAR case
    cat said
    exit 1
}

# A file with the old content; a second name of it has it overwritten.
prepare() {
    rm -rf case
    mkdir case
    cp old case/file
    [[ $kind == replaced ]] || ln case/file case/other
}

isOld() { cmp -s case/file old; }
isNew() { cmp -s case/file new; }
safetyCopies() { find case/state -name '*.old' 2>/dev/null; }

# A complete copy of the old content, and a record that names the file.
hasSafetyCopy() {
    local copy
    copy=$(safetyCopies)
    [[ -n $copy ]] && cmp -s "$copy" old && grep -q '"file": ".*/case/file"' "${copy%.old}.json"
}

# Saves while strace does what the option says.
save() {
    local status=0
    strace -qq -f -o trace -e "inject=$1" "$program" new case/file case/state 2>said || status=$?
    return "$status"
}

killEverywhere() {
    local count=0 status
    while true; do
        count=$((count + 1))
        fault="killed at call $count"
        prepare
        status=0
        # The shell would say that the process was killed.
        save "%file,%desc:signal=KILL:when=$count" 2>/dev/null || status=$?
        if [[ $status -eq 0 ]]; then
            isNew || fail "not saved"
            break
        fi
        isOld || isNew || hasSafetyCopy || fail "the content is lost"
    done
    # Most of the calls load the program; the last ones save.
    [[ $count -gt 50 ]] || fail "only $count calls"
}

# Has each call of one kind fail in turn.
failEverywhere() {
    local call=$1 error=$2 reason=$3 count=0 status
    while true; do
        count=$((count + 1))
        fault="$call number $count fails with $error"
        prepare
        status=0
        save "$call:error=$error:when=$count" || status=$?
        grep -q INJECTED trace || break
        if [[ $status -eq 0 ]]; then
            # Another way was found, or what failed does not matter.
            isNew || fail "not saved, and not said so"
        elif [[ $status -eq 1 ]]; then
            grep -q "$reason" said || fail "not the reason"
            # The new file is in place, and whether its name will last is not known.
            isOld || hasSafetyCopy || { [[ $call == fsync ]] && isNew; } ||
                fail "the old content is lost"
        else
            isOld || fail "the program did not start, and changed the file"
        fi
        [[ -z $(find case -name '.tabulet-*') || $call == unlink ]] || fail "a file is left over"
    done
}

# What the new file cannot have for want of room is no reason to overwrite the old one.
failAttributes() {
    local error status
    kind=replaced
    for error in ENOSPC EDQUOT EIO; do
        fault="the mode cannot be given, $error"
        prepare
        status=0
        save "fchmod:error=$error" || status=$?
        [[ $status -eq 1 ]] || fail "status $status"
        isOld || fail "the old content is lost"
    done
    fault="the mode may not be given"
    prepare
    save fchmod:error=EPERM || fail "not overwritten instead"
    isNew || fail "not saved"
}

fillDisk() {
    fault="a full disk"
    mkdir -p full
    if ! mount -t tmpfs -o size=256k tmpfs full 2>/dev/null; then
        echo "A file system cannot be mounted here; the full disk is left out."
        return 0
    fi
    mounted=$PWD/full
    local status
    for kind in replaced overwritten; do
        rm -rf full/* case
        mkdir full/case
        ln -s full/case case
        cp old case/file
        [[ $kind == replaced ]] || ln case/file case/other
        head -c 120000 /dev/zero >full/ballast
        status=0
        "$program" new case/file "$scratch/state" 2>said || status=$?
        [[ $status -eq 1 ]] || fail "status $status"
        grep -q 'No space left on device' said || fail "not the reason"
        isOld || fail "the old content is lost"
        rm case
    done
}

# A file that is a mount itself, as containers have them, takes no other in its place.
mountFile() {
    kind=mounted fault="a file that is a mount"
    mkdir -p case
    cp old file
    : >case/file
    if ! mount --bind file case/file 2>/dev/null; then
        echo "A file cannot be mounted here; that is left out."
        return 0
    fi
    mounted=$PWD/case/file
    "$program" new case/file "$scratch/state" 2>said || fail "not saved"
    cmp -s case/file new || fail "not the new content"
    cmp -s file new || fail "the new content is not in the mounted file"
    umount "$mounted"
    mounted=
    rm -rf case
}

mountFile
for kind in replaced overwritten; do
    killEverywhere
    for call in openat write fsync close rename fchmod ftruncate fallocate mkdir read; do
        failEverywhere "$call" EIO 'Input/output error'
    done
    for call in write fsync fallocate rename; do
        failEverywhere "$call" ENOSPC 'No space left on device'
        failEverywhere "$call" EDQUOT 'Disk quota exceeded'
    done
done
failAttributes
fillDisk
