#!/usr/bin/env bash
# Installs PlistCore as a package into a scratch folder, builds the README's example against it and
# compares what it prints.
#
# usage: libraryPackageTest.sh SOURCE BUILD COMPILER
set -euo pipefail

source=$1
build=$2
compiler=$3
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# The example in the README is the one that is built here.
awk '/^```cpp$/ { inside = 1; next } /^```$/ { inside = 0 } inside' "$source/README.md" |
    diff "$source/docs/example/main.cpp" -

cmake --install "$build" --prefix "$scratch/prefix" --component PlistCore >/dev/null
cmake -S "$source/docs/example" -B "$scratch/build" -G Ninja \
    -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$scratch/prefix" >/dev/null
cmake --build "$scratch/build"

"$scratch/build/example" | diff - /dev/fd/3 3<<'TEXT'
Name
Height
Lit
true
Line 1, column 22: Expected </array>.
TEXT
