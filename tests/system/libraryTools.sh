# For tests of the library as others get it; sourced.
# shellcheck shell=bash

# Makes a folder `scratch` that goes with the test.
makeScratch() {
    scratch=$(mktemp -d)
    trap 'rm -rf "$scratch"' EXIT
}

# Installs the library from a build folder into a prefix.
installLibrary() {
    local build=$1 prefix=$2 component
    for component in PlistCoreLibrary PlistCore; do
        cmake --install "$build" --prefix "$prefix" --component "$component" >/dev/null
    done
}

# Compares what an example program prints with what it should.
checkExample() {
    "$@" | diff - /dev/fd/3 3<<'TEXT'
Name
Height
Lit
true
Line 1, column 22: Expected </array>.
TEXT
}
