#!/usr/bin/env bash
# What the library needs is said in one sentence where it is missing: at find_package() and where
# the library itself is configured.
#
# usage: libraryRequirementsTest.sh SOURCE BUILD COMPILER
set -euo pipefail

source=$1
build=$2
compiler=$3
tools=$(dirname -- "${BASH_SOURCE[0]}")/libraryTools.sh
# shellcheck source=tests/system/libraryTools.sh
source "$tools"

makeScratch
installLibrary "$build" "$scratch/prefix"

# Configures a project whose text, behind its first two lines, is the argument; it has to fail with
# the sentence that stands in `expected`.
checkRefusal() {
    mkdir "$scratch/project"
    printf '%s\n' 'cmake_minimum_required(VERSION 3.22)' 'project(Other LANGUAGES CXX)' "$@" \
        >"$scratch/project/CMakeLists.txt"
    if cmake -S "$scratch/project" -B "$scratch/project/build" -G Ninja \
        -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$scratch/prefix" \
        >/dev/null 2>"$scratch/errors"; then
        echo "configured, but should say: $expected"
        exit 1
    fi
    # CMake breaks lines between words.
    tr -s ' \n' ' ' <"$scratch/errors" >"$scratch/line"
    grep -qF "$expected" "$scratch/line" || {
        cat "$scratch/errors"
        exit 1
    }
    rm -r "$scratch/project"
}

find='find_package(PlistCore 0.1 REQUIRED)'
add="add_subdirectory($source/PlistCore PlistCore)"
for way in "$find" "$add"; do
    expected="PlistCore needs a 64-bit system."
    checkRefusal 'set(CMAKE_SIZEOF_VOID_P 4)' "$way"

    expected="PlistCore needs C++20, but CMAKE_CXX_STANDARD is 17."
    checkRefusal 'set(CMAKE_CXX_STANDARD 17)' "$way"

    expected="PlistCore needs utf8proc, which pkg-config finds as libutf8proc."
    checkRefusal 'set(ENV{PKG_CONFIG_LIBDIR} /nowhere)' "$way"
done

expected="PlistCore"
checkRefusal 'find_package(PlistCore 0.99 REQUIRED)'
