#!/usr/bin/env bash
# Every C++ file stands as clang-format 14 would write it.
# shellcheck source=tests/checks/lib.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/lib.sh"
enter_project "$@"

why="one format, kept by a tool, keeps layout out of every review; versions of the tool differ, so the version is fixed"

formatter=
for candidate in clang-format-14 clang-format; do
    if "$candidate" --version 2>/dev/null | grep -q 'version 14\.'; then
        formatter=$candidate
        break
    fi
done
if [[ -z $formatter ]]; then
    echo "clang-format 14 is missing, so that no file can be judged; run scripts/setup, which installs clang-format-14"
    exit 1
fi

files=$(cpp_files)
require "$files"

# Several at once, each into a file of its own, so that their lines do not run into each other.
reports=$(mktemp -d)
trap 'rm -rf -- "$reports"' EXIT
status=0
# shellcheck disable=SC2016
tr '\n' '\0' <<<"$files" | REPORTS=$reports FORMATTER=$formatter xargs -0 -r -n 25 -P "$(nproc 2>/dev/null || echo 2)" \
    bash -c '"$FORMATTER" --dry-run --Werror -- "$@" 2>"$(mktemp -p "$REPORTS")"' formatter || status=$?

# The tool tells every place; the first one of a file is enough to find it.
findings=$(cat "$reports"/* |
    sed -nE 's/^([^: ]+):([0-9]+):[0-9]+: error: code should be clang-formatted.*/\1 \2/p' | sort -k1,1 -k2,2n |
    awk '!seen[$1]++ { print $1 ":" $2 ": is not formatted; run scripts/format " $1 }')
if ((status != 0)) && [[ -z $findings ]]; then
    cat "$reports"/*
    echo "$formatter failed"
    exit 2
fi
verdict "$why" "$files" "$findings"
