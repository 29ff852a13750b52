#!/usr/bin/env bash
# Checks that includes run one way: app/ui -> app/desktop -> app/model -> PlistCore. The targets of
# the build decide what each room links; a header alone would slip through.
set -euo pipefail

status=0

# Fails if a source of the folder includes anything that matches.
forbid() {
    local folder=$1 pattern=$2
    [[ -d $folder ]] || return 0
    if grep -rnE --include='*.cpp' --include='*.h' \
        "^[[:space:]]*#[[:space:]]*include[[:space:]]*[<\"]($pattern)" "$folder"; then
        echo "$folder must not include these."
        status=1
    fi
}

forbid PlistCore 'app/|Q[A-Z]|Qt|q[a-z]+\.h'
forbid app/model 'app/(desktop|ui)/|Qt(Gui|Widgets|Network|DBus)'
forbid app/desktop 'app/ui/|QtWidgets'
exit "$status"
