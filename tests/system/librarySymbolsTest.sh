#!/usr/bin/env bash
# Lists what the library shows to the linker and fails on a name outside its namespace: it could
# clash with a name of the program that links it.
#
# usage: librarySymbolsTest.sh STATIC SHARED
set -euo pipefail

static=$1
shared=$2

# Weak symbols of the static library are instances of the standard library's templates, of which
# every program has its own.
strangersInStatic() {
    nm --demangle --extern-only --defined-only "$static" |
        awk 'NF > 2 && $2 !~ /[VWu]/' | sed 's/^[^ ]* . //' |
        grep -v '^\(\(typeinfo\( name\)\?\|vtable\|guard variable\) for \)\?plist::' || true
}

# Of the shared one nothing else is visible, and of the internals only what public headers call.
strangersInShared() {
    nm --demangle --dynamic --defined-only "$shared" | sed 's/^[^ ]* . //' |
        grep -v '^\(\(typeinfo\( name\)\?\|vtable\) for \)\?plist::' || true
}

internalsInShared() {
    nm --demangle --dynamic --defined-only "$shared" |
        grep -o 'plist::detail::[A-Za-z]*' | sort -u | grep -vx 'plist::detail::PlistCell' || true
}

# Every function that is not internal is there for callers. A friend that only its class declares
# stays hidden, for one.
hiddenInShared() {
    comm -23 \
        <(nm --extern-only --defined-only "$static" | awk '$2 == "T" { print $3 }' | sort -u) \
        <(nm --dynamic --defined-only "$shared" | awk '$2 == "T" { print $3 }' | sort -u) |
        c++filt | grep -v '^plist::detail::' || true
}

fail() {
    printf '%s\n' "$@"
    exit 1
}

strangers=$(strangersInStatic)
[[ -z $strangers ]] || fail "outside the namespace, static:" "$strangers"
strangers=$(strangersInShared)
[[ -z $strangers ]] || fail "outside the namespace, shared:" "$strangers"
internals=$(internalsInShared)
[[ -z $internals ]] || fail "internals, shared:" "$internals"

hidden=$(hiddenInShared)
[[ -z $hidden ]] || fail "public, but hidden in the shared library:" "$hidden"

# A list that is empty by mistake would hide everything.
nm --demangle --extern-only --defined-only "$static" | grep ' T plist::PlistCodec::read(' >/dev/null
nm --demangle --dynamic --defined-only "$shared" | grep ' T plist::PlistCodec::read(' >/dev/null
