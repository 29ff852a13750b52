#!/usr/bin/env bash
# Installs the library as a package and builds the README's example against it in the ways that
# other projects do, as strictly as they may.
#
# usage: libraryPackageTest.sh SOURCE BUILD COMPILER
set -euo pipefail

source=$1
build=$2
compiler=$3
tools=$(dirname -- "${BASH_SOURCE[0]}")/libraryTools.sh
# shellcheck source=tests/system/libraryTools.sh
source "$tools"

warnings=(-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)

# Builds the example with CMake; the arguments are for CMake.
cmakeExample() {
    local folder
    folder=$(mktemp -d -p "$scratch")
    cmake -S "$source/docs/example" -B "$folder" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" \
        -DCMAKE_PREFIX_PATH="$prefix" "$@" >/dev/null
    cmake --build "$folder" >/dev/null
    checkExample "$folder/example"
    linked=$(ldd "$folder/example")
}

# Builds the example by hand with what pkg-config says; the arguments are the compiler and its
# options.
plainExample() {
    local flags
    read -ra flags <<<"$(pkg-config --cflags --libs PlistCore)"
    "$@" "${warnings[@]}" "$source/docs/example/main.cpp" -o "$scratch/plain" \
        "${flags[@]}" -Wl,-rpath,"$prefix/lib"
    checkExample "$scratch/plain"
}

makeScratch
# Nothing in the package names the place that it was made for.
installLibrary "$build" "$scratch/made"
prefix=$scratch/moved
mv "$scratch/made" "$prefix"
export PKG_CONFIG_PATH=$prefix/lib/pkgconfig

# The example in the README is the one that is built here.
awk '/^```cpp$/ { inside = 1; next } /^```$/ { inside = 0 } inside' "$source/README.md" |
    diff "$source/docs/example/main.cpp" -

echo "the blocks of the library's page"
{
    printf '#include <%s>\n' PlistCore/PlistCore.h iostream
    echo 'int main() {'
    awk '/^```cpp$/ { inside = 1; print "{"; next } inside && /^```$/ { inside = 0; print "}" }
         inside && !/^#include/' "$source/docs/library.md"
    echo '}'
} >"$scratch/page.cpp"
read -ra flags <<<"$(pkg-config --cflags PlistCore)"
"$compiler" -std=c++20 -fsyntax-only "${flags[@]}" "$scratch/page.cpp"

echo "as few headers as a reader can survey"
count=$(find "$prefix/include" -name '*.h' | wc -l)
[[ $count -le 24 ]]

echo "CMake, static"
cmakeExample
[[ $linked != *libPlistCore* ]]

echo "CMake, shared"
cmakeExample -DBUILD_SHARED_LIBS=ON
[[ $linked == *"$prefix/lib/libPlistCore.so.0"* ]]

echo "pkg-config, shared"
plainExample "$compiler" -std=c++20
[[ $(ldd "$scratch/plain") == *"$prefix/lib/libPlistCore.so.0"* ]]

echo "pkg-config, static"
read -ra flags <<<"$(pkg-config --static --cflags --libs PlistCore)"
"$compiler" -std=c++20 -static "$source/docs/example/main.cpp" -o "$scratch/static" "${flags[@]}"
checkExample "$scratch/static"

echo "C++23"
plainExample "$compiler" -std=c++23

echo "sanitizers and a checked standard library"
plainExample "$compiler" -std=c++20 -D_GLIBCXX_ASSERTIONS -fsanitize=address,undefined \
    -fno-sanitize-recover=all

for clang in clang++ clang++-{14,16,19}; do
    if command -v "$clang" >/dev/null; then
        echo "$clang"
        plainExample "$clang" -std=c++20
    fi
done

echo "the same version everywhere"
version=$(sed -n 's/.*string_view version = "\(.*\)";/\1/p' "$prefix/include/PlistCore/PlistVersion.h")
[[ $(pkg-config --modversion PlistCore) == "$version" ]]
[[ -e $prefix/lib/libPlistCore.so.$version ]]
