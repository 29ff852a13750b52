#!/usr/bin/env bash
# Lets every fuzz target search for TABULET_FUZZ_SECONDS (900) seconds, beginning with its seeds.
# Fails on the first crash, hang or leak and names the input that shows it.
set -euo pipefail

seconds=${TABULET_FUZZ_SECONDS:-900}
root=$PWD
cmake --preset fuzz
cmake --build --preset fuzz --parallel "$(nproc)"

fuzzOne() {
    local program=$1 name seeds found
    name=$(basename "$program" Fuzzer)
    seeds=$root/fuzz/seeds/$name
    found=$root/build/fuzz/found/$name
    mkdir -p "$found"
    local options=(-max_total_time="$seconds" -timeout=25 -rss_limit_mb=4096 -print_final_stats=1
        -artifact_prefix="$found-")
    [[ ! -f $root/fuzz/plist.dict ]] || options+=(-dict="$root/fuzz/plist.dict")
    "$program" "${options[@]}" "$found" "$seeds"
}
export -f fuzzOne
export root seconds

find build/fuzz/fuzz -maxdepth 1 -type f -name '*Fuzzer' -print0 |
    xargs -0 -P "$(nproc)" -I{} bash -c 'fuzzOne "$1"' _ {}
