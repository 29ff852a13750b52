#!/usr/bin/env bash
# Makes the library's reference from the comments of its public headers, and fails on a warning.
set -euo pipefail

mkdir -p build
doxygen docs/Doxyfile
