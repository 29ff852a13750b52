#!/usr/bin/env bash
# Checks that a program is hardened as cmake/Hardening.cmake says, and names no folder of the
# machine that built it.
#
# usage: hardening.sh BUILD, the folder of a Release build with the program
set -euo pipefail

program=$1/tabulet
failed=

expect() {
    local what=$1
    shift
    "$@" || {
        echo "$program: $what."
        failed=1
    }
}

headers=$(readelf --file-header --program-headers --wide "$program")
dynamic=$(readelf --dynamic --wide "$program")
symbols=$(readelf --dyn-syms --wide "$program")

expect "not position independent" grep -q 'FLAGS_1.* PIE' <<<"$dynamic"
expect "no part becomes read-only after relocation" grep -q GNU_RELRO <<<"$headers"
expect "symbols are bound late" grep -qE 'BIND_NOW|FLAGS_1.* NOW' <<<"$dynamic"
expect "the stack is not guarded" grep -q __stack_chk_fail <<<"$symbols"
expect "calls of the C library are not checked" grep -qE '__(mem|str|read|v?sn?printf)[a-z]*_chk' \
    <<<"$symbols"
expect "the stack is executable" grep -qE 'GNU_STACK .* RW ' <<<"$headers"
# The program does not show it, where no function needs more of the stack than a page.
expect "large frames may jump over the guard page" \
    grep -q -e '-fstack-clash-protection' "$1/compile_commands.json"
expect "knows where it was built" bash -c '! grep -qF "$0" "$1"' "$PWD/" "$program"
[[ -z $failed ]]
