# What run and test have in common; sourced by both.
# shellcheck shell=bash

# Prints a line about what goes on, on standard error.
say() {
    printf '%s\n' "$*" >&2
}

fail() {
    say "$*"
    exit 1
}

# Tells whether a Debian package is installed.
isInstalled() {
    # Several words where a package is known for several architectures.
    [[ " $(dpkg-query -W -f='${db:Status-Status} ' "$1" 2>/dev/null)" == *" installed "* ]]
}

# Runs a command as the administrator: directly where we are, else through sudo.
asAdministrator() {
    if [[ $(id -u) -eq 0 ]]; then
        "$@"
    else
        sudo -- "$@"
    fi
}

# Installs the given packages; the whole output goes to a log.
installPackages() {
    local log=build/install.log
    local apt=(env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=600)
    if [[ $(id -u) -ne 0 ]] && ! command -v sudo >/dev/null; then
        fail "This needs the administrator: run  apt-get install $*  as root, then try again."
    fi
    mkdir -p build
    if ! asAdministrator "${apt[@]}" update >"$log" 2>&1; then
        say "The package lists could not be refreshed; trying with those at hand."
    fi
    if ! asAdministrator "${apt[@]}" install --no-install-recommends "$@" >>"$log" 2>&1; then
        tail -n 20 "$log" >&2
        fail "The packages could not be installed; the whole story is in $log."
    fi
}

# Installs those of the given "name|reason" lines that are missing. Quiet where none is.
installMissing() {
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        say "This is not a Debian system: install by hand what the build reports missing."
        return 0
    fi
    local line missing=()
    for line in "$@"; do
        isInstalled "${line%%|*}" || missing+=("$line")
    done
    [[ ${#missing[@]} -gt 0 ]] || return 0

    say "Installing what is missing, which may take a few minutes:"
    for line in "${missing[@]}"; do
        printf '  %-20s  %s\n' "${line%%|*}" "${line#*|}" >&2
    done
    installPackages "${missing[@]%%|*}"
}

# Configures and builds a preset; further arguments are targets. Quiet unless it fails.
buildPreset() {
    local preset=$1 log=build/$1.log
    shift
    mkdir -p build
    if ! cmake --preset "$preset" >"$log" 2>&1; then
        cat "$log" >&2
        say "Configuring “$preset” failed."
        return 1
    fi
    local targets=()
    [[ $# -eq 0 ]] || targets=(--target "$@")
    if ! cmake --build --preset "$preset" --parallel "$(nproc)" "${targets[@]}" >"$log" 2>&1; then
        grep -v '^\[[0-9]*/[0-9]*\]' "$log" >&2 || true
        say "Building “$preset” failed; the whole story is in $log."
        return 1
    fi
}
