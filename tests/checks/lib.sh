# Shared by the checks of this folder: which files there are, what their code is, how a finding is told.
# shellcheck shell=bash

set -euo pipefail
export LC_ALL=C
# A git hook names its own repository in these; the folder that is looked at shall decide instead.
unset GIT_DIR GIT_WORK_TREE GIT_INDEX_FILE

CHECKS=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd -P)

# enter_project [FOLDER]: a check looks at the project that it is a part of, or at the one that it is given.
enter_project() { cd -- "${1:-$CHECKS/../..}"; }

# Every file of the project, one a line: in a checkout what git tracks or would track, in an unpacked archive
# everything outside of build folders.
all_files() {
    if [[ $(git rev-parse --show-toplevel 2>/dev/null) == "$(pwd -P)" ]]; then
        git ls-files -z --cached --others --exclude-standard | tr '\0' '\n' | while IFS= read -r file; do
            if [[ -f $file ]]; then
                printf '%s\n' "$file"
            fi
        done
    else
        find . -type d \( -name .git -o -path ./build -o -path ./.cache -o -exec test -e '{}/CMakeCache.txt' \; \) \
            -prune -o -type f -print | sed 's|^\./||'
    fi | sort -u
}

# C++ files below the named folders, or all of them.
cpp_files() {
    local folders=${*:-src driver tests bench}
    all_files | grep -E "^(${folders// /|})/.*\.(cpp|h)\$" || true
}

# Reads file names; prints "file:line:code" without comments and without what stands in string literals.
code_of() { tr '\n' '\0' | xargs -0 -r awk -f "$CHECKS/code.awk"; }

# A finding reads "file:line: what is wrong; how to mend it". Checks print them through this.
finding() { printf '%s: %s; %s\n' "$1" "$2" "$3"; }

# require FILES: seeing no file at all is a failure, since such a check would pass whatever stood there.
require() {
    if [[ -z $1 ]]; then
        echo "No file to look at in $(pwd)."
        exit 1
    fi
}

# verdict WHY FILES FINDINGS: ends the check.
verdict() {
    local why=$1 findings=$3 count
    count=$(wc -l <<<"$2")
    if [[ $findings ]]; then
        printf '%s\n\nWhy: %s\n%d finding(s) in %d files.\n' "$findings" "$why" "$(wc -l <<<"$findings")" "$count"
        exit 1
    fi
    echo "Nothing found in $count files."
    exit 0
}
