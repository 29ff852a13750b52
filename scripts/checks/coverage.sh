#!/usr/bin/env bash
# Runs the tests of the format library counting the lines that run, and fails if fewer than
# TABULET_COVERAGE percent (97) of PlistCore ran. Lists the lines that did not.
set -euo pipefail

wanted=${TABULET_COVERAGE:-97}
root=$PWD
build=$root/build/coverage
cmake --preset coverage
cmake --build --preset coverage --parallel "$(nproc)" --target PlistCoreTests
find "$build" -name '*.gcda' -delete
ctest --preset coverage --parallel "$(nproc)" --label-exclude slow --tests-regex '^PlistCoreTests'

rm -rf "$build/lines"
mkdir "$build/lines"
cd "$build/lines"
# By the notes of the compiler, not by the counts: what no test links has no counts at all.
find "$build/PlistCore" -name '*.gcno' -print0 |
    xargs -0 gcov --relative-only --source-prefix "$root" --preserve-paths >/dev/null 2>&1

# A line of a .gcov file is "count:number:text"; ##### stands for lines that never ran, = for those
# that only ran into an exception, and - for those without code.
awk -F: -v wanted="$wanted" '
    FNR == 1 { name = FILENAME; sub(/\.gcov$/, "", name); gsub(/#/, "/", name) }
    { count = $1; gsub(/ /, "", count); line = $2 + 0 }
    line == 0 || count == "-" { next }
    { ++all }
    count ~ /^[#=]/ { ++missed; print name ":" line ": " substr($0, index($0, $3)) }
    END {
        if (all == 0) { print "No line was counted."; exit 1 }
        percent = 100 * (all - missed) / all
        printf "%.2f %% of %d lines ran\n", percent, all
        exit percent < wanted
    }' ./*.cpp.gcov
