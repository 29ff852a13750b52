#!/usr/bin/env bash
# Checks that every C++ file is laid out as .clang-format says. With --fix it lays them out.
set -euo pipefail

mode=(--dry-run -Werror)
[[ ${1:-} != --fix ]] || mode=(-i)

# Another version formats differently, so the one that Debian 12 has decides.
formatter=$(command -v clang-format-14 || command -v clang-format)
git ls-files -z --cached --others --exclude-standard '*.cpp' '*.h' |
    xargs -0 --no-run-if-empty "$formatter" "${mode[@]}"
