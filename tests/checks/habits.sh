#!/usr/bin/env bash
# Ways of writing C++ that this house has left behind.
# shellcheck source=tests/checks/lib.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/lib.sh"
enter_project "$@"

why="each of these once hid a fault from the compiler or from the reader (CONTRIBUTING.md)"

files=$(cpp_files)
require "$files"
code=$(code_of <<<"$files")

# places FOLDERS PATTERN WHAT MEND
places() {
    local place
    { grep -E "^($1)/[^:]*:[0-9]+:(.*[^A-Za-z0-9_])?($2)" <<<"$code" || true; } | cut -d: -f1,2 |
        while IFS= read -r place; do
            finding "$place" "$3" "$4"
        done
}

findings=$(
    places "src|driver|tests|bench" "(SIGNAL|SLOT)[[:space:]]*\(" "connects by a string" \
        "connect pointers to members, with a receiver as context"
    places "src" "(blockSignals|QSignalBlocker)([^A-Za-z0-9_]|$)" "silences an object's signals" \
        "set a scope guard that the handlers read"
    code=$(grep -Ev 'operator +delete' <<<"$code" || true)
    places "src" "delete([[:space:]]*\[[[:space:]]*\])?([[:space:]]+[A-Za-z_]|[[:space:]]*[(*:])" "deletes by hand" \
        "let a std::unique_ptr or a Qt parent own the object"
)
verdict "$why" "$files" "$findings"
