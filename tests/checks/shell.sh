#!/usr/bin/env bash
# Shell scripts parse, can be executed where they are commands, and hold nothing that shellcheck warns of.
# shellcheck source=tests/checks/lib.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/lib.sh"
enter_project "$@"

why="scripts run on machines that we never see, and bash goes on after most mistakes"

if ! command -v shellcheck >/dev/null; then
    echo "shellcheck is missing, so that no script can be judged; run scripts/setup, which installs it"
    exit 1
fi

files=$(all_files | while IFS= read -r file; do
    if [[ $file == *.sh ]] || { IFS= read -r -n 20 first <"$file" && [[ $first == '#!'*bash ]]; } 2>/dev/null; then
        printf '%s\n' "$file"
    fi
done)
require "$files"

findings=$(
    while IFS= read -r file; do
        [[ $file ]] || continue
        if ! message=$(bash -n -- "$file" 2>&1); then
            finding "$(sed -nE '1s/^([^:]+): line ([0-9]+):.*/\1:\2/p' <<<"$message")" "does not parse" "run bash -n $file"
        fi
        if [[ $file != *.sh && ! -x $file ]]; then
            finding "$file:1" "is a command that cannot be executed" "chmod +x $file"
        fi
    done <<<"$files"
    tr '\n' '\0' <<<"$files" | { xargs -0 -r -n 8 -P "$(nproc)" shellcheck -x -S warning -f gcc 2>&1 || true; } |
        sed -E 's/^([^:]+:[0-9]+):[0-9]+: (.*)$/\1: shellcheck: \2; see its advice/'
)
verdict "$why" "$files" "$findings"
