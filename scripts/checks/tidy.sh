#!/usr/bin/env bash
# Searches our sources for mistakes with clang-tidy, as .clang-tidy says.
#
# usage: tidy.sh BUILD [SOURCE…]      BUILD: a configured and built folder; SOURCE: all by default
#
# A source that was clean is not searched again until it, a header of ours that it includes, its
# compiler options, the configuration or the tool changes: the build knows the headers, and a clean
# search leaves an empty file named after a digest of all of these.
set -euo pipefail

build=$1
shift
tool=$(command -v clang-tidy-14 || command -v clang-tidy)
clean=$PWD/build/tidy
mkdir -p "$clean"
# Without the precompiled headers of the build, which are another compiler's: every file has to
# include all that it uses.
sed -E 's/ -Winvalid-pch -include [^ ]+//; s/ -fpch-preprocess//' "$build/compile_commands.json" \
    >"$clean/compile_commands.json"
common=$(cat <("$tool" --version) .clang-tidy tests/.clang-tidy | sha256sum)

# Prints "source header header …" for every source of ours that was built, as paths from here.
dependencies() {
    ninja -C "$build" -t deps | awk -v root="$PWD/" '
        function flush() { if (source != "") print source headers; source = headers = "" }
        /^[^ ]/ { flush() }
        /^ / {
            path = $1
            sub(/^\.\.\/\.\.\//, root, path)
            if (index(path, root) != 1) next
            path = substr(path, length(root) + 1)
            if (path ~ /^build\//) next
            if (source == "" && path ~ /\.cpp$/) source = path
            else headers = headers " " path
        }
        END { flush() }' | sort -u -k1,1
}

# Searches the source that is the first argument; all arguments together decide whether it has to.
searchOne() {
    local source=$1 digest
    digest=$({
        echo "$common"
        grep -F "/$source\"" "$clean/compile_commands.json"
        cat "$@"
    } | sha256sum | cut -d ' ' -f 1)
    if [[ ! -e $clean/$digest ]]; then
        echo "$source"
        # What it says on standard error is a count of warnings in other people's headers.
        "$tool" --quiet -p "$clean" "$source" 2>"$clean/$digest.errors" || {
            grep -v 'warnings\? generated\|warnings treated as errors' "$clean/$digest.errors" || true
            return 1
        }
        rm -f "$clean/$digest.errors"
        touch "$clean/$digest"
    fi
}
export -f searchOne
export tool clean common

chosen=$(printf '%s\n' "$@")
dependencies | while read -r source headers; do
    [[ -z $chosen ]] || grep -qxF "$source" <<<"$chosen" || continue
    [[ -e $source ]] || continue
    printf '%s\n' "$source${headers:+ $headers}"
done | xargs -P "$(nproc)" -L 1 bash -c 'searchOne "$@"' _
