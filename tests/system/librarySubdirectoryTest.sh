#!/usr/bin/env bash
# Builds the library inside another project, as a part of it.
#
# usage: librarySubdirectoryTest.sh SOURCE COMPILER
set -euo pipefail

source=$1
compiler=$2
tools=$(dirname -- "${BASH_SOURCE[0]}")/libraryTools.sh
# shellcheck source=tests/system/libraryTools.sh
source "$tools"

makeScratch
cat >"$scratch/CMakeLists.txt" <<TEXT
cmake_minimum_required(VERSION 3.22)
project(Other LANGUAGES CXX)
add_subdirectory($source/PlistCore PlistCore)
add_executable(static $source/docs/example/main.cpp)
target_link_libraries(static PRIVATE PlistCore::PlistCore)
add_executable(shared $source/docs/example/main.cpp)
target_link_libraries(shared PRIVATE PlistCore::Shared)
TEXT
cmake -S "$scratch" -B "$scratch/build" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" >/dev/null
cmake --build "$scratch/build" --target static shared >/dev/null
checkExample "$scratch/build/static"
checkExample "$scratch/build/shared"

# A part of another project installs nothing by itself.
cmake --install "$scratch/build" --prefix "$scratch/prefix" >/dev/null
[[ ! -e $scratch/prefix/include ]]
